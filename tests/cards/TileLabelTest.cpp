#include "cards/TileLabel.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QImage>

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

} // namespace
} // namespace exifcard
