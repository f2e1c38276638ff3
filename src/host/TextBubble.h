#pragma once

#include "host/BubbleView.h"
#include "host/WrappedText.h"

namespace exifcard {

/// A text that was sent.
class TextBubble : public BubbleView {
    Q_OBJECT

public:
    TextBubble(ConversationEntry entry, QWidget* parent);

    QSize sizeInTranscript(int width) override;

protected:
    QMimeData* mimeData() const override;
    QString copyActionText() const override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    WrappedText _lines;
    int _brokenAt = 0; ///< The width of the lines,
    QFont _brokenIn;   ///< and their font.
    QString _text;
};

} // namespace exifcard
