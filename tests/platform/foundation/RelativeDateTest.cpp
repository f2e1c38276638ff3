#include "platform/foundation/RelativeDate.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

TEST(RelativeDateTest, CountsInTheLargestUnitThatIsFull) {
    struct Case {
        double secondsAgo;
        std::string_view english;
        std::string_view german;
    };
    constexpr double kDay = 86400;
    constexpr Case cases[] = {
        {0, "now", "jetzt"},
        {59.9, "now", "jetzt"},
        {60, "1 minute ago", "vor 1 Minute"},
        {3599, "59 minutes ago", "vor 59 Minuten"},
        {2 * 3600, "2 hours ago", "vor 2 Stunden"},
        {kDay, "yesterday", "gestern"},
        {3 * kDay, "3 days ago", "vor 3 Tagen"},
        {7 * kDay, "last week", "letzte Woche"},
        {29 * kDay, "4 weeks ago", "vor 4 Wochen"},
        {31 * kDay, "last month", "letzten Monat"},
        {150 * kDay, "4 months ago", "vor 4 Monaten"},
        {366 * kDay, "last year", "letztes Jahr"},
        {10 * 366 * kDay, "10 years ago", "vor 10 Jahren"},
        {-3 * 3600, "in 3 hours", "in 3 Stunden"},
    };
    const Date now{1.7e9};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.english);
        const Date date{now.secondsSince1970 - c.secondsAgo};
        EXPECT_EQ(timeAgoSinceNow(date, now, Locale("en_US")), c.english);
        EXPECT_EQ(timeAgoSinceNow(date, now, Locale("de_DE")), c.german);
    }
}

} // namespace
} // namespace exifcard
