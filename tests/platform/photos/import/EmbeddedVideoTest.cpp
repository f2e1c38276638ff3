#include "platform/photos/import/EmbeddedVideo.h"

#include "platform/imageio/XmpPacket.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace exifcard {
namespace {

using namespace std::string_literals;

const std::string kPicture(100, 'p');
const std::string kVideo = "\0\0\0\x18"s + "ftypmp42" + std::string(40, 'v');
const auto kOffset = static_cast<std::int64_t>(kPicture.size());
const auto kLength = static_cast<std::int64_t>(kVideo.size());

std::vector<XmpProperty> packetOf(std::string_view attributes, std::string_view content) {
    const std::string packet =
        "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
        "<rdf:Description xmlns:Camera='http://ns.google.com/photos/1.0/camera/'"
        " xmlns:Container='http://ns.google.com/photos/1.0/container/'"
        " xmlns:Item='http://ns.google.com/photos/1.0/container/item/' " +
        std::string(attributes) + ">" + std::string(content) + "</rdf:Description></rdf:RDF></x:xmpmeta>";
    return propertiesFromXmpPacket({reinterpret_cast<const std::uint8_t*>(packet.data()), packet.size()});
}

std::string item(std::string_view attributes) {
    return "<rdf:li rdf:parseType='Resource'><Container:Item " + std::string(attributes) + "/></rdf:li>";
}

std::string directory(const std::string& items) {
    return "<Container:Directory><rdf:Seq>" + items + "</rdf:Seq></Container:Directory>";
}

std::string littleEndian(std::size_t number, int bytes) {
    std::string text;
    for (int byte = 0; byte < bytes; ++byte) {
        text += static_cast<char>(number >> (8 * byte) & 0xff);
    }
    return text;
}

/// As one maker appends it: blocks, their directory, its length.
std::string withTrailer(std::size_t distance, std::size_t length) {
    const std::string name = "MotionPhoto_Data";
    const std::string block =
        littleEndian(0, 2) + littleEndian(0x0a30, 2) + littleEndian(name.size(), 4) + name + kVideo;
    const std::string entries = "SEFH" + littleEndian(106, 4) + littleEndian(1, 4) + littleEndian(0, 2) +
                                littleEndian(0x0a30, 2) +
                                littleEndian(distance == 0 ? block.size() : distance, 4) +
                                littleEndian(length == 0 ? block.size() : length, 4);
    return kPicture + block + entries + littleEndian(entries.size(), 4) + "SEFT";
}

TEST(EmbeddedVideoTest, FindsTheVideoOfEveryKindOfMotionPhoto) {
    const std::string primary = item("Item:Mime='image/jpeg' Item:Semantic='Primary'");
    const std::string length = std::to_string(kLength);
    const std::string video = item("Item:Length='" + length + "' Item:Semantic='MotionPhoto'");
    struct Case {
        std::string_view name;
        std::string file;
        std::vector<XmpProperty> packet;
        std::int64_t offset;
    };
    const Case cases[] = {
        {"directory", kPicture + kVideo, packetOf("", directory(primary + video)), kOffset},
        {"behind a gain map", kPicture + "gainmap" + kVideo,
            packetOf("", directory(primary + item("Item:Semantic='GainMap' Item:Length='7'") + video)),
            kOffset + 7},
        {"before another part", kPicture + kVideo + "pad" + "tail",
            packetOf("",
                directory(primary +
                          item("Item:Padding='3' Item:Length='" + length + "' Item:Semantic='MotionPhoto'") +
                          item("Item:Semantic='Other' Item:Length='4'"))),
            kOffset},
        {"older offset", kPicture + kVideo,
            packetOf("Camera:MicroVideo='1' Camera:MicroVideoOffset='" + length + "'", ""), kOffset},
        {"trailer", withTrailer(0, 0), {}, kOffset + 8 + 16},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto found = embeddedVideo(Data::fromText(c.file), c.packet);
        ASSERT_TRUE(found.has_value());
        EXPECT_EQ(found->offset, c.offset);
        EXPECT_EQ(c.file.substr(static_cast<std::size_t>(found->offset), kVideo.size()), kVideo);
    }
}

TEST(EmbeddedVideoTest, BelievesNoPlaceWithoutAVideo) {
    const auto offset = [](std::string_view number) {
        return packetOf("Camera:MicroVideoOffset='" + std::string(number) + "'", "");
    };
    const std::string file = kPicture + kVideo;
    for (const std::string_view number : {"0", "1", "51", "152", "99999999999999999999", "-52", "x"}) {
        SCOPED_TRACE(number);
        EXPECT_FALSE(embeddedVideo(Data::fromText(file), offset(number)).has_value());
    }
    for (const std::string_view length : {"0", "99999999999", "18446744073709551615"}) {
        SCOPED_TRACE(length);
        const auto packet = packetOf(
            "", directory(item("Item:Semantic='MotionPhoto' Item:Length='" + std::string(length) + "'")));
        EXPECT_FALSE(embeddedVideo(Data::fromText(file), packet).has_value());
    }
    EXPECT_FALSE(embeddedVideo(Data::fromText(withTrailer(0xffffffff, 0)), {}).has_value());
    EXPECT_FALSE(embeddedVideo(Data::fromText(withTrailer(0, 0xffffffff)), {}).has_value());
    EXPECT_FALSE(embeddedVideo(Data::fromText(withTrailer(0, 0).substr(120)), {}).has_value());
    EXPECT_FALSE(embeddedVideo(Data(), {}).has_value());
}

} // namespace
} // namespace exifcard
