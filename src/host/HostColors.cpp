#include "host/HostColors.h"

#include "appearance/ThemeColors.h"

namespace exifcard {

UIColor HostColors::field() {
    return colorPair("F0F0F1", "17171A");
}

UIColor HostColors::fieldButton() {
    return colorPair("D4D4D6", "3A3A3D");
}

UIColor HostColors::grabber() {
    return colorPair("C7C7CB", "4A4A4E");
}

UIColor HostColors::outgoingBubble() {
    return colorPair("22262F", "33373F");
}

UIColor HostColors::outgoingText() {
    return UIColor::whiteColor();
}

UIColor HostColors::incomingBubble() {
    return colorPair("ECECEC", "1C1C1E");
}

UIColor HostColors::placeholder() {
    return colorPair("F6F6F6", "171717");
}

UIColor HostColors::onAmber() {
    return UIColor::blackColor();
}

} // namespace exifcard
