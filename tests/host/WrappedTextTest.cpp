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

TEST(WrappedTextTest, TellsThatLinesOfTheirOwnAreLeftOut) {
    const WrappedText two(QStringLiteral("1\n2"), {QFont(), 20, 2}, 200);
    const WrappedText more(QStringLiteral("1\n2\n3\n4\n5\n6\n7\n8"), {QFont(), 20, 2}, 200);
    EXPECT_EQ(more.size().height(), 40);
    // All that the line holds is shown, not one more.
    EXPECT_GT(more.size().width(), 5 * two.size().width());
}

TEST(WrappedTextTest, BreaksACaptionBetweenItsSettings) {
    const WrappedText::Style style{QFont(), 20, 2};
    const QString text = QStringLiteral("1/200 seconds      ISO 1000000000");
    // "ISO" alone has room beside the first setting.
    const int width = WrappedText(QStringLiteral("1/200 seconds      ISO"), style, 1000).size().width() + 2;
    const QSize size = captionText(text, style, width).size();
    EXPECT_EQ(size.height(), 40);
    EXPECT_LT(size.width(), WrappedText(text, style, width).size().width() * 0.85);
}

} // namespace
} // namespace exifcard
