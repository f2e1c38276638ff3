// The module "pixels": JPEG and scaling.
#include "platform/imageio/pixels/JpegCoder.h"
#include "platform/imageio/pixels/Resampler.h"

namespace exifcard {
namespace {

// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted through its base.
class Scaler final : public BitmapScaler {
public:
    std::optional<Bitmap> resampled(
        const Bitmap& bitmap, const CGRect& region, PixelSize size) const override {
        return resampledBitmap(bitmap, region, size);
    }
};

} // namespace
} // namespace exifcard

extern "C" [[gnu::visibility("default")]] const exifcard::PixelCoder* exifcardPixelCoder() {
    static const exifcard::JpegCoder coder;
    return &coder;
}

extern "C" [[gnu::visibility("default")]] const exifcard::BitmapScaler* exifcardBitmapScaler() {
    static const exifcard::Scaler scaler;
    return &scaler;
}
