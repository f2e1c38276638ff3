#pragma once

#include <QString>
#include <QStringList>

namespace exifcard {

class ExifInformation;

/// What a tile tells of a photo's exposure; of a video instead its length, nothing, and its frame rate.
struct ExposureTexts {
    QString aperture;
    QString shutterSpeed;
    QString ISO;
};

/// Of a record whose metadata is there.
ExposureTexts exposureTextsOf(const ExifInformation& record);

bool isVideo(const ExifInformation& record);

/// What a screen reader is told of the marks on a photo, in words; empty for a photo without any.
QString stateTextOf(const ExifInformation& record, bool isFavorite);

/// Empty parts are left out.
QString spokenList(const QStringList& parts);

} // namespace exifcard
