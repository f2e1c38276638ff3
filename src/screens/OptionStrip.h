#pragma once

namespace Ui {
class StickerPhotosExifViewController;
}

namespace exifcard {

/// Gives the strip below an album its texts, fonts and colours.
void fillOptionStrip(const Ui::StickerPhotosExifViewController& interface);

} // namespace exifcard
