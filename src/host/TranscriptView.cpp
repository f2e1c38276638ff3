#include "host/TranscriptView.h"

#include "host/BubbleView.h"
#include "host/HostColors.h"
#include "host/TranscriptPage.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

constexpr int kThumbWidth = 4;
constexpr int kThumbMargin = 2;
constexpr int kLeastThumbHeight = 24;

class Thumb : public QWidget {
public:
    explicit Thumb(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_TransparentForMouseEvents); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(qColor(HostColors::grabber()));
        painter.drawRoundedRect(QRectF(rect()), width() / 2.0, width() / 2.0);
    }
};

} // namespace

TranscriptView::TranscriptView(QWidget* parent)
    : QScrollArea(parent)
    , _page(new TranscriptPage(this))
    , _thumb(new Thumb(this)) {
    setWidget(_page);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(qString(localizedString("Conversation")));
    viewport()->setAutoFillBackground(true);
    viewport()->setBackgroundRole(QPalette::Window);
    connect(_page, &TranscriptPage::messageActivated, this, &TranscriptView::messageActivated);
    connect(_page, &TranscriptPage::moreShown, this, &TranscriptView::layOut);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
        _isAtEnd = value >= verticalScrollBar()->maximum() - 1;
        placeThumb();
    });
    _page->installEventFilter(this);
}

void TranscriptView::setEntries(std::vector<ConversationEntry> sent, bool isSameConversation) {
    const std::size_t countBefore = _page->entryCount();
    const bool goesToEnd = _isAtEnd || !isSameConversation;
    _page->setEntries(std::move(sent));
    layOut();
    if (goesToEnd) {
        scrollToEnd();
    }
    if (isSameConversation) {
        announceNew(countBefore);
    }
}

void TranscriptView::announceNew(std::size_t firstNew) {
    for (std::size_t index = firstNew; index < _page->entryCount(); ++index) {
        if (const BubbleView* const bubble = _page->bubbleOf(index)) {
            announce(*this, bubble->spokenText());
        }
    }
}

void TranscriptView::scrollToEnd() {
    _isAtEnd = true;
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void TranscriptView::focusNewest() {
    const auto& bubbles = _page->bubbles();
    if (!bubbles.empty()) {
        bubbles.back()->setFocus(Qt::ShortcutFocusReason);
        scrollToEnd(); // A bubble may be higher than what is seen.
    }
}

void TranscriptView::layOut() {
    const bool goesToEnd = _isAtEnd;
    _page->layOut(viewport()->size());
    if (goesToEnd) {
        scrollToEnd();
    }
    placeThumb();
}

void TranscriptView::placeThumb() {
    const int longest = verticalScrollBar()->maximum();
    _thumb->setVisible(longest > 0);
    if (longest <= 0) {
        return;
    }
    const int track = height() - 2 * kThumbMargin;
    const int thumb = std::max(track * height() / std::max(_page->height(), 1), kLeastThumbHeight);
    const int top = kThumbMargin + (track - thumb) * verticalScrollBar()->value() / longest;
    const QRect place(width() - kThumbWidth - kThumbMargin, top, kThumbWidth, thumb);
    _thumb->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
    _thumb->raise();
}

void TranscriptView::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    layOut();
}

void TranscriptView::changeEvent(QEvent* event) {
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        layOut();
    }
}

bool TranscriptView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        layOut();
    }
    const bool goesToEnd = _isAtEnd;
    const bool isTaken = QScrollArea::eventFilter(watched, event);
    if (event->type() == QEvent::Resize) {
        // A page that grew while it was hidden tells of it only when it is shown.
        if (goesToEnd) {
            scrollToEnd();
        }
        placeThumb();
    }
    return isTaken;
}

void TranscriptView::keyPressEvent(QKeyEvent* event) {
    const int step = event->key() == Qt::Key_Up ? -1 : event->key() == Qt::Key_Down ? 1 : 0;
    if (step != 0) {
        if (QWidget* const next = _page->neighbourOfFocus(step)) {
            next->setFocus(Qt::TabFocusReason);
            ensureWidgetVisible(next);
        }
        return;
    }
    const auto& bubbles = _page->bubbles();
    if (event->key() == Qt::Key_Home && !bubbles.empty()) {
        bubbles.front()->setFocus(Qt::TabFocusReason);
        verticalScrollBar()->setValue(0);
    } else if (event->key() == Qt::Key_End) {
        focusNewest();
    } else {
        QScrollArea::keyPressEvent(event); // By pages: a bubble may be higher than what is seen.
        keepFocusInSight();
    }
}

void TranscriptView::keepFocusInSight() {
    const auto& bubbles = _page->bubbles();
    const auto focused =
        std::ranges::find_if(bubbles, [](const BubbleView* bubble) { return bubble->hasFocus(); });
    const QRect seen(0, verticalScrollBar()->value(), viewport()->width(), viewport()->height());
    if (focused == bubbles.end() || seen.intersects((*focused)->geometry())) {
        return;
    }
    const auto isSeen = [&seen](const BubbleView* bubble) { return seen.intersects(bubble->geometry()); };
    const bool isAbove = (*focused)->y() < seen.top();
    const auto first = std::find_if(focused, bubbles.end(), isSeen);
    const auto last = std::find_if(std::make_reverse_iterator(focused), bubbles.rend(), isSeen);
    if (isAbove && first != bubbles.end()) {
        (*first)->setFocus(Qt::TabFocusReason);
    } else if (!isAbove && last != bubbles.rend()) {
        (*last)->setFocus(Qt::TabFocusReason);
    }
}

} // namespace exifcard
