#pragma once

#include "platform/uivalues/CGGeometry.h"

#include <optional>
#include <string_view>

namespace exifcard {

/// The screen that the system is taken to have, whatever display there is.
struct UIScreen {
    CGSize sizeInPoints = {390, 844};
    double scale = 3;

    CGRect bounds() const { return CGRect{{0, 0}, sizeInPoints}; }

    /// The program's screen; set once at the start, before it is asked.
    static const UIScreen& mainScreen();
    static void setMainScreen(const UIScreen& screen);

    /// Reads "390x844@3". @return Nothing for other texts, or sides or a scale out of reason.
    static std::optional<UIScreen> screenFromText(std::string_view text);
};

} // namespace exifcard
