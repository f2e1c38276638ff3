#include "platform/foundation/Log.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace exifcard {
namespace {

std::string standardErrorOf(LogTarget target, std::string_view debugLine, std::string_view errorLine) {
    testing::internal::CaptureStderr();
    setDebugLogTarget(target);
    debugLog(debugLine);
    errorLog(errorLine);
    setDebugLogTarget(LogTarget::Nowhere);
    return testing::internal::GetCapturedStderr();
}

TEST(LogTest, DebugLinesAreWrittenOnlyWhenWanted) {
    EXPECT_FALSE(isDebugLogWanted());
    EXPECT_EQ(standardErrorOf(LogTarget::Nowhere, "step", "fault"), "exifcard: fault\n");
    EXPECT_EQ(
        standardErrorOf(LogTarget::StandardError, "step", "fault"), "exifcard: step\nexifcard: fault\n");
}

TEST(LogTest, AFileNameCanNeitherForgeALineNorSteerATerminal) {
    EXPECT_EQ(
        standardErrorOf(LogTarget::Nowhere, "", "a\n{}\x1b[2Jé\x7f"), "exifcard: a\\x0a{}\\x1b[2Jé\\x7f\n");
}

TEST(LogTest, ACaptureTakesEveryLine) {
    std::vector<std::string> lines;
    captureLog([&lines](std::string_view line) { lines.emplace_back(line); });
    EXPECT_TRUE(isDebugLogWanted());
    EXPECT_EQ(standardErrorOf(LogTarget::StandardError, "step", "fault"), "");
    captureLog({});
    EXPECT_FALSE(isDebugLogWanted());
    EXPECT_EQ(lines, (std::vector<std::string>{"step", "fault"}));
}

} // namespace
} // namespace exifcard
