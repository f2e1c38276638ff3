#pragma once

#include "platform/uikit/UIView.h"

#include <QPointer>
#include <QString>

class QAbstractButton;
class QLabel;

namespace exifcard {

class PictureButton;

/// The bar above a stack of screens: 44 points with a title in the middle, a button at each end and a
/// hairline.
class NavigationBar : public UIView {
    Q_OBJECT

public:
    static constexpr int kHeight = 44;

    explicit NavigationBar(QWidget* parent = nullptr);

    void setTitle(const QString& title);
    /// Shows these in place of the ones before, which are hidden; null shows none.
    void setButtons(QAbstractButton* left, QAbstractButton* right);
    QAbstractButton& backButton();

signals:
    void backChosen();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void layOut();
    void colorTitle();

    QLabel* _titleLabel;
    PictureButton* _backButton;
    const UIColor _titleColor;
    QString _title;
    QPointer<QAbstractButton> _left;
    QPointer<QAbstractButton> _right;
};

} // namespace exifcard
