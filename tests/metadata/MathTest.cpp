#include "metadata/Math.h"

#include "metadata/ExifInformation.h"

#include <gtest/gtest.h>

#include <limits>
#include <numeric>

namespace exifcard {
namespace {

TEST(MathTest, AnswersTheGreatestCommonDivisorOfAllSmallNumbers) {
    for (std::int64_t a = 0; a <= 60; ++a) {
        for (std::int64_t b = 0; b <= 60; ++b) {
            SCOPED_TRACE(testing::Message() << a << ", " << b);
            EXPECT_EQ(Math::gcdWithA(a, b), std::gcd(a, b));
        }
    }
}

TEST(MathTest, KeepsTheSignThatTheRemaindersLeave) {
    EXPECT_EQ(ExifInformation::GCD(-12, 8), -4);  // By 8, -4, 0.
    EXPECT_EQ(ExifInformation::GCD(12, -8), 4);   // By -8, 4, 0.
    EXPECT_EQ(ExifInformation::GCD(-12, -8), -4); // By -8, -4, 0.
    EXPECT_EQ(ExifInformation::GCD(7, 0), 7);
}

TEST(MathTest, TakesTheSmallestNumbers) {
    constexpr auto kSmallest = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(Math::gcdWithA(kSmallest, -1), -1);
    EXPECT_EQ(ExifInformation::GCD(std::numeric_limits<std::int32_t>::min(), -1), -1);
}

} // namespace
} // namespace exifcard
