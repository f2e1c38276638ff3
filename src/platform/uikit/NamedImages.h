#pragma once

#include <QPixmap>

#include <string_view>

namespace exifcard {

class UIColor;

/// The bundled picture of that name, drawn in one colour, such as "flash_fired". A name that begins with
/// "white_" is the plain picture in white. Kept, so that drawing it again costs nothing.
/// @param side  In points; pictures are square.
/// @return A null picture for an unknown name.
QPixmap imageNamed(std::string_view name, double side, const UIColor& color, double devicePixelRatio);
bool hasImageNamed(std::string_view name);

} // namespace exifcard
