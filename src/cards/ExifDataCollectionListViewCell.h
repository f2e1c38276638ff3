#pragma once

#include "cards/CardOwner.h"
#include "platform/uikit/UICollectionReusableView.h"
#include "platform/uivalues/CGGeometry.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class BlockOperation;
class Data;
class Dictionary;
class ExifInformation;
class LOTAnimationView;
class Operation;
class UIImage;
struct CardOutlets;

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
    /// Whether a picture that is there keeps a photo's bytes from being decoded anew; true after reuse.
    void setShouldUseCachedImage(bool shouldUseCachedImage);

    /// Makes the photo a favourite, or no longer, in the library; the button shows it at once.
    void favoriteButtonTapped();
    void doubleTapGesture() { favoriteButtonTapped(); }

    /// Asks the owner for the original, if it lies elsewhere.
    void downloadFromICloudButtonTapped() { forceDownloadFromICloudIfNeeded(); }
    void forceDownloadFromICloudIfNeeded();
    /// Shows how far a download is: negative none, 0 waiting, to 1 done.
    /// @param withCompletion  Called once, when that is shown; never for none and waiting.
    void setICloudDownloadProgress(double progress, CompletionBlock withCompletion = nullptr);
    void stopShowingDownloadingFromCloud();
    /// Is cancelled when the cell is reused or goes; null for none.
    void setICloudDownloadOperation(std::shared_ptr<Operation> operation);
    /// Null for a card without cloud badge.
    LOTAnimationView* cloudDownloadingAnimationView() const;

    /// The picture's size on this screen, in pixels.
    CGSize sizeForImageView() const;
    /// Whether a request for the picture is under way.
    bool isRequestingImage() const;

    void prepareForReuse() override;
    /// A pressed card shrinks a little, unless the user wants less motion.
    void setHighlighted(bool highlighted) override;
    /// To change the favourite and to bring the original here.
    std::vector<UIAccessibilityCustomAction> accessibilityCustomActions() override;

protected:
    struct Implementation;

    ExifDataCollectionListViewCell();

    /// Of a subclass's interface file; wires the buttons.
    void setOutlets(const CardOutlets& outlets);
    const CardOutlets& outlets() const;
    /// Hangs the animation into the cloud badge.
    void createAnimationViewWithName(std::string_view name);
    /// With the info of a request that brought the final picture; does nothing here.
    virtual void fetchFileNameWithInfo(const std::shared_ptr<Dictionary>&) {}
    /// Tells readers name and marks; again whenever one of them changes, as when the file name comes.
    virtual void updateAccessibility();
    /// Places the views for the present size, direction and content. Also before a record is shown: its
    /// pictures are asked for in the size of their view, shown yet or not.
    virtual void layoutSubviews() {}
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

    std::unique_ptr<Implementation> _implementation;

private:
    struct Request;

    void updateUI(const ExifOriginalCellBlock& block);
    void updateUI(const ExifOriginalCellBlock& block, bool shouldLoadRawFile);
    void showPictureOfFile(const std::string& path);
    void showThumbnail();
    void showFileName(const std::string& fileName);
    void showFavourite();
    void fetchFileName();
    void cancelOperations();
    bool isOriginalElsewhere() const;

    Request newRequest(const ExifOriginalCellBlock& block);
    void keepRequestID(const Request& request, std::int32_t requestID);
    bool isAbout(const Request& request) const;
    void requestSizedPicture(const Request& request, bool retriesWithData);
    void takeSizedPicture(const Request& request,
        bool retriesWithData,
        const std::shared_ptr<UIImage>& image,
        const std::shared_ptr<Dictionary>& info);
    void fetchImageDirectlyFrom(const std::shared_ptr<ExifInformation>& record);
    void requestPictureData(const Request& request);
    void setPictureHandlers(const Request& request);
    void takePictureData(
        const Request& request, const std::optional<Data>& data, const std::shared_ptr<Dictionary>& info);
    static void scaleDown(const Request& request,
        const Data& data,
        CGSize size,
        const std::weak_ptr<BlockOperation>& operation);
    void giveUp(const Request& request);
    void retryDirectly(const Request& request);
    static void requestHugePicture(const Request& request, const std::weak_ptr<BlockOperation>& operation);
    static void deliver(const Request& request, const std::shared_ptr<UIImage>& image);
    void setPicture(const std::shared_ptr<UIImage>& image);
    /// The picture that is shown does not decode.
    void dropPicture();
    /// Every way to a picture was tried in vain.
    void showThatNoPictureCame();
    void showRequestedPicture(const std::shared_ptr<UIImage>& image);
    void hideOverlays();
};

} // namespace exifcard
