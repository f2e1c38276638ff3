#pragma once

#include "platform/foundation/Dictionary.h"
#include "platform/photos/PHError.h"
#include "platform/photos/RenditionFile.h"
#include "platform/photos/RequestTable.h"

#include <optional>
#include <string_view>

namespace exifcard {

/// The keys under which a kind of request tells how it went.
struct RequestInfoKeys {
    std::string_view isInCloud;
    std::string_view wasCancelled;
    std::string_view error;
};
extern const RequestInfoKeys kImageInfoKeys;
extern const RequestInfoKeys kEditingInputInfoKeys;

Value valueOfError(const PHError& error);
/// Whether the bytes lie elsewhere, whether the request was cancelled, and what went wrong.
void tellOutcome(
    Dictionary& info, const RequestInfoKeys& keys, const BroughtFile& file, const RequestState& request);

} // namespace exifcard
