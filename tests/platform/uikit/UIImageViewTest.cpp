#include "platform/uikit/UIImageView.h"

#include "platform/uikit/ContentFitting.h"
#include "platform/uikit/UIImage+Qt.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/UIImage.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QTest>

#include <atomic>
#include <thread>

namespace exifcard {
namespace {

QImage plainPicture(int width, int height, const QColor& color) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// Red above, blue below.
QImage twoColors(int width, int height) {
    QImage image = plainPicture(width, height, Qt::red);
    for (int y = height / 2; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.setPixelColor(x, y, Qt::blue);
        }
    }
    return image;
}

/// Decodes when it is told to, and on whichever thread asks.
class LazyPixels : public PixelSource {
public:
    explicit LazyPixels(const QImage& image) : _image(imageFromQImage(image)) {}
    std::shared_ptr<const Bitmap> decode(std::optional<CGSize>) const override {
        isAsked = true;
        while (!isReleased) {
            std::this_thread::yield();
        }
        ++decodings;
        return isBroken ? nullptr : _image->bitmap();
    }

    std::atomic<bool> isReleased = true;
    mutable std::atomic<bool> isAsked = false;
    std::atomic<bool> isBroken = false;
    mutable std::atomic<int> decodings = 0;

private:
    std::shared_ptr<UIImage> _image;
};

QColor centerOf(QWidget& view) {
    const QImage image = view.grab().toImage();
    return image.pixelColor(image.rect().center());
}

class ImageView : public UIImageView {
public:
    ImageView() {
        resize(20, 20);
        setBackgroundColor(UIColor::whiteColor());
    }
};

TEST(UIImageQtTest, GivesBackThePixelsItWasGiven) {
    QImage image = twoColors(5, 4);
    EXPECT_EQ(qImageFromUIImage(*imageFromQImage(image)), image);
    QImage translucent(3, 3, QImage::Format_ARGB32_Premultiplied);
    translucent.fill(QColor(0, 255, 0, 128));
    const QImage back = qImageFromUIImage(*imageFromQImage(translucent, 2));
    EXPECT_EQ(back.pixelColor(1, 1), QColor(0, 255, 0, 128));
    EXPECT_EQ(imageFromQImage(QImage()), nullptr);
}

TEST(UIImageQtTest, TurnsTheStoredPixelsUpright) {
    const auto stored = imageFromQImage(twoColors(6, 4));
    const auto upright = [&stored](UIImageOrientation orientation) {
        return qImageFromUIImage(UIImage(stored->pixelSource(), 6, 4, orientation));
    };
    EXPECT_EQ(upright(UIImageOrientation::Down).pixelColor(0, 0), QColor(Qt::blue));
    // Turned clockwise, what was below is at the left.
    const QImage right = upright(UIImageOrientation::Right);
    EXPECT_EQ(right.size(), QSize(4, 6));
    EXPECT_EQ(right.pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(right.pixelColor(3, 0), QColor(Qt::red));
}

TEST(ContentFittingTest, PutsAPictureWhereItsModeSays) {
    using Mode = UIViewContentMode;
    struct Case {
        Mode mode;
        QRectF place;
    };
    const Case cases[] = {
        {Mode::ScaleToFill, {0, 0, 100, 50}},
        {Mode::ScaleAspectFit, {37.5, 0, 25, 50}},
        {Mode::ScaleAspectFill, {0, -75, 100, 200}},
        {Mode::Redraw, {0, 0, 100, 50}},
        {Mode::Center, {45, 15, 10, 20}},
        {Mode::Top, {45, 0, 10, 20}},
        {Mode::Bottom, {45, 30, 10, 20}},
        {Mode::Left, {0, 15, 10, 20}},
        {Mode::Right, {90, 15, 10, 20}},
        {Mode::TopLeft, {0, 0, 10, 20}},
        {Mode::TopRight, {90, 0, 10, 20}},
        {Mode::BottomLeft, {0, 30, 10, 20}},
        {Mode::BottomRight, {90, 30, 10, 20}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.mode));
        EXPECT_EQ(fittedRect({10, 20}, {100, 50}, c.mode), c.place);
    }
}

TEST(ContentFittingTest, ScalesOnlyWhatIsSeenOfALongPicture) {
    const auto panorama = imageFromQImage(plainPicture(20'000, 1, Qt::red));
    FittedContent content{QSizeF(50, 50), UIViewContentMode::ScaleAspectFill, 0, 2};
    const QImage drawn = drawnContent(*panorama, content);
    EXPECT_EQ(drawn.size(), QSize(100, 100));
    EXPECT_EQ(drawn.pixelColor(50, 50), QColor(Qt::red));
}

TEST(ContentFittingTest, MixesNeighboursInsteadOfLeavingPixelsOut) {
    QImage columns = plainPicture(30, 30, Qt::black);
    for (int x = 0; x < 30; x += 2) {
        QPainter(&columns).fillRect(x, 0, 1, 30, Qt::white);
    }
    for (const int side : {20, 10}) { // A little smaller, and much.
        SCOPED_TRACE(side);
        const QImage drawn = drawnContent(
            *imageFromQImage(columns), {QSizeF(side, side), UIViewContentMode::ScaleAspectFill, 0, 1});
        int mixed = 0;
        for (int x = 0; x < side; ++x) {
            const int gray = drawn.pixelColor(x, side / 2).red();
            mixed += gray > 30 && gray < 225 ? 1 : 0;
        }
        EXPECT_GE(mixed, side / 2);
    }
}

TEST(UIImageViewTest, ShowsADecodedPictureAtOnceAndCutsItsCorners) {
    ImageView view;
    view.setImage(imageFromQImage(plainPicture(40, 40, Qt::red)));
    view.layer().cornerRadius = 10;
    view.setBackgroundColor(UIColor::white(0, 0));
    QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::green);
    view.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    EXPECT_EQ(image.pixelColor(10, 10), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::green));
    view.setImage(nullptr);
    EXPECT_NE(centerOf(view), QColor(Qt::red));
}

TEST(UIImageViewTest, TakesAnUnknownModeForScaleToFill) {
    ImageView view;
    view.setContentMode(static_cast<UIViewContentMode>(99));
    EXPECT_EQ(view.contentMode(), UIViewContentMode::ScaleToFill);
}

TEST(UIImageViewTest, DecodesInTheBackgroundAndOnceForASize) {
    ImageView view;
    const auto pixels = std::make_shared<LazyPixels>(plainPicture(40, 40, Qt::red));
    pixels->isReleased = false;
    view.setImage(std::make_shared<UIImage>(pixels, 40, 40));
    EXPECT_EQ(centerOf(view), QColor(Qt::white));
    pixels->isReleased = true;
    EXPECT_TRUE(QTest::qWaitFor([&view] { return centerOf(view) == QColor(Qt::red); }, 5000));
    EXPECT_EQ(centerOf(view), QColor(Qt::red));
    EXPECT_EQ(pixels->decodings, 1);
}

TEST(UIImageViewTest, DropsAPictureThatWasReplacedMeanwhile) {
    ImageView view;
    const auto slow = std::make_shared<LazyPixels>(plainPicture(40, 40, Qt::red));
    slow->isReleased = false;
    view.setImage(std::make_shared<UIImage>(slow, 40, 40));
    centerOf(view);
    EXPECT_TRUE(QTest::qWaitFor([&slow] { return slow->isAsked.load(); }, 5000));
    view.setImage(imageFromQImage(plainPicture(40, 40, Qt::blue)));
    EXPECT_EQ(centerOf(view), QColor(Qt::blue));
    slow->isReleased = true;
    EXPECT_TRUE(QTest::qWaitFor([&slow] { return slow->decodings == 1; }, 5000));
    QTest::qWait(0);
    EXPECT_EQ(centerOf(view), QColor(Qt::blue));
}

TEST(UIImageViewTest, KeepsThePictureInShapeWhileItIsDrawnForAnotherSize) {
    QImage square = plainPicture(40, 40, Qt::red);
    QPainter(&square).fillRect(10, 10, 20, 20, Qt::blue);
    for (const auto mode : {UIViewContentMode::ScaleAspectFill, UIViewContentMode::ScaleAspectFit}) {
        SCOPED_TRACE(static_cast<int>(mode));
        ImageView view;
        view.resize(40, 40);
        view.setContentMode(mode);
        const auto pixels = std::make_shared<LazyPixels>(square);
        view.setImage(std::make_shared<UIImage>(pixels, 40, 40));
        ASSERT_TRUE(QTest::qWaitFor([&view] { return centerOf(view) == QColor(Qt::blue); }, 5000));
        pixels->isReleased = false;
        view.resize(80, 40);
        const QImage waiting = view.grab().toImage();
        pixels->isReleased = true;
        ASSERT_TRUE(QTest::qWaitFor([&pixels] { return pixels->decodings == 2; }, 5000));
        QTest::qWait(0);
        const QImage drawn = view.grab().toImage();
        for (const QPoint place :
            {QPoint(2, 20), QPoint(16, 20), QPoint(24, 20), QPoint(34, 20), QPoint(40, 5)}) {
            EXPECT_EQ(waiting.pixelColor(place * waiting.devicePixelRatio()),
                drawn.pixelColor(place * drawn.devicePixelRatio()))
                << place.x() << ", " << place.y();
        }
    }
}

TEST(UIImageViewTest, StaysEmptyForAPictureThatDoesNotDecode) {
    ImageView view;
    const auto broken = std::make_shared<LazyPixels>(plainPicture(40, 40, Qt::red));
    broken->isBroken = true;
    view.setImage(std::make_shared<UIImage>(broken, 40, 40));
    centerOf(view);
    EXPECT_TRUE(QTest::qWaitFor([&broken] { return broken->decodings == 1; }, 5000));
    QTest::qWait(0);
    EXPECT_EQ(centerOf(view), QColor(Qt::white));
    EXPECT_EQ(broken->decodings, 1);
}

} // namespace
} // namespace exifcard
