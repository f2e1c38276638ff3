#pragma once

#include "platform/foundation/Data.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace exifcard {

/// The translated texts of one language, read from a compiled catalogue (.mo).
/// Read here and not through the C library, which refuses to translate on a
/// machine without the locale and believes what stands in the file.
///
/// Immutable, so any number of threads may ask.
class MessageCatalogue {
public:
    /// @param file  Untrusted; copied.
    /// @return Nothing for what is no catalogue. Entries that lie outside the
    ///         file or are no UTF-8 are left out.
    static std::unique_ptr<const MessageCatalogue> fromData(const Data& file);

    MessageCatalogue(const MessageCatalogue&) = delete;
    MessageCatalogue& operator=(const MessageCatalogue&) = delete;

    /// The translation, or nothing when there is none. Valid as long as this object.
    std::optional<std::string_view> textForKey(std::string_view key) const;
    /// The same for a format: nothing also when the translation takes other
    /// arguments than the key.
    std::optional<std::string_view> formatForKey(std::string_view key) const;

private:
    struct Translation {
        std::string_view text;
        bool fitsAsFormat = false;
    };

    explicit MessageCatalogue(std::string bytes) : _bytes(std::move(bytes)) {}
    bool readEntries();

    const std::string _bytes;
    std::unordered_map<std::string_view, Translation> _translations; ///< Views of `_bytes`.
};

} // namespace exifcard
