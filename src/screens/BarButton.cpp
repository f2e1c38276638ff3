#include "screens/BarButton.h"

#include "platform/uikit/NamedImages.h"
#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UIFont.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include <utility>

namespace exifcard {
namespace {

constexpr int kSide = 44;
constexpr double kImageSide = 24;
constexpr double kImageSideBesideTitle = 18;
constexpr double kGap = 1;
constexpr double kTitleSize = 13;

} // namespace

BarButton::BarButton(std::string imageName, QString title, Qt::Alignment contentAlignment, UIColor color)
    : _imageName(std::move(imageName))
    , _contentAlignment(contentAlignment)
    , _color(color) {
    setText(title);
    setFixedSize(kSide, kSide);
    setFocusPolicy(Qt::TabFocus);
    if (const auto font = UIFont::fontWithName("AvenirNext-DemiBold", kTitleSize)) {
        setFont(qFont(*font));
    }
}

QSize BarButton::sizeHint() const {
    return {kSide, kSide};
}

void BarButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setOpacity(isDown() ? 0.4 : 1);
    const double side = text().isEmpty() ? kImageSide : kImageSideBesideTitle;
    const double titleWidth = text().isEmpty() ? 0 : kGap + fontMetrics().horizontalAdvance(text());
    const QSize content(static_cast<int>(side + titleWidth), kSide);
    const QRect area =
        QStyle::alignedRect(layoutDirection(), _contentAlignment | Qt::AlignVCenter, content, rect());
    const QPointF corner(area.left(), (kSide - side) / 2);
    painter.drawPixmap(QRectF(corner, QSizeF(side, side)),
        imageNamed(_imageName, side, _color, devicePixelRatioF()), QRectF());
    painter.setPen(qColor(_color));
    painter.drawText(area.adjusted(static_cast<int>(side + kGap), 0, 0, 0), Qt::AlignVCenter, text());
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

} // namespace exifcard
