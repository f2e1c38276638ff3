#pragma once

#include "library/ExifManager.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/photos/AssetByteSource.h"
#include "platform/photos/Library.h"
#include "settings/PersistanceManager.h"

#include <atomic>
#include <filesystem>
#include <optional>
#include <string>

namespace exifcard {

/// A place elsewhere, whose bytes come in steps, or not at all.
class SlowFolder final : public AssetByteSource {
public:
    std::optional<std::string> localFile(const AssetFile& file) const override {
        return _isHere ? std::optional(file.root + "/" + file.path) : std::nullopt;
    }
    bool isElsewhere(const AssetFile& /*file*/) const override { return true; }
    std::optional<PHError> bring(const AssetFile& /*file*/, const Progress& progress) override {
        for (const double fraction : {0.25, 0.5}) {
            if (!progress(fraction)) {
                return PHError{PHErrorCode::UserCancelled, "stopped"};
            }
        }
        if (isBroken) {
            return PHError{PHErrorCode::NetworkError, "the line is down"};
        }
        _isHere = true;
        return std::nullopt;
    }

    std::atomic<bool> isBroken = false;

private:
    std::atomic<bool> _isHere = false;
};

/// A library whose photos are those of the tests, some of them elsewhere.
class AssetLibrary : public Library {
protected:
    AssetLibrary() { PersistanceManager::forgetSharedInstance(); }
    ~AssetLibrary() override { PersistanceManager::forgetSharedInstance(); }

    /// An asset whose one file is a copy of the sample of that name, of that type.
    PHAssetPtr add(const std::string& sample,
        const PHAsset& properties = {},
        const std::string& uniformTypeIdentifier = "public.jpeg") const {
        const std::string name = std::filesystem::path(sample).filename().string();
        std::filesystem::copy_file(std::filesystem::path(EXIFCARD_TEST_DATA) / sample, photos / name);
        auto asset = photo(name, properties);
        asset.files.front().uniformTypeIdentifier = uniformTypeIdentifier;
        if (properties.mediaType == PHAssetMediaType::Video) {
            asset.files.front().type = PHAssetResourceType::Video;
        }
        store(asset);
        return assetNamed(name);
    }

    /// The same, but the bytes lie elsewhere.
    PHAssetPtr addElsewhere(const std::string& sample, const PHAsset& properties = {}) {
        catalogue()->setByteSource("slow", slowFolder);
        CatalogueWriter writer(catalogue());
        auto asset = photo(sample, properties);
        asset.files.front().folder =
            writer.storeFolder(writer.storeRoot({.path = EXIFCARD_TEST_DATA, .kind = "slow"}), "");
        writer.storeAsset(asset);
        writer.commit();
        return assetNamed(sample);
    }

    /// Runs the main queue, where completions come, until something is so.
    template<class Condition>
    static void runUntil(const Condition& isSo) {
        while (!isSo()) {
            MainRunLoop::drain();
        }
    }

    const std::shared_ptr<SlowFolder> slowFolder = std::make_shared<SlowFolder>();
};

} // namespace exifcard
