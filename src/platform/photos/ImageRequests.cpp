#include "platform/photos/ImageRequests.h"

#include "platform/avfoundation/AVAsset.h"
#include "platform/foundation/Identifiers.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/photos/Authorization.h"
#include "platform/photos/PHImageInfoKeys.h"
#include "platform/photos/PhotoCatalogue.h"
#include "platform/photos/RequestInfo.h"

#include <fmt/format.h>

#include <utility>

namespace exifcard {
namespace {

std::optional<StoredFile> fileFor(const PHAsset& asset, PHImageRequestOptionsVersion version) {
    if (!isLibraryReadable()) {
        return std::nullopt;
    }
    return renditionOf(filesOfAsset(*PhotoCatalogue::shared(), asset.localIdentifier), version);
}

DictionaryPtr infoOf(
    const RequestState& state, const std::optional<StoredFile>& file, const BroughtFile& brought) {
    auto info = Dictionary::make({{std::string(kPHImageResultRequestIDKey), state.number}});
    tellOutcome(*info, kImageInfoKeys, brought, state);
    if (file) {
        info->setObjectForKey(file->uniformTypeIdentifier, kPHImageFileUTIKey);
    }
    if (brought.path) {
        info->setObjectForKey(URL::fileURLWithPath(*brought.path).absoluteString(), kPHImageFileURLKey);
    }
    return info;
}

BroughtFile brought(const std::optional<StoredFile>& file,
    bool isNetworkAllowed,
    const PHProgressHandler& handler,
    const RequestState& state) {
    if (!file) {
        return {
            .error = PHError{PHErrorCode::MissingResource, "The library holds no such file of the asset."}};
    }
    return broughtFile(*file, isNetworkAllowed, [&](double fraction, const std::optional<PHError>& error) {
        bool stop = false;
        if (handler) {
            const auto info = Dictionary::make({{std::string(kPHImageResultRequestIDKey), state.number}});
            handler(fraction, error, stop, info);
        }
        return !stop && !state.isCancelled;
    });
}

BroughtFile withError(BroughtFile file, PHErrorCode code, std::string_view description) {
    if (!file.isElsewhere && !file.error) {
        file.error = PHError{code, std::string(description)};
    }
    return file;
}

/// From the catalogue, or else from the file.
UIImageOrientation orientationOf(const StoredFile& file, const Data& data) {
    if (file.orientation != 0) {
        return imageOrientationFromExif(file.orientation);
    }
    const auto properties = CGImageSourceCopyPropertiesAtIndex(*CGImageSourceCreateWithData(data), 0);
    return imageOrientationFromExif(
        properties ? properties->objectForKey(kCGImagePropertyOrientation).integerValue() : 1);
}

} // namespace

ImageRequests::ImageRequests()
    : _queue(DispatchQueue::makeConcurrent(fmt::format("{}.imageManager", kQueueLabelPrefix))) {
}

PHImageRequestID ImageRequests::requestImage(const PHAsset& asset,
    const WantedPicture& wanted,
    const PHImageRequestOptions& options,
    PHImageResultHandler handler) {
    auto request = std::make_shared<PictureRequest>();
    request->state = _table.begin();
    request->order = {asset, wanted, std::nullopt};
    request->options = options;
    request->handler = std::move(handler);
    const auto run = [requests = shared_from_this(), request] {
        request->order.file = fileFor(request->order.asset, request->options.version);
        requests->runPicture(request);
    };
    if (options.synchronous) {
        run();
    } else {
        _queue->async(run);
    }
    return request->state->number;
}

void ImageRequests::runPicture(const PictureRequestPtr& request) {
    using Mode = PHImageRequestOptionsDeliveryMode;
    const Mode mode = request->options.synchronous ? Mode::HighQualityFormat : request->options.deliveryMode;
    if (request->state->isCancelled) {
        finish(request, nullptr, /*isDegraded=*/false, {});
        return;
    }
    const PictureMaker::Found found = _pictures.found(request->order);
    if (found.picture && (!found.isDegraded || mode == Mode::FastFormat)) {
        finish(request, found.picture, found.isDegraded, {});
        return;
    }
    if (found.picture && mode == Mode::Opportunistic) {
        deliver(request, found.picture, /*isDegraded=*/true);
    }
    BroughtFile file = brought(request->order.file, request->options.networkAccessAllowed,
        request->options.progressHandler, *request->state);
    std::shared_ptr<UIImage> picture;
    if (file.path && !request->state->isCancelled) {
        picture = _pictures.made(request->order, *file.path);
    }
    if (!picture && !request->state->isCancelled) {
        file = withError(std::move(file), PHErrorCode::InvalidResource, "The file is gone or is no picture.");
    }
    finish(request, picture, /*isDegraded=*/false, file);
}

void ImageRequests::deliver(
    const PictureRequestPtr& request, const std::shared_ptr<UIImage>& picture, bool isDegraded) {
    DispatchQueue::mainQueue().async([request, picture, isDegraded] {
        if (!request->state->isCancelled) {
            const auto info = infoOf(*request->state, request->order.file, {});
            info->setObjectForKey(isDegraded ? 1 : 0, kPHImageResultIsDegradedKey);
            request->handler(picture, info);
        }
    });
}

void ImageRequests::finish(const PictureRequestPtr& request,
    const std::shared_ptr<UIImage>& picture,
    bool isDegraded,
    const BroughtFile& file) {
    const auto tell = [requests = shared_from_this(), request, picture, isDegraded, file] {
        requests->_table.end(*request->state);
        const auto info = infoOf(*request->state, request->order.file, file);
        info->setObjectForKey(isDegraded ? 1 : 0, kPHImageResultIsDegradedKey);
        request->handler(request->state->isCancelled ? nullptr : picture, info);
    };
    if (request->options.synchronous) {
        tell();
    } else {
        DispatchQueue::mainQueue().async(tell);
    }
}

PHImageRequestID ImageRequests::requestData(
    const PHAsset& asset, const PHImageRequestOptions& options, PHImageDataResultHandler handler) {
    const auto state = _table.begin();
    const auto run = [requests = shared_from_this(), asset, state, options, handler = std::move(handler)] {
        requests->runData(state, fileFor(asset, options.version), options, handler);
    };
    if (options.synchronous) {
        run();
    } else {
        _queue->async(run);
    }
    return state->number;
}

void ImageRequests::runData(const RequestStatePtr& state,
    const std::optional<StoredFile>& file,
    const PHImageRequestOptions& options,
    const PHImageDataResultHandler& handler) {
    BroughtFile found = brought(file, options.networkAccessAllowed, options.progressHandler, *state);
    auto data = found.path ? Data::mappedFile(*found.path) : std::nullopt;
    if (!data && !state->isCancelled) {
        found =
            withError(std::move(found), PHErrorCode::MissingResource, "The file is no longer in its place.");
    }
    const auto orientation = data ? orientationOf(*file, *data) : UIImageOrientation::Up;
    _table.end(*state);
    if (state->isCancelled) {
        data.reset();
    }
    const auto info = infoOf(*state, file, found);
    info->setObjectForKey(0, kPHImageResultIsDegradedKey);
    info->setObjectForKey(static_cast<int>(orientation), kPHImageFileOrientationKey);
    handler(data, data ? file->uniformTypeIdentifier : std::string(), orientation, info);
}

PHImageRequestID ImageRequests::requestVideo(
    const PHAsset& asset, const PHVideoRequestOptions& options, PHVideoResultHandler handler) {
    const auto state = _table.begin();
    _queue->async([requests = shared_from_this(), asset, state, options, handler = std::move(handler)] {
        const bool isCurrent = options.version == PHVideoRequestOptionsVersion::Current;
        const auto file = fileFor(asset,
            isCurrent ? PHImageRequestOptionsVersion::Current : PHImageRequestOptionsVersion::Original);
        BroughtFile found = brought(file, options.networkAccessAllowed, options.progressHandler, *state);
        auto video = found.path ? AVURLAsset::assetWithURL(URL::fileURLWithPath(*found.path)) : nullptr;
        if (!video && !state->isCancelled) {
            found =
                withError(std::move(found), PHErrorCode::InvalidResource, "The file is gone or is no video.");
        }
        requests->_table.end(*state);
        handler(state->isCancelled ? nullptr : video, infoOf(*state, file, found));
    });
    return state->number;
}

void ImageRequests::startCaching(const PHAsset& asset, const WantedPicture& wanted) {
    PictureOrder order{asset, wanted, fileFor(asset, wanted.version)};
    {
        const std::scoped_lock lock(_cachingMutex);
        _caching.insert(order.pictureKey());
    }
    _queue->async([requests = shared_from_this(), order = std::move(order)] { requests->cache(order); });
}

void ImageRequests::cache(const PictureOrder& order) {
    {
        const std::scoped_lock lock(_cachingMutex);
        if (_caching.erase(order.pictureKey()) == 0) {
            return; // Stopped meanwhile.
        }
    }
    const PictureMaker::Found found = _pictures.found(order);
    const auto path = order.file ? order.file->localFile() : std::nullopt;
    if ((!found.picture || found.isDegraded) && path) {
        _pictures.made(order, *path);
    }
}

void ImageRequests::stopCaching(const PHAsset& asset, const WantedPicture& wanted) {
    const PictureOrder order{asset, wanted, fileFor(asset, wanted.version)};
    _pictures.forget(order);
    const std::scoped_lock lock(_cachingMutex);
    _caching.erase(order.pictureKey());
}

void ImageRequests::stopCachingAll() {
    _pictures.forgetAll();
    const std::scoped_lock lock(_cachingMutex);
    _caching.clear();
}

} // namespace exifcard
