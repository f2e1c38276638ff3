#include "platform/imageio/XmpPacket.h"

#include "platform/imageio/XmpPrefixes.h"

#include <expat.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <optional>
#include <random>
#include <type_traits>

namespace exifcard {
namespace {

/// A property of the needed vocabularies lies at most eleven elements deep; a hostile packet lies deeper.
constexpr std::size_t kMostDepth = 64;
/// An editor's packet of a picture's whole history has a megabyte or two.
constexpr std::size_t kMostPacketBytes = std::size_t(16) << 20U;
/// The room of a larger packet is not kept for the next one.
constexpr std::size_t kMostKeptBytes = std::size_t(64) << 10U;

constexpr std::string_view kRdf = "http://www.w3.org/1999/02/22-rdf-syntax-ns#";

struct Vocabulary {
    std::string_view address;
    XmpNamespace space;
};

constexpr Vocabulary kVocabularies[] = {
    {"http://ns.adobe.com/exif/1.0/", XmpNamespace::Exif},
    {"http://cipa.jp/exif/1.0/", XmpNamespace::Exif},
    {"http://ns.adobe.com/tiff/1.0/", XmpNamespace::Tiff},
    {"http://ns.adobe.com/exif/1.0/aux/", XmpNamespace::Aux},
    {"http://purl.org/dc/elements/1.1/", XmpNamespace::DublinCore},
    {"http://ns.adobe.com/photoshop/1.0/", XmpNamespace::Photoshop},
    {"http://ns.adobe.com/xap/1.0/", XmpNamespace::Xmp},
    {"http://ns.adobe.com/xap/1.0/rights/", XmpNamespace::XmpRights},
    {"http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/", XmpNamespace::IptcCore},
    {"http://ns.google.com/photos/1.0/camera/", XmpNamespace::GoogleCamera},
    {"http://ns.google.com/photos/1.0/container/", XmpNamespace::GoogleContainer},
    {"http://ns.google.com/photos/1.0/panorama/", XmpNamespace::GooglePanorama},
    {"http://ns.google.com/photos/1.0/depthmap/", XmpNamespace::GoogleDepthMap},
};

bool isRdf(const QualifiedName& name, std::string_view local) {
    return name.name == local && name.address == kRdf;
}

std::optional<XmpNamespace> vocabulary(std::string_view address) {
    const auto known = std::ranges::find(kVocabularies, address, &Vocabulary::address);
    return known == std::end(kVocabularies) ? std::nullopt : std::optional(known->space);
}

std::span<const std::string_view> knownAddresses() {
    static const auto known = [] {
        std::array<std::string_view, std::size(kVocabularies) + 1> addresses;
        *std::ranges::transform(kVocabularies, addresses.begin(), &Vocabulary::address).out = kRdf;
        return addresses;
    }();
    return known;
}

/// What an element of the packet stands for.
enum class Role { Ignored, Packet, Node, Property, List, Item };

struct Element {
    Role role = Role::Ignored;
    /// Of a property, of its list, or the one that stands before each member of a node.
    XmpProperty property = {};
    std::size_t itemCount = 0; ///< Of a list, so far.
    std::string text = {};
    bool isDefaultLanguage = false;
};

using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)>;

Parser newParser() {
    return {XML_ParserCreate(nullptr), XML_ParserFree};
}

/// As new, but with the room that it made for the packet before, which is a third of the work.
XML_Parser keptParser() {
    thread_local const Parser parser = newParser();
    // Against names that are made to fall together. By itself it would ask the system for it each time.
    static const unsigned long salt = std::random_device()() | 1UL;
    if (parser) {
        XML_ParserReset(parser.get(), nullptr);
        XML_SetHashSalt(parser.get(), salt);
    }
    return parser.get();
}

class PacketReader {
public:
    explicit PacketReader(XML_Parser parser) : _parser(parser) {}

    std::vector<XmpProperty> read(std::span<const std::uint8_t> packet);

private:
    static void onStart(void* self, const XML_Char* name, const XML_Char** attributes);
    static void onEnd(void* self, const XML_Char* name);
    static void onText(void* self, const XML_Char* text, int length);
    static void onDocumentType(
        void* self, const XML_Char* name, const XML_Char* systemId, const XML_Char* publicId, int hasSubset);

