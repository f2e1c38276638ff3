#pragma once

#include "platform/uivalues/UIColor.h"

namespace exifcard {

/// The colours of the messaging window that no photo screen has; all others come from `Apperance`.
struct HostColors {
    static UIColor secondaryText();
    static UIColor hairline();
    static UIColor chrome(); ///< Of the header and of what lies around the input field.
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
