#include "platform/foundation/PropertyListTree.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/PropertyListBounds.h"

#include <plist/plist.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace exifcard::propertylist {
namespace {

/// The epoch of dates in property lists, 2001-01-01 00:00:00 UTC.
constexpr double kEpochSince1970 = 978'307'200;
constexpr double kMicroseconds = 1e6;

struct Freeing {
    void operator()(void* memory) const {
        std::free(memory); // NOLINT(cppcoreguidelines-no-malloc): what the C library gave.
    }
};
using OwnedText = std::unique_ptr<char, Freeing>;
using Iterator = std::unique_ptr<void, Freeing>;

/// While it lives, the library reads and writes numbers with a point, whatever
/// locale a toolkit has set for the program.
class NumbersWithPoint {
public:
    NumbersWithPoint() : _previous(uselocale(plainLocale())) {}
    ~NumbersWithPoint() { uselocale(_previous); }
    NumbersWithPoint(const NumbersWithPoint&) = delete;
    NumbersWithPoint& operator=(const NumbersWithPoint&) = delete;

private:
    static locale_t plainLocale() {
        static auto* const locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t _previous;
};

bool isXMLCharacter(char16_t unit) {
    return unit >= 0x20 ? unit != 0xfffe && unit != 0xffff : unit == '\t' || unit == '\n' || unit == '\r';
}

Date dateFromNode(void* node) {
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    // The library answers a number without sign, and any number for a date beyond its range.
    const double fraction = std::clamp(microseconds / kMicroseconds, 0.0, 1.0);
    return Date{kEpochSince1970 + seconds + std::copysign(fraction, seconds)};
}

Tree nodeFromDate(Date date) {
    using Limits = std::numeric_limits<std::int32_t>;
    const double sinceEpoch = date.secondsSince1970 - kEpochSince1970;
    const double seconds = std::clamp<double>(std::floor(sinceEpoch), Limits::min(), Limits::max());
    const double fraction = std::clamp(sinceEpoch - seconds, 0.0, 1.0);
    return Tree(plist_new_date(
        static_cast<std::int32_t>(seconds), static_cast<std::int32_t>(std::round(fraction * kMicroseconds))));
}

Value textFromNode(void* node) {
    std::uint64_t length = 0;
    const char* const text = plist_get_string_ptr(node, &length);
    return text != nullptr ? std::string(text, length) : std::string();
}

Value dataFromNode(void* node) {
    std::uint64_t length = 0;
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(plist_get_data_ptr(node, &length));
    return bytes != nullptr ? Data::fromBytes(std::vector(bytes, bytes + length)) : Data();
}

Value uidFromNode(void* node) {
    std::uint64_t number = 0;
    plist_get_uid_val(node, &number);
    return Dictionary::make({{"CF$UID", static_cast<std::int64_t>(number)}});
}

Value scalarFromNode(void* node) {
    std::uint8_t truth = 0;
    std::uint64_t integer = 0;
    double real = 0;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN:
        plist_get_bool_val(node, &truth);
        return truth != 0;
    case PLIST_UINT:
        plist_get_uint_val(node, &integer);
        return static_cast<std::int64_t>(integer);
    case PLIST_REAL:
        plist_get_real_val(node, &real);
        return real;
    case PLIST_STRING:
        return textFromNode(node);
    case PLIST_DATE:
        return dateFromNode(node);
    case PLIST_DATA:
        return dataFromNode(node);
    case PLIST_UID:
        return uidFromNode(node);
    default:
        return {};
    }
}

// NOLINTNEXTLINE(misc-no-recursion): a tree is nested at most kMostNesting deep.
Value arrayFromNode(void* node) {
    auto array = Array::make();
    for (void* const element : elementsOfNode(node)) {
        array->addObject(valueFromNode(element));
    }
    return array;
}

// NOLINTNEXTLINE(misc-no-recursion): a tree is nested at most kMostNesting deep.
Value dictionaryFromNode(void* node) {
    auto dictionary = Dictionary::make();
    auto entries = entriesOfNode(node);
    std::ranges::stable_sort(entries, {}, &Entry::first); // In that order a dictionary fills in no time.
    for (const auto& [key, entry] : entries) {
        dictionary->setObjectForKey(valueFromNode(entry), key);
    }
    return dictionary;
}

void mendText(void* node) {
    std::uint64_t length = 0;
    const char* const text = plist_get_string_ptr(node, &length);
    const std::string_view view(text != nullptr ? text : "", text != nullptr ? length : 0);
    if (const auto wellFormed = wellFormedText(view); wellFormed != view) {
        plist_set_string_val(node, wellFormed.c_str());
    }
}

void mendKey(void* entry, const std::string& key) {
    if (const auto wellFormed = wellFormedText(key); wellFormed != key) {
        plist_set_key_val(plist_dict_item_get_key(entry), wellFormed.c_str());
    }
}

/// Makes every text below the node well formed: the library's writers trust
/// them, and malformed ones change with each writing.
/// @return False for what is nested beyond the bounds.
// NOLINTNEXTLINE(misc-no-recursion): bounded by kMostNesting.
bool mendTexts(void* node, int depth) {
    if (depth > kMostNesting) {
        return false;
    }
    switch (plist_get_node_type(node)) {
    case PLIST_STRING:
        mendText(node);
        return true;
    case PLIST_ARRAY:
        return std::ranges::all_of(
            elementsOfNode(node), [depth](void* element) { return mendTexts(element, depth + 1); });
    case PLIST_DICT:
        return std::ranges::all_of(entriesOfNode(node), [depth](const auto& entry) {
            mendKey(entry.second, entry.first);
            return mendTexts(entry.second, depth + 1);
        });
    default:
        return true;
    }
}

Tree nodeFromScalar(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Bool:
        return Tree(plist_new_bool(value.boolValue() ? 1 : 0));
    case Value::Kind::Integer:
        // The library writes the bits of a negative number as a signed one.
        return Tree(plist_new_uint(static_cast<std::uint64_t>(value.integerValue())));
    case Value::Kind::Float:
    case Value::Kind::Double:
        return Tree(plist_new_real(value.doubleValue()));
    case Value::Kind::Text:
        return Tree(plist_new_string(wellFormedText(*value.text()).c_str()));
    case Value::Kind::Date:
        return nodeFromDate(*value.date());
    case Value::Kind::Data: {
        const auto bytes = value.data()->text();
        return Tree(plist_new_data(bytes.data(), bytes.size()));
    }
    default:
        return nullptr;
    }
}

