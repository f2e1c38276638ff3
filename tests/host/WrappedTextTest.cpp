#include "host/WrappedText.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

TEST(WrappedTextTest, TakesNoRoomWithoutText) {
    EXPECT_EQ(WrappedText().size(), QSize(0, 0));
    EXPECT_EQ(WrappedText(QString(), {QFont(), 20, 2}, 100).size(), QSize(0, 0));
}

TEST(WrappedTextTest, KeepsToItsWidthAndLinesAndSaysSo) {
    const QString text = QStringLiteral("a caption that is much longer than one line of its bubble");
    const WrappedText whole(text, {QFont(), 20, 0}, 100);
    EXPECT_FALSE(whole.isCut());
    EXPECT_GT(whole.size().height(), 40);
    const WrappedText cut(text, {QFont(), 20, 2}, 100);
    EXPECT_TRUE(cut.isCut());
    EXPECT_EQ(cut.size().height(), 40);
    EXPECT_LE(cut.size().width(), 100);
}

} // namespace
} // namespace exifcard
