#include "appearance/uikit/UITextField+Font.h"
#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UIFont.h"
#include "platform/uivalues/UIColor.h"

#include <QFont>
#include <QFontInfo>
#include <QLineEdit>
#include <QVariant>

namespace exifcard {
namespace {

void setFace(QLineEdit& textField, const char* fontName) {
    const double size = QFontInfo(textField.font()).pixelSize(); // A point is a logical pixel here.
    if (const auto font = UIFont::fontWithName(fontName, size)) {
        textField.setFont(qFont(*font));
    }
}

} // namespace

void awakeTextFieldFromNib(QLineEdit& textField) {
    const int tag = textField.property("tag").toInt();
    if (tag == kRegularTextFieldTag) {
        setFace(textField, "AvenirNext-Regular");
    } else if (tag == kMediumTextFieldTag) {
        setFace(textField, "AvenirNext-Medium");
    }
    if (!textField.placeholderText().isEmpty()) {
        QPalette palette = textField.palette();
        palette.setColor(QPalette::PlaceholderText, qColor(UIColor(RGBA{0.565, 0.549, 0.549, 1})));
        textField.setPalette(palette);
    }
}

} // namespace exifcard
