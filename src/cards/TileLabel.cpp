#include "cards/TileLabel.h"

#include "platform/uikit/UIColor+Qt.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include <algorithm>

namespace exifcard {
namespace {

constexpr QPointF kHaloOffsets[] = {{-1, -1}, {1, -1}, {-1, 1}, {1, 1}};

} // namespace

void TileLabel::setTextColor(const UIColor& color) {
    _textColor = color;
    update();
}

void TileLabel::setHaloColor(const std::optional<UIColor>& color) {
    _haloColor = color;
    update();
}

double TileLabel::scaleFactor() const {
    const int wanted = fontMetrics().horizontalAdvance(text().trimmed());
    if (_minimumScaleFactor >= 1 || wanted <= width() || wanted == 0) {
        return 1;
    }
    return std::max(_minimumScaleFactor, double(width()) / wanted);
}

QFont TileLabel::shownFont() const {
    QFont shown = font();
    const double factor = scaleFactor();
    if (factor < 1) {
        // Sizes are whole pixels in one unit and fractions in the other.
        const double points =
            shown.pixelSize() > 0 ? shown.pixelSize() * 72.0 / logicalDpiY() : shown.pointSizeF();
        shown.setPointSizeF(points * factor);
    }
    return shown;
}

QString TileLabel::shownText() const {
    return QFontMetrics(shownFont()).elidedText(text().trimmed(), Qt::ElideRight, width());
}

void TileLabel::paintEvent(QPaintEvent*) {
    if (text().isEmpty()) {
        return;
    }
    QPainter painter(this);
    painter.setFont(shownFont());
    const QString shown = shownText();
    const auto place = QStyle::visualAlignment(layoutDirection(), alignment());
    const auto draw = [&painter, &shown, place, this](QPointF offset, const QColor& color) {
        painter.setPen(color);
        painter.drawText(
            QRectF(rect()).translated(offset), static_cast<int>(place) | Qt::TextSingleLine, shown);
    };
    if (_haloColor) {
        std::ranges::for_each(kHaloOffsets, [&](QPointF offset) { draw(offset, qColor(*_haloColor)); });
    }
    draw({0, 0}, qColor(_textColor));
}

bool TileLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QLabel::event(event);
    }
    const bool isCut = shownText() != text().trimmed();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), isCut ? text() : QString(), this);
    return true;
}

} // namespace exifcard
