#include "metadata/ExifInformation.h"

#include "metadata/DisplayDateFormatter.h"
#include "metadata/RowParts.h"
#include "platform/foundation/ByteCountFormatter.h"
#include "platform/foundation/FormatString.h"
#include "platform/foundation/NumberText.h"
#include "platform/photos/PHAsset.h"

namespace exifcard {
namespace {

std::string shortSizeText(std::int64_t bytes) {
    static const ByteCountFormatter formatter({.countStyle = ByteCountFormatter::CountStyle::File});
    return formatter.stringFromByteCount(bytes);
}

std::string exactSizeText(std::int64_t bytes) {
    static const ByteCountFormatter formatter({.countStyle = ByteCountFormatter::CountStyle::File,
        .isAdaptive = false,
        .zeroPadsFractionDigits = true,
        .includesActualByteCount = true});
    return formatter.stringFromByteCount(bytes);
}

std::string fileSizeText(const ExifInformation& record) {
    // Intended: a live photo that is anything else besides, a panorama say, shows its image's size alone.
    const bool isLiveAlone = record.phAsset && record.phAsset->mediaSubtypes == kPHAssetMediaSubtypePhotoLive;
    if (!isLiveAlone || record.liveVideoFileSizeInBytes < 1) {
        return exactSizeText(record.fileSizeInBytes);
    }
    return localizedStringWithFormat(N_("%@ & Video size %@"),
        {shortSizeText(record.fileSizeInBytes), shortSizeText(record.liveVideoFileSizeInBytes)});
}

} // namespace

ExifValue ExifInformation::FileSize() const {
    return rowWithoutRule("FileSize", fileSizeText(*this));
}

ExifValue ExifInformation::Duration() const {
    const auto seconds = saturatingInteger(duration);
    return rowWithoutRule(
        "Duration", stringWithFormat("%02ld:%02ld:%02ld", {seconds / 3600, seconds / 60 % 60, seconds % 60}));
}

ExifValue ExifInformation::FramesPerSecond() const {
    // Intended: a photo shows "0.0 FPS", never "Not available".
    return rowWithoutRule("FramesPerSecond", stringWithFormat("%0.1f FPS", {framesPerSecondValue}));
}

ExifValue ExifInformation::DateTaken() const {
    return rowWithoutRule("DateTaken", displayTextOfDate(dateTaken));
}

ExifValue ExifInformation::EditedDate() const {
    return rowWithoutRule(
        "EditedDate", displayTextOfDate(phAsset ? phAsset->modificationDate : std::nullopt));
}

} // namespace exifcard
