#include "host/HostColors.h"

#include <cstdint>

namespace exifcard {
namespace {

constexpr RGBA rgb(std::uint32_t hex) {
    constexpr double kGreatest = 255;
    return {((hex >> 16) & 0xFF) / kGreatest, ((hex >> 8) & 0xFF) / kGreatest, (hex & 0xFF) / kGreatest, 1};
}

UIColor pair(std::uint32_t light, std::uint32_t dark) {
    return UIColor(rgb(light), rgb(dark));
}

} // namespace

UIColor HostColors::secondaryText() {
    return pair(0x6A6A6E, 0x9C9CA1);
}

UIColor HostColors::hairline() {
    return pair(0xDCDCDE, 0x2A2A2C);
}

UIColor HostColors::chrome() {
    return pair(0xFBFBFB, 0x0B0B0C);
}

UIColor HostColors::field() {
    return pair(0xF0F0F1, 0x17171A);
}

UIColor HostColors::fieldButton() {
    return pair(0xD4D4D6, 0x3A3A3D);
}

UIColor HostColors::grabber() {
    return pair(0xC7C7CB, 0x4A4A4E);
}

UIColor HostColors::outgoingBubble() {
    return pair(0x22262F, 0x33373F);
}

UIColor HostColors::outgoingText() {
    return UIColor::whiteColor();
}

UIColor HostColors::incomingBubble() {
    return pair(0xECECEC, 0x1C1C1E);
}

UIColor HostColors::placeholder() {
    return pair(0xF6F6F6, 0x171717);
}

UIColor HostColors::onAmber() {
    return UIColor::blackColor();
}

} // namespace exifcard
