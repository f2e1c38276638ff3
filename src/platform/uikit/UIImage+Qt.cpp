#include "platform/uivalues/UIImage.h"

#include "platform/uikit/UIImage+Qt.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/BitmapGeometry.h"

#include <QColorSpace>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace exifcard {
namespace {

QImage::Format formatOf(const Bitmap& bitmap) {
    switch (bitmap.channels) {
    case 1:
        return QImage::Format_Grayscale8;
    case 4:
        return QImage::Format_RGBA8888;
    default:
        return QImage::Format_RGB888;
    }
}

} // namespace

std::shared_ptr<const Bitmap> uprightBitmap(const UIImage& picture, std::optional<CGSize> smallest) {
    const int turn = exifFromImageOrientation(picture.orientation());
    if (smallest && isQuarterTurn(turn)) {
        std::swap(smallest->width, smallest->height);
    }
    auto stored = picture.bitmap(smallest);
    if (!stored || stored->isEmpty()) {
        return nullptr;
    }
    return turn == 1 ? stored : std::make_shared<const Bitmap>(turnedBitmap(*stored, turn));
}

QImage qImageFromBitmap(const Bitmap& bitmap, const QRect& part) {
    const qsizetype rowLength = qsizetype{bitmap.width} * bitmap.channels;
    const qsizetype start = part.y() * rowLength + qsizetype{part.x()} * bitmap.channels;
    const QImage shared(
        bitmap.pixels.data() + start, part.width(), part.height(), rowLength, formatOf(bitmap));
    QImage image = shared.convertToFormat(
        bitmap.channels == 4 ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (!bitmap.iccProfile.empty()) {
        const QByteArray profile(reinterpret_cast<const char*>(bitmap.iccProfile.data()),
            static_cast<qsizetype>(bitmap.iccProfile.size()));
        const QColorSpace space = QColorSpace::fromIccProfile(profile);
        if (space.isValid()) { // Of grey and of printers' colours there are none.
            image.setColorSpace(space);
            image.convertToColorSpace(QColorSpace(QColorSpace::SRgb));
        }
    }
    return image;
}

QImage passingQImageFromBitmap(const Bitmap& bitmap, const QRect& part) {
    constexpr int kMostPixels = 1 << 18; // A tile's picture has half as many.
    constexpr std::size_t kChannels = 3;
    const bool isPlain = bitmap.channels == int{kChannels} && bitmap.iccProfile.empty();
    if (!isPlain || part.width() > kMostPixels / part.height()) {
        return qImageFromBitmap(bitmap, part);
    }
    // Memory that is asked for anew costs more than the pixels that are put into it.
    thread_local std::vector<QRgb> pixels;
    const auto columns = static_cast<std::size_t>(part.width());
    pixels.resize(std::max(pixels.size(), columns * static_cast<std::size_t>(part.height())));
    QRgb* to = pixels.data();
    for (int row = part.top(); row <= part.bottom(); ++row) {
        const auto first =
            (std::size_t(row) * std::size_t(bitmap.width) + std::size_t(part.left())) * kChannels;
        const std::uint8_t* from = bitmap.pixels.data() + first;
        for (std::size_t column = 0; column < columns; ++column, from += kChannels) {
            *to++ = qRgb(from[0], from[1], from[2]);
        }
    }
    return {reinterpret_cast<const uchar*>(pixels.data()), part.width(), part.height(),
        qsizetype{part.width()} * qsizetype{sizeof(QRgb)}, QImage::Format_RGB32};
}

QImage qImageFromUIImage(const UIImage& picture) {
    const auto bitmap = uprightBitmap(picture, std::nullopt);
    return bitmap ? qImageFromBitmap(*bitmap, {0, 0, bitmap->width, bitmap->height}) : QImage();
}

std::shared_ptr<UIImage> imageFromQImage(const QImage& image, double scale) {
    if (image.isNull()) {
        return nullptr;
    }
    const bool hasAlpha = image.hasAlphaChannel();
    const QImage plain = image.convertToFormat(hasAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    auto bitmap = std::make_shared<Bitmap>();
    bitmap->width = plain.width();
    bitmap->height = plain.height();
    bitmap->channels = hasAlpha ? 4 : 3;
    const auto rowLength =
        static_cast<std::size_t>(plain.width()) * static_cast<std::size_t>(bitmap->channels);
    bitmap->pixels.reserve(rowLength * static_cast<std::size_t>(plain.height()));
    for (int row = 0; row < plain.height(); ++row) {
        const uchar* const line = plain.constScanLine(row);
        bitmap->pixels.insert(bitmap->pixels.end(), line, line + rowLength);
    }
    return UIImage::imageWithBitmap(std::move(bitmap), scale);
}

} // namespace exifcard
