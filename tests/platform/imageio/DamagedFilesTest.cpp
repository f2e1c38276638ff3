#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/UTF8.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/ImageProperties.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace exifcard {
namespace {

using namespace std::string_view_literals;

Data sample(std::string_view name) {
    return Data::mappedFile(std::string(EXIFCARD_TEST_DATA "/").append(name)).value_or(Data());
}

DictionaryPtr propertiesOf(const Data& data) {
    return CGImageSourceCopyPropertiesAtIndex(*CGImageSourceCreateWithData(data), 0);
}

void expectSound(const Dictionary& dictionary);

void expectSound(const Value& value) {
    if (value.text() != nullptr) {
        EXPECT_TRUE(isValidUTF8(*value.text())) << *value.text();
    } else if (const auto* const list = value.arrayView()) {
        EXPECT_FALSE(list->isEmpty());
        for (const Value& element : *list) {
            expectSound(element);
        }
    } else if (const auto* const inner = value.dictionaryView()) {
        expectSound(*inner);
    }
}

/// No empty container, and every text is UTF-8.
void expectSound(const Dictionary& dictionary) {
    EXPECT_FALSE(dictionary.isEmpty());
    for (const auto& [key, value] : dictionary) {
        expectSound(value);
    }
}

class ScratchFile {
public:
    explicit ScratchFile(std::string_view content) : _path(_home.path() / "photo.jpg") {
        std::ofstream(_path, std::ios::binary)
            .write(content.data(), static_cast<std::streamsize>(content.size()));
    }
    const std::filesystem::path& path() const { return _path; }
    CGImageSourcePtr source() const {
        return CGImageSourceCreateWithURL(URL::fileURLWithPath(_path.string()));
    }

private:
    TemporaryHome _home;
    std::filesystem::path _path;
};

TEST(DamagedFilesTest, AnswersSoundlyWhicheverByteIsDamaged) {
    constexpr std::string_view samples[] = {
        "apple-iphone7-makernote.jpg", "pentax-k10d.jpg", "minolta-a2.mrw"};
    for (const std::string_view name : samples) {
        SCOPED_TRACE(name);
        const std::string whole(sample(name).text());
        ASSERT_FALSE(whole.empty());
        for (std::size_t position = 0; position < whole.size(); ++position) {
            std::string damaged = whole;
            damaged[position] = static_cast<char>(damaged[position] == '\xff' ? 0 : 0xff);
            if (const auto properties = propertiesOf(Data::fromText(damaged))) {
                expectSound(*properties);
            }
        }
    }
}

TEST(DamagedFilesTest, AnswersSoundlyWhereverTheFileEnds) {
    constexpr std::string_view samples[] = {"nikon-d70-makernote.jpg", "canon-s40-exif.png", "animated.webp",
        "animated-bad-xmp.gif", "canon-rebel.crw", "panasonic-lx3.rw2"};
    for (const std::string_view name : samples) {
        SCOPED_TRACE(name);
        const Data whole = sample(name);
        ASSERT_FALSE(whole.empty());
        for (std::size_t size = 0; size < whole.size(); size += 31) {
            const auto source = CGImageSourceCreateWithData(whole.slice(0, size));
            EXPECT_LE(CGImageSourceGetCount(*source), whole.size());
            if (const auto properties = CGImageSourceCopyPropertiesAtIndex(*source, 0)) {
                expectSound(*properties);
            }
        }
    }
}

TEST(DamagedFilesTest, NeedsOnlyTheHeadOfAJpeg) {
    const Data whole = sample("canon-1dmk3.jpg");
    const auto scan = whole.text().find("\xff\xda"sv, whole.text().find("\xff\xc0"sv));
    ASSERT_NE(scan, std::string_view::npos);
    const auto properties = propertiesOf(whole.slice(0, scan));
    ASSERT_TRUE(properties);
    EXPECT_EQ(*properties, *propertiesOf(whole));
}

TEST(DamagedFilesTest, AnswersTheSameFromBytesAndFromAMappedFile) {
    for (const std::string_view name :
        {"mwg.jpg"sv, "canon-m50.cr3"sv, "fuji-s5pro.raf"sv, "canon-s40-exif.png"sv}) {
        SCOPED_TRACE(name);
        const Data mapped = sample(name);
        const auto fromFile = propertiesOf(mapped);
        const auto fromBytes = propertiesOf(Data::fromText(mapped.text()));
        ASSERT_TRUE(fromFile && fromBytes);
        EXPECT_EQ(*fromFile, *fromBytes);
    }
}

TEST(DamagedFilesTest, AnswersNothingForAFileCutShortWhileItIsMapped) {
    const ScratchFile file(sample("fuji-s5pro.raf").text());
    std::filesystem::resize_file(file.path(), 200'000); // A small one would have been copied.
    const auto source = file.source();
    ASSERT_TRUE(CGImageSourceCopyPropertiesAtIndex(*source, 0));
    const auto again = file.source();
    std::filesystem::resize_file(file.path(), 100);
    EXPECT_FALSE(CGImageSourceCopyPropertiesAtIndex(*again, 0));
}

TEST(DamagedFilesTest, IsNotLuredBySparseFilesOfGigabytes) {
    // One directory that claims a make, a packet and image resources of about two gigabytes.
    const std::string head("II*\0\x08\0\0\0"
                           "\5\0"
                           "\0\1\3\0\1\0\0\0\1\0\0\0"
                           "\1\1\3\0\1\0\0\0\1\0\0\0"
                           "\x0f\1\2\0\0\0\0\x7f\x80\0\0\0"
                           "\xbc\2\1\0\0\0\0\x7f\x80\0\0\0"
                           "\x49\x86\7\0\0\0\0\x7f\x80\0\0\0"
                           "\0\0\0\0",
        74);
    const ScratchFile file(head);
    std::filesystem::resize_file(file.path(), std::uintmax_t(2) << 30U);
    const auto properties = CGImageSourceCopyPropertiesAtIndex(*file.source(), 0);
    ASSERT_TRUE(properties);
    EXPECT_EQ(properties->objectForKey(kCGImagePropertyPixelWidth), Value(1));
    EXPECT_FALSE(properties->containsKey(kCGImagePropertyTIFFDictionary));
}

} // namespace
} // namespace exifcard
