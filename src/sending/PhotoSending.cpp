#include "sending/PhotoSending.h"

#include "categories/UIImage+Resize.h"
#include "metadata/ExifInformation.h"
#include "platform/corelocation/CLGeocoder.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/imageio/ImageDrawing.h"
#include "sending/InsertionQueue.h"
#include "sending/PhotoMessage.h"
#include "sending/PresentationStyleHolder.h"
#include "settings/PersistanceManager.h"

#include <atomic>

namespace exifcard {
namespace {

/// The largest picture of a bubble, in points.
constexpr CGSize kPictureLimits = {900, 900};

std::atomic<int>& countUnderWay() {
    static std::atomic<int> count = 0;
    return count;
}

/// Gives a record without a place name the one of its location, and then leaves the group.
void findPlaceName(
    const std::shared_ptr<ExifInformation>& record, const std::shared_ptr<DispatchGroup>& group) {
    if (record->locationName && !record->locationName->empty()) {
        return;
    }
    const auto geocoder = std::make_shared<CLGeocoder>();
    // The geocoder keeps it while it runs, and each sending has its own, for several can be under way.
    CLGeocoder::CompletionHandler locationCompletionHandler =
        [record, group, geocoder](const std::vector<CLPlacemark>& placemarks, auto) {
            if (!placemarks.empty()) {
                record->locationName = placeNameFromPlacemark(placemarks.front());
            }
            group->leave();
        };
    group->enter();
    // Intended: asked without a location too; the answer is then that there is none.
    geocoder->reverseGeocodeLocation(record->location, std::move(locationCompletionHandler));
}

} // namespace

/// A photo on its way.
struct PhotoSending::Photo {
    std::shared_ptr<ExifInformation> record;
    CompletionHandler completionHandler;
    std::shared_ptr<const UIImage> picture; ///< Null without one.
    CGSize size;                            ///< Upright, before it was made smaller.
};

PhotoSending::PhotoSending(
    std::shared_ptr<const MSConversation> conversation, std::weak_ptr<PresentationStyleHolder> presentation)
    : _conversation(std::move(conversation))
    , _presentation(std::move(presentation)) {
}

void PhotoSending::sendPhotoWithEXIF(std::shared_ptr<ExifInformation> record,
    const ImageDataRequest& requestImageData,
    CompletionHandler completionHandler) const {
    if (!completionHandler) {
        completionHandler = [](const PhotoSendingResult&) {};
    }
    ++countUnderWay();
    const Photo photo = {std::move(record), std::move(completionHandler), nullptr, {}};
    requestImageData([sending = *this, photo](const std::optional<Data>& imageData) {
        sending.imageDataArrived(photo, imageData);
    });
}

bool PhotoSending::isAnyUnderWay() {
    return countUnderWay() > 0;
}

void PhotoSending::imageDataArrived(Photo photo, const std::optional<Data>& imageData) const {
    if (const auto image = imageData ? imageWithData(*imageData) : nullptr) {
        photo.size = image->size();
        photo.picture = imageWithImageScaledToFitToSize(image, kPictureLimits);
    }
    const auto group = std::make_shared<DispatchGroup>();
    findPlaceName(photo.record, group);
    group->notify(DispatchQueue::mainQueue(), [sending = *this, photo = std::move(photo)] {
        InsertionQueue::wait(sending._conversation->name(), [sending, photo] { sending.insert(photo); });
    });
}

void PhotoSending::insert(const Photo& photo) const {
    insertMessage(photo);
    leaveExpandedStyle(); // Not after the insertion: the user is to see it happen.
}

void PhotoSending::insertMessage(const Photo& photo) const {
    _conversation->insertMessage(messageOfPhoto(*photo.record, photo.picture, photo.size),
        [sending = *this, photo](
            const std::optional<std::string>& error) { sending.insertText(photo, error); });
}

void PhotoSending::insertText(const Photo& photo, const std::optional<std::string>& messageError) const {
    if (!PersistanceManager::sharedInstance().includeExifAsTextOniMessageApp()) {
        end(photo, {.text = std::nullopt, .error = messageError});
        return;
    }
    // Intended: the text follows a message that could not be inserted, too.
    auto text = photo.record->shortExifStringsForShare();
    _conversation->insertText(
        text, [sending = *this, photo, messageError, text](const std::optional<std::string>& textError) {
            sending.end(photo, {.text = text, .error = messageError ? messageError : textError});
        });
}

void PhotoSending::end(const Photo& photo, const PhotoSendingResult& result) const {
    DispatchQueue::mainQueue().async([name = _conversation->name()] {
        InsertionQueue::ended(name);
        --countUnderWay();
    });
    photo.completionHandler(result);
}

void PhotoSending::leaveExpandedStyle() const {
    const auto presentation = _presentation.lock();
    if (presentation && presentation->presentationStyle() == MSMessagesAppPresentationStyle::Expanded) {
        presentation->requestPresentationStyle(MSMessagesAppPresentationStyle::Compact);
    }
}

} // namespace exifcard
