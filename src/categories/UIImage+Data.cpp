#include "categories/UIImage+Resize.h"
#include "platform/coreimage/CIFilter.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/TemporaryFiles.h"
#include "platform/foundation/URL.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/UIScreen.h"

#include <cerrno>
#include <mutex>
#include <utility>

namespace exifcard {
namespace {

constexpr std::int64_t kMostRedrawnPixels = 1'048'576;
constexpr std::int64_t kFirstDepthLeftAlone = 9;

/// Where the main queue leaves the image; the completion may look before.
class ResultSlot {
public:
    std::shared_ptr<UIImage> load() const {
        const std::lock_guard lock(_mutex);
        return _image;
    }
    void store(std::shared_ptr<UIImage> image) {
        const std::lock_guard lock(_mutex);
        _image = std::move(image);
    }

private:
    mutable std::mutex _mutex;
    std::shared_ptr<UIImage> _image; // Guarded by _mutex.
};

void handOver(const std::string& path, const std::shared_ptr<ResultSlot>& slot) {
    const auto file = Data::mappedFile(path);
    auto image = file ? imageWithData(*file) : nullptr;
    debugLog("Image Path %@  and image %@", {path, image ? "<UIImage>" : "(null)"});
    DispatchQueue::mainQueue().async([image = std::move(image), path, slot] {
        slot->store(image);
        static_cast<void>(isDeletableFile(path));
    });
}

/// False where the folder cannot be made.
bool writeLargeImage(const Data& data, const std::shared_ptr<ResultSlot>& slot) {
    const std::string folder = temporaryDirectory() + "largeImage";
    if (!isWritableFile(temporaryDirectory())) {
        return true;
    }
    if (const auto failure = makeOneFolder(folder)) {
        debugLog("ERROR %@", {*failure});
        return false;
    }
    const std::string path = folder + ".temp.jpg"; // Intended: beside the folder, not in it.
    errno = 0;
    const bool isWritten = writeFileAtomically(path, data);
    const std::string failure = isWritten ? "(null)" : lastFileError();
    if (isWritten) {
        handOver(path, slot);
    }
    debugLog("ERROR %@", {failure}); // Intended: also when there is none.
    return true;
}

/// Whether drawing it later would cost much more than drawing it now.
bool isRedrawn(const UIImage& image, const Dictionary& properties) {
    const auto pixels = std::int64_t(image.storedWidth()) * image.storedHeight();
    return pixels <= kMostRedrawnPixels &&
           properties.objectForKey(kCGImagePropertyDepth).integerValue() < kFirstDepthLeftAlone;
}

} // namespace

void imageWithVeryLargeNSData(const std::optional<Data>& data,
    std::function<void(const std::shared_ptr<UIImage>& image)> completionBlock) {
    DispatchQueue::globalQueue(DispatchQueue::Priority::High)
        .async([data, completionBlock = std::move(completionBlock)] {
            debugLog("imageFetchCompletionHandler %@ ", {data ? Value(*data) : nothing()});
            const auto slot = std::make_shared<ResultSlot>();
            if (!data || writeLargeImage(*data, slot)) {
                // Intended: the main queue may not have handed the image over yet.
                completionBlock(slot->load());
            }
        });
}

std::shared_ptr<UIImage> imageFromDNGImageNSData(const Data& data) {
    const auto filter = CIFilter::filterWithImageData(data, kAdobeRawImageType);
    return filter ? filter->outputImage() : nullptr;
}

std::shared_ptr<UIImage> imageFromRAWData(const std::optional<Data>& data) {
    if (!data || data->empty()) {
        return nullptr;
    }
    const auto source = CGImageSourceCreateWithData(*data);
    const auto properties = CGImageSourceCopyPropertiesAtIndex(*source, 0);
    const auto decoded = imageWithSource(*source, properties);
    if (!decoded) {
        return nullptr;
    }
    const auto image = [&decoded](std::shared_ptr<const PixelSource> pixels) {
        return std::make_shared<UIImage>(std::move(pixels), decoded->storedWidth(), decoded->storedHeight(),
            decoded->orientation(), UIScreen::mainScreen().scale);
    };
    const bool isAnimated = CGImageSourceGetCount(*source) > 1;
    if (isAnimated || !isRedrawn(*decoded, *properties)) {
        return image(decoded->pixelSource());
    }
    const auto redrawn = UIImage::imageWithBitmap(decoded->bitmap());
    return redrawn ? image(redrawn->pixelSource()) : nullptr;
}

} // namespace exifcard
