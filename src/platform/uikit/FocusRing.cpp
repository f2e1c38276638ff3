#include "platform/uikit/FocusRing.h"

#include "appearance/Apperance.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QPainter>
#include <QWidget>

namespace exifcard {

bool showsFocusRing(const QWidget& view) {
    return view.hasFocus() && view.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

void paintFocusRing(QPainter& painter, const QRectF& bounds, double cornerRadius) {
    const auto stroke = [&painter, &bounds, cornerRadius](const QColor& color, double width, double inset) {
        painter.setPen(QPen(color, width));
        painter.drawRoundedRect(bounds.adjusted(inset, inset, -inset, -inset), cornerRadius, cornerRadius);
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    stroke(qColor(Apperance::appearanceTextColor()), 1, 0.5);
    stroke(qColor(Apperance::yellowColor()), 2, 2);
    painter.restore();
}

} // namespace exifcard
