#pragma once

#include "platform/messages/ConversationStore.h"

#include <QScrollArea>

#include <vector>

namespace exifcard {

class TranscriptPage;

/// What was sent in a conversation, the newest at the bottom. Long ones show their end, and more on request.
class TranscriptView : public QScrollArea {
    Q_OBJECT

public:
    explicit TranscriptView(QWidget* parent);

    /// Replaces what is shown; bubbles that stay keep their widgets. Goes to the end where it was there.
    /// @param isSameConversation  What comes in addition is announced; otherwise it starts at the end.
    void setEntries(std::vector<ConversationEntry> sent, bool isSameConversation);
    void scrollToEnd();
    /// To the newest bubble, for the keyboard.
    void focusNewest();

signals:
    void messageActivated(const ConversationEntry& entry);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void layOut();
    void placeThumb();
    /// Where the focused bubble was scrolled out of sight, the nearest one that is seen gets the keys.
    void keepFocusInSight();
    void announceNew(std::size_t firstNew);

    TranscriptPage* _page = nullptr;
    QWidget* _thumb = nullptr; ///< Tells where the page is; takes no width.
    bool _isAtEnd = true;
};

} // namespace exifcard
