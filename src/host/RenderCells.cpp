#include "host/RenderCells.h"

#include "appearance/Apperance.h"
#include "cards/ExifGridWithDetailsCollectionViewCell.h"
#include "cards/LoadingMoreCollectionViewCell.h"
#include "host/RenderViews.h"
#include "hud/MBProgressHUD.h"
#include "library/ExifManager.h"
#include "metadata/ExifInformation.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHFetchResult.h"

#include <QLabel>

#include <algorithm>
#include <functional>
#include <vector>

namespace exifcard {
namespace {

/// As long as they get, with signs that a mirrored text would scatter.
constexpr const char* kProgressMessage = "Downloading photos from iCloud :- 62.00%";
constexpr double kTileGap = 2;
constexpr int kTilesInRow = 3;
constexpr int kTileWidth = 121;
constexpr int kTileHeight = 133;

using Tile = ExifGridWithDetailsCollectionViewCell;
using Records = std::vector<std::shared_ptr<ExifInformation>>;

/// Of the photos in the library, the newest first. Blocks.
Records recordsOfLibrary() {
    Records records;
    const auto assets = PHAsset::fetchAssetsWithOptions({});
    for (std::size_t index = 0; index < assets->count(); ++index) {
        if (auto record = ExifManager::exifInformationFromPHAssett(assets->objectAtIndex(index))) {
            records.push_back(std::move(record));
        }
    }
    return records;
}

std::unique_ptr<UIView> makeBackground(QSize size) {
    auto background = std::make_unique<UIView>();
    background->setBackgroundColor(Apperance::appearanceBackgroundColor());
    background->resize(size);
    return background;
}

/// As they stand in a grid.
std::unique_ptr<UIView> makeGrid(
    const Records& records, const std::function<void(Tile&, std::size_t)>& mark) {
    const int count = static_cast<int>(records.size());
    const int rows = (count + kTilesInRow - 1) / kTilesInRow;
    const int columns = std::min(count, kTilesInRow);
    constexpr int kGap = static_cast<int>(kTileGap);
    auto background =
        makeBackground({columns * (kTileWidth + kGap) + kGap, rows * (kTileHeight + kGap) + kGap});
    for (int index = 0; index < count; ++index) {
        auto* const tile = new Tile;
        tile->setParent(background.get());
        tile->setFrame({{kTileGap + index % kTilesInRow * (kTileWidth + kTileGap),
                            kTileGap + index / kTilesInRow * (kTileHeight + kTileGap)},
            {kTileWidth, kTileHeight}});
        const auto place = static_cast<std::size_t>(index);
        tile->setExifInfo(records[place], [tile] { return tile; });
        mark(*tile, place);
        tile->show();
    }
    return background;
}

/// @return None where the context tells an error.
Records recordsOfFiles(RenderContext& context) {
    context.setError(context.library().import(context.request().files));
    Records records;
    if (context.error().empty()) {
        SampleLibrary::runOnQueue([&records] { records = recordsOfLibrary(); });
    }
    return records;
}

std::shared_ptr<ExifInformation> unreadableRecord() {
    auto record = ExifInformation::init();
    record->imageFilePath = "/dev/null";
    record->imageResultIsInCloud = false;
    return record;
}

} // namespace

std::unique_ptr<QWidget> makeTiles(RenderContext& context) {
    const Records records = recordsOfFiles(context);
    return context.error().empty() ? makeGrid(records, [](Tile&, std::size_t) {}) : nullptr;
}

std::unique_ptr<QWidget> makeMarkedTiles(RenderContext& context) {
    Records records = recordsOfFiles(context);
    if (!context.error().empty()) {
        return nullptr;
    }
    enum Mark : std::size_t { kSelected, kFavorite, kElsewhere, kDownloading, kVideo, kMarks };
    for (std::size_t index = 0; index < records.size(); ++index) {
        ExifInformation& record = *records[index];
        const std::size_t mark = index % kMarks;
        auto asset = std::make_shared<PHAsset>(*record.phAsset);
        asset->isFavorite = mark == kFavorite;
        asset->mediaType = mark == kVideo ? PHAssetMediaType::Video : asset->mediaType;
        record.phAsset = asset;
        record.imageResultIsInCloud = mark == kElsewhere || mark == kDownloading;
        record.iCloudDownloadProgress = mark == kDownloading ? 0.6 : -1;
    }
    records.push_back(unreadableRecord());
    return makeGrid(records, [&records](Tile& tile, std::size_t index) {
        tile.setIsSelected(index % kMarks == kSelected && index + 1 < records.size());
    });
}

std::unique_ptr<QWidget> makeLoadingCell(RenderContext& context) {
    constexpr double kHeight = 80;
    constexpr double kShownPart = 0.62;
    const double width = context.windowSize().width();
    auto background = makeBackground({context.windowSize().width(), static_cast<int>(kHeight)});
    auto* const cell = new LoadingMoreCollectionViewCell;
    cell->setParent(background.get());
    cell->setFrame({{0, 0}, {width, kHeight}});
    cell->loadingMessageLabel().setText(QString::fromLatin1(kProgressMessage));
    cell->startAnimatingLoading();
    cell->progressBarWidthConstraint.setConstant(width * kShownPart);
    cell->layOutBar(/*seconds=*/0);
    cell->show();
    return background;
}

std::unique_ptr<QWidget> makeOverlay(RenderContext& context) {
    constexpr QSize kPanelSize(375, 220);
    constexpr float kShownPart = 0.62F;
    constexpr MBProgressHUDMode kModes[] = {
        MBProgressHUDMode::DeterminateHorizontalBar, MBProgressHUDMode::AnnularDeterminate};
    const QSize panelSize(std::min(kPanelSize.width(), context.windowSize().width()), kPanelSize.height());
    auto background =
        makeBackground({panelSize.width(), panelSize.height() * static_cast<int>(std::size(kModes))});
    int top = 0;
    for (const MBProgressHUDMode mode : kModes) {
        auto* const panel = new QWidget(background.get());
        panel->setGeometry(QRect(QPoint(0, top), panelSize));
        MBProgressHUD* const overlay = MBProgressHUD::showHUDAddedTo(*panel, /*animated=*/false);
        overlay->setMode(mode);
        overlay->setProgress(kShownPart);
        overlay->setLabelText(kProgressMessage);
        top += panelSize.height();
    }
    return background;
}

} // namespace exifcard
