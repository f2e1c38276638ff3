#include "platform/uikit/PictureButton.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include <optional>

namespace exifcard {
namespace {

/// The middle of what is drawn in that colour; nothing where none is.
std::optional<QPointF> middleOf(QWidget& view, const QColor& color) {
    const QImage image = view.grab().toImage();
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == color) {
                found |= QRect(x, y, 1, 1);
            }
        }
    }
    return found.isEmpty() ? std::nullopt : std::optional(QRectF(found).center());
}

const UIColor kRed(RGBA{1, 0, 0, 1});
const UIColor kBlue(RGBA{0, 0, 1, 1});

TEST(PictureButtonTest, EnterAndSpaceAndReadersPressIt) {
    PictureButton button({.picture = "backButton", .color = kRed}, QStringLiteral("Back"), nullptr);
    QSignalSpy presses(&button, &QAbstractButton::clicked);
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        QTest::keyClick(&button, key);
    }
    QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(&button);
    EXPECT_EQ(told->role(), QAccessible::Button);
    EXPECT_EQ(told->text(QAccessible::Name), QStringLiteral("Back"));
    told->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&presses] { return presses.count() == 4; }, 5000));
}

TEST(PictureButtonTest, PutsItsDiscWhereItIsPlacedInTheDirectionOfReading) {
    struct Case {
        Qt::Alignment place;
        Qt::LayoutDirection direction;
        QPointF middle;
    };
    const Case cases[] = {
        {Qt::AlignCenter, Qt::LeftToRight, {30, 30}},
        {Qt::AlignTrailing | Qt::AlignTop, Qt::LeftToRight, {60 - 5 - 10, 5 + 10}},
        {Qt::AlignTrailing | Qt::AlignTop, Qt::RightToLeft, {5 + 10, 5 + 10}},
        {Qt::AlignLeading | Qt::AlignBottom, Qt::LeftToRight, {5 + 10, 60 - 5 - 10}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.middle.x());
        PictureButton button(
            {.pictureSide = 15, .discSide = 20, .discColor = kBlue, .place = c.place, .inset = 5}, {},
            nullptr);
        button.setLayoutDirection(c.direction);
        button.resize(60, 60);
        EXPECT_EQ(middleOf(button, Qt::blue), c.middle);
    }
}

TEST(PictureButtonTest, ShowsAnotherPictureWhileItIsNotChecked) {
    PictureButton::Look look{.picture = "favourite_filled", .color = kRed};
    PictureButton button(look, {}, nullptr);
    button.setCheckable(true);
    const QImage plain = button.grab().toImage();
    look.uncheckedPicture = "favourite";
    button.setLook(look);
    EXPECT_NE(button.grab().toImage(), plain);
    button.setChecked(true);
    EXPECT_EQ(button.grab().toImage(), plain);
}

TEST(PictureButtonTest, ItsTextFollowsThePictureAndMirrors) {
    PictureButton button({.pictureSide = 18, .color = kRed, .discSide = 18, .discColor = kBlue}, {}, nullptr);
    button.resize(100, 44);
    button.setText(QStringLiteral("All"));
    EXPECT_LT(middleOf(button, Qt::blue).value().x(), 50);
    button.setLayoutDirection(Qt::RightToLeft);
    EXPECT_GT(middleOf(button, Qt::blue).value().x(), 50);
}

} // namespace
} // namespace exifcard
