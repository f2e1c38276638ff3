#include "platform/imageio/ImageDrawing.h"

#include "platform/foundation/Dictionary.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/EncodedPixels.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/PixelModules.h"
#include "platform/imageio/RawPixels.h"

#include <limits>
#include <string>
#include <string_view>

namespace exifcard {
namespace {

bool isDrawable(std::string_view type) {
    return canDecode(type) || isRawType(type);
}

} // namespace

std::shared_ptr<UIImage> imageWithData(const Data& data) {
    const auto source = CGImageSourceCreateWithData(data);
    return isDrawable(CGImageSourceGetType(*source))
               ? imageWithSource(*source, CGImageSourceCopyPropertiesAtIndex(*source, 0))
               : nullptr;
}

std::shared_ptr<UIImage> imageWithSource(const CGImageSource& source, const DictionaryPtr& properties) {
    const std::string& type = CGImageSourceGetType(source);
    if (!properties || !isDrawable(type)) {
        return nullptr;
    }
    const auto width = properties->objectForKey(kCGImagePropertyPixelWidth).integerValue();
    const auto height = properties->objectForKey(kCGImagePropertyPixelHeight).integerValue();
    constexpr auto kMost = std::numeric_limits<int>::max();
    if (width <= 0 || height <= 0 || width > kMost || height > kMost) {
        return nullptr;
    }
    const auto orientation = properties->objectForKey(kCGImagePropertyOrientation).integerValue();
    const Data& file = CGImageSourceGetData(source);
    const PixelSize size = {static_cast<int>(width), static_cast<int>(height)};
    return std::make_shared<UIImage>(isRawType(type) ? rawPixels(file, size) : encodedPixels(file, type),
        size.width, size.height, imageOrientationFromExif(orientation));
}

} // namespace exifcard
