#include "platform/uikit/NamedImages.h"

#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

namespace exifcard {
namespace {

constexpr double kLargestSideInPixels = 2048;

QString resourcePath(std::string_view name) {
    return QStringLiteral(":/pictures/%1.svg").arg(qString(name));
}

QPixmap drawnPicture(QByteArray drawing, int pixels, const QColor& color) {
    // The toolkit takes the word for black.
    drawing.replace("currentColor", color.name(QColor::HexRgb).toLatin1());
    QSvgRenderer renderer(drawing);
    if (!renderer.isValid()) {
        return {};
    }
    QPixmap pixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    if (color.alpha() < 255) { // Of the whole, as strokes overlap.
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.fillRect(pixmap.rect(), QColor(0, 0, 0, color.alpha()));
    }
    return pixmap;
}

} // namespace

QPixmap imageNamed(std::string_view name, double side, const UIColor& color, double devicePixelRatio) {
    const double pixels = std::ceil(side * devicePixelRatio);
    if (!(pixels >= 1 && pixels <= kLargestSideInPixels)) {
        return {};
    }
    const QColor shown = qColor(color);
    const auto key = QStringLiteral("picture %1 %2 %3 %4")
                         .arg(qString(name))
                         .arg(pixels)
                         .arg(shown.rgba(), 0, 16)
                         .arg(devicePixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) {
        return pixmap;
    }
    QFile file(resourcePath(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    pixmap = drawnPicture(file.readAll(), static_cast<int>(pixels), shown);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

bool hasImageNamed(std::string_view name) {
    return QFile::exists(resourcePath(name));
}

} // namespace exifcard
