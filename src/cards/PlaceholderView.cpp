#include "cards/PlaceholderView.h"

#include "appearance/ThemeColors.h"
#include "platform/uikit/NamedImages.h"

#include <QEvent>
#include <QPainter>

namespace exifcard {
namespace {

constexpr double kIconSide = 28;

} // namespace

PlaceholderView::PlaceholderView(QWidget& place) : UIView(&place) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(place.rect());
    place.installEventFilter(this);
    show();
}

bool PlaceholderView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == parent()) {
        setGeometry(parentWidget()->rect());
    }
    return UIView::eventFilter(watched, event);
}

void PlaceholderView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawPixmap(QPointF((width() - kIconSide) / 2, (height() - kIconSide) / 2),
        imageNamed("photos", kIconSide, secondaryTextColor(), devicePixelRatioF()));
}

} // namespace exifcard
