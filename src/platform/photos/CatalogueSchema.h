#pragma once

#include <span>

namespace exifcard {

/// What turns version n of the catalogue into n + 1, at index n. Text that has been released is never
/// changed; a new version is added behind it.
std::span<const char* const> catalogueMigrations();

} // namespace exifcard
