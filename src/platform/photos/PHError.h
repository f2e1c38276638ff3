#pragma once

#include <string>
#include <string_view>

namespace exifcard {

inline constexpr std::string_view kPHPhotosErrorDomain = "PHPhotosErrorDomain";

enum class PHErrorCode : int {
    InternalError = -1,
    UserCancelled = 3072,
    NetworkAccessRequired = 3164,
    NetworkError = 3169,
    IdentifierNotFound = 3201,
    ChangeNotSupported = 3300,
    OperationInterrupted = 3301,
    InvalidResource = 3302,
    MissingResource = 3303,
    NotEnoughSpace = 3305,
    AccessRestricted = 3310,
    AccessUserDenied = 3311
};

/// Why something about the library did not come about.
struct PHError {
    PHErrorCode code = PHErrorCode::InternalError;
    std::string localizedDescription; ///< One sentence for the log or the user.
};

} // namespace exifcard
