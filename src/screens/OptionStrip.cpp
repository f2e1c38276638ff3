#include "screens/OptionStrip.h"

#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIFont.h"
#include "platform/uikit/UISwitch.h"
#include "ui_StickerPhotosExifViewController.h"

namespace exifcard {
namespace {

void setFont(QWidget& view, const char* name, double size) {
    if (const auto font = UIFont::fontWithName(name, size)) {
        view.setFont(qFont(*font));
    }
}

} // namespace

void fillOptionStrip(const Ui::StickerPhotosExifViewController& interface) {
    interface.advancedHolderView->setBackgroundRole(QPalette::Button);
    interface.advancedHolderView->setAutoFillBackground(true);
    interface.hairlineView->setBackgroundRole(QPalette::Mid);
    interface.hairlineView->setAutoFillBackground(true);
    QLabel& label = *interface.includeExifAsTextLabel;
    QLabel& explanation = *interface.includeExifAsTextExplanationLabel;
    label.setText(qString(localizedString("Include EXIF as text")));
    setFont(label, "AvenirNext-Regular", 15);
    explanation.setText(qString(localizedString("Sends the photo’s settings as a second message")));
    explanation.setForegroundRole(QPalette::PlaceholderText);
    setFont(explanation, "AvenirNext-Regular", 12);
    interface.includeExifAsTextSwitch->setAccessibleName(label.text());
    interface.includeExifAsTextSwitch->setAccessibleDescription(explanation.text());
}

} // namespace exifcard
