#pragma once

#include "platform/uikit/NSLayoutConstraint.h"
#include "screens/ExifDataListViewController.h"
#include "screens/SendingOutcome.h"

#include <QPointer>

#include <memory>
#include <vector>

namespace exifcard {

class MSConversation;
class MSMessagesAppViewController;
class UISwitch;

/// A list that sends: a tap on a photo puts it into the input field of the conversation.
class StickerPhotosExifViewController : public ExifDataListViewController {
    Q_OBJECT

public:
    StickerPhotosExifViewController() = default;

    PHAssetCollectionPtr assetCollection;         ///< What is shown; null: all photos.
    std::shared_ptr<MSConversation> conversation; ///< Null: nothing is sent.
    /// Asked for less room once a photo is on its way.
    std::weak_ptr<MSMessagesAppViewController> messagesViewController;
    SendingObserver sendingObserver; ///< May be empty.

    QPointer<QWidget> advancedHolderView; ///< The strip below the list.
    NSLayoutConstraint advancedViewHeightConstraint;
    QPointer<UISwitch> includeExifAsTextSwitch;

    void viewDidLoad() override;
    void refresh() override;
    void didSelectItemAtIndexPath(UICollectionView& view, IndexPath indexPath) override;

    /// Shows the strip below an album, and hides it below all photos.
    void updateAdvancedViewUI();
    void includeTextAsSwitchValueChanged(bool isOn);
    /// Each photo is asked for at once; one under way keeps the screen.
    void sendPhotoWithEXIF(const Record& record);
    /// Intended: an experiment that nothing calls. Loads the 24th of the albums by title, if there are as
    /// many.
    void getAssetsFromCorrectAssetCollection();

protected:
    std::unique_ptr<QWidget> loadView() override;

private:
    void load(const PHAssetCollectionPtr& album);
    void sendingEnded(const Record& record, const PhotoSendingResult& result);
};

} // namespace exifcard
