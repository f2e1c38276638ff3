#include "platform/uikit/NamedImages.h"
#include "platform/uikit/TraitChanges.h"
#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UITraitCollection.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QPalette>

#include <cmath>

namespace exifcard {
namespace {

/// Makes traits current, and the default ones again at its end.
class Traits {
public:
    explicit Traits(const UITraitCollection& traits) { UITraitCollection::setCurrentTraitCollection(traits); }
    ~Traits() { UITraitCollection::setCurrentTraitCollection({}); }
    Traits(const Traits&) = delete;
    Traits& operator=(const Traits&) = delete;
};

UITraitCollection dark() {
    UITraitCollection traits;
    traits.userInterfaceStyle = UIUserInterfaceStyle::Dark;
    return traits;
}

/// The contrast of two colours as readability guidelines define it, from 1 to 21.
double contrast(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& color) {
        const auto linear = [](float component) {
            return component <= 0.03928F ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

TEST(TraitsTest, ThePaletteFollowsTheAppearanceAndStaysReadable) {
    for (const bool isDark : {false, true}) {
        SCOPED_TRACE(isDark);
        const Traits traits(isDark ? dark() : UITraitCollection());
        const QPalette palette = QApplication::palette();
        EXPECT_EQ(palette.color(QPalette::Window), QColor(isDark ? Qt::black : Qt::white));
        const std::pair<QPalette::ColorRole, QPalette::ColorRole> texts[] = {
            {QPalette::WindowText, QPalette::Window},
            {QPalette::Text, QPalette::Base},
            {QPalette::Text, QPalette::AlternateBase},
            {QPalette::PlaceholderText, QPalette::AlternateBase},
            {QPalette::ButtonText, QPalette::Button},
            {QPalette::HighlightedText, QPalette::Highlight},
            {QPalette::Link, QPalette::Base},
        };
        for (const auto& [text, ground] : texts) {
            SCOPED_TRACE(text);
            EXPECT_GE(contrast(palette.color(text), palette.color(ground)), 4.5);
        }
    }
}

TEST(TraitsTest, LabelsMadeBeforeFollowToo) {
    const QLabel label;
    const Traits traits(dark());
    EXPECT_EQ(label.palette().color(QPalette::WindowText), QColor(Qt::white));
}

TEST(TraitsTest, TellsAChangeOnceWithTheTraitsBefore) {
    int changes = 0;
    auto previousStyle = UIUserInterfaceStyle::Unspecified;
    QObject context;
    QObject::connect(
        &TraitChanges::instance(), &TraitChanges::changed, &context, [&](const UITraitCollection& previous) {
            ++changes;
            previousStyle = previous.userInterfaceStyle;
            EXPECT_EQ(UITraitCollection::currentTraitCollection(), dark());
        });
    UITraitCollection::setCurrentTraitCollection({});
    UITraitCollection::setCurrentTraitCollection(dark());
    UITraitCollection::setCurrentTraitCollection(dark());
    context.disconnect();
    QObject::disconnect(&TraitChanges::instance(), nullptr, &context, nullptr);
    UITraitCollection::setCurrentTraitCollection({});
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(previousStyle, UIUserInterfaceStyle::Light);
}

TEST(TraitsTest, ColoursOutOfRangeAreBounded) {
    EXPECT_EQ(qColor(UIColor(RGBA{2, -1, 0.5, 7})), QColor::fromRgbF(1, 0, 0.5F, 1));
}

/// The colour of the picture's most opaque pixel.
QColor ink(const QPixmap& pixmap) {
    const QImage image = pixmap.toImage();
    QColor found(0, 0, 0, 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > found.alpha()) {
                found = image.pixelColor(x, y);
            }
        }
    }
    return found;
}

TEST(NamedImagesTest, EveryBundledPictureDrawsInTheColourThatIsAskedFor) {
    const QStringList files = QDir(QStringLiteral(":/pictures")).entryList();
    EXPECT_GT(files.size(), 20);
    for (const QString& file : files) {
        SCOPED_TRACE(file.toStdString());
        const std::string name = file.chopped(4).toStdString();
        const bool isWhite = name.starts_with("white_");
        EXPECT_TRUE(hasImageNamed(name));
        const QPixmap picture = imageNamed(name, 24, UIColor(RGBA{1, 0, 0, 1}), 2);
        EXPECT_EQ(picture.size(), QSize(48, 48));
        EXPECT_EQ(picture.deviceIndependentSize(), QSizeF(24, 24));
        EXPECT_EQ(ink(picture), QColor(isWhite ? Qt::white : Qt::red));
    }
}

TEST(NamedImagesTest, FollowsTheAppearanceAndTheColoursOpacity) {
    const UIColor color(RGBA{0, 0, 0, 0.5}, RGBA{1, 1, 1, 0.5});
    EXPECT_NEAR(ink(imageNamed("star_filled", 24, color, 1)).alpha(), 128, 1);
    const Traits traits(dark());
    EXPECT_EQ(ink(imageNamed("star_filled", 24, color, 1)).value(), 255);
}

TEST(NamedImagesTest, AnswersNothingForAnUnknownNameOrSize) {
    EXPECT_TRUE(imageNamed("no such picture", 24, UIColor(), 1).isNull());
    EXPECT_FALSE(hasImageNamed("no such picture"));
    for (const double side : {0.0, -1.0, 1e9, std::nan("")}) {
        EXPECT_TRUE(imageNamed("star", side, UIColor(), 1).isNull());
    }
}

} // namespace
} // namespace exifcard
