#include "appearance/Apperance.h"

#include "appearance/uikit/Apperance+Views.h"
#include "platform/uikit/TraitChanges.h"
#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UIView.h"

#include <QLabel>

#include <initializer_list>
#include <vector>

namespace exifcard {
namespace {

/// Keeps some roles of a widget's palette at a colour of the appearance. Belongs to the widget.
class FollowingColor : public QObject {
public:
    FollowingColor(QWidget& widget, UIColor color, std::vector<QPalette::ColorRole> roles)
        : QObject(&widget)
        , _widget(widget)
        , _color(color)
        , _roles(std::move(roles)) {
        connect(&TraitChanges::instance(), &TraitChanges::changed, this, [this] { apply(); });
        apply();
    }

private:
    void apply() {
        QPalette palette = _widget.palette();
        for (const QPalette::ColorRole role : _roles) {
            palette.setColor(role, qColor(_color));
        }
        _widget.setPalette(palette);
    }

    QWidget& _widget;
    const UIColor _color;
    const std::vector<QPalette::ColorRole> _roles;
};

void follow(QWidget& widget, const char* name, const UIColor& color, std::vector<QPalette::ColorRole> roles) {
    const auto key = QString::fromLatin1(name);
    delete widget.findChild<QObject*>(key, Qt::FindDirectChildrenOnly); // What was set before.
    auto* const following = new FollowingColor(widget, color, std::move(roles));
    following->setObjectName(key);
}

} // namespace

void setAppearanceOnView(UIView& view, double alpha) {
    view.setBackgroundColor(Apperance::appearanceBackgroundColor(alpha));
}

void setAppearanceTintColorOnView(QWidget& view) {
    follow(view, "exifcardTint", Apperance::appearanceTintColor(), {QPalette::ButtonText});
}

void setAppearanceTextColorOnLabel(QLabel& label) {
    // A label in a list takes the other role than one elsewhere.
    follow(label, "exifcardText", Apperance::appearanceTextColor(), {QPalette::WindowText, QPalette::Text});
}

void setUltraLighBackgroundColorForSettingsPhotosSearchPromo(UIView& view) {
    view.setBackgroundColor(Apperance::ultraLighBackgroundColorForSettingsPhotosSearchPromo());
}

} // namespace exifcard
