#include "platform/uikit/ApplicationPalette.h"

#include "appearance/Apperance.h"
#include "appearance/UIColor+Hex.h"
#include "platform/uikit/UIColor+Qt.h"

namespace exifcard {
namespace {

QColor pair(std::string_view light, std::string_view dark) {
    return qColor(UIColor(colorWithHexString(light).resolved(UIUserInterfaceStyle::Light),
        colorWithHexString(dark).resolved(UIUserInterfaceStyle::Light)));
}

} // namespace

QPalette applicationPalette() {
    const QColor theme = pair("FFFFFF", "000000");
    const QColor text = pair("000000", "FFFFFF");
    const QColor chrome = pair("FBFBFB", "0B0B0C");
    const QColor hairline = pair("DCDCDE", "2A2A2C");
    const QColor secondary = pair("6A6A6E", "9C9CA1");
    const QColor disabled = pair("66000000", "66FFFFFF");
    QPalette palette(chrome, theme);
    palette.setColor(QPalette::Window, theme);
    palette.setColor(QPalette::Base, theme);
    palette.setColor(QPalette::AlternateBase, pair("F6F6F6", "171717"));
    palette.setColor(QPalette::Button, chrome);
    palette.setColor(QPalette::Mid, hairline);
    palette.setColor(QPalette::Dark, hairline);
    for (const auto role :
        {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    palette.setColor(QPalette::ToolTipBase, chrome);
    palette.setColor(QPalette::PlaceholderText, secondary);
    palette.setColor(QPalette::Highlight, qColor(Apperance::yellowColor()));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::Link, pair("7A6A10", "DCC653"));
    return palette;
}

} // namespace exifcard
