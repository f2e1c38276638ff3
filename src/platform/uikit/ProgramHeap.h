#pragma once

namespace exifcard {

/// Takes the memory that a window needs until its first photos are shown out of a few large pages, which the
/// system gives in a hundredth of the steps. To be called before anything large is made.
void prepareHeap();

/// Has pictures given back to the system as soon as they are freed, from now on, and not kept among small
/// objects.
void keepPicturesOutOfHeap();

} // namespace exifcard
