#pragma once

#include "platform/messages/ConversationStore.h"

#include <QString>
#include <QWidget>

class QMimeData;
class QPainterPath;

namespace exifcard {

/// One entry of a transcript. Can be copied (Ctrl+C, context menu) and dragged out.
class BubbleView : public QWidget {
    Q_OBJECT

public:
    BubbleView(ConversationEntry entry, QWidget* parent);

    const ConversationEntry& entry() const { return _entry; }
    /// How large the bubble is in a transcript of that width.
    virtual QSize sizeInTranscript(int width) = 0;
    /// Sender, texts and time, as a screen reader says them.
    QString spokenText() const;

signals:
    /// The user tapped the bubble, or pressed Enter on it.
    void activated();

protected:
    static constexpr double kRadius = 18;

    /// The bubble's outline: round, but for the speaker's lower corner.
    QPainterPath outline() const;
    void paintFocus(QPainter& painter) const;
    /// What goes to the clipboard and along with a drag; the caller owns it.
    virtual QMimeData* mimeData() const = 0;
    virtual QPixmap dragPicture() const { return {}; }
    virtual QString copyActionText() const = 0;

    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void copy() const;

    ConversationEntry _entry;
    QPoint _pressedAt;
    bool _isPressed = false;
};

/// "Today 08:14", "Yesterday 21:03", or date and time, in the user's language.
QString momentText(const Date& moment);

} // namespace exifcard
