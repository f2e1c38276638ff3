#pragma once

#include "platform/messages/ConversationStore.h"

#include <QWidget>

#include <vector>

class QLabel;
class QPushButton;

namespace exifcard {

class BubbleView;

/// The scrolled part of a transcript: bubbles in groups, with time stamps between.
class TranscriptPage : public QWidget {
    Q_OBJECT

public:
    explicit TranscriptPage(QWidget* parent);

    void setEntries(std::vector<ConversationEntry> sent);
    std::size_t entryCount() const { return _entries.size(); }
    /// Null for an entry that is not shown.
    const BubbleView* bubbleOf(std::size_t index) const;
    const std::vector<BubbleView*>& bubbles() const { return _bubbles; }
    /// The bubble before (-1) or after (1) the focused one; null at the ends.
    QWidget* neighbourOfFocus(int step) const;
    /// Takes the width, and the height that the bubbles need, at least that of the viewport.
    void layOut(QSize viewport);

signals:
    void messageActivated(const ConversationEntry& entry);
    void moreShown();

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void showFrom(std::size_t first);
    BubbleView* makeBubble(const ConversationEntry& entry);
    QLabel* stampBefore(std::size_t bubble);
    /// The bubble's place in a column; answers the y coordinate behind it.
    int place(std::size_t bubble, const QRect& column, int top);

    std::vector<ConversationEntry> _entries;
    std::size_t _first = 0; ///< Of the entries that are shown.
    std::vector<BubbleView*> _bubbles;
    std::vector<QLabel*> _stamps; ///< One a bubble; null where none stands above it.
    QPushButton* _moreButton = nullptr;
    QLabel* _emptyHint = nullptr;
};

} // namespace exifcard
