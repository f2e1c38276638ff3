#pragma once

#include "platform/photos/CatalogueWriter.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/photos/PhotoCatalogue.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class AssetByteSource;

/// A library of its own in a temporary home, with one root whose folder is there.
class Library : public ::testing::Test {
protected:
    Library() {
        PhotoCatalogue::setShared(nullptr);
        PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Authorized);
        std::filesystem::create_directories(photos);
        CatalogueWriter writer(catalogue());
        root = writer.storeRoot({.path = photos.string()});
        folder = writer.storeFolder(root, "");
    }
    ~Library() override { PhotoCatalogue::setShared(nullptr); }

    static std::shared_ptr<PhotoCatalogue> catalogue() { return PhotoCatalogue::shared(); }

    /// A photo whose one file has that name in the root's folder.
    CatalogueAsset photo(const std::string& name, PHAsset properties = {}) const {
        if (properties.mediaType == PHAssetMediaType::Unknown) {
            properties.mediaType = PHAssetMediaType::Image;
        }
        CatalogueFile file;
        file.folder = folder;
        file.name = name;
        file.uniformTypeIdentifier = "public.jpeg";
        return {.properties = std::move(properties), .files = {file}};
    }

    static std::int64_t store(const CatalogueAsset& asset) {
        return CatalogueWriter(catalogue()).storeAsset(asset);
    }
    std::int64_t store(const std::string& name, const PHAsset& properties = {}) const {
        return store(photo(name, properties));
    }

    /// An asset whose one file is the sample of that name, in a root whose bytes that source brings.
    PHAssetPtr addElsewhere(const std::shared_ptr<AssetByteSource>& source,
        const std::string& sample,
        const PHAsset& properties = {}) const;

    /// Runs the main queue, where completions come, until something is so.
    static void runUntil(const std::function<bool()>& isSo);

    static std::string nameOf(const PHAsset& asset);
    /// The names of what a fetch found, in its order, with blanks between.
    static std::string names(const PHAssetFetchResultPtr& result);
    static std::string namesInOrder(const std::vector<PHAssetPtr>& assets);
    static PHAssetPtr assetNamed(std::string_view name);

    const TemporaryHome home;
    const std::filesystem::path photos = home.path() / "photos";
    std::int64_t root = 0;
    std::int64_t folder = 0;
};

} // namespace exifcard
