#include "cards/PhotoTexts.h"

#include "metadata/ExifInformation.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/photos/PHAsset.h"
#include "platform/uikit/Text+Qt.h"

#include <cstdint>

namespace exifcard {
namespace {

QString readableValue(const ExifValue& row) {
    return qString(row.exifValueReadableFormat.value_or(""));
}

QString localizedQString(const char* text) {
    return qString(localizedString(text));
}

bool isOfSubtype(const ExifInformation& record, std::uint64_t subtype) {
    return record.phAsset && (record.phAsset->mediaSubtypes & subtype) != 0;
}

} // namespace

bool isVideo(const ExifInformation& record) {
    return record.mediaType() == static_cast<std::int64_t>(PHAssetMediaType::Video);
}

ExposureTexts exposureTextsOf(const ExifInformation& record) {
    if (isVideo(record)) {
        return {readableValue(record.Duration()), QString(), readableValue(record.FramesPerSecond())};
    }
    return {readableValue(record.ApertureValue()), qString(record.shutterSpeedString()),
        qString(localizedStringWithFormat("ISO %ld", {record.iSOSpeed.integerValue()}))};
}

QString stateTextOf(const ExifInformation& record, bool isFavorite) {
    QStringList states;
    if (isFavorite) {
        states << localizedQString(N_("Favorite"));
    }
    if (isOfSubtype(record, kPHAssetMediaSubtypeVideoTimelapse)) {
        states << localizedQString(N_("Time-lapse video"));
    } else if (isVideo(record)) {
        states << localizedQString(N_("Video"));
    } else if (isOfSubtype(record, kPHAssetMediaSubtypePhotoLive)) {
        states << localizedQString(N_("Live Photo"));
    }
    if (record.imageResultIsInCloud && !record.hasFinishedDownloadingImageResultFromCloud) {
        states << localizedQString(
            record.iCloudDownloadProgress < 0 ? N_("Original in iCloud") : N_("Downloading from iCloud"));
    }
    return spokenList(states);
}

QString spokenList(const QStringList& parts) {
    QStringList spoken = parts;
    spoken.removeAll(QString());
    return spoken.join(QStringLiteral(", "));
}

} // namespace exifcard
