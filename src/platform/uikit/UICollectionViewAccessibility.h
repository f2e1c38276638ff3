#pragma once

namespace exifcard {

/// Lets readers find lists and their items; more than once is harmless.
void installCollectionViewAccessibility();

} // namespace exifcard
