#include "platform/foundation/PropertyListBounds.h"

#include "platform/foundation/CheckedArithmetic.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace exifcard::propertylist {
namespace {

/// A hundred times what the settings need; reading and writing so many takes a quarter of a second.
constexpr std::size_t kMostObjects = 50'000;
constexpr std::size_t kMostBytes = 4U << 20U;
/// The library frees a tree by recursion; this many levels take half a megabyte of stack.
constexpr std::size_t kMostXMLContainers = 4096;
/// The library moves the rest of the text down for each entity: this many bytes take a tenth of a second.
constexpr std::size_t kMostBytesMovedForEntities = 2'000'000'000;

constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kTrailerSize = 32;

/// What an object of the binary form comes to with all it refers to. The
/// library makes a shared object anew for each reference, so a few bytes can
/// stand for a billion objects.
struct Weight {
    std::size_t objects = 0; ///< 0 while it is not known.
    std::size_t bytes = 0;
    int height = 0;
};

struct Object {
    unsigned type = 0;       ///< The upper half of the marker.
    std::size_t size = 0;    ///< Bytes, characters or entries, by type.
    std::size_t content = 0; ///< Where the content begins.
};

class BinaryScale {
public:
    explicit BinaryScale(std::string_view bytes) : _bytes(bytes) {}

    bool isRootWithinBounds() {
        if (_bytes.size() < kHeaderSize + kTrailerSize) {
            return false;
        }
        const std::size_t trailer = _bytes.size() - kTrailerSize;
        _offsetSize = byteAt(trailer + 6);
        _referenceSize = byteAt(trailer + 7);
        _count = number(trailer + 8, 8).value_or(0);
        const std::size_t root = number(trailer + 16, 8).value_or(0);
        _table = number(trailer + 24, 8).value_or(0);
        if (_count > kMostObjects) {
            return false;
        }
        _weights.resize(_count);
        return weigh(root, 1).has_value();
    }

private:
    unsigned byteAt(std::size_t position) const { return static_cast<unsigned char>(_bytes[position]); }

    /// The big-endian number of `size` bytes at `position`.
    std::optional<std::size_t> number(std::size_t position, std::size_t size) const {
        const auto end = checkedSum(position, size);
        if (size == 0 || size > 8 || !end || *end > _bytes.size()) {
            return std::nullopt;
        }
        std::size_t value = 0;
        for (std::size_t index = position; index < *end; ++index) {
            value = value << 8U | byteAt(index);
        }
        return value;
    }

    std::optional<Object> objectAt(std::size_t index) const {
        const auto entry = checkedProduct(index, _offsetSize);
        const auto position = entry ? checkedSum(_table, *entry) : std::nullopt;
        const auto offset = position ? number(*position, _offsetSize) : std::nullopt;
        if (!offset || *offset >= _bytes.size()) {
            return std::nullopt;
        }
        const unsigned marker = byteAt(*offset);
        Object object = {marker >> 4U, marker & 0xfU, *offset + 1};
        const bool hasSizeAfterMarker = object.type >= 0x4 && object.type != 0x8 && object.size == 0xf;
        return hasSizeAfterMarker ? withSizeAfterMarker(object) : object;
    }

    /// The object of which the size is too big for the marker and stands as a number after it.
    std::optional<Object> withSizeAfterMarker(Object object) const {
        const auto marker = number(object.content, 1);
        if (!marker || *marker >> 4U != 0x1) {
            return std::nullopt;
        }
        const std::size_t width = std::size_t(1) << (*marker & 0xfU);
        const auto size = number(object.content + 1, width);
        if (!size) {
            return std::nullopt;
        }
        return Object{object.type, *size, object.content + 1 + width};
    }

    /// @param depth  How many containers hold the object, itself counted. The
    ///               bound on it also ends a circle of references.
    std::optional<Weight> weigh(std::size_t index, int depth) {
        if (index >= _count || depth > kMostNesting) {
            return std::nullopt;
        }
        Weight& weight = _weights[index];
        if (weight.objects == 0) {
            const auto object = objectAt(index);
            const auto weighed = object ? weighObject(*object, depth) : std::nullopt;
            if (!weighed) {
                return std::nullopt;
            }
            weight = *weighed;
        }
        return depth + weight.height <= kMostNesting ? std::optional(weight) : std::nullopt;
    }

