#include "platform/imageio/IptcProperties.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/NumberText.h"
#include "platform/imageio/ByteView.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/TextEncoding.h"
#include "platform/imageio/XmpValue.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>

namespace exifcard {
namespace {

/// The bytes before a dataset's value: a mark, record, number and length.
constexpr std::size_t kDatasetHead = 5;
constexpr std::uint8_t kDatasetMark = 0x1c;
constexpr std::uint8_t kApplicationRecord = 2;
/// For what only XMP holds.
constexpr std::uint8_t kNoDataset = 0;

/// Photoshop's resources: a mark, a number, a name after its length, and the content after its length; name
/// and content are filled up to an even size.
constexpr std::string_view kResourceMarks[] = {"8BIM", "AgHg", "DCSR", "PHUT"};
constexpr std::size_t kResourceNumber = 4;
constexpr std::size_t kResourceName = 6;
constexpr std::uint16_t kIptcResource = 0x0404;

enum class Form { Text, List };

/// One key with the dataset of the application record and the XMP property that hold it.
struct IptcRow {
    std::uint8_t dataset;
    std::string_view key;
    Form form = Form::Text;
    XmpNamespace space = XmpNamespace::Photoshop;
    std::string_view xmpName = {};
};

constexpr IptcRow kRows[] = {
    {kNoDataset, kCGImagePropertyIPTCRightsUsageTerms, Form::Text, XmpNamespace::XmpRights, "UsageTerms"},
    {kNoDataset, kCGImagePropertyIPTCScene, Form::List, XmpNamespace::IptcCore, "Scene"},
    {3, kCGImagePropertyIPTCObjectTypeReference},
    {4, kCGImagePropertyIPTCObjectAttributeReference},
    {5, kCGImagePropertyIPTCObjectName, Form::Text, XmpNamespace::DublinCore, "title"},
    {7, kCGImagePropertyIPTCEditStatus},
    {8, kCGImagePropertyIPTCEditorialUpdate},
    {10, kCGImagePropertyIPTCUrgency, Form::Text, XmpNamespace::Photoshop, "Urgency"},
    {12, kCGImagePropertyIPTCSubjectReference, Form::List, XmpNamespace::IptcCore, "SubjectCode"},
    {15, kCGImagePropertyIPTCCategory, Form::Text, XmpNamespace::Photoshop, "Category"},
    {20, kCGImagePropertyIPTCSupplementalCategory, Form::List, XmpNamespace::Photoshop,
        "SupplementalCategories"},
    {22, kCGImagePropertyIPTCFixtureIdentifier},
    {25, kCGImagePropertyIPTCKeywords, Form::List, XmpNamespace::DublinCore, "subject"},
    {26, kCGImagePropertyIPTCContentLocationCode, Form::List},
    {27, kCGImagePropertyIPTCContentLocationName, Form::List},
    {30, kCGImagePropertyIPTCReleaseDate},
    {35, kCGImagePropertyIPTCReleaseTime},
    {37, kCGImagePropertyIPTCExpirationDate},
    {38, kCGImagePropertyIPTCExpirationTime},
    {40, kCGImagePropertyIPTCSpecialInstructions, Form::Text, XmpNamespace::Photoshop, "Instructions"},
    {42, kCGImagePropertyIPTCActionAdvised},
    {45, kCGImagePropertyIPTCReferenceService, Form::List},
    {47, kCGImagePropertyIPTCReferenceDate, Form::List},
    {50, kCGImagePropertyIPTCReferenceNumber, Form::List},
    {55, kCGImagePropertyIPTCDateCreated},
    {60, kCGImagePropertyIPTCTimeCreated},
    {62, kCGImagePropertyIPTCDigitalCreationDate},
    {63, kCGImagePropertyIPTCDigitalCreationTime},
    {65, kCGImagePropertyIPTCOriginatingProgram},
    {70, kCGImagePropertyIPTCProgramVersion},
    {75, kCGImagePropertyIPTCObjectCycle},
    {80, kCGImagePropertyIPTCByline, Form::List, XmpNamespace::DublinCore, "creator"},
    {85, kCGImagePropertyIPTCBylineTitle, Form::List, XmpNamespace::Photoshop, "AuthorsPosition"},
    {90, kCGImagePropertyIPTCCity, Form::Text, XmpNamespace::Photoshop, "City"},
    {92, kCGImagePropertyIPTCSubLocation, Form::Text, XmpNamespace::IptcCore, "Location"},
    {95, kCGImagePropertyIPTCProvinceState, Form::Text, XmpNamespace::Photoshop, "State"},
    {100, kCGImagePropertyIPTCCountryPrimaryLocationCode, Form::Text, XmpNamespace::IptcCore, "CountryCode"},
    {101, kCGImagePropertyIPTCCountryPrimaryLocationName, Form::Text, XmpNamespace::Photoshop, "Country"},
    {103, kCGImagePropertyIPTCOriginalTransmissionReference, Form::Text, XmpNamespace::Photoshop,
        "TransmissionReference"},
    {105, kCGImagePropertyIPTCHeadline, Form::Text, XmpNamespace::Photoshop, "Headline"},
    {110, kCGImagePropertyIPTCCredit, Form::Text, XmpNamespace::Photoshop, "Credit"},
    {115, kCGImagePropertyIPTCSource, Form::Text, XmpNamespace::Photoshop, "Source"},
    {116, kCGImagePropertyIPTCCopyrightNotice, Form::Text, XmpNamespace::DublinCore, "rights"},
    {118, kCGImagePropertyIPTCContact, Form::List},
    {120, kCGImagePropertyIPTCCaptionAbstract, Form::Text, XmpNamespace::DublinCore, "description"},
    {122, kCGImagePropertyIPTCWriterEditor, Form::Text, XmpNamespace::Photoshop, "CaptionWriter"},
    {130, kCGImagePropertyIPTCImageType},
    {131, kCGImagePropertyIPTCImageOrientation},
    {135, kCGImagePropertyIPTCLanguageIdentifier},
};

constexpr std::size_t evenSize(std::size_t size) {
    return size + size % 2;
}

bool isImageResource(const ByteView& view, std::size_t place) {
    return std::ranges::any_of(
        kResourceMarks, [&](std::string_view mark) { return view.hasTextAt(place, mark); });
}

using Texts = std::vector<std::string>;
/// The texts of each row.
using RowTexts = std::array<Texts, std::size(kRows)>;

/// Adds the texts of the datasets one after another, until one does not fit into the block. The block's
/// own character set (1:90) is not asked: its UTF-8 is recognised, and anything else is Latin-1.
void addDatasets(RowTexts& texts, const ByteView& block) {
    for (std::size_t place = 0; block.byteAt(place) == kDatasetMark;) {
        const auto length = block.shortAt(place + 3).value_or(0);
        const auto value = block.part(place + kDatasetHead, length);
        const auto row = std::ranges::find(kRows, block.byteAt(place + 2).value_or(0), &IptcRow::dataset);
        const bool isKnown = block.byteAt(place + 1) == kApplicationRecord && row != std::end(kRows);
        auto text = isKnown ? utf8FromUnknown(textBeforeNul(textView(value))) : std::string();
        if (!text.empty()) {
            texts[static_cast<std::size_t>(row - std::begin(kRows))].push_back(std::move(text));
        }
        place += kDatasetHead + length;
    }
}

/// Puts the texts of the packet in the place of those of the datasets.
void replaceByPacket(RowTexts& texts, const std::vector<XmpProperty>& packet) {
    for (const XmpProperty& property : packet) {
        const auto row = std::ranges::find_if(kRows, [&](const IptcRow& known) {
            return known.xmpName == property.name && known.space == property.space;
        });
        if (row != std::end(kRows)) {
            texts[static_cast<std::size_t>(row - std::begin(kRows))] = property.values;
        }
    }
}

Value valueOf(Form form, Texts texts) {
    if (form == Form::Text) {
        return Value(std::move(texts.front()));
    }
    auto list = Array::make();
    for (std::string& text : texts) {
        list->addObject(std::move(text));
    }
    return list;
}

const XmpProperty* find(const std::vector<XmpProperty>& packet, XmpNamespace space, std::string_view name) {
    const auto found = std::ranges::find_if(packet,
        [&](const XmpProperty& property) { return property.space == space && property.name == name; });
    return found == packet.end() ? nullptr : &*found;
}

/// The packet has one text for what the datasets keep as "20200102" and "030405".
void setCreationDate(Dictionary& iptc, const std::vector<XmpProperty>& packet) {
    const auto* const property = find(packet, XmpNamespace::Photoshop, "DateCreated");
    if (property == nullptr) {
        return;
    }
    const std::pair<std::string_view, Value> parts[] = {
        {kCGImagePropertyIPTCDateCreated, dateFromXmp(*property)},
        {kCGImagePropertyIPTCTimeCreated, timeOfDayFromXmp(*property)},
    };
    for (const auto& [key, value] : parts) {
        if (const std::string* const text = value.text()) {
            std::string digits = *text;
            std::erase(digits, ':');
            iptc.setObjectForKey(std::move(digits), key);
        }
    }
}

void setStarRating(
    Dictionary& iptc, const std::vector<XmpProperty>& packet, std::optional<std::int64_t> exifRating) {
    const auto* const property = find(packet, XmpNamespace::Xmp, "Rating");
    if (property != nullptr) {
        iptc.setObjectForKey(integerFromXmp(*property), kCGImagePropertyIPTCStarRating);
    } else if (exifRating) {
        iptc.setObjectForKey(*exifRating, kCGImagePropertyIPTCStarRating);
    }
}

void setContactInfo(Dictionary& iptc, const std::vector<XmpProperty>& packet) {
    auto contact = Dictionary::make();
    const std::string prefix = std::string(kCGImagePropertyIPTCCreatorContactInfo) + "/";
    for (const XmpProperty& property : packet) {
        if (property.space == XmpNamespace::IptcCore && property.name.starts_with(prefix)) {
            contact->setObjectForKey(textFromXmp(property), property.name.substr(prefix.size()));
        }
    }
    if (!contact->isEmpty()) {
        iptc.setObjectForKey(contact, kCGImagePropertyIPTCCreatorContactInfo);
    }
}

} // namespace

Data iptcFromImageResources(const Data& resources) {
    const ByteView view(resources.bytes(), ByteOrder::Big);
    for (std::size_t place = 0; isImageResource(view, place);) {
        const std::size_t nameLength = view.byteAt(place + kResourceName).value_or(0);
        const std::size_t head = place + kResourceName + evenSize(1 + nameLength);
        const auto length = view.longAt(head);
        const std::size_t content = head + sizeof(std::uint32_t);
        if (!length) {
            break;
        }
        if (view.shortAt(place + kResourceNumber) == kIptcResource) {
            return view.part(content, *length).empty() ? Data() : resources.slice(content, *length);
        }
        place = content + evenSize(*length);
    }
    return {};
}

DictionaryPtr iptcProperties(
    const Data& datasets, const std::vector<XmpProperty>& packet, std::optional<std::int64_t> exifRating) {
    RowTexts texts;
    addDatasets(texts, ByteView(datasets.bytes()));
    replaceByPacket(texts, packet);
    auto iptc = Dictionary::make();
    for (std::size_t index = 0; index < texts.size(); ++index) {
        if (!texts[index].empty()) {
            iptc->setObjectForKey(valueOf(kRows[index].form, std::move(texts[index])), kRows[index].key);
        }
    }
    setCreationDate(*iptc, packet);
    setStarRating(*iptc, packet, exifRating);
    setContactInfo(*iptc, packet);
    return iptc->isEmpty() ? nullptr : iptc;
}

} // namespace exifcard
