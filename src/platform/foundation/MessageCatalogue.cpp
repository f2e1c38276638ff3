#include "platform/foundation/MessageCatalogue.h"

#include "platform/foundation/FormatString.h"
#include "platform/foundation/UTF8.h"

#include <cstring>

namespace exifcard {
namespace {

/// All texts of the system take some ten thousand bytes.
constexpr std::size_t kLargestCatalogue = 4'000'000;
constexpr std::uint32_t kMostEntries = 20'000;

constexpr std::uint32_t kMagic = 0x950412DE;
constexpr std::size_t kCountOffset = 8;
constexpr std::size_t kKeyTableOffset = 12;
constexpr std::size_t kTextTableOffset = 16;
constexpr std::size_t kTableEntrySize = 8;

/// Reads the numbers and texts of a catalogue, in the byte order of the machine that compiled it.
class CatalogueReader {
public:
    explicit CatalogueReader(std::string_view bytes) : _bytes(bytes) {}

    /// False when the file does not begin as a catalogue does.
    bool readByteOrder() {
        const auto magic = number(0);
        _isSwapped = magic == __builtin_bswap32(kMagic);
        return magic == kMagic || _isSwapped;
    }

    std::optional<std::uint32_t> number(std::size_t offset) const {
        std::uint32_t value = 0;
        if (offset > _bytes.size() || _bytes.size() - offset < sizeof value) {
            return std::nullopt;
        }
        std::memcpy(&value, _bytes.data() + offset, sizeof value);
        return _isSwapped ? __builtin_bswap32(value) : value;
    }

    /// The text of which length and offset stand at `entryOffset`, up to its
    /// first zero byte: a plural's other forms follow there.
    std::optional<std::string_view> text(std::size_t entryOffset) const {
        const auto length = number(entryOffset);
        const auto offset = number(entryOffset + sizeof(std::uint32_t));
        if (!length || !offset || *offset > _bytes.size() || _bytes.size() - *offset < *length) {
            return std::nullopt;
        }
        const auto text = _bytes.substr(*offset, *length);
        return text.substr(0, text.find('\0'));
    }

private:
    std::string_view _bytes;
    bool _isSwapped = false;
};

} // namespace

std::unique_ptr<const MessageCatalogue> MessageCatalogue::fromData(const Data& file) {
    if (file.size() > kLargestCatalogue) {
        return nullptr;
    }
    std::unique_ptr<MessageCatalogue> catalogue(new MessageCatalogue(std::string(file.text())));
    return catalogue->readEntries() && !file.wasCutShort() ? std::move(catalogue) : nullptr;
}

bool MessageCatalogue::readEntries() {
    CatalogueReader reader(_bytes);
    if (!reader.readByteOrder()) {
        return false;
    }
    const auto count = reader.number(kCountOffset);
    const auto keyTable = reader.number(kKeyTableOffset);
    const auto textTable = reader.number(kTextTableOffset);
    if (!count || *count > kMostEntries || !keyTable || !textTable) {
        return false;
    }
    _translations.reserve(*count);
    for (std::size_t index = 0; index < *count; ++index) {
        const auto key = reader.text(*keyTable + index * kTableEntrySize);
        const auto text = reader.text(*textTable + index * kTableEntrySize);
        // The empty key holds the catalogue's own description.
        if (key && text && !key->empty() && !text->empty() && isValidUTF8(*text)) {
            _translations.try_emplace(*key, Translation{*text, formatsAgree(*key, *text)});
        }
    }
    return true;
}

std::optional<std::string_view> MessageCatalogue::textForKey(std::string_view key) const {
    const auto found = _translations.find(key);
    return found != _translations.end() ? std::optional(found->second.text) : std::nullopt;
}

std::optional<std::string_view> MessageCatalogue::formatForKey(std::string_view key) const {
    const auto found = _translations.find(key);
    return found != _translations.end() && found->second.fitsAsFormat ? std::optional(found->second.text)
                                                                      : std::nullopt;
}

} // namespace exifcard
