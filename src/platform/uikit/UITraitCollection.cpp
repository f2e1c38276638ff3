#include "platform/uikit/UITraitCollection.h"

#include "platform/uikit/ApplicationPalette.h"
#include "platform/uikit/TraitChanges.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

UITraitCollection& storedTraits() {
    static UITraitCollection traits;
    return traits;
}

constexpr std::string_view kCategoryNames[] = {"XS", "S", "M", "L", "XL", "XXL", "XXXL", "AccessibilityM",
    "AccessibilityL", "AccessibilityXL", "AccessibilityXXL", "AccessibilityXXXL"};

void adaptToolkit(const UITraitCollection& traits) {
    QApplication::setPalette(applicationPalette());
    // The toolkit tells its widgets later, but whoever hears of the change may paint at once.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::ApplicationPaletteChange);
    QApplication::setLayoutDirection(traits.isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    for (QWidget* const widget : QApplication::allWidgets()) {
        widget->update();
    }
}

} // namespace

UIContentSizeCategory contentSizeCategoryNamed(std::string_view name) {
    const auto* const found = std::ranges::find(kCategoryNames, name);
    return found == std::end(kCategoryNames)
               ? UIContentSizeCategory::Large
               : static_cast<UIContentSizeCategory>(std::distance(std::begin(kCategoryNames), found));
}

const UITraitCollection& UITraitCollection::currentTraitCollection() {
    return storedTraits();
}

void UITraitCollection::setCurrentTraitCollection(const UITraitCollection& traits) {
    const UITraitCollection previous = storedTraits();
    if (traits == previous) {
        return;
    }
    storedTraits() = traits;
    if (qApp) {
        adaptToolkit(storedTraits());
    }
    emit TraitChanges::instance().changed(previous);
}

TraitChanges& TraitChanges::instance() {
    static TraitChanges changes;
    return changes;
}

} // namespace exifcard
