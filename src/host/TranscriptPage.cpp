#include "host/TranscriptPage.h"

#include "appearance/Apperance.h"
#include "appearance/ThemeColors.h"
#include "host/HostFont.h"
#include "host/PhotoBubble.h"
#include "host/TextBubble.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyle>

#include <algorithm>

namespace exifcard {
namespace {

/// Making a bubble costs a tenth of a millisecond, and nobody reads more at once.
constexpr std::size_t kEntriesAtOnce = 100;
constexpr int kGreatestWidth = 640;
constexpr int kSideMargin = 12;
constexpr int kEndMargin = 12;
constexpr int kGapInGroup = 6;
constexpr int kGapBetweenGroups = 8;
constexpr double kLongestPauseInGroup = 15 * 60; ///< Seconds.

bool isSameBubble(const ConversationEntry& left, const ConversationEntry& right) {
    const auto file = [](const ConversationEntry& entry) {
        return entry.picture ? entry.picture->file : std::string();
    };
    return left.kind == right.kind && left.text == right.text && left.sentAt == right.sentAt &&
           file(left) == file(right) && left.message.layout.caption == right.message.layout.caption &&
           left.message.layout.imageTitle == right.message.layout.imageTitle;
}

bool beginsGroup(const ConversationEntry* before, const ConversationEntry& entry) {
    if (!entry.sentAt) {
        return false;
    }
    return before == nullptr || !before->sentAt ||
           entry.sentAt->secondsSince1970 - before->sentAt->secondsSince1970 > kLongestPauseInGroup;
}

} // namespace

TranscriptPage::TranscriptPage(QWidget* parent)
    : QWidget(parent)
    , _moreButton(new QPushButton(qString(localizedString("Show earlier messages")), this))
    , _emptyHint(new QLabel(this)) {
    _moreButton->setFlat(true);
    _moreButton->hide();
    connect(_moreButton, &QPushButton::clicked, this, [this] {
        showFrom(_first - std::min(_first, kEntriesAtOnce));
        emit moreShown();
    });
    _emptyHint->setText(qString(localizedString("No messages yet. Choose a photo below to send it.")));
    _emptyHint->setAlignment(Qt::AlignCenter);
    _emptyHint->setWordWrap(true);
    _emptyHint->hide();
}

void TranscriptPage::setEntries(std::vector<ConversationEntry> sent) {
    const bool goesOn = sent.size() >= _entries.size() && !_entries.empty() &&
                        std::ranges::equal(_entries, std::span(sent).first(_entries.size()), isSameBubble);
    const std::size_t latestPart = sent.size() - std::min(sent.size(), kEntriesAtOnce);
    const std::size_t first = goesOn ? _first : latestPart;
    if (!goesOn) {
        qDeleteAll(_bubbles);
        _bubbles.clear();
        _first = sent.size();
    }
    const std::size_t shownBefore = _first + _bubbles.size();
    _entries = std::move(sent);
    for (std::size_t index = shownBefore; goesOn && index < _entries.size(); ++index) {
        _bubbles.push_back(makeBubble(_entries[index]));
    }
    showFrom(first);
}

void TranscriptPage::showFrom(std::size_t first) {
    std::vector<BubbleView*> earlier;
    for (std::size_t index = first; index < _first; ++index) {
        earlier.push_back(makeBubble(_entries[index]));
    }
    _bubbles.insert(_bubbles.begin(), earlier.begin(), earlier.end());
    _first = first;
    qDeleteAll(_stamps);
    _stamps.clear();
    for (std::size_t bubble = 0; bubble < _bubbles.size(); ++bubble) {
        _stamps.push_back(stampBefore(bubble));
        if (bubble > 0) {
            setTabOrder(_bubbles[bubble - 1], _bubbles[bubble]);
        }
    }
    _moreButton->setVisible(_first > 0);
    _emptyHint->setVisible(_entries.empty());
}

BubbleView* TranscriptPage::makeBubble(const ConversationEntry& entry) {
    BubbleView* bubble = nullptr;
    if (entry.kind == ConversationEntry::Kind::Message) {
        bubble = new PhotoBubble(entry, this);
        connect(
            bubble, &BubbleView::activated, this, [this, bubble] { emit messageActivated(bubble->entry()); });
    } else {
        bubble = new TextBubble(entry, this);
    }
    bubble->show();
    return bubble;
}

const BubbleView* TranscriptPage::bubbleOf(std::size_t index) const {
    return index < _first || index - _first >= _bubbles.size() ? nullptr : _bubbles[index - _first];
}

QWidget* TranscriptPage::neighbourOfFocus(int step) const {
    const auto focused =
        std::ranges::find_if(_bubbles, [](const BubbleView* view) { return view->hasFocus(); });
    if (focused == _bubbles.end()) {
        return nullptr;
    }
    const auto index = std::distance(_bubbles.begin(), focused) + step;
    const bool isThere = index >= 0 && index < static_cast<std::ptrdiff_t>(_bubbles.size());
    return isThere ? _bubbles[static_cast<std::size_t>(index)] : nullptr;
}

QLabel* TranscriptPage::stampBefore(std::size_t bubble) {
    const ConversationEntry& entry = _entries[_first + bubble];
    if (!beginsGroup(bubble == 0 ? nullptr : &_entries[_first + bubble - 1], entry)) {
        return nullptr;
    }
    auto* const stamp = new QLabel(momentText(*entry.sentAt), this);
    stamp->show();
    return stamp;
}

void TranscriptPage::layOut(QSize viewport) {
    const int width = std::min(viewport.width() - 2 * kSideMargin, kGreatestWidth);
    const QRect column((viewport.width() - width) / 2, 0, width, 0);
    _emptyHint->setFont(hostFont(13));
    QPalette hintPalette = palette();
    hintPalette.setColor(QPalette::WindowText, qColor(secondaryTextColor()));
    hintPalette.setColor(QPalette::Text, qColor(secondaryTextColor()));
    _emptyHint->setPalette(hintPalette);
    for (QLabel* const stamp : _stamps) {
        if (stamp != nullptr) {
            stamp->setFont(hostFont(11));
            stamp->setPalette(hintPalette);
        }
    }
    _moreButton->setFont(hostFont(13, HostFontWeight::Medium));
    int top = kEndMargin;
    if (_first > 0) {
        _moreButton->setGeometry(column.x(), top, width, _moreButton->sizeHint().height());
        top += _moreButton->height();
    }
    for (std::size_t bubble = 0; bubble < _bubbles.size(); ++bubble) {
        top = place(bubble, column, top);
    }
    top += kEndMargin;
    const int spare = std::max(viewport.height() - top, 0); // Few messages stand at the bottom.
    if (spare > 0) {
        for (QWidget* const child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            child->move(child->x(), child->y() + spare);
        }
    }
    resize(viewport.width(), top + spare);
    _emptyHint->setGeometry(QRect(QPoint(column.x(), 0), QSize(width, height())));
    update();
}

int TranscriptPage::place(std::size_t bubble, const QRect& column, int top) {
    BubbleView* const view = _bubbles[bubble];
    const QSize size = view->sizeInTranscript(column.width());
    QLabel* const stamp = _stamps[bubble];
    if (bubble > 0) {
        top += stamp == nullptr ? kGapInGroup : kGapBetweenGroups;
    }
    const QRect available(column.x(), top, column.width(), size.height());
    if (stamp != nullptr) {
        const QSize stampSize = stamp->sizeHint();
        const int left = std::min(column.right() + 1 - size.width(), column.right() + 1 - stampSize.width());
        stamp->setGeometry(
            QStyle::visualRect(layoutDirection(), available, QRect(QPoint(left, top), stampSize)));
        top += stampSize.height() + kGapBetweenGroups / 2;
    }
    const QRect place(QPoint(column.right() + 1 - size.width(), top), size);
    view->setGeometry(QStyle::visualRect(layoutDirection(), available, place));
    view->update();
    return top + size.height();
}

void TranscriptPage::paintEvent(QPaintEvent* event) {
    QPainter(this).fillRect(event->rect(), qColor(Apperance::appearanceBackgroundColor()));
}

void TranscriptPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        emit moreShown();
    }
}

} // namespace exifcard
