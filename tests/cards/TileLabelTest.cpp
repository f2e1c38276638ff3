#include "cards/TileLabel.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QImage>

#include <ctime>

namespace exifcard {
namespace {

QImage picture(TileLabel& label) {
    QImage image(label.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    label.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

QFont fontOfSize(int pixels) {
    QFont font;
    font.setPixelSize(pixels);
    return font;
}

class TileLabelTest : public testing::Test {
protected:
    TileLabelTest() {
        label.setTextColor(UIColor::white(0));
        label.setAlignment(Qt::AlignRight);
        label.resize(60, 13);
        label.setFont(fontOfSize(10));
        label.setText(QStringLiteral("ISO 800"));
    }

    TileLabel label;
};

TEST_F(TileLabelTest, IsPaintedTheFirstTimeAsEverAfter) {
    const QImage first = picture(label);
    EXPECT_EQ(first, picture(label));
}

TEST_F(TileLabelTest, PlacesItsTextByTheFontThatItHasNow) {
    const QImage before = picture(label);
    label.setFont(fontOfSize(6));
    const QImage small = picture(label);
    EXPECT_NE(small, before);
    EXPECT_EQ(small, picture(label));
}

TEST_F(TileLabelTest, PaintsTheBeginningOfATextOfAMillionCharactersAtOnce) {
    label.setText(QStringLiteral("a\u0301\u0302\u0303").repeated(250'000));
    const std::clock_t begin = std::clock();
    picture(label);
    EXPECT_LT(std::clock() - begin, CLOCKS_PER_SEC / 20); // Of the processor.
    EXPECT_TRUE(label.shownText().endsWith(QChar(0x2026)));
}

} // namespace
} // namespace exifcard
