#include "platform/photos/import/FileGroup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace exifcard {
namespace {

std::vector<ScannedFile> filesOf(std::vector<std::string> names) {
    std::ranges::sort(names);
    std::vector<ScannedFile> files;
    for (const std::string& name : names) {
        if (const FileKind kind = fileKindOfName(name); kind != FileKind::Other) {
            files.push_back({name, kind});
        }
    }
    return files;
}

/// "a.jpg+a.mov b.png": the assets that names alone make.
std::string assetsOf(const std::vector<std::string>& names) {
    std::string text;
    for (const FileGroup& group : groupsOfFiles(filesOf(names))) {
        for (const AssetFiles& asset : assetsOfGroup(group)) {
            text += (text.empty() ? "" : " ") + group.files[asset.primary].name;
            for (const auto other : {asset.raw, asset.video}) {
                text += other ? "+" + group.files[*other].name : "";
            }
        }
    }
    return text;
}

TEST(FileGroupTest, PutsTheFilesOfOneShotTogether) {
    struct Case {
        std::vector<std::string> names;
        std::string assets;
    };
    const Case cases[] = {
        {{"a.jpg", "b.png"}, "a.jpg b.png"},
        {{"IMG_1.HEIC", "IMG_1.MOV"}, "IMG_1.HEIC+IMG_1.MOV"},
        {{"IMG_1.HEIC", "img_1.mov"}, "IMG_1.HEIC+img_1.mov"},
        {{"a.jpg", "a.CR2"}, "a.jpg+a.CR2"},
        {{"a.jpeg", "a.dng", "a.mov"}, "a.jpeg+a.dng+a.mov"},
        {{"a.dng", "a.mov"}, "a.dng a.mov"}, // A video pairs with a picture alone.
        {{"a.png", "a.mov"}, "a.mov a.png"}, // No camera writes the two together.
        {{"a.jpg", "a.mp4"}, "a.jpg a.mp4"}, //
        {{"a.heic", "a.jpg", "a.mov"}, "a.heic+a.mov a.jpg"},
        {{"a.jpg", "a.txt", ".a.jpg", "a", "b.xmp"}, "a.jpg"},
        {{"a.b.jpg", "a.jpg"}, "a.b.jpg a.jpg"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.assets);
        EXPECT_EQ(assetsOf(c.names), c.assets);
    }
}

TEST(FileGroupTest, FindsTheSidecarUnderBothNames) {
    struct Case {
        std::vector<std::string> names;
        std::string sidecar; // Of IMG.JPG.
    };
    const Case cases[] = {
        {{"IMG.JPG", "IMG.xmp"}, "IMG.xmp"},
        {{"IMG.JPG", "IMG.JPG.xmp"}, "IMG.JPG.xmp"},
        {{"IMG.JPG", "IMG.JPG.XMP", "IMG.xmp"}, "IMG.JPG.XMP"},
        {{"IMG.JPG", "IMG.CR2", "IMG.CR2.xmp"}, ""},
        {{"IMG.JPG", "IMG2.xmp"}, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.names.back());
        const auto groups = groupsOfFiles(filesOf(c.names));
        ASSERT_EQ(groups.size(), 1U);
        const auto picture = std::ranges::find(groups[0].files, "IMG.JPG", &ScannedFile::name);
        const ScannedFile* const sidecar = sidecarOf(groups[0], *picture);
        EXPECT_EQ(sidecar != nullptr ? sidecar->name : "", c.sidecar);
    }
}

} // namespace
} // namespace exifcard
