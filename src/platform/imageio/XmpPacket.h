#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// The vocabularies of which the properties dictionary takes something.
enum class XmpNamespace {
    Exif,
    Tiff,
    Aux,
    DublinCore,
    Photoshop,
    Xmp,
    XmpRights,
    IptcCore,
    GoogleCamera,
    GoogleContainer,
    GooglePanorama,
    GoogleDepthMap,
};

/// One property of a packet. Members of a structure are properties of their own, named "Structure/Member",
/// and "List[1]/Member" where the structure is an item of a list.
struct XmpProperty {
    XmpNamespace space = XmpNamespace::Exif;
    std::string name;
    /// One for a plain text, the items of a list, the languages of a text with alternatives: the default
    /// language first. Never empty.
    std::vector<std::string> values;
};

/// Reads an XMP packet.
///
/// @param packet  Untrusted bytes of any length; more than 16 MiB are not read.
/// @return The properties of the vocabularies above in the packet's order. None for what is no XML, for XML
///         with a document type (an XMP packet has none) and for a packet that holds no such vocabulary.
std::vector<XmpProperty> propertiesFromXmpPacket(std::span<const std::uint8_t> packet);

/// The first value of the property; null where the packet has none of that name.
const std::string* firstXmpValue(
    std::span<const XmpProperty> packet, XmpNamespace space, std::string_view name);

} // namespace exifcard
