#include "platform/foundation/PropertyListBounds.h"

#include "platform/foundation/BinaryPropertyList.h"

#include <algorithm>
#include <cstddef>
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

/// What an object of the binary form comes to with all it refers to. The
/// library makes a shared object anew for each reference, so a few bytes can
/// stand for a billion objects.
struct Weight {
    std::size_t objects = 0; ///< 0 while it is not known.
    std::size_t bytes = 0;
    int height = 0;
};

class BinaryScale {
public:
    explicit BinaryScale(std::string_view bytes) : _list(bytes) {}

    bool isRootWithinBounds() {
        if (_list.count() > kMostObjects) {
            return false;
        }
        _weights.resize(_list.count());
        return weigh(_list.root(), 1).has_value();
    }

private:
    using Kind = BinaryPropertyList::Kind;
    using Object = BinaryPropertyList::Object;

    /// @param depth  How many containers hold the object, itself counted. The
    ///               bound on it also ends a circle of references.
    std::optional<Weight> weigh(std::size_t index, int depth) {
        if (index >= _weights.size() || depth > kMostNesting) {
            return std::nullopt;
        }
        Weight& weight = _weights[index];
        if (weight.objects == 0) {
            const auto object = _list.objectAt(index);
            const auto weighed = object ? weighObject(*object, depth) : std::nullopt;
            if (!weighed) {
                return std::nullopt;
            }
            weight = *weighed;
        }
        return depth + weight.height <= kMostNesting ? std::optional(weight) : std::nullopt;
    }

    std::optional<Weight> weighObject(const Object& object, int depth) {
        switch (object.kind) {
        case Kind::Simple:
        case Kind::Integer:
        case Kind::Real:
        case Kind::Date:
        case Kind::Reference:
            return Weight{1, 16, 0};
        case Kind::Data:
        case Kind::ASCII:
            return weighBytes(object.size, 1);
        case Kind::UTF16: // Becomes up to three bytes of UTF-8 a unit.
            return weighBytes(object.size, 3);
        case Kind::Array:
            return weighElements(object, object.size, depth);
        case Kind::Dictionary:
            return areKeysTexts(object) ? weighElements(object, 2 * object.size, depth) : std::nullopt;
        default:
            return std::nullopt;
        }
    }

    bool areKeysTexts(const Object& dictionary) const {
        if (dictionary.size > kMostObjects) {
            return false;
        }
        for (std::size_t place = 0; place < dictionary.size; ++place) {
            const auto index = _list.elementAt(dictionary, place);
            const auto key = index ? _list.objectAt(*index) : std::nullopt;
            if (!key || !isTextWithoutZero(*key)) {
                return false;
            }
        }
        return true;
    }

    /// The library ends the program when it is asked for a key with a zero character in it.
    bool isTextWithoutZero(const Object& object) const {
        const auto content = _list.contentOf(object);
        const std::size_t unit = object.kind == Kind::UTF16 ? 2 : 1;
        if (!object.isText() || content.size() != object.size * unit) {
            return false;
        }
        for (std::size_t index = 0; index < content.size(); index += unit) {
            if (std::ranges::count(content.substr(index, unit), '\0') == static_cast<std::ptrdiff_t>(unit)) {
                return false;
            }
        }
        return true;
    }

    static std::optional<Weight> weighBytes(std::size_t count, std::size_t bytesEach) {
        return count <= kMostBytes ? std::optional(Weight{1, count * bytesEach, 0}) : std::nullopt;
    }

    std::optional<Weight> weighElements(const Object& container, std::size_t count, int depth) {
        Weight sum = {1, 0, 0};
        for (std::size_t place = 0; place < count; ++place) {
            const auto index = _list.elementAt(container, place);
            const auto weight = index ? weigh(*index, depth + 1) : std::nullopt;
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

    BinaryPropertyList _list;
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
