#include "host/SheetButton.h"

#include "platform/uikit/UITraitCollection.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

TEST(SheetButtonTest, AMirroredWindowKeepsTheOrderOfATextsSigns) {
    UITraitCollection::setCurrentTraitCollection({}); // Whatever a test before has left.
    SheetButton button(SheetButton::Kind::Filled, QStringLiteral("Choose a folder\u2026"), nullptr);
    button.resize(200, 40);
    const QImage plain = button.grab().toImage();
    UITraitCollection::setCurrentTraitCollection({.isRightToLeft = true});
    EXPECT_EQ(button.grab().toImage(), plain);
    UITraitCollection::setCurrentTraitCollection({});
}

} // namespace
} // namespace exifcard
