#pragma once

#include "cli/ImportProgressLine.h"
#include "platform/photos/import/Importer.h"

#include <string>

namespace exifcard {

class Session;

/// The folder's one name, whichever way leads to it; also of one that is not there, for the library may know
/// it.
std::string canonicalFolder(const std::string& name);

/// Where the lines and the progress of an import go.
/// @param progress  Outlives the handlers.
ImportHandlers importHandlers(Session& session, ImportProgressLine& progress);

/// "3 added, 1 moved; 12 files unchanged", or one object.
std::string importSummary(const ImportReport& report, bool isJSON);

} // namespace exifcard
