#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/Dictionary.h"
#include "platform/photos/import/MediaFacts.h"

#include <optional>
#include <string_view>

namespace exifcard {

/// Reads what the library keeps of a picture. Decodes no pixel. Any thread.
/// @param file  The whole file, mapped.
/// @param name  Of the file: a screenshot may be told by it alone.
/// @return Nothing for what is no picture or is damaged beyond reading.
std::optional<MediaFacts> factsOfPicture(const Data& file, std::string_view name);

/// The place in a properties dictionary; unknown altitude, speed and course are negative there where
/// `CLLocation` says so.
std::optional<CLLocation> locationFromProperties(const Dictionary& properties);

/// Adds title and rating from a properties dictionary.
void addDescription(MediaFacts& facts, const Dictionary& properties);

/// Whether the file's name is one that systems give to pictures of their screen.
bool isScreenshotName(std::string_view name);

} // namespace exifcard
