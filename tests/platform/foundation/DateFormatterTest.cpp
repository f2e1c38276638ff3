#include "platform/foundation/DateFormatter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <thread>
#include <vector>

namespace exifcard {
namespace {

constexpr const char* kExifPattern = "yyyy:MM:dd HH:mm:ss";

class DateFormatterTest : public testing::Test {
protected:
    static void SetUpTestSuite() { setenv("TZ", "Europe/Berlin", 1); }
};

TEST_F(DateFormatterTest, ReadsTheTextOfMetadata) {
    struct Case {
        std::string_view text;
        std::optional<Date> date; ///< Seconds by `date -d`.
    };
    const Case cases[] = {
        {"2020:01:02 03:04:05", Date{1577930645}},
        {"2020:07:01 12:00:00", Date{1593597600}},
        {"2020:1:2 3:4:5", Date{1577930645}},
        {"2020:02:29 23:59:59", Date{1583017199}},
        {"20:01:02 03:04:05", Date{-61536145763}},
        {"", std::nullopt},
        {"2020:01:02 03:04:05.123", std::nullopt},
        {"2020:01:02 03:04:05 ", std::nullopt},
        {" 2020:01:02 03:04:05", std::nullopt},
        {"2020:01:02  03:04:05", std::nullopt},
        {"2020:01:02 03:04", std::nullopt},
        {"2020:01:02 03:04:", std::nullopt},
        {"2020:01:02 03:04:+5", std::nullopt},
        {"02020:01:02 03:04:05", std::nullopt},
        {"2020:001:02 03:04:05", std::nullopt},
        {"0000:00:00 00:00:00", std::nullopt},
        {"2020:13:01 00:00:00", std::nullopt},
        {"2020:00:01 00:00:00", std::nullopt},
        {"2019:02:29 00:00:00", std::nullopt},
        {"2020:02:30 00:00:00", std::nullopt},
        {"2020:01:02 24:00:00", std::nullopt},
        {"2020:01:02 03:60:00", std::nullopt},
        {"2020:01:02 03:04:60", std::nullopt},
        {"2020:03:29 02:30:00", std::nullopt}, // Skipped by daylight saving time.
        {"    :  :     :  :  ", std::nullopt},
        {"2020-01-02 03:04:05", std::nullopt},
        {"12:34:56", std::nullopt},
        {std::string_view("2020:01:02 03:04:05\0", 20), std::nullopt},
    };
    const DateFormatter formatter(kExifPattern, Locale::system());
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(formatter.dateFromString(c.text), c.date);
    }
}

TEST_F(DateFormatterTest, WritesByPatternAndLocale) {
    struct Case {
        const char* pattern;
        const char* locale;
        double second;
        std::string_view text;
    };
    constexpr double kNewYearsEve2019 = 1577707506.123; // 2019-12-30 13:05:06.123 in Berlin.
    constexpr double kNewYear2021 = 1609498800;         // 2021-01-01 12:00:00 in Berlin.
    constexpr Case cases[] = {
        {kExifPattern, "", kNewYearsEve2019, "2019:12:30 13:05:06"},
        {"YYYY", "", kNewYearsEve2019, "2020"},
        {"YYYY", "en_US", kNewYear2021, "2021"},
        {"YYYY", "de_DE", kNewYear2021, "2020"},
        {"HH:MM:SS", "en_US", kNewYearsEve2019, "13:12:12"},
        {"SSS", "en_US", kNewYearsEve2019, "123"},
        {"dd-MM-YYYY hh:mm:ss a", "en_US", kNewYearsEve2019, "30-12-2020 01:05:06 PM"},
        {"h a", "en_GB", kNewYearsEve2019, "1 pm"},
        {"h a", "ja_JP", kNewYearsEve2019, "1 \u5348\u5F8C"},
        {"MMMM", "", kNewYearsEve2019, "M12"},
        {"dd-MM-yyyy", "ar_EG", kNewYearsEve2019, "\u0663\u0660-\u0661\u0662-\u0662\u0660\u0661\u0669"},
        {"", "en_US", kNewYearsEve2019, ""},
        {"'o''clock", "en_US", kNewYearsEve2019, "o'clock"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(DateFormatter(c.pattern, Locale(c.locale)).stringFromDate(Date{c.second}), c.text);
    }
}

TEST_F(DateFormatterTest, ReadsWhatItWroteInAnyPattern) {
    const Date moment{1577707506};
    constexpr const char* kPatterns[] = {
        "dd.MM.yyyy HH:mm:ss", "EEEE, d. MMMM y 'um' HH:mm:ss", "yyyyMMddHHmmss", kExifPattern};
    for (const char* const locale : {"", "de_DE", "ar_EG", "th_TH", "ja_JP"}) {
        for (const char* const pattern : kPatterns) {
            SCOPED_TRACE(std::string(pattern) + " " + locale);
            const DateFormatter formatter(pattern, Locale(locale));
            const auto text = formatter.stringFromDate(moment);
            EXPECT_EQ(formatter.dateFromString(text), moment);
            EXPECT_FALSE(formatter.dateFromString(" " + text));
            EXPECT_FALSE(formatter.dateFromString(text + "."));
        }
    }
}

TEST_F(DateFormatterTest, TakesAnyPatternAndMoment) {
    const std::string patterns[] = {
        std::string(1'000'000, 'y'), std::string(100'000, '\''), "'open", "[[{", "yyyyT jJ", "\xFF\xFE y"};
    for (const std::string& pattern : patterns) {
        const DateFormatter formatter(pattern, Locale("en_US"));
        EXPECT_EQ(formatter.dateFormat().size(), pattern.size());
        EXPECT_LT(formatter.stringFromDate(Date{0}).size(), 10'000U);
        EXPECT_FALSE(formatter.dateFromString("nonsense"));
    }
    const DateFormatter formatter(kExifPattern, Locale::system());
    EXPECT_EQ(formatter.stringFromDate(Date{std::nan("")}), "");
    EXPECT_NE(formatter.stringFromDate(Date{std::numeric_limits<double>::infinity()}), "");
    EXPECT_NE(formatter.stringFromDate(Date{-1e300}), "");
}

TEST_F(DateFormatterTest, ThreadsMayShareOne) {
    const DateFormatter formatter("EEEE dd MMMM yyyy HH:mm:ss", Locale("en_US"));
    const DateFormatter metadata(kExifPattern, Locale::system());
    const auto useBoth = [&] {
        for (int hour = 0; hour < 300; ++hour) {
            const Date moment{1577707506.0 + hour * 3600};
            EXPECT_EQ(formatter.dateFromString(formatter.stringFromDate(moment)), moment);
            EXPECT_EQ(metadata.dateFromString(metadata.stringFromDate(moment)), moment);
        }
    };
    std::vector<std::jthread> threads(4);
    for (auto& thread : threads) {
        thread = std::jthread(useBoth);
    }
}

TEST_F(DateFormatterTest, WritesPlainEnglishDatesAsICUDoes) {
    const Locale english("en_US");
    const Locale byICU("en_US@calendar=gregorian"); // The same conventions, under a name that only ICU knows.
    const char* const patterns[] = {"dd-MM-YYYY hh:mm:ss a", "EEEE, MMMM d, yyyy", "EEE E d. MMM yy, h:m:s a",
        "H:mm", "y/M/d HH.mm.ss YY Y", "yyyy MM yyy", "MMMMM EEEEE", "'at' h aaaa", "",
        "dd.MM.yyyy HH:mm 'o''clock'", "hh 'h'"};
    for (const char* const pattern : patterns) {
        SCOPED_TRACE(pattern);
        const DateFormatter ours(pattern, english);
        const DateFormatter theirs(pattern, byICU);
        // Each hour of the day, weekday and month; New Year's weeks; before the calendar's reform and before
        // Christ.
        for (double second = -3e9; second < 3e9; second += 7e6 + 3'661) {
            const Date date{second};
            EXPECT_EQ(ours.stringFromDate(date), theirs.stringFromDate(date)) << second;
        }
        for (const double second : {1577836799.0, 1230768000.0, 1609459199.0, -2e10, -6.3e10, -1e11, 5e12}) {
            EXPECT_EQ(ours.stringFromDate({second}), theirs.stringFromDate({second})) << second;
        }
    }
}

} // namespace
} // namespace exifcard
