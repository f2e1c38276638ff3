#include "platform/imageio/HeifBoxes.h"

#include "platform/imageio/HeifFile.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace exifcard {
namespace {

const std::string kPacket = "<?xpacket begin=''?><x:xmpmeta/>";
const std::string kTiff("MM\0*\0\0\0\b\0\0", 10);

Data sample(const std::string& name) {
    return Data::mappedFile(std::string(EXIFCARD_TEST_DATA "/") + name).value_or(Data());
}

std::string size(std::uint64_t width, std::uint64_t height) {
    return listBox("ispe", bigEndian(width, 4) + bigEndian(height, 4));
}

std::string reference(const std::string& type, std::uint64_t from, std::uint64_t to) {
    return box(type, bigEndian(from, 2) + bigEndian(1, 2) + bigEndian(to, 2));
}

/// One picture, one block of metadata.
HeifFile fileWithBlock(const std::string& type, const std::string& content) {
    HeifFile file;
    file.items = {{1, "hvc1", {1}}, {2, type, {}}};
    file.properties = {size(640, 480)};
    file.content = content;
    return file;
}

TEST(HeifBoxesTest, ReadsCamerasFiles) {
    struct Case {
        std::string file;
        std::string brand;
        int width;
        int height;
        int orientation;
        int bits;
        bool hasProfile;
        bool hasXmp;
    };
    const Case cases[] = {
        {"apple-iphone15pro-subsec-header.heic", "heic", 4032, 3024, 6, 8, true, false},
        {"nikon-d5300.heic", "heic", 300, 200, 1, 8, false, true},
        {"pentax-k3ii.avif", "avif", 1024, 640, 0, 8, true, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        const auto contents = readHeifBoxes(sample(c.file));
        ASSERT_TRUE(contents);
        EXPECT_EQ(contents->majorBrand, c.brand);
        EXPECT_EQ(contents->imageCount, 1U); // One with 46 tiles, a thumbnail and a gain map.
        EXPECT_EQ(contents->width, c.width);
        EXPECT_EQ(contents->height, c.height);
        EXPECT_EQ(contents->exifOrientation, c.orientation);
        EXPECT_EQ(contents->bitsPerComponent, c.bits);
        EXPECT_FALSE(contents->hasAlpha);
        EXPECT_EQ(contents->iccProfile.slice(36, 4).text(), c.hasProfile ? "acsp" : "");
        EXPECT_TRUE(contents->exif.text().starts_with("MM") || contents->exif.text().starts_with("II"));
        EXPECT_EQ(contents->xmp.text().starts_with("<?xpacket"), c.hasXmp);
    }
}

TEST(HeifBoxesTest, ReadsTheBlocksOfACr3AndTheSizeOfTheFullPicture) {
    const Data file = sample("canon-m50.cr3");
    const auto contents = readHeifBoxes(file);
    ASSERT_TRUE(contents);
    EXPECT_TRUE(contents->isCr3);
    EXPECT_EQ(contents->width, 6000); // The sensor's track has 6288 × 4056, the preview 1624 × 1080.
    EXPECT_EQ(contents->height, 4000);
    EXPECT_EQ(contents->bitsPerComponent, 14);
    EXPECT_TRUE(contents->xmp.text().starts_with("<?xpacket"));
    for (const Data& block : contents->cmtBlocks) {
        EXPECT_TRUE(block.text().starts_with("II*"));
        EXPECT_GT(block.data(), file.data()); // No copy.
        EXPECT_LT(block.data(), file.data() + file.size());
    }
}

TEST(HeifBoxesTest, FindsABlockInEveryLayoutOfTheLocationList) {
    // Version, sizes of offset, length, base and index, in the file or in "idat", pieces.
    const HeifFile::Layout layouts[] = {
        {0, 4, 4, 0, 0, 0, 1},
        {0, 4, 4, 4, 0, 0, 1},
        {0, 8, 8, 8, 0, 0, 1},
        {0, 8, 4, 0, 0, 0, 3},
        {1, 4, 4, 0, 0, 0, 1},
        {1, 4, 4, 4, 0, 0, 2},
        {1, 4, 8, 0, 4, 0, 3},
        {1, 8, 8, 8, 8, 0, 1},
        {1, 4, 4, 0, 0, 1, 1},
        {1, 0, 4, 4, 0, 0, 1},
        {2, 4, 4, 0, 0, 1, 3},
        {2, 8, 4, 4, 4, 1, 2},
        {2, 4, 4, 0, 0, 0, 1},
    };
    HeifFile file = fileWithBlock("mime", kPacket);
    for (const HeifFile::Layout& layout : layouts) {
        SCOPED_TRACE(&layout - layouts);
        file.layout = layout;
        const auto contents = readHeifBoxes(file.data());
        ASSERT_TRUE(contents);
        EXPECT_EQ(contents->xmp.text(), kPacket);
    }
}

TEST(HeifBoxesTest, ReadsABlockOfUnknownLengthToTheEnd) {
    HeifFile file = fileWithBlock("mime", kPacket);
    file.layout.lengthSize = 0;
    const auto contents = readHeifBoxes(file.data());
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->xmp.text(), kPacket);
}

TEST(HeifBoxesTest, ReadsLongIdentifiersAndIndexes) {
    HeifFile file = fileWithBlock("mime", kPacket);
    file.hasLongIds = true;
    file.layout.version = 2;
    file.items[0].id = file.primaryId = 70'000;
    file.items[1].id = file.contentId = 70'001;
    const auto contents = readHeifBoxes(file.data());
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->width, 640);
    EXPECT_EQ(contents->xmp.text(), kPacket);
}

