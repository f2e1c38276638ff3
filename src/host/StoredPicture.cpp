#include "host/StoredPicture.h"

#include "platform/foundation/Data.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/uikit/UIImage+Qt.h"
#include "platform/uivalues/UIImage.h"

#include <algorithm>

namespace exifcard {
namespace {

QImage pictureFilling(const std::string& file, QSize filled) {
    const auto bytes = Data::mappedFile(file);
    const auto picture = bytes ? imageWithData(*bytes) : nullptr;
    if (!picture || filled.isEmpty()) {
        return {};
    }
    const CGSize canvas = {static_cast<double>(filled.width()), static_cast<double>(filled.height())};
    const CGSize whole = picture->size();
    const double scale = std::max(canvas.width / whole.width, canvas.height / whole.height);
    const CGSize drawn = {whole.width * scale, whole.height * scale};
    const CGRect place = {{(canvas.width - drawn.width) / 2, (canvas.height - drawn.height) / 2}, drawn};
    const auto cut = drawnImage(*picture, canvas, place, /*scale=*/1);
    return cut ? qImageFromUIImage(*cut) : QImage();
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
