#include "platform/foundation/PropertyList.h"
#include "platform/imageio/MakerNote.h"
#include "platform/imageio/TiffBlock.h"
#include "platform/imageio/TiffValue.h"

namespace exifcard {
namespace {

constexpr std::string_view kSignature("Apple iOS\0", 10);
constexpr std::string_view kPropertyListSignature = "bplist";
constexpr std::uint32_t kDirectory = 14;

Value valueOf(const TiffEntry& entry) {
    switch (entry.type) {
    case TiffType::Ascii:
        return textFromEntry(entry);
    case TiffType::Undefined: {
        const Value bytes = dataFromEntry(entry);
        const bool isList = textView(entry.bytes).starts_with(kPropertyListSignature) && !bytes.isNothing();
        return isList ? propertylist::read(*bytes.data()).value_or(Value()) : bytes;
    }
    case TiffType::Rational:
    case TiffType::SignedRational:
    case TiffType::Float:
    case TiffType::Double:
        return realFromEntry(entry);
    default:
        return integerFromEntry(entry);
    }
}

} // namespace

DictionaryPtr appleMakerNote(std::span<const std::uint8_t> note) {
    const ByteView view(note, ByteOrder::Big);
    if (!view.hasTextAt(0, kSignature)) {
        return nullptr;
    }
    auto apple = Dictionary::make();
    const TiffDirectory directory(view, kDirectory);
    for (std::uint32_t index = 0; index < directory.count(); ++index) {
        if (const auto entry = directory.entryAt(index)) {
            apple->setObjectForKey(valueOf(*entry), std::to_string(entry->tag));
        }
    }
    return apple->isEmpty() ? nullptr : apple;
}

} // namespace exifcard
