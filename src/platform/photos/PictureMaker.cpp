#include "platform/photos/PictureMaker.h"

#include "platform/avfoundation/AVAsset.h"
#include "platform/avfoundation/AVAssetImageGenerator.h"
#include "platform/coreimage/CIFilter.h"
#include "platform/foundation/URL.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/uivalues/UIImage.h"

#include <fmt/format.h>

#include <algorithm>

namespace exifcard {
namespace {

constexpr WantedPicture kThumbnail{
    .targetSize = {ThumbnailStore::kLongestSide, ThumbnailStore::kLongestSide}};

/// The first frame, upright.
std::shared_ptr<UIImage> frameOfVideo(const std::string& path) {
    AVAssetImageGenerator generator(AVURLAsset::assetWithURL(URL::fileURLWithPath(path)));
    generator.appliesPreferredTrackTransform = true;
    return generator.copyCGImageAtTime(CMTime{});
}

/// Undecoded.
std::shared_ptr<UIImage> openedPicture(const StoredFile& file, const std::string& path) {
    if (file.type == PHAssetResourceType::Video || file.type == PHAssetResourceType::FullSizeVideo) {
        return frameOfVideo(path);
    }
    const auto data = Data::mappedFile(path);
    if (!data) {
        return nullptr;
    }
    if (const auto raw = CIFilter::filterWithImageData(*data, file.uniformTypeIdentifier)) {
        return raw->outputImage();
    }
    return imageWithData(*data);
}

std::shared_ptr<UIImage> drawn(const UIImage& picture, CGSize natural, const WantedPicture& wanted) {
    const PicturePlacement placement = placementOf(natural, wanted);
    return drawnImage(picture, placement.canvas, placement.picture, /*scale=*/1);
}

CGSize sizeOf(const PHAsset& asset) {
    return {static_cast<double>(asset.pixelWidth), static_cast<double>(asset.pixelHeight)};
}

/// Whether a picture of that size has all the pixels for what is wanted of one of `natural` size.
bool suffices(CGSize size, CGSize natural, const WantedPicture& wanted) {
    const CGSize needed = placementOf(natural, wanted).picture.size;
    return natural.width > 0 && natural.height > 0 && size.width >= needed.width &&
           size.height >= needed.height;
}

bool isCropped(const WantedPicture& wanted) {
    return wanted.crop.size.width > 0;
}

} // namespace

std::string PictureOrder::fileKey() const {
    return fmt::format("{}|{}|{}|{}", asset.localIdentifier, file ? file->file.number : 0,
        file ? file->modified : 0, file ? file->file.sizeInBytes : 0);
}

std::string PictureOrder::pictureKey() const {
    return fmt::format("{}|{}x{}|{}|{}|{},{},{},{}", fileKey(), wanted.targetSize.width,
        wanted.targetSize.height, static_cast<int>(wanted.contentMode), static_cast<int>(wanted.resizeMode),
        wanted.crop.origin.x, wanted.crop.origin.y, wanted.crop.size.width, wanted.crop.size.height);
}

PictureMaker::Found PictureMaker::found(const PictureOrder& order) {
    if (!order.file) {
        return {};
    }
    if (auto picture = _cache.picture(order.pictureKey())) {
        return {std::move(picture)};
    }
    if (auto picture = storedAsWanted(order)) {
        _cache.store(order.pictureKey(), picture);
        return {std::move(picture)};
    }
    const auto thumbnail = _thumbnails.thumbnail(order.fileKey());
    if (!thumbnail) {
        return {};
    }
    if (!suffices(thumbnail->size(), sizeOf(order.asset), order.wanted)) {
        return {drawn(*thumbnail, thumbnail->size(), order.wanted), /*isDegraded=*/true};
    }
    auto picture = drawn(*thumbnail, sizeOf(order.asset), order.wanted);
    keep(order, picture);
    return {std::move(picture)};
}

/// What a list asks for again and again: found in its size, it is decoded and nothing more.
std::shared_ptr<UIImage> PictureMaker::storedAsWanted(const PictureOrder& order) const {
    const auto stored = _thumbnails.thumbnail(order.pictureKey());
    const auto bitmap = stored ? stored->bitmap() : nullptr;
    return bitmap ? UIImage::imageWithBitmap(bitmap) : nullptr;
}

void PictureMaker::keep(const PictureOrder& order, const std::shared_ptr<UIImage>& picture) {
    if (!picture) {
        return;
    }
    _cache.store(order.pictureKey(), picture);
    constexpr double kLongestSide = ThumbnailStore::kLongestSide;
    const CGSize size = picture->size();
    const CGSize natural = sizeOf(order.asset);
    const bool isSmaller = size.width < natural.width && size.height < natural.height;
    if (isSmaller && !isCropped(order.wanted) && std::max(size.width, size.height) <= kLongestSide) {
        _thumbnails.store(order.pictureKey(), *picture);
    }
}

std::shared_ptr<UIImage> PictureMaker::made(const PictureOrder& order, const std::string& path) {
    const auto source = openedPicture(*order.file, path);
    if (!source) {
        return nullptr;
    }
    const CGSize natural = source->size();
    const CGSize small = placementOf(natural, kThumbnail).canvas;
    const bool wantsSmall = suffices(small, natural, order.wanted);
    // Decoded once: the larger of thumbnail and picture comes first, the smaller is made of it.
    const auto first = drawn(*source, natural, wantsSmall ? kThumbnail : order.wanted);
    if (!first) {
        return nullptr;
    }
    const auto picture = wantsSmall ? drawn(*first, natural, order.wanted) : first;
    const bool isSmallItself = small == natural;
    if (!isSmallItself && (wantsSmall || !isCropped(order.wanted))) {
        const auto thumbnail = wantsSmall ? first : drawn(*first, first->size(), kThumbnail);
        if (thumbnail) {
            _thumbnails.store(order.fileKey(), *thumbnail);
        }
    }
    keep(order, picture);
    return picture;
}

} // namespace exifcard
