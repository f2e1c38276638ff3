#include "cards/ExifGridWithDetailsCollectionViewCell.h"
#include "library/ExifManager.h"
#include "metadata/ExifInformation.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/uikit/UIFont.h"
#include "platform/uikit/UIImage+Qt.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uivalues/UIImage.h"

#include <benchmark/benchmark.h>

#include <QFont>
#include <QImage>
#include <QPainter>

// Decides whether tiles may be made while a grid is scrolled: one made, filled and painted at twice the scale
// must take less than a millisecond, and painting it at most three times what its picture and texts take
// bare.

namespace exifcard {
namespace {

constexpr QSize kTile{121, 133};
constexpr double kScale = 2;
const std::string kPhoto = EXIFCARD_TEST_DATA "/canon-6d-elephants.jpg";

using Cell = ExifGridWithDetailsCollectionViewCell;

/// A decoded picture of the size that a tile asks for.
std::shared_ptr<UIImage> tilePicture() {
    const auto data = Data::mappedFile(kPhoto);
    const auto picture = data ? imageWithData(*data) : nullptr;
    return picture ? imageFromQImage(qImageFromUIImage(*picture).scaled(363, 231)) : nullptr;
}

std::shared_ptr<ExifInformation> recordOfPhoto() {
    const auto record = ExifManager::exifInformationFromNSData(Data::mappedFile(kPhoto));
    record->imageResultIsInCloud = false;
    record->thumbNailImage = nullptr;
    record->imageFilePath = std::nullopt;
    return record;
}

QImage canvas() {
    QImage image(kTile * kScale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(kScale);
    image.fill(Qt::white);
    return image;
}

void show(
    Cell& cell, const std::shared_ptr<ExifInformation>& record, const std::shared_ptr<UIImage>& picture) {
    cell.setExifInfo(record, nullptr);
    cell.findChild<UIImageView*>(QStringLiteral("imageView"))->setImage(picture);
}

/// The peer: the picture, scaled already, and the six texts of a tile.
void paintsPictureAndTextsBare(benchmark::State& state) {
    const QPixmap picture = QPixmap::fromImage(qImageFromUIImage(*tilePicture()).scaled(238, 152));
    const QFont font = qFont(*UIFont::fontWithName("AvenirNext-Regular", 10));
    QImage target = canvas();
    const QString texts[] = {QStringLiteral("Canon EOS 6D"), QStringLiteral("f/10.0"),
        QStringLiteral("ISO 200"), QStringLiteral("1/640 seconds"), QStringLiteral("497 x 331 (62 KB)"),
        QStringLiteral("12 years ago")};
    for ([[maybe_unused]] auto _ : state) {
        QPainter painter(&target);
        painter.drawPixmap(QRectF(1, 1, 119, 76), picture, picture.rect());
        painter.setFont(font);
        double baseline = 70;
        for (const QString& text : texts) {
            painter.drawText(QPointF(6, baseline), text);
            baseline += 10;
        }
    }
}
BENCHMARK(paintsPictureAndTextsBare);

void paintsTile(benchmark::State& state) {
    Cell cell;
    cell.resize(kTile);
    show(cell, recordOfPhoto(), tilePicture());
    cell.grab();
    QImage target = canvas();
    for ([[maybe_unused]] auto _ : state) {
        cell.render(&target, {}, {}, QWidget::DrawChildren);
    }
}
BENCHMARK(paintsTile);

void fillsTile(benchmark::State& state) {
    Cell cell;
    cell.resize(kTile);
    const auto record = recordOfPhoto();
    for ([[maybe_unused]] auto _ : state) {
        cell.prepareForReuse();
        cell.setExifInfo(record, nullptr);
    }
}
BENCHMARK(fillsTile);

void makesFillsAndPaintsTile(benchmark::State& state) {
    const auto record = recordOfPhoto();
    const auto picture = tilePicture();
    QImage target = canvas();
    for ([[maybe_unused]] auto _ : state) {
        Cell cell;
        cell.resize(kTile);
        show(cell, record, picture);
        cell.render(&target, {}, {}, QWidget::DrawChildren);
    }
    state.counters["tiles"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(makesFillsAndPaintsTile);

} // namespace
} // namespace exifcard
