// The module "pixels-vips": every kind of picture but JPEG.
#include "platform/imageio/pixels/VipsCoder.h"

extern "C" [[gnu::visibility("default")]] const exifcard::PixelCoder* exifcardPixelCoder() {
    return exifcard::VipsCoder::start();
}

extern "C" [[gnu::visibility("default")]] const exifcard::BitmapTransformer* exifcardBitmapTransformer() {
    return exifcard::VipsCoder::start();
}
