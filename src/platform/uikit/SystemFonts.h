#pragma once

#include <functional>

namespace exifcard {

/// Reads which fonts the user has, before the toolkit does, and makes them those of the program. The library
/// of fonts would by itself also read the rules that nobody has switched on, only to be able to list them,
/// which takes as long as all that counts. Where nothing is told about fonts that is left to it.
void loadSystemFonts();

/// Lets the program know no font but those that it adds itself.
void loadNoFonts();

/// Reads in the background which fonts the user has.
///
/// @param whenLoaded  On the main queue. The toolkit has to be told anew of the program's own fonts, and to
/// be
///                    made to ask again.
void loadSystemFontsLater(std::function<void()> whenLoaded);

} // namespace exifcard
