#include "platform/uikit/SynthesizedClick.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

namespace exifcard {

void sendClick(QWidget& view, const QPoint& place) {
    const QPointer<QWidget> clicked(&view);
    const QPointF globally = view.mapToGlobal(QPointF(place));
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, QPointF(place), globally, Qt::LeftButton, held, Qt::NoModifier);
        if (clicked) { // The press may have ended it.
            QCoreApplication::sendEvent(clicked, &event);
        }
    }
}

} // namespace exifcard
