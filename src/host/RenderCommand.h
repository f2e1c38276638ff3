#pragma once

#include <QStringList>

namespace exifcard {

/// `exifcard-messages render VIEW FILE… -o PNG`: draws one view off screen, with a library of its own.
/// @param list  The program's arguments as texts.
/// @return The exit status.
int runRender(const QStringList& list, int argumentCount, char** arguments);

} // namespace exifcard
