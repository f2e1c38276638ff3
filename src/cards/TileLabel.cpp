#include "cards/TileLabel.h"

#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

constexpr QPointF kHaloOffsets[] = {{-1, -1}, {1, -1}, {-1, 1}, {1, 1}};

/// More than a tile has room for; measuring a million characters takes half a second a painting.
constexpr qsizetype kLongestText = 500;

} // namespace

void TileLabel::setTextColor(const UIColor& color) {
    _textColor = color;
    update();
}

void TileLabel::setHaloColor(const std::optional<UIColor>& color) {
    _haloColor = color;
    update();
}

double TileLabel::scaleFactor(int wanted) const {
    if (_minimumScaleFactor >= 1 || wanted <= width() || wanted == 0) {
        return 1;
    }
    return std::max(_minimumScaleFactor, double(width()) / wanted);
}

TileLabel::Shown TileLabel::shown() const {
    Shown shown{beginningOf(text().trimmed(), kLongestText)};
    const QFontMetrics metrics = fontMetrics();
    const int wanted = metrics.horizontalAdvance(shown.text);
    shown.factor = scaleFactor(wanted);
    const int most = static_cast<int>(std::ceil(width() / shown.factor));
    if (wanted > most) {
        shown.text = metrics.elidedText(shown.text, Qt::ElideRight, most);
    }
    return shown;
}

void TileLabel::paintEvent(QPaintEvent*) {
    const auto [shown, factor] = this->shown();
    if (shown.isEmpty()) {
        return;
    }
    QPainter painter(this);
    painter.scale(factor, factor); // Shrinks evenly, whereas a smaller font would be rounded.
    const auto place = QStyle::visualAlignment(layoutDirection(), alignment());
    if (_laidOut.text() != shown) {
        QTextOption option;
        option.setWrapMode(QTextOption::NoWrap);
        // Values run as their own words do, "1/640 seconds", on whichever side they stand.
        option.setTextDirection(shown.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        _laidOut.setTextFormat(Qt::PlainText);
        _laidOut.setTextOption(option);
        _laidOut.setText(shown);
        _laidOut.prepare(QTransform(), font()); // Otherwise measured in the program's font until it is drawn.
    }
    const QSizeF room = QSizeF(size()) / factor - _laidOut.size();
    const QPointF corner((place & Qt::AlignRight) ? room.width() : 0, room.height() / 2);
    const auto draw = [&](QPointF offset, const UIColor& color) {
        painter.setPen(qColor(color));
        painter.drawStaticText(corner + offset, _laidOut);
    };
    if (_haloColor) {
        std::ranges::for_each(kHaloOffsets, [&](QPointF offset) { draw(offset, *_haloColor); });
    }
    draw({0, 0}, _textColor);
}

bool TileLabel::event(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        _laidOut.setText(QString());
    }
    if (event->type() != QEvent::ToolTip) {
        return QLabel::event(event);
    }
    const bool isCut = shownText() != text().trimmed();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
        isCut ? beginningOf(text(), kLongestText) : QString(), this);
    return true;
}

} // namespace exifcard
