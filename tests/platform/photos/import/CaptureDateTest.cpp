#include "platform/photos/import/CaptureDate.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string_view>

namespace exifcard {
namespace {

class CaptureDateTest : public testing::Test {
protected:
    void SetUp() override {
        setenv("TZ", "Europe/Berlin", 1);
        tzset();
    }
    void TearDown() override {
        unsetenv("TZ");
        tzset();
    }
};

TEST_F(CaptureDateTest, ReadsWhatCamerasAndEditorsWrite) {
    struct Case {
        std::string_view text;
        std::string_view offset;
        std::string_view fraction;
        double seconds; // As `date -d … +%s` tells.
    };
    constexpr Case cases[] = {
        {"2024:05:06 07:08:09", "", "", 1714972089},       // Summer time in Berlin.
        {"2024:01:06 07:08:09", "", "", 1704521289},       // Winter time.
        {"2024:05:06 07:08:09", "+00:00", "", 1714979289}, //
        {"2024:05:06 07:08:09", "-03:30", "25", 1714991889.25},
        {"2024:05:06 07:08:09", "junk", "", 1714972089},
        {"2024-05-06T07:08:09Z", "+02:00", "", 1714979289}, // Its own offset comes first.
        {"2024-05-06T07:08:09.5+0200", "", "", 1714972089.5}, {"2024-05-06T07:08:09+02", "", "", 1714972089},
        {"2024-05-06", "Z", "", 1714953600}, {"2024-05-06T07:08", "Z", "", 1714979280},
        {"1969:12:31 23:59:59", "Z", "", -1}, {"2024:02:29 23:59:60", "Z", "", 1709251200}, // A leap second.
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const auto date = captureDate(c.text, c.offset, c.fraction);
        ASSERT_TRUE(date.has_value());
        EXPECT_DOUBLE_EQ(date->secondsSince1970, c.seconds);
    }
}

TEST_F(CaptureDateTest, AnswersNothingForWhatIsNoDate) {
    for (const std::string_view text : {"", "0000:00:00 00:00:00",
             "    :  :     :  :  ", "2023:02:29 00:00:00", "2024:13:01 00:00:00", "2024:05:06 24:00:00",
             "2024:05:06 07:60:00", "2024:05:06 07:", "2024:05:06 -1:00:00", "24:05:06", "yesterday"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(captureDate(text).has_value());
    }
}

} // namespace
} // namespace exifcard
