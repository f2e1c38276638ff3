#include "host/BubbleView.h"

#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/FocusRing.h"
#include "platform/uikit/Text+Qt.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDateTime>
#include <QDrag>
#include <QKeyEvent>
#include <QLocale>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QPainterPath>

namespace exifcard {
namespace {

constexpr double kSpeakersCornerRadius = 6;
constexpr int kDragPictureSide = 128; ///< Small enough to see where it is dropped.

QPainterPath roundedPath(const QRectF& rectangle, double radius, double lowerLeft, double lowerRight) {
    const auto corner = [](double x, double y, double side) { return QRectF(x, y, 2 * side, 2 * side); };
    QPainterPath path;
    path.moveTo(rectangle.left(), rectangle.top() + radius);
    path.arcTo(corner(rectangle.left(), rectangle.top(), radius), 180, -90);
    path.arcTo(corner(rectangle.right() - 2 * radius, rectangle.top(), radius), 90, -90);
    path.arcTo(
        corner(rectangle.right() - 2 * lowerRight, rectangle.bottom() - 2 * lowerRight, lowerRight), 0, -90);
    path.arcTo(corner(rectangle.left(), rectangle.bottom() - 2 * lowerLeft, lowerLeft), 270, -90);
    path.closeSubpath();
    return path;
}

} // namespace

QString momentText(const Date& moment) {
    constexpr double kMillisecondsPerSecond = 1000;
    const auto milliseconds = static_cast<qint64>(moment.secondsSince1970 * kMillisecondsPerSecond);
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(milliseconds);
    const QLocale locale;
    QString timeFormat = locale.timeFormat(QLocale::ShortFormat);
    timeFormat.remove(QStringLiteral(":ss")); // Some languages, and none at all, count them in.
    const QString time = locale.toString(local.time(), timeFormat);
    const qint64 daysAgo = local.date().daysTo(QDate::currentDate());
    const QString day = daysAgo == 0   ? qString(localizedString("Today"))
                        : daysAgo == 1 ? qString(localizedString("Yesterday"))
                                       : locale.toString(local.date(), QLocale::ShortFormat);
    return day + QLatin1Char(' ') + time;
}

BubbleView::BubbleView(ConversationEntry entry, QWidget* parent) : QWidget(parent), _entry(std::move(entry)) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibilityLabel(*this, spokenText());
    setAccessibilityTraits(*this, kUIAccessibilityTraitStaticText);
}

QString BubbleView::spokenText() const {
    QStringList parts = {qString(localizedString("You"))};
    const MSMessageTemplateLayout& layout = _entry.message.layout;
    for (const auto& text : {layout.imageTitle, layout.imageSubtitle, layout.caption, layout.trailingCaption,
             layout.subcaption, layout.trailingSubcaption}) {
        if (text && !text->empty()) {
            parts.append(qString(*text).simplified());
        }
    }
    if (!_entry.text.empty()) {
        parts.append(qString(_entry.text));
    }
    if (_entry.sentAt) {
        parts.append(momentText(*_entry.sentAt));
    }
    return parts.join(QLatin1String(", "));
}

QPainterPath BubbleView::outline() const {
    const bool speaksFromRight = layoutDirection() == Qt::LeftToRight;
    return roundedPath(QRectF(rect()), kRadius, speaksFromRight ? kRadius : kSpeakersCornerRadius,
        speaksFromRight ? kSpeakersCornerRadius : kRadius);
}

void BubbleView::paintFocus(QPainter& painter) const {
    if (showsFocusRing(*this)) {
        paintFocusRing(painter, QRectF(rect()), kRadius);
    }
}

void BubbleView::copy() const {
    QApplication::clipboard()->setMimeData(mimeData());
}

void BubbleView::contextMenuEvent(QContextMenuEvent* event) {
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu->addAction(copyActionText()), &QAction::triggered, this, [this] { copy(); });
    menu->popup(event->globalPos());
}

void BubbleView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->modifiers() == Qt::NoModifier &&
               (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                   event->key() == Qt::Key_Space)) {
        emit activated();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void BubbleView::mousePressEvent(QMouseEvent* event) {
    _isPressed = event->button() == Qt::LeftButton;
    _pressedAt = event->position().toPoint();
}

void BubbleView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint way = event->position().toPoint() - _pressedAt;
    if (!_isPressed || way.manhattanLength() < QApplication::startDragDistance()) {
        return;
    }
    _isPressed = false;
    auto* const drag = new QDrag(this);
    drag->setMimeData(mimeData());
    const QPixmap picture = dragPicture();
    if (!picture.isNull()) {
        const int side = static_cast<int>(kDragPictureSide * picture.devicePixelRatio());
        drag->setPixmap(picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    }
    drag->exec(Qt::CopyAction);
}

void BubbleView::mouseReleaseEvent(QMouseEvent*) {
    if (std::exchange(_isPressed, false)) {
        emit activated();
    }
}

} // namespace exifcard