    void start(std::string_view tag, const XML_Char** attributes);
    void end();
    std::optional<QualifiedName> declaredName(std::string_view tag, const XML_Char** attributes);
    Element elementWithin(Element& parent, const QualifiedName& name) const;
    static Element itemWithin(Element& list, const QualifiedName& name);
    Element propertyWithin(const Element& node, const QualifiedName& name) const;
    void readAttributes(Element& element, const XML_Char** attributes);
    void addMember(const Element& node, const QualifiedName& name, std::string_view value);
    void addItem(Element item);
    void addProperty(Element element);
    void stop() { XML_StopParser(_parser, XML_FALSE); }

    const XML_Parser _parser; // Null without memory.
    XmpPrefixes _prefixes{knownAddresses()};
    std::vector<Element> _elements; // From the root to the one being read.
    std::vector<XmpProperty> _properties;
    bool _isComplete = false;
};

std::vector<XmpProperty> PacketReader::read(std::span<const std::uint8_t> packet) {
    if (!_parser) {
        return {};
    }
    XML_SetUserData(_parser, this);
    XML_SetElementHandler(_parser, onStart, onEnd);
    XML_SetCharacterDataHandler(_parser, onText);
    XML_SetStartDoctypeDeclHandler(_parser, onDocumentType);
    XML_Parse(
        _parser, reinterpret_cast<const char*>(packet.data()), static_cast<int>(packet.size()), XML_TRUE);
    return _isComplete ? std::move(_properties) : std::vector<XmpProperty>();
}

void PacketReader::onStart(void* self, const XML_Char* name, const XML_Char** attributes) {
    static_cast<PacketReader*>(self)->start(name, attributes);
}

void PacketReader::onEnd(void* self, const XML_Char* /*name*/) {
    static_cast<PacketReader*>(self)->end();
}

void PacketReader::onText(void* self, const XML_Char* text, int length) {
    auto& elements = static_cast<PacketReader*>(self)->_elements;
    const bool isValue =
        !elements.empty() && (elements.back().role == Role::Property || elements.back().role == Role::Item);
    if (isValue) {
        elements.back().text.append(text, static_cast<std::size_t>(length));
    }
}

void PacketReader::onDocumentType(void* self,
    const XML_Char* /*name*/,
    const XML_Char* /*systemId*/,
    const XML_Char* /*publicId*/,
    int /*hasSubset*/) {
    static_cast<PacketReader*>(self)->stop();
}

void PacketReader::start(std::string_view tag, const XML_Char** attributes) {
    const auto name = declaredName(tag, attributes);
    if (_elements.size() >= kMostDepth || !name) {
        _elements.emplace_back(); // Its end may still be told.
        stop();
        return;
    }
    Element element = isRdf(*name, "RDF") ? Element{.role = Role::Packet}
                      : _elements.empty() ? Element()
                                          : elementWithin(_elements.back(), *name);
    readAttributes(element, attributes);
    _elements.push_back(std::move(element));
}

/// Nothing where a prefix is not declared, or too many are.
std::optional<QualifiedName> PacketReader::declaredName(std::string_view tag, const XML_Char** attributes) {
    for (; *attributes != nullptr; attributes += 2) {
        if (!_prefixes.declare(attributes[0], attributes[1], _elements.size() + 1)) {
            return std::nullopt;
        }
    }
    return _prefixes.element(tag);
}

Element PacketReader::elementWithin(Element& parent, const QualifiedName& name) const {
    switch (parent.role) {
    case Role::Packet:
        return {.role = isRdf(name, "Description") ? Role::Node : Role::Ignored};
    case Role::Node:
        return propertyWithin(parent, name);
    case Role::Property:
        if (isRdf(name, "Alt") || isRdf(name, "Bag") || isRdf(name, "Seq")) {
            return {.role = Role::List, .property = parent.property};
        }
        return isRdf(name, "Description") ? Element{.role = Role::Node, .property = parent.property}
                                          : Element();
    case Role::List:
        return itemWithin(parent, name);
    default:
        return {};
    }
}

Element PacketReader::itemWithin(Element& list, const QualifiedName& name) {
    if (!isRdf(name, "li")) {
        return {};
    }
    auto path = list.property.name + "[" + std::to_string(++list.itemCount) + "]";
    return {.role = Role::Item, .property = {list.property.space, std::move(path), {}}};
}

/// The property that `name` is within a node: of a known vocabulary, or a member of such a property.
Element PacketReader::propertyWithin(const Element& node, const QualifiedName& name) const {
    if (!node.property.name.empty()) {
        const bool isItsValue = isRdf(name, "value");
        auto member = isItsValue ? node.property.name : node.property.name + "/" + std::string(name.name);
        return {.role = Role::Property, .property = {node.property.space, std::move(member), {}}};
    }
    const auto space = vocabulary(name.address);
    return space ? Element{.role = Role::Property, .property = {*space, std::string(name.name), {}}}
                 : Element();
}

void PacketReader::readAttributes(Element& element, const XML_Char** attributes) {
    for (; *attributes != nullptr; attributes += 2) {
        if (XmpPrefixes::isDeclaration(attributes[0])) {
            continue;
        }
        const auto qualified = _prefixes.attribute(attributes[0]);
        if (!qualified) {
            stop();
            return;
        }
        const QualifiedName& name = *qualified;
        const std::string_view value = attributes[1];
        const bool isValue = element.role == Role::Property || element.role == Role::Item;
        if (isValue && isRdf(name, "parseType") && value == "Resource") {
            element.role = Role::Node;
        } else if (element.role == Role::Item) {
            element.isDefaultLanguage |=
                name.address == kXmlAddress && name.name == "lang" && value == "x-default";
        } else if (element.role == Role::Property && isRdf(name, "resource")) {
            element.text = value;
        } else if (element.role == Role::Node || element.role == Role::Property) {
            addMember(element, name, value);
        }
    }
}

void PacketReader::addMember(const Element& node, const QualifiedName& name, std::string_view value) {
    Element member = propertyWithin(node, name);
    if (member.role == Role::Property && name.address != kRdf && name.address != kXmlAddress) {
        member.text = value;
        addProperty(std::move(member));
    }
}

void PacketReader::end() {
    Element element = std::move(_elements.back());
    _prefixes.leave(_elements.size());
    _elements.pop_back();
    if (element.role == Role::Packet) {
        _isComplete = true;
        stop(); // Only blanks for later changes follow.
    } else if (element.role == Role::Item) {
        addItem(std::move(element));
    } else if (element.role == Role::Property) {
        addProperty(std::move(element));
    }
}

void PacketReader::addItem(Element item) {
    auto& values = _elements[_elements.size() - 2].property.values; // The list stands between.
    values.insert(item.isDefaultLanguage ? values.begin() : values.end(), std::move(item.text));
}

void PacketReader::addProperty(Element element) {
    auto& values = element.property.values;
    if (values.empty() && element.text.find_first_not_of(" \t\r\n") != std::string::npos) {
        values.push_back(std::move(element.text));
    }
    if (!values.empty()) {
        _properties.push_back(std::move(element.property));
    }
}

std::vector<XmpProperty> propertiesOf(std::span<const std::uint8_t> packet) {
    if (packet.size() <= kMostKeptBytes) {
        return PacketReader(keptParser()).read(packet);
    }
    const Parser parser = newParser(); // Its room is given back.
    return PacketReader(parser.get()).read(packet);
}

} // namespace

std::vector<XmpProperty> propertiesFromXmpPacket(std::span<const std::uint8_t> packet) {
    if (packet.empty() || packet.size() > kMostPacketBytes) {
        return {};
    }
    auto properties = propertiesOf(packet);
    if (properties.empty() && std::ranges::count(packet, 0) > 0) {
        // Where a file was damaged, zeros may stand among readable properties; to XML they are an error.
        std::vector<std::uint8_t> mended(packet.begin(), packet.end());
        std::ranges::replace(mended, 0, ' ');
        properties = propertiesOf(mended);
    }
    return properties;
}

const std::string* firstXmpValue(
    std::span<const XmpProperty> packet, XmpNamespace space, std::string_view name) {
    const auto found = std::ranges::find_if(packet,
        [&](const XmpProperty& property) { return property.space == space && property.name == name; });
    return found == packet.end() ? nullptr : &found->values.front();
}

} // namespace exifcard
