#include "platform/foundation/PropertyListTree.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/PropertyListBounds.h"
#include "platform/foundation/PropertyListDate.h"
#include "platform/foundation/PropertyListLibrary.h"
#include "platform/foundation/PropertyListText.h"

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdlib>

namespace exifcard::propertylist {
namespace {

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

Date dateFromNode(void* node) {
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist().get_date_val(node, &seconds, &microseconds);
    // The library answers a number without sign, and any number for a date beyond its range.
    const double fraction = std::clamp(microseconds / kMicroseconds, 0.0, 1.0);
    return Date{kEpochSince1970 + seconds + std::copysign(fraction, seconds)};
}

Tree nodeFromDate(Date date) {
    const auto [seconds, microseconds] = partsOfDate(date);
    return Tree(plist().new_date(seconds, microseconds));
}

Value textFromNode(void* node) {
    std::uint64_t length = 0;
    const char* const text = plist().get_string_ptr(node, &length);
    return text != nullptr ? std::string(text, length) : std::string();
}

Value dataFromNode(void* node) {
    std::uint64_t length = 0;
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(plist().get_data_ptr(node, &length));
    return bytes != nullptr ? Data::fromBytes(std::vector(bytes, bytes + length)) : Data();
}

Value uidFromNode(void* node) {
    std::uint64_t number = 0;
    plist().get_uid_val(node, &number);
    return Dictionary::make({{"CF$UID", static_cast<std::int64_t>(number)}});
}

Value scalarFromNode(void* node) {
    std::uint8_t truth = 0;
    std::uint64_t integer = 0;
    double real = 0;
    switch (plist().get_node_type(node)) {
    case PLIST_BOOLEAN:
        plist().get_bool_val(node, &truth);
        return truth != 0;
    case PLIST_UINT:
        plist().get_uint_val(node, &integer);
        return static_cast<std::int64_t>(integer);
    case PLIST_REAL:
        plist().get_real_val(node, &real);
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
    const char* const text = plist().get_string_ptr(node, &length);
    const std::string_view view(text != nullptr ? text : "", text != nullptr ? length : 0);
    if (const auto wellFormed = wellFormedText(view); wellFormed != view) {
        plist().set_string_val(node, wellFormed.c_str());
    }
}

void mendKey(void* entry, const std::string& key) {
    if (const auto wellFormed = wellFormedText(key); wellFormed != key) {
        plist().set_key_val(plist().dict_item_get_key(entry), wellFormed.c_str());
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
    switch (plist().get_node_type(node)) {
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
        return Tree(plist().new_bool(value.boolValue() ? 1 : 0));
    case Value::Kind::Integer:
        // The library writes the bits of a negative number as a signed one.
        return Tree(plist().new_uint(static_cast<std::uint64_t>(value.integerValue())));
    case Value::Kind::Float:
    case Value::Kind::Double:
        return Tree(plist().new_real(value.doubleValue()));
    case Value::Kind::Text:
        return Tree(plist().new_string(wellFormedText(*value.text()).c_str()));
    case Value::Kind::Date:
        return nodeFromDate(*value.date());
    case Value::Kind::Data: {
        const auto bytes = value.data()->text();
        return Tree(plist().new_data(bytes.data(), bytes.size()));
    }
    default:
        return nullptr;
    }
}

Tree nodeAtDepth(const Value& value, int depth);

// NOLINTNEXTLINE(misc-no-recursion): bounded by kMostNesting.
Tree nodeFromArray(const Array& array, int depth) {
    Tree tree(plist().new_array());
    for (const Value& element : array) {
        if (auto node = nodeAtDepth(element, depth + 1)) {
            plist().array_append_item(tree.get(), node.release());
        }
    }
    return tree;
}

// NOLINTNEXTLINE(misc-no-recursion): bounded by kMostNesting.
Tree nodeFromDictionary(const Dictionary& dictionary, int depth) {
    Tree tree(plist().new_dict());
    for (const auto& [key, entry] : dictionary) {
        if (auto node = nodeAtDepth(entry, depth + 1)) {
            plist().dict_set_item(tree.get(), wellFormedText(key).c_str(), node.release());
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
    plist().free(node);
}

Tree treeFromBytes(const Data& bytes) {
    const auto text = bytes.text();
    if (!isWithinBounds(text)) {
        return nullptr;
    }
    const NumbersWithPoint numbers;
    const auto read = isBinary(text) ? plist().from_bin : plist().from_xml;
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
    switch (plist().get_node_type(node)) {
    case PLIST_ARRAY:
        return arrayFromNode(node);
    case PLIST_DICT:
        return dictionaryFromNode(node);
    default:
        return scalarFromNode(node);
    }
}

Data binaryFromTree(const Tree& tree) {
    return written(tree, plist().to_bin, plist().to_bin_free);
}

Data xmlFromTree(const Tree& tree) {
    return written(tree, plist().to_xml, plist().to_xml_free);
}

std::vector<Entry> entriesOfNode(void* node) {
    std::vector<Entry> entries;
    plist_dict_iter iterator = nullptr;
    plist().dict_new_iter(node, &iterator);
    const Iterator owner(iterator);
    while (iterator != nullptr) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist().dict_next_item(node, iterator, &key, &value);
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
    plist().array_new_iter(node, &iterator);
    const Iterator owner(iterator);
    while (iterator != nullptr) {
        plist_t element = nullptr;
        plist().array_next_item(node, iterator, &element);
        if (element == nullptr) {
            break;
        }
        elements.push_back(element);
    }
    return elements;
}

} // namespace exifcard::propertylist
