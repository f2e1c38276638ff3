#pragma once

#include <QTimer>
#include <QVariantAnimation>
#include <QWidget>

namespace exifcard {

/// A thin bar over the content's edge that tells which part is seen. Shows itself while that changes.
class ScrollIndicator : public QWidget {
    Q_OBJECT

public:
    static constexpr int kThickness = 3;
    static constexpr int kSideMargin = 1; ///< Beside the items, whose inset is 4.
    static constexpr int kEndMargin = 3;

    explicit ScrollIndicator(QWidget* parent);

    /// Shows it, and begins the time after which it fades.
    void flash();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void fade();

    QTimer _rest;
    QVariantAnimation _fade;
    double _opacity = 1;
};

/// The line around the item that the keys move.
class ItemFocusRing : public QWidget {
    Q_OBJECT

public:
    explicit ItemFocusRing(QWidget* parent);

    void showAround(const QRect& item, double cornerRadius);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double _cornerRadius = 0;
};

} // namespace exifcard
