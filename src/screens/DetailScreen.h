#pragma once

#include "library/ExifManager.h"

#include <cstddef>
#include <memory>

namespace exifcard {

class ExifDataListViewController;

/// A new detail screen that pages over these records and begins at that position. Main queue.
/// @return Null where nobody has registered the scene.
std::shared_ptr<ExifDataListViewController> makeDetailScreen(
    ExifManager::Records records, std::size_t position);

} // namespace exifcard
