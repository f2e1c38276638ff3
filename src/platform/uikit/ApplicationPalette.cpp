#include "platform/uikit/ApplicationPalette.h"

#include "appearance/Apperance.h"
#include "appearance/ThemeColors.h"
#include "platform/uikit/UIAppearance.h"
#include "platform/uikit/UIColor+Qt.h"

namespace exifcard {
QPalette applicationPalette() {
    const QColor theme = qColor(colorPair("FFFFFF", "000000"));
    const UIColor blackOrWhite = colorPair("000000", "FFFFFF");
    const QColor text = qColor(blackOrWhite);
    const QColor labelText = qColor(defaultColor("UILabel", "textColor").value_or(blackOrWhite));
    const QColor chrome = qColor(chromeColor());
    const QColor hairline = qColor(hairlineColor());
    const QColor disabled = qColor(colorPair("66000000", "66FFFFFF"));
    QPalette palette(chrome, theme);
    palette.setColor(QPalette::Window, theme);
    palette.setColor(QPalette::Base, theme);
    palette.setColor(QPalette::AlternateBase, qColor(Apperance::ultraLightGrayColor()));
    palette.setColor(QPalette::Button, chrome);
    palette.setColor(QPalette::Mid, hairline);
    palette.setColor(QPalette::Dark, hairline);
    for (const auto role :
        {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    for (const auto role : {QPalette::WindowText, QPalette::Text}) {
        palette.setColor(QPalette::Active, role, labelText);
        palette.setColor(QPalette::Inactive, role, labelText);
    }
    palette.setColor(QPalette::ToolTipBase, chrome);
    palette.setColor(QPalette::PlaceholderText, qColor(secondaryTextColor()));
    palette.setColor(QPalette::Highlight, qColor(Apperance::yellowColor()));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::Link, qColor(colorPair("7A6A10", "DCC653")));
    return palette;
}

} // namespace exifcard
