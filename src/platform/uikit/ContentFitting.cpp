#include "platform/uikit/ContentFitting.h"

#include "platform/uikit/UIImage+Qt.h"
#include "platform/uivalues/Bitmap.h"
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

/// To this share and above a picture is scaled while it is drawn, each pixel from its four neighbours: in a
/// third of the time that the mean of all pixels takes, which what is made smaller needs.
constexpr double kSmallestShareDrawn = 0.5;

constexpr int kChannelsWithAlpha = 4;

void drawScaled(QPainter& painter, const QRect& place, const QImage& source) {
    const bool isDrawn = place.width() >= source.width() * kSmallestShareDrawn &&
                         place.height() >= source.height() * kSmallestShareDrawn;
    if (isDrawn) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(place, source);
    } else {
        painter.drawImage(
            place.topLeft(), source.scaled(place.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
}

/// A part of the pixels in its place on a canvas of that size.
QImage placed(const Bitmap& bitmap, const QRect& part, const QRect& place, const QSize& size) {
    const bool isOpaque = bitmap.channels != kChannelsWithAlpha && place.contains(QRect(QPoint(0, 0), size));
    if (isOpaque && part.size() == size && place.size() == size) {
        return qImageFromBitmap(bitmap, part); // As it is.
    }
    QImage drawn(size, isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    if (!isOpaque) {
        drawn.fill(Qt::transparent);
    }
    QPainter painter(&drawn);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    drawScaled(painter, place, passingQImageFromBitmap(bitmap, part));
    return drawn;
}

QImage rounded(const QImage& canvas, double radius) {
    QImage rounded(canvas.size(), QImage::Format_ARGB32_Premultiplied);
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

QRectF coveredRect(QSizeF pictureSize, const FittedContent& content) {
    return fittedRect(pictureSize, content.viewSize, content.mode)
        .intersected(QRectF(QPointF(0, 0), content.viewSize));
}

QImage drawnContent(const UIImage& picture, const FittedContent& content) {
    const CGSize natural = picture.size();
    const QRectF target = fittedRect(QSizeF(natural.width, natural.height), content.viewSize, content.mode);
    const QSizeF targetPixels = target.size() * content.scale;
    const auto bitmap = uprightBitmap(picture, CGSize{targetPixels.width(), targetPixels.height()});
    if (!bitmap) {
        return {};
    }
    // Only what is seen is scaled, however long the picture is.
    const QRectF seen = target.intersected(QRectF(QPointF(0, 0), content.viewSize));
    const double across = bitmap->width / target.width();
    const double down = bitmap->height / target.height();
    const QRect part = QRectF((seen.x() - target.x()) * across, (seen.y() - target.y()) * down,
        seen.width() * across, seen.height() * down)
                           .toAlignedRect()
                           .intersected(QRect(0, 0, bitmap->width, bitmap->height));
    const QRect place = QRectF(seen.topLeft() * content.scale, seen.size() * content.scale).toRect();
    if (part.isEmpty() || place.isEmpty()) {
        return {};
    }
    const QSize size = (content.viewSize * content.scale).toSize().expandedTo({1, 1});
    QImage drawn = placed(*bitmap, part, place, size);
    if (content.cornerRadius > 0) {
        drawn = rounded(drawn, content.cornerRadius * content.scale);
    }
    drawn.setDevicePixelRatio(content.scale);
    return drawn;
}

} // namespace exifcard
