#include "platform/foundation/Locale.h"

#include "platform/foundation/UserLanguages.h"
#include "support/LanguageVariables.h"

#include <gmock/gmock.h>

namespace exifcard {
namespace {

using Settings = LanguageVariables::Settings;

TEST(LocaleTest, TheUsersLocaleNeedNotBeInstalled) {
    struct Case {
        Settings settings;
        std::string_view identifier;
    };
    const Case cases[] = {
        {{}, "en_US"},
        {{{"LANG", "C.UTF-8"}}, "en_US"},
        {{{"LANG", "de_DE.UTF-8"}}, "de_DE"},
        {{{"LANG", "de_DE.UTF-8"}, {"LC_MESSAGES", "fr_CA@euro"}}, "fr_CA"},
        {{{"LANG", "de_DE.UTF-8"}, {"LC_MESSAGES", "fr_CA"}, {"LC_ALL", "POSIX"}}, "en_US"},
        {{{"LANG", "sr_RS.UTF-8@latin"}}, "sr_Latn_RS"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.settings));
        const LanguageVariables environment(c.settings);
        EXPECT_EQ(Locale::current().identifier(), c.identifier);
    }
}

TEST(LocaleTest, LanguagesAreTriedFromTheClosestToTheWidest) {
    struct Case {
        Settings settings;
        std::vector<std::string> languages;
    };
    const Case cases[] = {
        {{}, {}},
        {{{"LANG", "de_AT.UTF-8"}}, {"de_AT", "de"}},
        {{{"LANG", "sr_RS.UTF-8@latin"}}, {"sr_RS@latin", "sr@latin", "sr_RS", "sr"}},
        {{{"LANG", "en_GB.UTF-8"}}, {}},
        {{{"LANGUAGE", "de"}}, {"de"}},
        {{{"LANGUAGE", "fr_CA:fr:en:de"}, {"LANG", "C.UTF-8"}}, {"fr_CA", "fr"}},
        {{{"LANGUAGE", "de"}, {"LC_ALL", "C"}}, {}},
        {{{"LANGUAGE", "../../tmp::de:" + std::string(5000, 'x')}, {"LANG", "it_IT"}}, {"de"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.settings));
        const LanguageVariables environment(c.settings);
        EXPECT_EQ(userLanguages(), c.languages);
    }
}

TEST(LocaleTest, OnlyTheUnitedStatesAndTheirKinMeasureInMiles) {
    for (const char* const identifier : {"en_US", "en_LR", "en"}) {
        EXPECT_FALSE(Locale(identifier).usesMetricSystem()) << identifier;
    }
    for (const char* const identifier : {"", "en_GB", "de_DE", "de", "no such locale"}) {
        EXPECT_TRUE(Locale(identifier).usesMetricSystem()) << identifier;
    }
}

TEST(LocaleTest, NamesCountriesInItsLanguage) {
    EXPECT_EQ(Locale("en_US").localizedCountryName("FR"), "France");
    EXPECT_EQ(Locale("de_DE").localizedCountryName("FR"), "Frankreich");
    EXPECT_EQ(Locale("de_DE").localizedCountryName("QQ"), "QQ");
    EXPECT_EQ(Locale("de_DE").localizedCountryName("no code"), "no code");
}

TEST(LocaleTest, ComparisonIgnoresCaseAndNothingElse) {
    const LanguageVariables environment(Settings{{"LANG", "C.UTF-8"}});
    EXPECT_EQ(localizedCaseInsensitiveCompare("abc", "ABC"), 0);
    EXPECT_EQ(localizedCaseInsensitiveCompare("e", "\u00E9"), -1);
    EXPECT_EQ(localizedCaseInsensitiveCompare("b", "A"), 1);
    EXPECT_EQ(localizedCaseInsensitiveCompare("10", "9"), -1);
    EXPECT_NE(localizedCaseInsensitiveCompare("a-b", "ab"), 0);
}

TEST(LocaleTest, ComparisonFollowsTheCurrentLocale) {
    {
        const LanguageVariables swedish(Settings{{"LANG", "sv_SE.UTF-8"}});
        EXPECT_EQ(localizedCaseInsensitiveCompare("\u00E4", "z"), 1);
    }
    const LanguageVariables german(Settings{{"LANG", "de_DE.UTF-8"}});
    EXPECT_EQ(localizedCaseInsensitiveCompare("\u00E4", "z"), -1);
}

} // namespace
} // namespace exifcard
