#include "platform/avfoundation/MetadataEntries.h"

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

using Entry = std::pair<std::string, std::string>;

constexpr std::string_view kQuickTimePrefix = "com.apple.quicktime.";

struct CommonKey {
    std::string_view name; ///< After the prefix, or of user data.
    std::string_view commonKey;
};

constexpr CommonKey kQuickTimeKeys[] = {
    {"title", AVMetadataCommonKeyTitle},
    {"make", AVMetadataCommonKeyMake},
    {"model", AVMetadataCommonKeyModel},
    {"software", AVMetadataCommonKeySoftware},
    {"location.ISO6709", AVMetadataCommonKeyLocation},
    {"creationdate", AVMetadataCommonKeyCreationDate},
    {"author", AVMetadataCommonKeyAuthor},
    {"artist", AVMetadataCommonKeyArtist},
    {"description", AVMetadataCommonKeyDescription},
    {"copyright", AVMetadataCommonKeyCopyrights},
    {"album", AVMetadataCommonKeyAlbumName},
};

constexpr CommonKey kUserDataKeys[] = {
    {"title", AVMetadataCommonKeyTitle},
    {"make", AVMetadataCommonKeyMake},
    {"model", AVMetadataCommonKeyModel},
    {"encoder", AVMetadataCommonKeySoftware}, // So the library names "©swr".
    {"location", AVMetadataCommonKeyLocation},
    {"date", AVMetadataCommonKeyCreationDate},
    {"author", AVMetadataCommonKeyAuthor},
    {"artist", AVMetadataCommonKeyArtist},
    {"description", AVMetadataCommonKeyDescription},
    {"copyright", AVMetadataCommonKeyCopyrights},
    {"album", AVMetadataCommonKeyAlbumName},
};

/// What the container says of itself.
constexpr std::string_view kNoMetadata[] = {
    "major_brand", "minor_version", "compatible_brands", "creation_time"};

bool hasLetterCode(std::string_view key) {
    constexpr std::size_t kSuffix = 4; // A hyphen and three letters.
    return key.size() > kSuffix && key[key.size() - kSuffix] == '-';
}

bool isLanguageCopy(const Entry& entry, std::span<const Entry> entries) {
    if (!hasLetterCode(entry.first)) {
        return false;
    }
    const std::string_view key = std::string_view(entry.first).substr(0, entry.first.size() - 4);
    return std::ranges::any_of(entries, [key](const Entry& other) { return other.first == key; });
}

/// A multiplexer's own mark is not the camera's software.
bool isWritersMark(const Entry& entry) {
    return entry.first == "encoder" && (entry.second.starts_with("Lavf") || entry.second.starts_with("Lavc"));
}

bool isMetadata(const Entry& entry, std::span<const Entry> entries) {
    return std::ranges::count(kNoMetadata, entry.first) == 0 && !isWritersMark(entry) &&
           !isLanguageCopy(entry, entries);
}

std::string commonKeyOf(std::span<const CommonKey> keys, std::string_view name) {
    const auto key = std::ranges::find(keys, name, &CommonKey::name);
    return key != keys.end() ? std::string(key->commonKey) : std::string();
}

AVMetadataItem itemOf(const Entry& entry) {
    const std::string_view key = entry.first;
    AVMetadataItem item;
    item.key = entry.first;
    item.value = entry.second;
    if (key.starts_with(kQuickTimePrefix)) {
        item.commonKey = commonKeyOf(kQuickTimeKeys, key.substr(kQuickTimePrefix.size()));
    } else {
        item.commonKey = commonKeyOf(kUserDataKeys, key);
    }
    const bool isQuickTime = key.find('.') != std::string_view::npos; // Only such names are domains.
    item.keySpace = isQuickTime ? AVMetadataKeySpaceQuickTimeMetadata : AVMetadataKeySpaceQuickTimeUserData;
    return item;
}

} // namespace

std::vector<AVMetadataItem> metadataItems(std::span<const Entry> entries) {
    std::vector<AVMetadataItem> items;
    for (const Entry& entry : entries) {
        if (isMetadata(entry, entries)) {
            items.push_back(itemOf(entry));
        }
    }
    // Clang 14 does not take what the form for ranges answers.
    std::stable_partition(items.begin(), items.end(),
        [](const AVMetadataItem& item) { return item.keySpace == AVMetadataKeySpaceQuickTimeMetadata; });
    return items;
}

} // namespace exifcard
