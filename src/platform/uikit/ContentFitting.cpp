#include "platform/uikit/ContentFitting.h"

#include "platform/uikit/UIImage+Qt.h"
#include "platform/uivalues/UIImage.h"

#include <QPainter>

#include <algorithm>

namespace exifcard {
namespace {

/// Which part of the spare room lies before the picture: 0, a half or all of it.
struct Anchor {
    double horizontal = 0.5;
    double vertical = 0.5;
};

Anchor anchorOf(UIViewContentMode mode) {
    using Mode = UIViewContentMode;
    Anchor anchor;
    if (mode == Mode::Left || mode == Mode::TopLeft || mode == Mode::BottomLeft) {
        anchor.horizontal = 0;
    } else if (mode == Mode::Right || mode == Mode::TopRight || mode == Mode::BottomRight) {
        anchor.horizontal = 1;
    }
    if (mode == Mode::Top || mode == Mode::TopLeft || mode == Mode::TopRight) {
        anchor.vertical = 0;
    } else if (mode == Mode::Bottom || mode == Mode::BottomLeft || mode == Mode::BottomRight) {
        anchor.vertical = 1;
    }
    return anchor;
}

QImage roundedAt(const QImage& picture, const QRect& place, const QSize& canvasSize, double radius) {
    QImage canvas(canvasSize, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.drawImage(place, picture);
    painter.end();
    if (radius <= 0) {
        return canvas;
    }
    QImage rounded(canvasSize, QImage::Format_ARGB32_Premultiplied);
    rounded.fill(Qt::transparent);
    QPainter cutting(&rounded);
    cutting.setRenderHint(QPainter::Antialiasing);
    cutting.setPen(Qt::NoPen);
    cutting.setBrush(canvas);
    cutting.drawRoundedRect(rounded.rect(), radius, radius);
    return rounded;
}

} // namespace

QRectF fittedRect(QSizeF pictureSize, QSizeF viewSize, UIViewContentMode mode) {
    QSizeF size = pictureSize;
    switch (mode) {
    case UIViewContentMode::ScaleToFill:
    case UIViewContentMode::Redraw:
        size = viewSize;
        break;
    case UIViewContentMode::ScaleAspectFit:
        size.scale(viewSize, Qt::KeepAspectRatio);
        break;
    case UIViewContentMode::ScaleAspectFill:
        size.scale(viewSize, Qt::KeepAspectRatioByExpanding);
        break;
    default:
        break;
    }
    const Anchor anchor = anchorOf(mode);
    return {QPointF((viewSize.width() - size.width()) * anchor.horizontal,
                (viewSize.height() - size.height()) * anchor.vertical),
        size};
}

QImage drawnContent(const UIImage& picture, const FittedContent& content) {
    const CGSize natural = picture.size();
    const QRectF target = fittedRect(QSizeF(natural.width, natural.height), content.viewSize, content.mode);
    const QSizeF targetPixels = target.size() * content.scale;
    const QImage source = qImageFromUIImage(picture, CGSize{targetPixels.width(), targetPixels.height()});
    if (source.isNull()) {
        return {};
    }
    // Only what is seen is scaled, however long the picture is.
    const QRectF seen = target.intersected(QRectF(QPointF(0, 0), content.viewSize));
    const double across = source.width() / target.width();
    const double down = source.height() / target.height();
    const QRect part = QRectF((seen.x() - target.x()) * across, (seen.y() - target.y()) * down,
        seen.width() * across, seen.height() * down)
                           .toAlignedRect()
                           .intersected(source.rect());
    const QRect place = QRectF(seen.topLeft() * content.scale, seen.size() * content.scale).toRect();
    if (part.isEmpty() || place.isEmpty()) {
        return {};
    }
    const QImage scaled =
        source.copy(part).scaled(place.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage drawn = roundedAt(scaled, place, (content.viewSize * content.scale).toSize().expandedTo({1, 1}),
        content.cornerRadius * content.scale);
    drawn.setDevicePixelRatio(content.scale);
    return drawn;
}

} // namespace exifcard
