#include "host/RemovingButton.h"

#include "appearance/Apperance.h"
#include "host/HostColors.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/PictureButton.h"
#include "platform/uikit/Text+Qt.h"

namespace exifcard {

PictureButton* makeRemovingButton(QWidget& parent) {
    const PictureButton::Look look = {.picture = "closebutton",
        .pictureSide = 14,
        .color = Apperance::appearanceTextColor(),
        .discSide = 24,
        .discColor = HostColors::fieldButton()};
    return new PictureButton(look, qString(localizedString("Remove")), &parent);
}

} // namespace exifcard
