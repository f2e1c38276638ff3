#include "host/StoredPicture.h"

#include "platform/foundation/Data.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/uikit/ContentFitting.h"
#include "platform/uivalues/UIImage.h"

namespace exifcard {
namespace {

QImage pictureFilling(const std::string& file, QSize filled) {
    const auto bytes = Data::mappedFile(file);
    const auto picture = bytes ? imageWithData(*bytes) : nullptr;
    if (!picture || filled.isEmpty()) {
        return {};
    }
    return drawnContent(*picture, {.viewSize = QSizeF(filled), .mode = UIViewContentMode::ScaleAspectFill});
}

} // namespace

void loadStoredPicture(
    const std::string& file, QSize filled, QObject& receiver, std::function<void(const QImage&)> handler) {
    DispatchQueue::globalQueue().async(
        [file, filled, receiver = QPointer<QObject>(&receiver), handler = std::move(handler)] {
            const QImage picture = pictureFilling(file, filled);
            DispatchQueue::mainQueue().async([picture, receiver, handler] {
                if (receiver) {
                    handler(picture);
                }
            });
        });
}

} // namespace exifcard
