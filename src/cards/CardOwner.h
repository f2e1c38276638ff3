#pragma once

#include "platform/uikit/IndexPath.h"

namespace exifcard {

class ExifDataCollectionListViewCell;

/// The screen that shows cards, as they know it. Main queue.
class CardOwner {
public:
    CardOwner() = default;
    virtual ~CardOwner() = default;
    CardOwner(const CardOwner&) = delete;
    CardOwner& operator=(const CardOwner&) = delete;

    virtual void didTapOnShareAsEXIFCard(IndexPath indexPath) = 0;
    virtual void didTapOnFrontSideImageView(IndexPath indexPath) = 0;
    virtual void didTapOnBackSideImageView(IndexPath indexPath) = 0;
    /// Brings the original of the card's photo here.
    virtual void requestToDownloadiCloudAssetAtCell(ExifDataCollectionListViewCell& cell) = 0;
};

} // namespace exifcard