TEST(HeifBoxesTest, FindsTheTiffBehindEveryPrefixOfAnExifItem) {
    const std::string marker("Exif\0\0", 6);
    const std::string prefixes[] = {
        bigEndian(0, 4), bigEndian(6, 4) + marker, bigEndian(0, 4) + marker, bigEndian(3, 4) + "abc"};
    for (const std::string& prefix : prefixes) {
        const auto contents = readHeifBoxes(fileWithBlock("Exif", prefix + kTiff).data());
        ASSERT_TRUE(contents);
        EXPECT_EQ(contents->exif.text(), kTiff) << testing::PrintToString(prefix);
    }
    for (const std::string& cut : {std::string("\0\0", 2), bigEndian(0xFFFFFFFF, 4) + kTiff}) {
        const auto contents = readHeifBoxes(fileWithBlock("Exif", cut).data());
        ASSERT_TRUE(contents);
        EXPECT_TRUE(contents->exif.empty()) << testing::PrintToString(cut);
    }
}

TEST(HeifBoxesTest, ComposesTurnsAndMirroringsInTheirOrder) {
    const auto turnLeft = [](unsigned quarters) { return box("irot", bigEndian(quarters, 1)); };
    const std::string mirrorTopBottom = box("imir", bigEndian(0, 1));
    const std::string mirrorLeftRight = box("imir", bigEndian(1, 1));
    const std::pair<std::vector<std::string>, int> cases[] = {
        {{}, 0},
        {{turnLeft(0)}, 1},
        {{turnLeft(1)}, 8},
        {{turnLeft(2)}, 3},
        {{turnLeft(3)}, 6},
        {{mirrorLeftRight}, 2},
        {{mirrorTopBottom}, 4},
        {{turnLeft(3), mirrorLeftRight}, 5},
        {{mirrorLeftRight, turnLeft(3)}, 7},
        {{turnLeft(1), mirrorLeftRight}, 7},
        {{turnLeft(1), mirrorTopBottom}, 5},
        {{turnLeft(2), mirrorTopBottom}, 2},
    };
    for (const auto& [transformations, orientation] : cases) {
        SCOPED_TRACE(testing::PrintToString(transformations));
        HeifFile file;
        file.properties = transformations;
        for (std::size_t index = 0; index < transformations.size(); ++index) {
            file.items[0].properties.push_back(static_cast<int>(index + 1));
        }
        const auto contents = readHeifBoxes(file.data());
        ASSERT_TRUE(contents);
        EXPECT_EQ(contents->exifOrientation, orientation);
    }
}

TEST(HeifBoxesTest, CountsPicturesAndTakesWhatTilesAndAuxiliaryOnesTell) {
    HeifFile file;
    file.primaryId = 10;
    // Two tiles of a grid, its thumbnail, its alpha, a depth map of another picture, a hidden picture.
    file.items = {{1, "av01", {1, 2}}, {2, "av01", {1, 2}}, {3, "av01", {}}, {4, "av01", {3}},
        {5, "av01", {}}, {6, "av01", {}, true}, {10, "grid", {4}}, {11, "av01", {}}, {12, "Exif", {}},
        {13, "uri ", {}}};
    const std::string twelveBits = bigEndian(0x81'00'60'00, 4);
    const std::string numbers = "nclx" + bigEndian(9, 2) + bigEndian(16, 2) + bigEndian(8, 2) + "\x80";
    const std::string alpha = "urn:mpeg:mpegB:cicp:systems:auxiliary:alpha";
    file.properties = {box("av1C", twelveBits), box("colr", numbers),
        listBox("auxC", alpha + bigEndian(0, 1)), size(9000, 6000)};
    file.references = reference("dimg", 10, 1) + reference("dimg", 10, 2) + reference("thmb", 3, 10) +
                      reference("auxl", 4, 10) + reference("auxl", 5, 11);
    const auto contents = readHeifBoxes(file.data());
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->imageCount, 2U);
    EXPECT_EQ(contents->width, 9000);
    EXPECT_EQ(contents->bitsPerComponent, 12);
    EXPECT_TRUE(contents->hasAlpha);
    ASSERT_TRUE(contents->color);
    EXPECT_EQ(contents->color->primaries, 9);
    EXPECT_EQ(contents->color->transfer, 16);
    EXPECT_EQ(contents->color->matrix, 8);
    EXPECT_TRUE(contents->color->isFullRange);
}

