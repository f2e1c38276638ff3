// The module "raw": cameras' raw pictures.
#include "platform/coreimage/libraw/RawDecoder.h"

extern "C" [[gnu::visibility("default")]] const exifcard::RawDeveloper* exifcardRawDeveloper() {
    static const exifcard::RawDecoder decoder;
    return &decoder;
}
