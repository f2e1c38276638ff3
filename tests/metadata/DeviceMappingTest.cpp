#include "metadata/DeviceMapping.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace exifcard {
namespace {

TEST(DeviceMappingTest, KnowsEveryDeviceOfTheList) {
    std::ifstream list(EXIFCARD_SOURCE_DIR "/resources/device-names.tsv");
    std::string line;
    std::getline(list, line); // The header.
    std::size_t count = 0;
    for (; std::getline(list, line); ++count) {
        const auto tab = line.find('\t');
        ASSERT_NE(tab, std::string::npos) << line;
        ASSERT_EQ(
            DeviceMapping::getDeviceNameFromMachineIdentifier(line.substr(0, tab)), line.substr(tab + 1));
    }
    EXPECT_GT(count, 5000U);
}

TEST(DeviceMappingTest, AnswersOtherTextsAsTheyAre) {
    for (const char* const text :
        {"", "Canon EOS 5D", "iPad1", "iPad1,1 ", "ipad1,1", "!", "~~~~", "identifier"}) {
        EXPECT_EQ(DeviceMapping::getDeviceNameFromMachineIdentifier(text), text);
    }
}

} // namespace
} // namespace exifcard
