#include "cards/TilePlacing.h"

#include "cards/CardOutlets.h"
#include "platform/uikit/UIImageView.h"

#include <QAbstractButton>
#include <QStyle>

namespace exifcard {
namespace {

constexpr QSize kBadgeButton{44, 44};
constexpr QSize kCloudButton{50, 50};
constexpr int kAboveCloud = 7; ///< From the tile's own edge, whether a line runs there or not.

} // namespace

void placeForReading(QWidget& view, const QRect& rect) {
    const QWidget& parent = *view.parentWidget();
    view.setGeometry(QStyle::visualRect(parent.layoutDirection(), parent.rect(), rect));
}

void placePicture(const CardOutlets& outlets, const QRect& rect) {
    placeForReading(*outlets.imageView, rect);
    placeForReading(*outlets.playButton, {rect.topLeft(), kBadgeButton});
    placeForReading(
        *outlets.favoriteButton, {{rect.right() + 1 - kBadgeButton.width(), rect.top()}, kBadgeButton});
    const int cloudLeft = rect.left() + (rect.width() - kCloudButton.width()) / 2;
    placeForReading(*outlets.iCloudDownloadButton, {{cloudLeft, kAboveCloud}, kCloudButton});
}

} // namespace exifcard
