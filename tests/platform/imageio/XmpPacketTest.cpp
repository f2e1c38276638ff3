#include "platform/imageio/XmpPacket.h"

#include "platform/foundation/Array.h"
#include "platform/imageio/XmpValue.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace exifcard {
namespace {

/// A packet with one node that has the attributes and the content.
std::string packetOf(std::string_view content, std::string_view attributes = "") {
    return std::string("<x:xmpmeta xmlns:x='adobe:ns:meta/'>"
                       "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
                       "<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'"
                       " xmlns:exif='http://ns.adobe.com/exif/1.0/' xmlns:xmp='http://ns.adobe.com/xap/1.0/'"
                       " xmlns:own='urn:own' ")
        .append(attributes)
        .append(">")
        .append(content)
        .append("</rdf:Description></rdf:RDF></x:xmpmeta>");
}

std::vector<XmpProperty> read(std::string_view packet) {
    return propertiesFromXmpPacket({reinterpret_cast<const std::uint8_t*>(packet.data()), packet.size()});
}

/// "name=value|value" for each property, separated by blanks.
std::string summaryOf(const std::vector<XmpProperty>& properties) {
    std::string summary;
    for (const XmpProperty& property : properties) {
        summary += (summary.empty() ? "" : " ") + property.name + "=";
        for (const std::string& value : property.values) {
            summary += (&value == &property.values.front() ? "" : "|") + value;
        }
    }
    return summary;
}

TEST(XmpPacketTest, ReadsEveryFormOfAProperty) {
    struct Case {
        std::string packet;
        std::string summary;
    };
    const Case cases[] = {
        {packetOf("", "xmp:Rating='5'"), "Rating=5"},
        {packetOf("<xmp:Rating>5</xmp:Rating>"), "Rating=5"},
        {packetOf("<dc:subject><rdf:Bag><rdf:li>a</rdf:li><rdf:li>b &amp; c</rdf:li></rdf:Bag></dc:subject>"),
            "subject=a|b & c"},
        {packetOf("<dc:title><rdf:Alt><rdf:li xml:lang='de'>Bild</rdf:li>"
                  "<rdf:li xml:lang='x-default'>Picture</rdf:li></rdf:Alt></dc:title>"),
            "title=Picture|Bild"},
        {packetOf("<exif:Flash exif:Fired='True' exif:Mode='1'/>"), "Flash/Fired=True Flash/Mode=1"},
        {packetOf("<exif:Flash rdf:parseType='Resource'><exif:Fired>True</exif:Fired></exif:Flash>"),
            "Flash/Fired=True"},
        {packetOf("<exif:Flash><rdf:Description exif:Fired='True'/></exif:Flash>"), "Flash/Fired=True"},
        {packetOf("<own:Rating>5</own:Rating>", "own:Rating='5'"), ""},
        {packetOf("<own:deep><xmp:Rating>5</xmp:Rating></own:deep>"), ""},
        {packetOf("<xmp:Rating> </xmp:Rating>"), ""},
        {packetOf("<Rating xmlns='http://ns.adobe.com/xap/1.0/'>5</Rating>"), "Rating=5"},
        {packetOf(
             "<own:Rating xmlns:own='http://ns.adobe.com/xap/1.0/'>5</own:Rating><own:Label>a</own:Label>"),
            "Rating=5"},
        {packetOf("<exif:Flash xmlns='urn:a' xmlns:lang='x-default' exif:Fired='True'/>"),
            "Flash/Fired=True"},
        {packetOf("<xmp:Rating>5</xmp:Rating>") + std::string(100, '\0'), "Rating=5"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.packet);
        EXPECT_EQ(summaryOf(read(c.packet)), c.summary);
    }
}

TEST(XmpPacketTest, RefusesWhatIsNoPacket) {
    std::string deep;
    for (int level = 0; level < 100000; ++level) {
        deep += "<xmp:a>";
    }
    std::string prefixes;
    for (int number = 0; number < 100000; ++number) {
        prefixes += fmt::format(" xmlns:p{0}='urn:{0}' p{0}:a='1'", number);
    }
    const std::string packets[] = {
        "",
        "no XML",
        packetOf("<xmp:Rating>5</xmp:Label>"),
        packetOf(deep),
        packetOf("<xmp:Rating>5</xmp:Rating><nobody:Label/>"),
        packetOf("<xmp:Rating>5</xmp:Rating>", "nobody:Label='5'"),
        "<nobody:xmpmeta/>",
        packetOf("<xmp:Rating>5</xmp:Rating>", prefixes),
        "<!DOCTYPE x [<!ENTITY a 'aaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;'>]>" +
            packetOf("<xmp:Rating>&b;</xmp:Rating>"),
    };
    for (const std::string& packet : packets) {
        EXPECT_EQ(summaryOf(read(packet)), "") << packet.substr(0, 200);
    }
}

TEST(XmpPacketTest, BringsValuesIntoTheFormOfTheBinaryBlock) {
    struct Case {
        Value (*convert)(const XmpProperty&);
        std::vector<std::string> values;
        Value value;
    };
    const Case cases[] = {
        {realFromXmp, {"1/250"}, 0.004},
        {realFromXmp, {"0.5"}, 0.5},
        {realFromXmp, {"1/0"}, Value()},
        {realFromXmp, {"wide"}, Value()},
        {integerFromXmp, {"-1"}, -1},
        {integerFromXmp, {"1.0"}, 1},
        {integersFromXmp, {"200"}, Array::make({200})},
        {spacedRealsFromXmp, {"24/1 120/1 4/1 4/1"}, Array::make({24.0, 120.0, 4.0, 4.0})},
        {dottedIntegersFromXmp, {"2.3.0.0"}, Array::make({2, 3, 0, 0})},
        {dateTimeFromXmp, {"2020-01-02T03:04:05.67+02:00"}, "2020:01:02 03:04:05"},
        {dateTimeFromXmp, {"2020-01-02T03:04"}, "2020:01:02 03:04:00"},
        {dateTimeFromXmp, {"2020-01"}, Value()},
        {angleFromXmp, {"33,27.208200S"}, 33 + 27.2082 / 60},
        {angleFromXmp, {"33,27,30S"}, 33 + 27 / 60.0 + 30 / 3600.0},
        {angleReferenceFromXmp, {"33,27.208200S"}, "S"},
        {angleReferenceFromXmp, {"33,27.2"}, Value()},
        {numberOrTextFromXmp, {"163"}, 163},
        {numberOrTextFromXmp, {"8 242"}, "8 242"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.values.front());
        const Value value = c.convert({XmpNamespace::Exif, "name", c.values});
        EXPECT_EQ(value, c.value) << value.description();
    }
}

} // namespace
} // namespace exifcard
