#include "platform/photos/import/SidecarFacts.h"

#include "platform/imageio/ImageFacts.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/XmpPacket.h"
#include "platform/photos/import/CaptureDate.h"
#include "platform/photos/import/PictureFacts.h"

#include <string_view>

namespace exifcard {
namespace {

struct DateProperty {
    XmpNamespace space;
    std::string_view name;
};

/// Where editors keep the moment of capture; the first one that is there counts.
constexpr DateProperty kDates[] = {
    {XmpNamespace::Exif, "DateTimeOriginal"},
    {XmpNamespace::Photoshop, "DateCreated"},
    {XmpNamespace::Xmp, "CreateDate"},
};

/// The properties dictionary leaves out the offset from UTC, so the packet itself is asked.
std::optional<Date> dateFromPacket(const Data& sidecar) {
    const auto packet = propertiesFromXmpPacket(sidecar.bytes());
    for (const DateProperty& date : kDates) {
        if (const std::string* const text = firstXmpValue(packet, date.space, date.name)) {
            return captureDate(*text);
        }
    }
    return std::nullopt;
}

} // namespace

void addSidecar(MediaFacts& facts, const Data& sidecar) {
    ImageFacts packetAlone;
    packetAlone.xmp = sidecar;
    const DictionaryPtr properties = propertiesFromFacts(packetAlone);
    if (!facts.captureDate) {
        facts.captureDate = dateFromPacket(sidecar);
    }
    if (!facts.location) {
        facts.location = locationFromProperties(*properties);
    }
    MediaFacts described;
    addDescription(described, *properties);
    facts.title = facts.title ? facts.title : described.title;
    facts.rating = facts.rating ? facts.rating : described.rating;
}

} // namespace exifcard
