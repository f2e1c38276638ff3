#include "platform/foundation/Dictionary.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/ImageProperties.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string_view>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

Value valueIn(const Dictionary& properties, std::string_view dictionary, std::string_view key) {
    const Dictionary* const found = properties.objectForKey(dictionary).dictionaryView();
    return found != nullptr ? found->objectForKey(key) : Value();
}

/// Dictionaries that a library keeps as they are.
constexpr std::string_view kWhole[] = {
    kCGImagePropertyTIFFDictionary, kCGImagePropertyGPSDictionary, kCGImagePropertyMakerAppleDictionary};

struct KeptValue {
    std::string_view dictionary;
    std::string_view key;
};
constexpr KeptValue kKept[] = {
    {kCGImagePropertyExifDictionary, kCGImagePropertyExifDateTimeOriginal},
    {kCGImagePropertyExifDictionary, kCGImagePropertyExifOffsetTimeOriginal},
    {kCGImagePropertyExifDictionary, kCGImagePropertyExifSubsecTimeOriginal},
    {kCGImagePropertyExifDictionary, kCGImagePropertyExifExposureTime},
    {kCGImagePropertyExifDictionary, kCGImagePropertyExifUserComment},
    {kCGImagePropertyExifDictionary, kCGImagePropertyExifCustomRendered},
    {kCGImagePropertyIPTCDictionary, kCGImagePropertyIPTCObjectName},
    {kCGImagePropertyIPTCDictionary, kCGImagePropertyIPTCStarRating},
};
constexpr std::string_view kTopLevel[] = {
    kCGImagePropertyPixelWidth, kCGImagePropertyPixelHeight, kCGImagePropertyOrientation};

TEST(LibraryMetadataTest, TellsOfWhatALibraryKeepsTheSameAsAllProperties) {
    std::size_t images = 0;
    for (const auto& entry : fs::recursive_directory_iterator(EXIFCARD_TEST_DATA)) {
        const auto source = CGImageSourceCreateWithURL(URL::fileURLWithPath(entry.path().string()));
        if (!source) {
            continue;
        }
        SCOPED_TRACE(entry.path().filename());
        const auto all = CGImageSourceCopyPropertiesAtIndex(*source, 0);
        const auto [kept, packet] = CGImageSourceCopyLibraryMetadata(*source);
        ASSERT_EQ(all == nullptr, kept == nullptr);
        if (!all) {
            continue;
        }
        ++images;
        for (const auto dictionary : kWhole) {
            EXPECT_EQ(all->objectForKey(dictionary), kept->objectForKey(dictionary)) << dictionary;
        }
        for (const auto& [dictionary, key] : kKept) {
            EXPECT_EQ(valueIn(*all, dictionary, key), valueIn(*kept, dictionary, key)) << key;
        }
        for (const auto key : kTopLevel) {
            EXPECT_EQ(all->objectForKey(key), kept->objectForKey(key)) << key;
        }
    }
    EXPECT_GT(images, 30U);
}

} // namespace
} // namespace exifcard
