#pragma once

#include <memory>

namespace exifcard {

class ExifInformation;
class UIImage;

/// Puts a picture into the record's `cachedThumbNailImage`. Of all pictures kept so, those of the longest ago
/// are dropped from their records once all together exceed a bound: a list has far more records than pictures
/// fit the memory. Main queue.
/// @param picture  Null takes the record's away.
void keepCachedThumbnail(
    const std::shared_ptr<ExifInformation>& record, const std::shared_ptr<UIImage>& picture);

} // namespace exifcard
