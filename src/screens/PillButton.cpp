#include "screens/PillButton.h"

#include "appearance/Apperance.h"
#include "platform/uikit/FocusRing.h"
#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UIFont.h"

#include <QKeyEvent>
#include <QPainter>

namespace exifcard {
namespace {

constexpr int kHeight = 40;
constexpr int kSideMargin = 20;
constexpr double kTextSize = 15;

} // namespace

PillButton::PillButton(QWidget& parent) : QAbstractButton(&parent) {
    setFocusPolicy(Qt::StrongFocus);
    if (const auto font = UIFont::fontWithName("AvenirNext-DemiBold", kTextSize)) {
        setFont(qFont(*font));
    }
}

QSize PillButton::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 2 * kSideMargin, kHeight};
}

void PillButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = qColor(Apperance::appearanceTextColor());
    fill.setAlphaF(isDown() ? 0.7F : 1.0F);
    painter.setBrush(fill);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(rect(), kHeight / 2.0, kHeight / 2.0);
    if (showsFocusRing(*this)) {
        paintFocusRing(painter, rect(), kHeight / 2.0);
    }
    painter.setPen(qColor(Apperance::appearanceBackgroundColor()));
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // The text's own.
    painter.drawText(rect(), Qt::AlignCenter, text());
}

void PillButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

} // namespace exifcard
