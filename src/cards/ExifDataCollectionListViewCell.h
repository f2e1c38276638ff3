#pragma once

#include "cards/CardOwner.h"
#include "platform/uikit/UICollectionReusableView.h"
#include "platform/uivalues/CGGeometry.h"

#include <functional>
#include <memory>

namespace exifcard {

class ExifInformation;

/// The card of one photo or video, and the base of the tiles of a grid: shows its picture, marks a favourite,
/// a video and an original that lies elsewhere, and keeps up with all of that while it is reused. Main queue.
class ExifDataCollectionListViewCell : public UICollectionViewCell {
    Q_OBJECT

public:
    /// Answers the cell that shows the same place of the list at that moment; null when none does. What
    /// arrives late goes there.
    using ExifOriginalCellBlock = std::function<ExifDataCollectionListViewCell*()>;
    using CompletionBlock = std::function<void(bool isFinished)>;

    ~ExifDataCollectionListViewCell() override;

    IndexPath indexPath() const;
    void setIndexPath(IndexPath indexPath);
    void setListViewController(std::weak_ptr<CardOwner> listViewController);
    const std::shared_ptr<ExifInformation>& exifInfo() const;
    /// Shows the record; null changes nothing.
    virtual void setExifInfo(
        const std::shared_ptr<ExifInformation>& exifInfo, ExifOriginalCellBlock withExifOriginalCellBlock);

    bool isSelected() const;
    /// Of the selection mode, beside what the collection view knows.
    virtual void setIsSelected(bool isSelected);
    void setShouldDisplayAlbumName(bool shouldDisplayAlbumName);
    void setShouldUseFullResolutionImage(bool shouldUseFullResolutionImage);

    /// Asks the owner for the original, if it lies elsewhere.
    void forceDownloadFromICloudIfNeeded();
    /// Shows how far a download is: negative none, 0 waiting, to 1 done.
    void setICloudDownloadProgress(double progress, CompletionBlock withCompletion = nullptr);
    void stopShowingDownloadingFromCloud();

    /// The picture's size on this screen, in pixels.
    CGSize sizeForImageView() const;

    void prepareForReuse() override;

protected:
    struct Implementation;

    ExifDataCollectionListViewCell();

    std::unique_ptr<Implementation> _implementation;
};

} // namespace exifcard
