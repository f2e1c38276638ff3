#pragma once

#include "library/ExifManager.h"
#include "platform/photos/Library.h"
#include "platform/photos/SlowFolder.h"
#include "settings/PersistanceManager.h"

#include <filesystem>
#include <memory>
#include <string>

namespace exifcard {

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
        return Library::addElsewhere(slowFolder, sample, properties);
    }

    const std::shared_ptr<SlowFolder> slowFolder = std::make_shared<SlowFolder>();
};

} // namespace exifcard
