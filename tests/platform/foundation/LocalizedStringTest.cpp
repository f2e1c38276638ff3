#include "platform/foundation/LocalizedString.h"

#include "platform/foundation/MessageCatalogue.h"
#include "support/LanguageVariables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

namespace exifcard {
namespace {

/// The test catalogue as msgfmt wrote it.
std::vector<std::uint8_t> catalogueBytes() {
    const auto file = Data::mappedFile(EXIFCARD_BINARY_DIR "/tests/platform/foundation/misfit.mo");
    return file ? std::vector(file->bytes().begin(), file->bytes().end()) : std::vector<std::uint8_t>();
}

TEST(MessageCatalogueTest, AnswersTranslationsAndOnlyFittingFormats) {
    struct Case {
        std::string_view key;
        std::optional<std::string_view> text;
        std::optional<std::string_view> format;
    };
    constexpr Case cases[] = {
        {"Loading", "L\u00E4dt \u2026", "L\u00E4dt \u2026"},
        {"%@ of %ld", "%2$ld: %1$@", "%2$ld: %1$@"},
        {"ISO %ld", "ISO %@", std::nullopt},
        {"f/%0.1f", "f/%0.1f%n", std::nullopt},
        {"All", "Alle %s", std::nullopt},
        {"one photo", "ein Foto", "ein Foto"},
        {"Load", std::nullopt, std::nullopt},
        {"", std::nullopt, std::nullopt},
    };
    const auto catalogue = MessageCatalogue::fromData(Data::fromBytes(catalogueBytes()));
    ASSERT_TRUE(catalogue);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.key);
        EXPECT_EQ(catalogue->textForKey(c.key), c.text);
        EXPECT_EQ(catalogue->formatForKey(c.key), c.format);
    }
}

TEST(MessageCatalogueTest, ReadsTheOtherByteOrder) {
    constexpr std::size_t kHeaderNumbers = 7;
    auto bytes = catalogueBytes();
    const auto swapNumber = [&bytes](
                                std::size_t offset) { std::reverse(&bytes[offset], &bytes[offset] + 4); };
    const std::size_t count = bytes[8];
    const std::size_t tables[] = {bytes[12], bytes[16]};
    for (std::size_t index = 0; index < kHeaderNumbers; ++index) {
        swapNumber(index * 4);
    }
    for (const std::size_t table : tables) {
        for (std::size_t index = 0; index < 2 * count; ++index) {
            swapNumber(table + index * 4);
        }
    }
    const auto catalogue = MessageCatalogue::fromData(Data::fromBytes(bytes));
    ASSERT_TRUE(catalogue);
    EXPECT_EQ(catalogue->textForKey("%@ of %ld"), "%2$ld: %1$@");
}

TEST(MessageCatalogueTest, AnswersWholeTextsWhicheverByteIsDamaged) {
    const auto bytes = catalogueBytes();
    ASSERT_FALSE(bytes.empty());
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        for (const int damage : {0x00, 0x7F, 0xFF}) {
            auto damaged = bytes;
            damaged[index] = static_cast<std::uint8_t>(damage);
            const auto catalogue = MessageCatalogue::fromData(Data::fromBytes(damaged));
            const auto format = catalogue ? catalogue->formatForKey("%@ of %ld") : std::nullopt;
            EXPECT_TRUE(!format || formatsAgree("%@ of %ld", *format)) << index;
        }
        const auto cut = MessageCatalogue::fromData(
            Data::fromBytes({bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(index)}));
        EXPECT_TRUE(!cut || cut->textForKey("Loading").value_or("L\u00E4dt \u2026") == "L\u00E4dt \u2026")
            << index;
    }
}

class LocalizedStringTest : public testing::Test {
protected:
    using Settings = LanguageVariables::Settings;

    static std::string zeroIn(const Settings& settings) {
        const LanguageVariables environment(settings);
        resetLocalization();
        return std::string(localizedString("Zero KB"));
    }
    void TearDown() override { resetLocalization(); }
};

TEST_F(LocalizedStringTest, SpeaksTheUsersLanguageWithoutAnInstalledLocale) {
    EXPECT_EQ(zeroIn({{"LANG", "de_DE.UTF-8"}}), "Null KB");
    EXPECT_EQ(zeroIn({{"LANG", "C.UTF-8"}, {"LC_ALL", "de_AT"}}), "Null KB");
    EXPECT_EQ(zeroIn({{"LANGUAGE", "tlh:de"}, {"LANG", "fr_FR.UTF-8"}}), "Null KB");
    EXPECT_EQ(zeroIn({{"LANG", "tlh.UTF-8"}}), "Zero KB");
    EXPECT_EQ(zeroIn({}), "Zero KB");
}

TEST_F(LocalizedStringTest, FillsTheTranslatedFormat) {
    const LanguageVariables environment(Settings{{"LANG", "de_DE.UTF-8"}});
    resetLocalization();
    EXPECT_EQ(localizedStringWithFormat("%@ (%@ bytes)", {"2 KB", "1.500"}), "2 KB (1.500 Byte)");
    EXPECT_EQ(localizedStringWithFormat("no such text %ld", {7}), "no such text 7");
}

TEST_F(LocalizedStringTest, ThreadsMayAskFirst) {
    const LanguageVariables environment(Settings{{"LANG", "de_DE.UTF-8"}});
    resetLocalization();
    std::vector<std::jthread> threads(4);
    for (auto& thread : threads) {
        thread = std::jthread([] { EXPECT_EQ(localizedString("Zero KB"), "Null KB"); });
    }
}

} // namespace
} // namespace exifcard
