#include "platform/uikit/SystemFonts.h"

#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFontDatabase>
#include <QTest>

#include <memory>
#include <string>

namespace exifcard {
namespace {

constexpr int kLongestWait = 30'000;

using Pattern = std::unique_ptr<FcPattern, void (*)(FcPattern*)>;

int countOf(FcConfig* fonts) {
    const FcFontSet* const found = FcConfigGetFonts(fonts, FcSetSystem);
    return found == nullptr ? 0 : found->nfont;
}

/// The file that stands for a family, and how its edges are drawn.
std::string matchFor(FcConfig* fonts, const char* family) {
    const Pattern wanted(FcNameParse(reinterpret_cast<const FcChar8*>(family)), FcPatternDestroy);
    FcConfigSubstitute(fonts, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result{};
    const Pattern found(FcFontMatch(fonts, wanted.get(), &result), FcPatternDestroy);
    const std::unique_ptr<FcChar8, void (*)(void*)> text(
        FcPatternFormat(
            found.get(), reinterpret_cast<const FcChar8*>("%{file} %{hintstyle} %{antialias} %{rgba}")),
        std::free);
    return reinterpret_cast<const char*>(text.get());
}

TEST(SystemFontsTest, AreThoseThatTheLibraryReadsByItself) {
    loadSystemFonts();
    const std::unique_ptr<FcConfig, void (*)(FcConfig*)> expected(
        FcInitLoadConfigAndFonts(), FcConfigDestroy);
    EXPECT_GT(countOf(nullptr), 0);
    EXPECT_EQ(countOf(nullptr), countOf(expected.get()));
    for (const char* const family :
        {"sans-serif", "Helvetica", "monospace:lang=ja", "Manrope:pixelsize=12"}) {
        EXPECT_EQ(matchFor(nullptr, family), matchFor(expected.get(), family)) << family;
    }
}

TEST(SystemFontsTest, ComeToAProgramThatStartedWithoutThem) {
    loadSystemFonts();
    const int all = countOf(nullptr);
    loadNoFonts();
    EXPECT_EQ(countOf(nullptr), 0);
    EXPECT_GE(QFontDatabase::addApplicationFont(QStringLiteral(":/fonts/Manrope-Bold.ttf")), 0);
    bool isLoaded = false;
    loadSystemFontsLater([&isLoaded] {
        QFontDatabase::removeAllApplicationFonts();
        isLoaded = true;
    });
    QElapsedTimer time;
    for (time.start(); !isLoaded && time.elapsed() < kLongestWait;) {
        QTest::qWait(1);
    }
    EXPECT_EQ(countOf(nullptr), all);
    EXPECT_TRUE(QFontDatabase::families().contains(QStringLiteral("Manrope")));
}

} // namespace
} // namespace exifcard
