// The module "pixels-bmp".
#include "platform/imageio/pixels/BmpCoder.h"

extern "C" [[gnu::visibility("default")]] const exifcard::PixelCoder* exifcardPixelCoder() {
    static const exifcard::BmpCoder coder;
    return &coder;
}
