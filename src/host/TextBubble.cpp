#include "host/TextBubble.h"

#include "host/HostColors.h"
#include "host/HostFont.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QEvent>
#include <QMimeData>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace exifcard {
namespace {

constexpr double kWidestPart = 0.76;
constexpr int kHorizontalPadding = 14;
constexpr int kVerticalPadding = 9;

} // namespace

TextBubble::TextBubble(ConversationEntry entry, QWidget* parent) : BubbleView(std::move(entry), parent) {
    _text = qString(this->entry().text);
    while (_text.endsWith(QLatin1Char('\n'))) {
        _text.chop(1);
    }
}

QSize TextBubble::sizeInTranscript(int width) {
    const int widest = std::max(static_cast<int>(width * kWidestPart) - 2 * kHorizontalPadding, 1);
    const QFont font = hostFont(15);
    if (widest != _brokenAt || font != _brokenIn) { // A transcript is laid out often, a long text slowly.
        _lines = WrappedText(_text, {.font = font, .lineHeight = hostLineHeight(20)}, widest);
        _brokenAt = widest;
        _brokenIn = font;
    }
    const QSize text = _lines.size();
    return {std::max(text.width() + 2 * kHorizontalPadding, static_cast<int>(2 * kRadius)),
        text.height() + 2 * kVerticalPadding};
}

QMimeData* TextBubble::mimeData() const {
    auto* const copied = new QMimeData;
    copied->setText(_text);
    return copied;
}

QString TextBubble::copyActionText() const {
    return qString(localizedString("Copy text"));
}

void TextBubble::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        _brokenAt = 0; // The same font may have other glyphs.
    }
    BubbleView::changeEvent(event);
}

void TextBubble::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(outline(), qColor(HostColors::outgoingBubble()));
    painter.setPen(qColor(HostColors::outgoingText()));
    const bool alignedRight = _text.isRightToLeft();
    _lines.draw(
        painter, {kHorizontalPadding, kVerticalPadding}, width() - 2 * kHorizontalPadding, alignedRight);
    paintFocus(painter);
}

} // namespace exifcard
