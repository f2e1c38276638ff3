#pragma once

#include "platform/foundation/Data.h"
#include "platform/photos/PHImageRequestOptions.h"
#include "platform/uivalues/CGGeometry.h"

#include <memory>
#include <optional>
#include <string>

namespace exifcard {

class ExifInformation;
class UIImage;
struct PHAsset;

/// How a card asks for a picture of its own size, and for all bytes of its photo.
PHImageRequestOptions optionsOfSizedPicture(const ExifInformation& record);
PHImageRequestOptions optionsOfPictureData(const ExifInformation& record);

/// Whether the library had better make the picture: from 51 MiB on.
bool isTooLargeToDecode(const Data& data);
/// The square that such a picture is asked for in, in pixels: as long as the longer side of the screen.
CGSize sizeOfHugePicture();

/// Decodes and scales; blocks, any thread.
/// @return Nothing for what is no picture; null for one that could not be scaled.
std::optional<std::shared_ptr<UIImage>> pictureScaledToFit(const Data& data, CGSize size);

/// Of the record's asset; empty for a null record and one without.
std::string assetIdentifierOf(const ExifInformation* record);

/// The name that the asset's photo, else its video, had when it was taken in; empty without. Blocks on the
/// disk.
std::string originalFilenameOf(const std::shared_ptr<const PHAsset>& asset);

} // namespace exifcard
