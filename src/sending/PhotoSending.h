#pragma once

#include "platform/foundation/Data.h"
#include "platform/messages/MSConversation.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace exifcard {

class ExifInformation;
class PresentationStyleHolder;

/// What a sending put into the input field.
struct PhotoSendingResult {
    std::optional<std::string> text;  ///< What follows the bubble; absent when the user wants none.
    std::optional<std::string> error; ///< The first failure: one sentence with the file and the cause.
};

/// Makes the message of a photo and puts it, and the text that follows it, into
/// the input field of one conversation. A value; what is under way keeps what it needs.
class PhotoSending {
public:
    /// Takes the bytes of an image file, or nothing when there are none to be had; called once, on any queue.
    using ImageDataHandler = std::function<void(const std::optional<Data>& imageData)>;
    /// Asks for the image data of the photo.
    using ImageDataRequest = std::function<void(ImageDataHandler resultHandler)>;
    /// Called exactly once, on a background queue, when everything is in the field.
    using CompletionHandler = std::function<void(const PhotoSendingResult& result)>;

    /// @param presentation  Asked for the compact style once a message is on its way, so that the user sees
    ///                      it; may be null.
    explicit PhotoSending(std::shared_ptr<const MSConversation> conversation,
        std::weak_ptr<PresentationStyleHolder> presentation = {});

    /// Sends nothing without a picture's data but the texts. A record without a place name gets that of its
    /// location; the message is built on the main queue, which must be running. It goes into the field with
    /// its text once it is ready and no other is being put in.
    void sendPhotoWithEXIF(std::shared_ptr<ExifInformation> record,
        const ImageDataRequest& requestImageData,
        CompletionHandler completionHandler = nullptr) const;
    /// Whether some photo of this program is not in its field yet, with its text. On any queue.
    static bool isAnyUnderWay();

private:
    struct Photo;

    void imageDataArrived(Photo photo, const std::optional<Data>& imageData) const;
    void insert(const Photo& photo) const;
    void insertMessage(const Photo& photo) const;
    void insertText(const Photo& photo, const std::optional<std::string>& messageError) const;
    void end(const Photo& photo, const PhotoSendingResult& result) const;
    void leaveExpandedStyle() const;

    std::shared_ptr<const MSConversation> _conversation;
    std::weak_ptr<PresentationStyleHolder> _presentation;
};

} // namespace exifcard
