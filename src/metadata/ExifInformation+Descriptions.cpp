#include "metadata/ExifInformation.h"

#include "metadata/RowParts.h"
#include "platform/foundation/Array.h"
#include "platform/foundation/FormatString.h"
#include "platform/imageio/ImageProperties.h"

namespace exifcard {
namespace {

std::optional<std::string> captionText(const ExifInformation& record) {
    return storedText(objectIn(record.iptcDic, kCGImagePropertyIPTCCaptionAbstract),
        objectIn(record.tifDic, kCGImagePropertyTIFFImageDescription));
}

} // namespace

ExifValue ExifInformation::Artist() const {
    return rowWithoutRule("Artist", storedText(objectIn(tifDic, kCGImagePropertyTIFFArtist)));
}

ExifValue ExifInformation::Copyright() const {
    return rowWithoutRule("Copyright", storedText(objectIn(tifDic, kCGImagePropertyTIFFCopyright)));
}

ExifValue ExifInformation::Caption() const {
    return rowWithoutRule("Caption", captionText(*this));
}

ExifValue ExifInformation::CaptionAbstract() const {
    return rowWithoutRule("CaptionAbstract", captionText(*this));
}

ExifValue ExifInformation::Title() const {
    return rowWithoutRule("Title", storedText(objectIn(iptcDic, kCGImagePropertyIPTCObjectName)));
}

ExifValue ExifInformation::Headline() const {
    return rowWithoutRule("Headline", storedText(objectIn(iptcDic, kCGImagePropertyIPTCHeadline)));
}

ExifValue ExifInformation::Keywords() const {
    std::optional<std::string> text;
    if (keywordsArray) {
        text = keywordsArray->componentsJoinedByString(",");
    }
    return rowWithoutRule("Keywords", std::move(text));
}

ExifValue ExifInformation::UserComment() const {
    return rowWithExifRule(
        *this, "UserComment", storedText(objectIn(exifDic, kCGImagePropertyExifUserComment)));
}

ExifValue ExifInformation::StarRating() const {
    const auto stars = objectIn(iptcDic, kCGImagePropertyIPTCStarRating).integerValue();
    auto text = stringWithFormat("%ld", {stars});
    auto row = rowWithExifRule(*this, "StarRating", text);
    row.exifRAWValue = std::move(text);
    return row;
}

} // namespace exifcard