Tree nodeAtDepth(const Value& value, int depth);

// NOLINTNEXTLINE(misc-no-recursion): bounded by kMostNesting.
Tree nodeFromArray(const Array& array, int depth) {
    Tree tree(plist_new_array());
    for (const Value& element : array) {
        if (auto node = nodeAtDepth(element, depth + 1)) {
            plist_array_append_item(tree.get(), node.release());
        }
    }
    return tree;
}

// NOLINTNEXTLINE(misc-no-recursion): bounded by kMostNesting.
Tree nodeFromDictionary(const Dictionary& dictionary, int depth) {
    Tree tree(plist_new_dict());
    for (const auto& [key, entry] : dictionary) {
        if (auto node = nodeAtDepth(entry, depth + 1)) {
            plist_dict_set_item(tree.get(), wellFormedText(key).c_str(), node.release());
        }
    }
    return tree;
}

// NOLINTNEXTLINE(misc-no-recursion): bounded by kMostNesting.
Tree nodeAtDepth(const Value& value, int depth) {
    if (depth > kMostNesting) {
        return nullptr;
    }
    if (const auto* array = value.arrayView()) {
        return nodeFromArray(*array, depth);
    }
    if (const auto* dictionary = value.dictionaryView()) {
        return nodeFromDictionary(*dictionary, depth);
    }
    return nodeFromScalar(value);
}

/// @param write  One of the library's writers; it wants a null pointer to fill.
/// @param free   The one that frees what it wrote.
Data written(const Tree& tree, void (*write)(plist_t, char**, std::uint32_t*), void (*free)(char*)) {
    if (!tree) {
        return {};
    }
    const NumbersWithPoint numbers;
    char* bytes = nullptr;
    std::uint32_t length = 0;
    write(tree.get(), &bytes, &length);
    if (bytes == nullptr) {
        return {};
    }
    const std::unique_ptr<char, void (*)(char*)> owner(bytes, free);
    return Data::fromText({bytes, length});
}

} // namespace

void NodeDeleter::operator()(void* node) const {
    plist_free(node);
}

Tree treeFromBytes(const Data& bytes) {
    const auto text = bytes.text();
    if (!isWithinBounds(text)) {
        return nullptr;
    }
    const NumbersWithPoint numbers;
    const auto read = isBinary(text) ? plist_from_bin : plist_from_xml;
    plist_t node = nullptr;
    read(text.data(), static_cast<std::uint32_t>(text.size()), &node);
    Tree tree(node);
    return tree && mendTexts(node, 1) ? std::move(tree) : nullptr;
}

Tree treeFromValue(const Value& value) {
    return nodeAtDepth(value, 1);
}

// NOLINTNEXTLINE(misc-no-recursion): a tree is nested at most kMostNesting deep.
Value valueFromNode(void* node) {
    switch (plist_get_node_type(node)) {
    case PLIST_ARRAY:
        return arrayFromNode(node);
    case PLIST_DICT:
        return dictionaryFromNode(node);
    default:
        return scalarFromNode(node);
    }
}

Data binaryFromTree(const Tree& tree) {
    return written(tree, plist_to_bin, plist_to_bin_free);
}

Data xmlFromTree(const Tree& tree) {
    return written(tree, plist_to_xml, plist_to_xml_free);
}

std::string wellFormedText(std::string_view text) {
    const bool isPlain = std::ranges::all_of(text, [](char byte) { return byte >= 0x20 && byte <= 0x7e; });
    if (isPlain) {
        return std::string(text);
    }
    // Puts U+FFFD in place of what is no UTF-8 by itself.
    auto units = icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
    for (std::int32_t index = 0; index < units.length(); ++index) {
        if (!isXMLCharacter(units[index])) {
            units.setCharAt(index, 0xfffd);
        }
    }
    std::string wellFormed;
    return units.toUTF8String(wellFormed);
}

std::vector<Entry> entriesOfNode(void* node) {
    std::vector<Entry> entries;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    const Iterator owner(iterator);
    while (iterator != nullptr) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, iterator, &key, &value);
        const OwnedText ownedKey(key);
        if (value == nullptr) {
            break;
        }
        entries.emplace_back(key != nullptr ? key : "", value);
    }
    return entries;
}

std::vector<void*> elementsOfNode(void* node) {
    std::vector<void*> elements;
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(node, &iterator);
    const Iterator owner(iterator);
    while (iterator != nullptr) {
        plist_t element = nullptr;
        plist_array_next_item(node, iterator, &element);
        if (element == nullptr) {
            break;
        }
        elements.push_back(element);
    }
    return elements;
}

} // namespace exifcard::propertylist
