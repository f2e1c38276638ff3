#pragma once

#include <string_view>

namespace exifcard {

/// Posted on the main queue when memory is short.
inline constexpr std::string_view kMemoryWarningNotification =
    "UIApplicationDidReceiveMemoryWarningNotification";

/// What a program with screens does around its toolkit's application object.
class UIApplication {
public:
    /// Which fonts a program starts with.
    enum class Fonts {
        All,      ///< Its own and the system's.
        OwnFirst, ///< The system's follow, as a thousand of them take longer to read than all else. What the
                  ///< own cannot write is a box until then.
    };

    /// Before the application object is made: memory, fonts, how pixels are rounded, the look of the
    /// controls.
    ///
    /// @param fonts  For a language that the own fonts cannot write it is always all.
    static void prepare(Fonts fonts = Fonts::All);
    /// After it is made: the own fonts, pictures, accessibility, and the main queue on the toolkit's run
    /// loop.
    static void start();
    /// Tells every screen and observer that memory is short.
    static void postMemoryWarning();
};

} // namespace exifcard