TEST(HeifBoxesTest, TakesTheMetadataOfThePrimaryPicture) {
    HeifFile file = fileWithBlock("mime", kPacket);
    file.items.push_back({3, "hvc1", {}});
    for (const auto& [described, isExpected] : {std::pair(1, true), std::pair(3, false)}) {
        file.references = reference("cdsc", 2, static_cast<std::uint64_t>(described));
        const auto contents = readHeifBoxes(file.data());
        ASSERT_TRUE(contents);
        EXPECT_EQ(!contents->xmp.empty(), isExpected);
    }
}

/// A file whose "meta" box holds a valid primary item and then `lists`.
std::string fileWithLists(const std::string& lists) {
    const std::string item = listBox("infe", bigEndian(1, 2) + bigEndian(0, 2) + "hvc1" + bigEndian(0, 1), 2);
    const std::string items = listBox("iinf", bigEndian(1, 2) + item);
    return box("ftyp", "heic" + bigEndian(0, 4)) +
           listBox("meta", listBox("pitm", bigEndian(1, 2)) + items + lists);
}

TEST(HeifBoxesTest, RefusesWhatIsBroken) {
    ASSERT_TRUE(readHeifBoxes(Data::fromText(fileWithLists(box("free", "")))));
    HeifFile whole = fileWithBlock("mime", kPacket);
    HeifFile withoutPrimary = whole;
    withoutPrimary.primaryId = 7;
    HeifFile crowded = whole;
    crowded.items.resize(5000);
    const std::string bytes = whole.bytes();
    const std::pair<std::string, std::string> cases[] = {
        {"nothing", ""},
        {"another kind of file", bytes.substr(16)},
        {"no lists", bytes.substr(0, 16) + box("mdat", "")},
        {"lists cut short", bytes.substr(0, bytes.size() - kPacket.size() - 1)},
        {"no such primary item", withoutPrimary.bytes()},
        {"more items than any picture has", crowded.bytes()},
        {"a box smaller than its header", fileWithLists(bigEndian(7, 4) + "free")},
        {"a box larger than its parent", fileWithLists(bigEndian(9, 4) + "free")},
        {"a huge box",
            fileWithLists(listBox("iinf", bigEndian(0, 2) + bigEndian(1, 4) + "infe" + bigEndian(~0ULL, 8)))},
        {"a reference list that ends too early",
            fileWithLists(listBox("iref", box("dimg", bigEndian(1, 2) + bigEndian(9, 2))))},
    };
    for (const auto& [fault, broken] : cases) {
        EXPECT_FALSE(readHeifBoxes(Data::fromText(broken))) << fault;
    }
    EXPECT_FALSE(readHeifBoxes(sample("hostile-huge-box.heic")));
    EXPECT_FALSE(readHeifBoxes(sample("hostile-negative-size-header.heif")));
}

TEST(HeifBoxesTest, GivesNoBlockWhoseBytesAreNotToBeHad) {
    const std::pair<std::string, std::function<void(HeifFile&)>> cases[] = {
        {"made of another item",
            [](HeifFile& file) {
                file.layout = {1, 4, 4, 0, 0, 2, 1};
            }},
        {"a size that the format does not know", [](HeifFile& file) { file.layout.offsetSize = 3; }},
        {"too many pieces", [](HeifFile& file) { file.layout.pieceCount = 257; }},
        {"a newer list", [](HeifFile& file) { file.layout.version = 3; }},
        {"no location", [](HeifFile& file) { file.contentId = 7; }},
    };
    for (const auto& [fault, change] : cases) {
        SCOPED_TRACE(fault);
        HeifFile file = fileWithBlock("mime", kPacket);
        change(file);
        const auto contents = readHeifBoxes(file.data());
        ASSERT_TRUE(contents);
        EXPECT_TRUE(contents->xmp.empty());
    }
}

/// Asks what must hold for any bytes.
void expectWithinLimits(const Data& file) {
    const auto contents = readHeifBoxes(file).value_or(HeifContents());
    EXPECT_GE(contents.width, 0);
    EXPECT_GE(contents.height, 0);
    EXPECT_GE(contents.exifOrientation, 0);
    EXPECT_LE(contents.exifOrientation, 8);
    EXPECT_LE(contents.exif.size() + contents.xmp.size(), 2 * file.size());
}

TEST(HeifBoxesTest, StaysWithinLimitsWhicheverByteIsDamagedOrMissing) {
    HeifFile file = fileWithBlock("Exif", bigEndian(0, 4) + kTiff);
    file.properties.push_back(box("irot", "\x01"));
    file.items[0].properties.push_back(2);
    file.references = reference("cdsc", 2, 1);
    file.layout.pieceCount = 2;
    const std::string whole = file.bytes();
    ASSERT_EQ(readHeifBoxes(Data::fromText(whole)).value_or(HeifContents()).exif.text(), kTiff);
    for (std::size_t position = 0; position < whole.size(); ++position) {
        SCOPED_TRACE(position);
        expectWithinLimits(Data::fromText(whole.substr(0, position)));
        for (const int byte : {0, 1, 2, 3, 4, 8, 16, 32, 64, 127, 128, 255}) {
            std::string damaged = whole;
            damaged[position] = static_cast<char>(byte);
            expectWithinLimits(Data::fromText(damaged));
        }
    }
}

} // namespace
} // namespace exifcard
