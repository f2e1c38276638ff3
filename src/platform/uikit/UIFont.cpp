#include "platform/uikit/UIFont.h"

#include "platform/uikit/Text+Qt.h"

#include <QFont>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

namespace exifcard {
namespace {

struct Face {
    std::string_view name;
    QFont::Weight weight;
};

constexpr Face kFaces[] = {
    {"AvenirNext-Regular", QFont::Normal},
    {"AvenirNext-Medium", QFont::Medium},
    {"AvenirNext-DemiBold", QFont::DemiBold},
    {"AvenirNext-Bold", QFont::Bold},
};

} // namespace

std::optional<UIFont> UIFont::fontWithName(const std::string& fontName, double size) {
    if (std::ranges::find(kFaces, fontName, &Face::name) == std::end(kFaces)) {
        return std::nullopt;
    }
    return UIFont{fontName, size};
}

QFont qFont(const UIFont& font) {
    const auto* const face = std::ranges::find(kFaces, font.fontName, &Face::name);
    QFont drawn;
    drawn.setFamilies({QStringLiteral("Manrope"), QStringLiteral("Inter"), QStringLiteral("Noto Sans")});
    drawn.setWeight(face == std::end(kFaces) ? QFont::Normal : face->weight);
    drawn.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pointSize))));
    return drawn;
}

} // namespace exifcard
