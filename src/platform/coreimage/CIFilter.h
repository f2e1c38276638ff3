#pragma once

#include "platform/foundation/Data.h"

#include <memory>
#include <string_view>

namespace exifcard {

class UIImage;

/// Any type of raw file works as a hint.
inline constexpr std::string_view kAdobeRawImageType = "com.adobe.raw-image";

/// Develops the bytes of a camera's raw file.
class CIFilter {
public:
    /// @param typeHint  What the bytes are taken to be.
    /// @return Null when the hint is no type of raw file.
    static std::shared_ptr<const CIFilter> filterWithImageData(Data imageData, std::string_view typeHint);

    /// The picture at full size, upright, at scale 1. Its size is known at once; it is made each time that it
    /// is drawn, from a preview in the file where that is large enough. Null for what is no raw picture of a
    /// known camera.
    std::shared_ptr<UIImage> outputImage() const;

private:
    explicit CIFilter(Data imageData) : _imageData(std::move(imageData)) {}

    Data _imageData;
};

} // namespace exifcard
