#include "sending/Conversations.h"

#include "platform/imageio/ImageDrawing.h"

namespace exifcard {
namespace {

/// Shows no fault at the size of a bubble, at a fraction of the bytes of the best.
constexpr double kJPEGQuality = 0.85;

/// The picture with its pixels turned, so that no tag is needed to show it upright; null when it does not
/// decode.
std::shared_ptr<const UIImage> turnedUpright(const UIImage& picture) {
    return drawnImage(picture, picture.size(), CGRect{{0, 0}, picture.size()}, picture.scale());
}

std::optional<EncodedPicture> encodedUprightPicture(const UIImage& picture) {
    EncodedPicture encoded = {.jpeg = UIImageJPEGRepresentation(picture, kJPEGQuality),
        .width = picture.storedWidth(),
        .height = picture.storedHeight()};
    return encoded.jpeg.empty() ? std::nullopt : std::optional(std::move(encoded));
}

std::optional<EncodedPicture> encodedPicture(const UIImage& picture) {
    if (picture.orientation() == UIImageOrientation::Up) {
        return encodedUprightPicture(picture);
    }
    const auto upright = turnedUpright(picture);
    return upright ? encodedUprightPicture(*upright) : std::nullopt;
}

} // namespace

std::shared_ptr<MSConversation> conversationNamed(std::string name) {
    return std::make_shared<MSConversation>(std::move(name), encodedPicture);
}

} // namespace exifcard
