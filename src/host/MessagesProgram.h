#pragma once

namespace exifcard {

/// The program `exifcard-messages`.
/// @return The exit status: 0 all done, 1 something failed, 2 wrong usage.
int runMessages(int argumentCount, char** arguments);

} // namespace exifcard
