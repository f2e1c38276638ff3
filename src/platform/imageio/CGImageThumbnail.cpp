#include "platform/imageio/CGImageThumbnail.h"

#include "platform/imageio/EmbeddedPreviews.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/imageio/PixelModules.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/ShrunkSize.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace exifcard {
namespace {

CGSize thumbnailSize(CGSize own, int maximumPixelSize) {
    const double side = maximumPixelSize;
    return shrunkToFit(own, {side, side});
}

/// The stored pixels of a file, of which a thumbnail in it will do.
class PreviewPixels : public PixelSource {
public:
    PreviewPixels(Data file, const UIImage& image)
        : _file(std::move(file))
        , _stored{image.storedWidth(), image.storedHeight()}
        , _picture(image.pixelSource()) {}

    std::shared_ptr<const Bitmap> decode(std::optional<CGSize> smallest) const override {
        const auto wanted = smallest ? wholePixels(*smallest) : std::nullopt;
        const auto preview = wanted ? embeddedPreview(_file, _stored, wanted) : std::nullopt;
        if (preview) {
            auto bitmap = decodedBitmap(preview->jpeg.bytes(), "public.jpeg", wanted);
            if (bitmap && !_file.wasCutShort()) {
                return std::make_shared<const Bitmap>(std::move(*bitmap));
            }
        }
        return _picture->decode(smallest);
    }

private:
    Data _file;
    PixelSize _stored;
    std::shared_ptr<const PixelSource> _picture;
};

/// A thumbnail that is drawn when it is wanted.
class ThumbnailPixels : public PixelSource {
public:
    ThumbnailPixels(UIImage image, CGSize size) : _image(std::move(image)), _size(size) {}

    std::shared_ptr<const Bitmap> decode(std::optional<CGSize> /*smallest*/) const override {
        const auto thumbnail = drawnImage(_image, _size, {{}, _size}, 1);
        return thumbnail ? thumbnail->bitmap() : nullptr;
    }

private:
    UIImage _image;
    CGSize _size; // In whole pixels.
};

} // namespace

std::shared_ptr<UIImage> CGImageSourceCreateThumbnail(
    const CGImageSource& source, const DictionaryPtr& properties, const CGImageThumbnailOptions& options) {
    const auto image = imageWithSource(source, properties);
    if (!image) {
        return nullptr;
    }
    auto pixels = image->pixelSource();
    if (!options.createFromImageAlways) {
        pixels = std::make_shared<PreviewPixels>(CGImageSourceGetData(source), *image);
    }
    const auto orientation = options.createWithTransform ? image->orientation() : UIImageOrientation::Up;
    UIImage full(std::move(pixels), image->storedWidth(), image->storedHeight(), orientation);
    const CGSize size = thumbnailSize(full.size(), options.maximumPixelSize);
    return std::make_shared<UIImage>(std::make_shared<ThumbnailPixels>(std::move(full), size),
        static_cast<int>(size.width), static_cast<int>(size.height));
}

} // namespace exifcard
