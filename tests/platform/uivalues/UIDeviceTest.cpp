#include "platform/uivalues/UIDevice.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

class UIDeviceTest : public testing::Test {
protected:
    ~UIDeviceTest() override { setSystemVersion(_usual); }

    std::string _usual = systemVersion();
};

TEST_F(UIDeviceTest, ComparesVersionsAsNumbersAndNotAsTexts) {
    struct Case {
        const char* own;
        const char* wanted;
        bool isAtLeast;
    };
    const Case cases[] = {
        {"13.0", "13.0", true},
        {"13.0", "9.3", true}, // As texts "9" is above "1".
        {"9.3", "10.0", false},
        {"12.4", "13.0", false},
        {"13.0.1", "13.0", true},
        {"13.0", "13.0.1", false},
        {"13.10", "13.9", true},
        {"13.09", "13.9", true}, // A leading zero says nothing.
        {"13.0", "13", true},
        {"13", "13.0", false}, // A text that ends sooner orders first.
        {"14", "13.9.9", true},
        {"13.0", "", true},
        {"", "9.0", false},
        {"13.0", "99999999999999999999", true}, // No number that fits: none.
        {"13.beta", "13.0", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.own << " at least " << c.wanted);
        setSystemVersion(c.own);
        EXPECT_EQ(isSystemVersionAtLeast(c.wanted), c.isAtLeast);
    }
}

TEST_F(UIDeviceTest, IsSystemThirteenUnlessToldOtherwise) {
    EXPECT_EQ(systemVersion(), "13.0");
}

} // namespace
} // namespace exifcard
