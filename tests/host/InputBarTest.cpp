#include "host/InputBar.h"

#include "host/SheetButton.h"
#include "platform/uikit/UITraitCollection.h"

#include <gtest/gtest.h>

#include <QLineEdit>

namespace exifcard {
namespace {

bool standsOnTheRight(QLineEdit& line) {
    line.grab(); // Scrolls the text to its place.
    const QRect cursor = line.inputMethodQuery(Qt::ImCursorRectangle).toRect();
    return cursor.center().x() > line.width() / 2;
}

TEST(InputBarTest, AnEmptyLineBeginsWithTheWindowsLanguageAndATextWithItsOwn) {
    QWidget window;
    InputBar bar(&window);
    bar.resize(375, bar.heightForWidth(375));
    bar.grab(); // Lays it out.
    auto& line = *bar.findChild<QLineEdit*>();
    EXPECT_FALSE(standsOnTheRight(line));

    window.setLayoutDirection(Qt::RightToLeft);
    EXPECT_TRUE(standsOnTheRight(line));
    line.setText(QStringLiteral("Hello"));
    EXPECT_FALSE(standsOnTheRight(line));
    line.setText(QStringLiteral("\u0633\u0644\u0627\u0645"));
    line.end(false);
    EXPECT_TRUE(standsOnTheRight(line));
    line.clear();
    EXPECT_TRUE(standsOnTheRight(line));

    window.setLayoutDirection(Qt::LeftToRight);
    EXPECT_FALSE(standsOnTheRight(line));
}

TEST(InputBarTest, AFailureIsReadInFullAtTheLargestText) {
    struct Case {
        UIContentSizeCategory category;
        bool isButtonBelow;
    };
    for (const Case& c : {Case{UIContentSizeCategory::Large, false},
             Case{UIContentSizeCategory::AccessibilityExtraExtraExtraLarge, true}}) {
        SCOPED_TRACE(c.isButtonBelow);
        UITraitCollection traits;
        traits.preferredContentSizeCategory = c.category;
        UITraitCollection::setCurrentTraitCollection(traits);
        QWidget window;
        InputBar bar(&window);
        bar.showFailedInsertion({.error = "the disk is full", .message = MSMessage(), .text = ""});
        bar.resize(375, bar.heightForWidth(375));
        bar.grab();
        const auto& button = *bar.findChild<SheetButton*>();
        EXPECT_EQ(button.x() < bar.width() / 3, c.isButtonBelow);
        EXPECT_LE(button.geometry().bottom(), button.parentWidget()->height());
    }
    UITraitCollection::setCurrentTraitCollection({});
}

} // namespace
} // namespace exifcard
