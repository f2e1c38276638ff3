#pragma once

#include <string_view>

namespace exifcard {

/// Posted on the main queue when memory is short.
inline constexpr std::string_view kMemoryWarningNotification =
    "UIApplicationDidReceiveMemoryWarningNotification";

/// What a program with screens does around its toolkit's application object.
class UIApplication {
public:
    /// Before the application object is made: how pixels are rounded, the look of the controls.
    static void prepare();
    /// After it is made: fonts, pictures, accessibility, and the main queue on the toolkit's run loop.
    static void start();
    /// Tells every screen and observer that memory is short.
    static void postMemoryWarning();
};

} // namespace exifcard
