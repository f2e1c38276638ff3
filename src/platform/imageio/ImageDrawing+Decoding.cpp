#include "platform/imageio/ImageDrawing.h"

#include "platform/foundation/Dictionary.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/EncodedPixels.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/PixelModules.h"

#include <limits>
#include <string>

namespace exifcard {

std::shared_ptr<UIImage> imageWithData(const Data& data) {
    const auto source = CGImageSourceCreateWithData(data);
    return canDecode(CGImageSourceGetType(*source))
               ? imageWithSource(*source, CGImageSourceCopyPropertiesAtIndex(*source, 0))
               : nullptr;
}

std::shared_ptr<UIImage> imageWithSource(const CGImageSource& source, const DictionaryPtr& properties) {
    const std::string& type = CGImageSourceGetType(source);
    if (!properties || !canDecode(type)) {
        return nullptr;
    }
    const auto width = properties->objectForKey(kCGImagePropertyPixelWidth).integerValue();
    const auto height = properties->objectForKey(kCGImagePropertyPixelHeight).integerValue();
    constexpr auto kMost = std::numeric_limits<int>::max();
    if (width <= 0 || height <= 0 || width > kMost || height > kMost) {
        return nullptr;
    }
    const auto orientation = properties->objectForKey(kCGImagePropertyOrientation).integerValue();
    return std::make_shared<UIImage>(encodedPixels(CGImageSourceGetData(source), type),
        static_cast<int>(width), static_cast<int>(height), imageOrientationFromExif(orientation));
}

} // namespace exifcard
