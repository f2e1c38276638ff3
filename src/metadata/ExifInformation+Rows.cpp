#include "metadata/ExifInformation.h"

#include "metadata/FieldKeys.h"
#include "metadata/RowParts.h"
#include "platform/foundation/Log.h"
#include "settings/ExifKey.h"
#include "settings/PersistanceManager.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iterator>

namespace exifcard {
namespace {

/// How a field's value is shown in the share text; the other fields' values stand as they are.
struct ShareFormat {
    std::string_view key;
    const char* format;
};

// Intended: the exposure time has none, its line is the whole row text.
constexpr ShareFormat kShareFormats[] = {
    {"FocalLenIn35mmFilm", N_("%@ (35 mm format)")},
    {"ExposureBiasValue", N_("%@ EV")},
    {"Copyright", N_("© %@")},
    {"FocalLength", N_("%@")},
    {"MeteringMode", N_("%@ Metering mode")},
};

bool isWorthSharing(const std::string& text) {
    return !text.empty() && text != ExifInformation::exifNotAvailableString() &&
           text != ExifInformation::GPSDataNotAvailableString();
}

/// The field's line; empty when it is to be left out.
std::string shareLine(const ExifInformation& record, std::string_view key, const std::string& text) {
    // One figure is enough when the focal length is that of the 35 mm format.
    if (key == "FocalLength" && record.FocalLenIn35mmFilm().exifValueReadableFormat == text) {
        return {};
    }
    const auto* const decoration = std::ranges::find(kShareFormats, key, &ShareFormat::key);
    const bool isDecorated = decoration != std::end(kShareFormats);
    return isDecorated ? localizedStringWithFormat(decoration->format, {text}) : text;
}

[[noreturn]] void endForUnknownKey(std::string_view key) {
    errorLog("A record was asked for \"" + std::string(key) + "\", which is no field key.");
    std::abort();
}

} // namespace

FieldAnswer ExifInformation::performCustomSelector(std::string_view key) const {
    const FieldKey* const field = findFieldKey(key);
    if (field == nullptr) {
        endForUnknownKey(key);
    }
    if (field->kind != FieldKind::Raw) {
        return std::invoke(field->formatter, *this);
    }
    return field->storedUnder.empty() ? nothing() : objectIn(metaDataDictionary, field->storedUnder);
}

FieldAnswer ExifInformation::exifValueFor(const ExifKey& key) const {
    return performCustomSelector(key.key);
}

std::string ExifInformation::shortExifStringsForShare() const {
    std::string text;
    auto& settings = PersistanceManager::sharedInstance();
    // The list is fetched anew before each step: it may be stored meanwhile.
    for (std::size_t index = 0;; ++index) {
        const auto keys = settings.allSharedExifVisibleKeysOrderedArray();
        if (!keys || index >= keys->size()) {
            return text;
        }
        const std::string& key = keys->at(index)->key;
        const auto answer = performCustomSelector(key);
        const auto* const row = std::get_if<ExifValue>(&answer);
        if (row == nullptr || !isWorthSharing(row->exifValueReadableFormat.value_or(""))) {
            continue;
        }
        const std::string line = shareLine(*this, key, *row->exifValueReadableFormat);
        if (!line.empty()) {
            text += line + '\n';
        }
    }
}

std::string_view ExifInformation::exifNotAvailableString() {
    return localizedString(N_("Not available"));
}

std::string_view ExifInformation::GPSDataNotAvailableString() {
    return localizedString(N_("GPS Data not available"));
}

void ExifInformation::setNotAvailableStringIfExifNotAvailable(ExifValue& row) const {
    auto& text = row.exifValueReadableFormat;
    if (!exifInfoAvailable && (!text || text->empty())) {
        text = exifNotAvailableString();
    }
}

void ExifInformation::setGPSNotAvailableStringIfExifNotAvailable(ExifValue& row) const {
    if (!gpsInfoAvailable()) {
        row.exifValueReadableFormat = GPSDataNotAvailableString();
    }
}

} // namespace exifcard
