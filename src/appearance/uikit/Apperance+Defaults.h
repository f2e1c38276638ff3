#pragma once

namespace exifcard {

/// Class operation of `Apperance`: installs the defaults of all views. Once, when the screens are set up;
/// they hold for views made afterwards.
void updateAppApperance();

} // namespace exifcard
