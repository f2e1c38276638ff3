#include "platform/photos/PHContentEditingInput.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/photos/Authorization.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PhotoCatalogue.h"
#include "platform/photos/RequestInfo.h"
#include "platform/photos/SerialRequests.h"

#include <algorithm>
#include <utility>

namespace exifcard {
namespace {

SerialRequests& requests() {
    static auto* const all = new SerialRequests; // Requests may end after everything else.
    return *all;
}

std::shared_ptr<const PHContentEditingInput> inputOf(
    const PHAsset& asset, const StoredFile& file, const std::string& path) {
    auto input = std::make_shared<PHContentEditingInput>();
    if (asset.mediaType != PHAssetMediaType::Video) {
        input->fullSizeImageURL = URL::fileURLWithPath(path);
    }
    input->uniformTypeIdentifier = file.uniformTypeIdentifier;
    input->fullSizeImageOrientation = std::max(1, file.orientation);
    return input;
}

} // namespace

PHContentEditingInputRequestID requestContentEditingInputWithOptions(const PHAsset& asset,
    const PHContentEditingInputRequestOptions& options,
    PHContentEditingInputHandler completionHandler) {
    const auto state = requests().table.begin();
    requests().queue.addOperationWithBlock([state, asset, options,
                                               completionHandler = std::move(completionHandler)] {
        const auto file = isLibraryReadable()
                              ? renditionOf(filesOfAsset(*PhotoCatalogue::shared(), asset.localIdentifier),
                                    PHImageRequestOptionsVersion::Current)
                              : std::nullopt;
        BroughtFile brought{
            .error = PHError{PHErrorCode::MissingResource, "The library holds no such file."}};
        if (file) {
            brought =
                broughtFile(*file, options.networkAccessAllowed, [&](double fraction, const auto& /*error*/) {
                    bool stop = false;
                    if (options.progressHandler) {
                        options.progressHandler(fraction, stop);
                    }
                    return !stop && !state->isCancelled;
                });
        }
        requests().table.end(*state);
        const auto info = Dictionary::make();
        tellOutcome(*info, kEditingInputInfoKeys, brought, *state);
        const bool isThere = brought.path && !state->isCancelled;
        completionHandler(isThere ? inputOf(asset, *file, *brought.path) : nullptr, info);
    });
    return state->number;
}

void cancelContentEditingInputRequest(PHContentEditingInputRequestID request) {
    requests().table.cancel(request);
}

} // namespace exifcard
