#include "platform/photos/PHAssetResourceManager.h"

#include "platform/photos/Authorization.h"
#include "platform/photos/PHAssetResource.h"
#include "platform/photos/PhotoCatalogue.h"
#include "platform/photos/RenditionFile.h"
#include "platform/photos/SerialRequests.h"

#include <algorithm>
#include <utility>

namespace exifcard {
namespace {

/// Small enough to stop soon after a cancel.
constexpr std::size_t kChunkInBytes = 256 * 1024;

SerialRequests& requests() {
    static auto* const all = new SerialRequests; // Requests may end after everything else.
    return *all;
}

struct ResourceRequest {
    PHAssetResource resource;
    PHAssetResourceRequestOptions options;
    std::function<void(const Data& chunk)> handler;
};

std::optional<PHError> cancelled() {
    return PHError{PHErrorCode::UserCancelled, "The request was cancelled."};
}

/// The whole file, or the video within it.
Data partOf(const PHAssetResource& resource, const Data& file) {
    if (resource.embeddedLength <= 0) {
        return file;
    }
    return file.slice(
        static_cast<std::size_t>(resource.embeddedOffset), static_cast<std::size_t>(resource.embeddedLength));
}

std::optional<PHError> handOut(const ResourceRequest& request, const Data& bytes, const RequestState& state) {
    for (std::size_t offset = 0; offset < bytes.size(); offset += kChunkInBytes) {
        if (state.isCancelled) {
            return cancelled();
        }
        request.handler(bytes.slice(offset, kChunkInBytes));
    }
    return std::nullopt;
}

std::optional<PHError> run(const ResourceRequest& request, const RequestState& state) {
    const auto file = isLibraryReadable()
                          ? fileOfNumber(*PhotoCatalogue::shared(), request.resource.fileNumber)
                          : std::nullopt;
    if (!file) {
        return PHError{PHErrorCode::MissingResource, "The library holds no such file."};
    }
    const BroughtFile brought =
        broughtFile(*file, request.options.networkAccessAllowed, [&](double fraction, const auto& /*error*/) {
            if (request.options.progressHandler) {
                request.options.progressHandler(fraction);
            }
            return !state.isCancelled;
        });
    if (brought.error || state.isCancelled) {
        return state.isCancelled ? cancelled() : brought.error;
    }
    if (brought.isElsewhere) {
        return PHError{PHErrorCode::NetworkAccessRequired, "The file lies elsewhere."};
    }
    const auto bytes = brought.path ? Data::mappedFile(*brought.path) : std::nullopt;
    if (!bytes) {
        return PHError{PHErrorCode::MissingResource, "The file is no longer in its place."};
    }
    return handOut(request, partOf(request.resource, *bytes), state);
}

} // namespace

PHAssetResourceManager& PHAssetResourceManager::defaultManager() {
    static auto& manager = *new PHAssetResourceManager; // Requests may end after everything else.
    return manager;
}

PHAssetResourceDataRequestID PHAssetResourceManager::requestDataForAssetResource(
    const PHAssetResource& resource,
    const PHAssetResourceRequestOptions& options,
    std::function<void(const Data& chunk)> dataReceivedHandler,
    std::function<void(const std::optional<PHError>& error)> completionHandler) {
    const auto state = requests().table.begin();
    requests().queue.addOperationWithBlock(
        [state, request = ResourceRequest{resource, options, std::move(dataReceivedHandler)},
            completionHandler = std::move(completionHandler)] {
            const auto error = run(request, *state);
            requests().table.end(*state);
            completionHandler(error);
        });
    return state->number;
}

void PHAssetResourceManager::cancelDataRequest(PHAssetResourceDataRequestID request) {
    requests().table.cancel(request);
}

} // namespace exifcard
