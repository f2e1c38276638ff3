#pragma once

#include "cards/ExifGridWithDetailsCollectionViewCell.h"
#include "library/AssetLibrary.h"
#include "library/QueueManager.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Log.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uivalues/UIImage.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTest>

#include <atomic>
#include <future>
#include <vector>

namespace exifcard {

/// A library, and tiles that show its photos.
class CardLibrary : public AssetLibrary {
protected:
    using Cell = ExifGridWithDetailsCollectionViewCell;

    /// A photo of a Canon EOS 40D of 100 by 68 pixels, with a place in its metadata.
    static constexpr const char* kCanon = "canon-40d-northwest-rating5.jpg";
    /// A photo of which neither header nor picture can be read.
    static constexpr const char* kBroken = "hostile-header.jpg";

    CardLibrary() {
        captureLog([this](std::string_view line) {
            const std::lock_guard lock(_mutex);
            _lines.emplace_back(line);
        });
    }
    /// Not before what the cells began is done, as the home goes.
    ~CardLibrary() override {
        waitUntil([] {
            const QueueManager& queues = QueueManager::sharedInstance();
            return queues.imageTransferOperationQueue.operationCount() == 0 &&
                   queues.imageScaleDownOperationQueue.operationCount() == 0;
        });
        waitForChanges();
        captureLog(nullptr);
    }

    static void waitUntil(const std::function<bool()>& isSo) {
        constexpr int kBoundInMilliseconds = 20000;
        ASSERT_TRUE(QTest::qWaitFor(isSo, kBoundInMilliseconds));
    }

    /// Changes of the library happen one after the other; an empty one ends after all that were asked for.
    static void waitForChanges() {
        const auto isDone = std::make_shared<std::atomic<bool>>(false);
        PHPhotoLibrary::sharedPhotoLibrary().performChanges(
            [] {}, [isDone](bool, const auto&) { *isDone = true; });
        waitUntil([&isDone] { return isDone->load(); });
    }

    /// The record of an asset, read as lists do.
    static std::shared_ptr<ExifInformation> recordOf(const PHAssetPtr& asset) {
        auto reading = std::async(
            std::launch::async, [&asset] { return ExifManager::exifInformationFromPHAssett(asset); });
        while (reading.wait_for(std::chrono::milliseconds(0)) != std::future_status::ready) {
            QTest::qWait(1);
        }
        return reading.get();
    }

    /// A tile as large as on a phone, with a record that it is shown at its place.
    static std::unique_ptr<Cell> makeCell(const std::shared_ptr<ExifInformation>& record = nullptr) {
        auto cell = std::make_unique<Cell>();
        cell->resize(121, 133);
        cell->setExifInfo(record, [shown = cell.get()] { return shown; });
        cell->grab(); // Lays the cell out.
        return cell;
    }

    template<typename View>
    static View& outlet(const QWidget& cell, const char* name) {
        return *cell.findChild<View*>(QString::fromLatin1(name));
    }
    static std::string text(const QWidget& cell, const char* name) {
        return outlet<QLabel>(cell, name).text().toStdString();
    }
    static bool isShown(const QWidget& cell, const char* name) {
        return !outlet<QWidget>(cell, name).isHidden();
    }
    static std::shared_ptr<const UIImage> picture(const QWidget& cell) {
        return outlet<UIImageView>(cell, "imageView").image();
    }

    std::size_t countOfLine(std::string_view wanted) {
        const std::lock_guard lock(_mutex);
        return static_cast<std::size_t>(std::ranges::count(_lines, wanted));
    }

private:
    std::mutex _mutex;
    std::vector<std::string> _lines; // Guarded by _mutex.
};

} // namespace exifcard
