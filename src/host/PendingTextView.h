#pragma once

#include <QString>
#include <QWidget>

namespace exifcard {

class PictureButton;

/// The text that waits in the input field: its first two lines.
class PendingTextView : public QWidget {
    Q_OBJECT

public:
    explicit PendingTextView(QWidget* parent);

    /// @param isClosable  Whether it shows a button of its own to drop it.
    void setText(const QString& text, bool isClosable);

signals:
    void closed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QString _text;
    PictureButton* _closeButton = nullptr;
};

} // namespace exifcard