    std::optional<Weight> weighObject(const Object& object, int depth) {
        switch (object.type) {
        case 0x0: // Booleans.
        case 0x1: // Integers.
        case 0x2: // Reals.
        case 0x3: // Dates.
        case 0x8: // References of a keyed archive.
            return Weight{1, 16, 0};
        case 0x4: // Data.
        case 0x5: // ASCII.
            return weighBytes(object.size, 1);
        case 0x6: // UTF-16, which becomes up to three bytes of UTF-8 a unit.
            return weighBytes(object.size, 3);
        case 0xa: // Arrays.
            return weighReferences(object.content, object.size, depth);
        case 0xd: // Dictionaries: all keys, then all values.
            return areKeysTexts(object) ? weighReferences(object.content, 2 * object.size, depth)
                                        : std::nullopt;
        default:
            return std::nullopt;
        }
    }

    bool areKeysTexts(const Object& dictionary) const {
        if (dictionary.size > kMostObjects) {
            return false;
        }
        for (std::size_t entry = 0; entry < dictionary.size; ++entry) {
            const auto reference = number(dictionary.content + entry * _referenceSize, _referenceSize);
            const auto key = reference ? objectAt(*reference) : std::nullopt;
            if (!key || !isTextWithoutZero(*key)) {
                return false;
            }
        }
        return true;
    }

    /// The library ends the program when it is asked for a key with a zero character in it.
    bool isTextWithoutZero(const Object& object) const {
        const std::size_t unit = object.type == 0x6 ? 2 : 1;
        if ((object.type != 0x5 && object.type != 0x6) || object.size > kMostBytes) {
            return false;
        }
        for (std::size_t index = 0; index < object.size; ++index) {
            if (number(object.content + index * unit, unit).value_or(0) == 0) {
                return false;
            }
        }
        return true;
    }

    static std::optional<Weight> weighBytes(std::size_t count, std::size_t bytesEach) {
        return count <= kMostBytes ? std::optional(Weight{1, count * bytesEach, 0}) : std::nullopt;
    }

    std::optional<Weight> weighReferences(std::size_t position, std::size_t count, int depth) {
        Weight sum = {1, 0, 0};
        for (std::size_t entry = 0; entry < count; ++entry) {
            const auto reference = number(position + entry * _referenceSize, _referenceSize);
            const auto weight = reference ? weigh(*reference, depth + 1) : std::nullopt;
            if (!weight) {
                return std::nullopt;
            }
            sum.objects += weight->objects;
            sum.bytes += weight->bytes;
            sum.height = std::max(sum.height, weight->height + 1);
            if (sum.objects > kMostObjects || sum.bytes > 3 * kMostBytes) {
                return std::nullopt;
            }
        }
        return sum;
    }

    std::string_view _bytes;
    std::size_t _offsetSize = 0;
    std::size_t _referenceSize = 0;
    std::size_t _count = 0;
    std::size_t _table = 0;
    std::vector<Weight> _weights;
};

std::size_t countOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (auto found = text.find(part); found != std::string_view::npos; found = text.find(part, found + 1)) {
        ++count;
    }
    return count;
}

/// Counts what looks like a tag, in comments too: more than the library can find.
bool isXMLWithinBounds(std::string_view text) {
    return text.size() <= kMostBytes && text.find('\0') == std::string_view::npos &&
           countOf(text, "<") <= 2 * kMostObjects &&
           countOf(text, "<array") + countOf(text, "<dict") <= kMostXMLContainers &&
           countOf(text, "&") * text.size() <= kMostBytesMovedForEntities;
}

} // namespace

bool isBinary(std::string_view bytes) {
    return bytes.starts_with("bplist00");
}

bool isWithinBounds(std::string_view bytes) {
    if (!isBinary(bytes)) {
        return isXMLWithinBounds(bytes);
    }
    return bytes.size() <= kMostBytes && BinaryScale(bytes).isRootWithinBounds();
}

} // namespace exifcard::propertylist
