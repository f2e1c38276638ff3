#pragma once

#include "platform/foundation/Date.h"
#include "platform/foundation/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace exifcard {

inline constexpr std::string_view AVMetadataCommonKeyTitle = "title";
inline constexpr std::string_view AVMetadataCommonKeyMake = "make";
inline constexpr std::string_view AVMetadataCommonKeyModel = "model";
inline constexpr std::string_view AVMetadataCommonKeySoftware = "software";
inline constexpr std::string_view AVMetadataCommonKeyLocation = "location";
inline constexpr std::string_view AVMetadataCommonKeyCreationDate = "creationDate";
inline constexpr std::string_view AVMetadataCommonKeyAuthor = "author";
inline constexpr std::string_view AVMetadataCommonKeyArtist = "artist";
inline constexpr std::string_view AVMetadataCommonKeyDescription = "description";
inline constexpr std::string_view AVMetadataCommonKeyCopyrights = "copyrights";
inline constexpr std::string_view AVMetadataCommonKeyAlbumName = "albumName";

inline constexpr std::string_view AVMetadataKeySpaceQuickTimeMetadata = "mdta";
inline constexpr std::string_view AVMetadataKeySpaceQuickTimeUserData = "udta";

/// One entry of a video's metadata.
struct AVMetadataItem {
    std::string keySpace;
    std::string key;       ///< The full name in its key space: "com.apple.quicktime.model".
    std::string commonKey; ///< The name that all key spaces share; empty for what has none.
    Value value;
    /// Of an item that covers a range of dates; a file's items never do.
    std::optional<Date> startDate;

    /// The value as text; nothing for a value that has none.
    std::optional<std::string> stringValue() const {
        const bool hasText = value.text() != nullptr || value.isNumber();
        return hasText ? std::optional(value.description()) : std::nullopt;
    }
};

} // namespace exifcard
