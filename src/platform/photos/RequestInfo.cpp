#include "platform/photos/RequestInfo.h"

#include "platform/photos/PHImageInfoKeys.h"

namespace exifcard {

const RequestInfoKeys kImageInfoKeys{kPHImageResultIsInCloudKey, kPHImageCancelledKey, kPHImageErrorKey};
const RequestInfoKeys kEditingInputInfoKeys{kPHContentEditingInputResultIsInCloudKey,
    kPHContentEditingInputCancelledKey, kPHContentEditingInputErrorKey};

Value valueOfError(const PHError& error) {
    return Dictionary::make({
        {"domain", kPHPhotosErrorDomain},
        {"code", static_cast<std::int64_t>(error.code)},
        {"description", error.localizedDescription},
    });
}

void tellOutcome(
    Dictionary& info, const RequestInfoKeys& keys, const BroughtFile& file, const RequestState& request) {
    info.setObjectForKey(file.isElsewhere ? 1 : 0, keys.isInCloud);
    if (request.isCancelled || file.wasCancelled) {
        info.setObjectForKey(1, keys.wasCancelled);
    }
    if (file.error && !file.wasCancelled) {
        info.setObjectForKey(valueOfError(*file.error), keys.error);
    }
}

} // namespace exifcard
