#include "host/PendingTextView.h"

#include "host/HostColors.h"
#include "host/HostFont.h"
#include "host/RemovingButton.h"
#include "host/WrappedText.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/PictureButton.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QPainter>
#include <QStyle>

namespace exifcard {
namespace {

constexpr int kRadius = 12;
constexpr int kPadding = 10;
constexpr int kVerticalPadding = 6;
constexpr int kGap = 8; ///< Below the chip.
constexpr int kLineHeight = 16;
constexpr int kButtonRoom = 34;

} // namespace

PendingTextView::PendingTextView(QWidget* parent) : QWidget(parent), _closeButton(makeRemovingButton(*this)) {
    setIsAccessibilityElement(*this, false); // Its button is one.
    connect(_closeButton, &QAbstractButton::clicked, this, &PendingTextView::closed);
}

void PendingTextView::setText(const QString& text, bool isClosable) {
    _text = text.trimmed();
    setToolTip(beginningOf(_text, kLongestToolTip));
    setAccessibilityLabel(*this, _text);
    _closeButton->setVisible(isClosable);
    const int lines = _text.contains(QLatin1Char('\n')) || _text.size() > 40 ? 2 : 1;
    setFixedHeight(lines * hostLineHeight(kLineHeight) + 2 * kVerticalPadding + kGap);
    update();
}

void PendingTextView::resizeEvent(QResizeEvent*) {
    const QRect close(width() - kButtonRoom, (height() - kGap - 44) / 2, 44, 44);
    _closeButton->setGeometry(QStyle::visualRect(layoutDirection(), rect(), close));
}

void PendingTextView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect chip(0, 0, width() - (_closeButton->isHidden() ? 0 : kButtonRoom), height() - kGap);
    const QRect place = QStyle::visualRect(layoutDirection(), rect(), chip);
    painter.setPen(Qt::NoPen);
    painter.setBrush(qColor(HostColors::outgoingBubble()));
    painter.drawRoundedRect(place, kRadius, kRadius);
    painter.setPen(qColor(HostColors::outgoingText()));
    const int inner = place.width() - 2 * kPadding;
    const WrappedText lines(_text, {hostFont(12), hostLineHeight(kLineHeight), 2}, inner);
    const double top = place.y() + (place.height() - lines.size().height()) / 2.0;
    lines.draw(painter, {static_cast<double>(place.x() + kPadding), top}, inner,
        layoutDirection() == Qt::RightToLeft);
}

} // namespace exifcard
