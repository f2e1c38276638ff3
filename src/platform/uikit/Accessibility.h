#pragma once

#include <QString>

#include <cstdint>
#include <functional>

class QWidget;

namespace exifcard {

/// What a view is to a screen reader; the platform's bits.
using UIAccessibilityTraits = std::uint64_t;
inline constexpr UIAccessibilityTraits kUIAccessibilityTraitNone = 0;
inline constexpr UIAccessibilityTraits kUIAccessibilityTraitButton = 1;
inline constexpr UIAccessibilityTraits kUIAccessibilityTraitImage = 4;
inline constexpr UIAccessibilityTraits kUIAccessibilityTraitSelected = 8;
inline constexpr UIAccessibilityTraits kUIAccessibilityTraitStaticText = 64;
inline constexpr UIAccessibilityTraits kUIAccessibilityTraitNotEnabled = 256;
inline constexpr UIAccessibilityTraits kUIAccessibilityTraitUpdatesFrequently = 512;
inline constexpr UIAccessibilityTraits kUIAccessibilityTraitHeader = 65536;

/// What a screen reader can do with an element beside pressing it.
struct UIAccessibilityCustomAction {
    QString name; ///< As it is read out.
    std::function<void()> actionHandler;
};

/// What the desktop's screen reader is told of a view. Labels and controls of the toolkit are elements by
/// themselves; other views become one with a label. An element hides its children; a view that has a label
/// and is said to be none is a group of that name.
void setAccessibilityLabel(QWidget& view, const QString& label);
QString accessibilityLabel(const QWidget& view);
void setAccessibilityValue(QWidget& view, const QString& value);
QString accessibilityValue(const QWidget& view);
void setAccessibilityHint(QWidget& view, const QString& hint);
QString accessibilityHint(const QWidget& view);
void setAccessibilityTraits(QWidget& view, UIAccessibilityTraits traits);
UIAccessibilityTraits accessibilityTraits(const QWidget& view);
void setIsAccessibilityElement(QWidget& view, bool isElement);
bool isAccessibilityElement(const QWidget& view);
/// Whether what lies around the view waits for its answer.
void setAccessibilityViewIsModal(QWidget& view, bool isModal);
bool accessibilityViewIsModal(const QWidget& view);
/// Says a text at once, as for a new message.
void announce(QWidget& view, const QString& text);

/// Makes all of this known to the toolkit; once, after the application object is there.
void installAccessibility();

} // namespace exifcard
