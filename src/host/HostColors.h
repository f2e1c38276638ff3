#pragma once

#include "platform/uivalues/UIColor.h"

namespace exifcard {

/// The colours of the messaging window that no photo screen has; all others come from `Apperance` and
/// ThemeColors.h.
struct HostColors {
    static UIColor field();
    static UIColor fieldButton();
    static UIColor grabber();
    static UIColor outgoingBubble();
    static UIColor outgoingText();
    static UIColor incomingBubble(); ///< Also of a photo's captions.
    static UIColor placeholder();
    static UIColor onAmber();
};

} // namespace exifcard
