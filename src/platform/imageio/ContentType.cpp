#include "platform/imageio/ContentType.h"

#include "platform/imageio/ByteView.h"
#include "platform/imageio/TiffBlock.h"
#include "platform/imageio/TiffTags.h"
#include "platform/imageio/TiffValue.h"

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

struct Signature {
    std::size_t offset;
    std::string_view bytes;
    ContentType type;
};

/// The first that fits holds: more special ones stand above.
constexpr Signature kSignatures[] = {
    {0, "\xff\xd8\xff", {Container::Jpeg, "public.jpeg"}},
    {0, "\x89PNG\r\n\x1a\n", {Container::Png, "public.png"}},
    {0, "GIF87a", {Container::Gif, "com.compuserve.gif"}},
    {0, "GIF89a", {Container::Gif, "com.compuserve.gif"}},
    {8, "WEBP", {Container::WebP, "org.webmproject.webp"}},
    {0, "FUJIFILMCCD-RAW", {Container::FujiRaw, "com.fuji.raw-image"}},
    {0, {"\0MRM", 4}, {Container::MinoltaRaw, "com.konicaminolta.raw-image"}},
    {6, "HEAPCCDR", {Container::CanonCrw, "com.canon.crw-raw-image"}},
    {0, "IIRO", {Container::TiffRaw, "com.olympus.raw-image"}},
    {0, "IIRS", {Container::TiffRaw, "com.olympus.raw-image"}},
    {0, "MMOR", {Container::TiffRaw, "com.olympus.raw-image"}},
    {0, {"IIU\0", 4}, {Container::PanasonicRaw, "com.panasonic.rw2-raw-image"}},
    {8, "CR\2", {Container::TiffRaw, "com.canon.cr2-raw-image"}},
    {0, "BM", {Container::Bmp, "com.microsoft.bmp"}},
};

struct Brand {
    std::string_view name;
    std::string_view identifier;
};

/// Brands of the "ftyp" box, the telling ones first.
constexpr Brand kBrands[] = {
    {"crx ", "com.canon.cr3-raw-image"},
    {"avif", "public.avif"},
    {"avis", "public.avif"},
    {"heic", "public.heic"},
    {"heix", "public.heic"},
    {"heim", "public.heic"},
    {"heis", "public.heic"},
    {"hevc", "public.heic"},
    {"hevx", "public.heic"},
    {"mif1", "public.heif"},
    {"msf1", "public.heif"},
};
constexpr std::size_t kMostBrandBytes = 256;

struct RawMaker {
    std::string_view make; ///< How the maker's name begins.
    std::string_view identifier;
};

constexpr RawMaker kRawMakers[] = {
    {"NIKON", "com.nikon.raw-image"},
    {"SONY", "com.sony.arw-raw-image"},
    {"PENTAX", "com.pentax.raw-image"},
    {"RICOH", "com.pentax.raw-image"},
    {"SAMSUNG", "com.samsung.raw-image"},
    {"Hasselblad", "com.hasselblad.3fr-raw-image"},
    {"EASTMAN KODAK", "com.kodak.raw-image"},
    {"Kodak", "com.kodak.raw-image"},
    {"SEIKO EPSON", "com.epson.raw-image"},
    {"Leaf", "com.leafamerica.raw-image"},
    {"LEICA", "com.leica.raw-image"},
};
/// "Compression" of Nikon's, Sony's, Pentax' and Samsung's raw pictures.
constexpr std::uint32_t kRawCompressions[] = {34713, 32767, 65535, 32769, 32770, 32772};
/// A raw file has its sensor's picture among these many.
constexpr std::uint32_t kMostSubDirectories = 16;

bool holdsSensorPixels(const TiffDirectory& directory) {
    const auto compression = directory.numberFor(kTiffCompression);
    return directory.numberFor(kTiffPhotometric) == kTiffColorFilterArray ||
           (compression && std::ranges::count(kRawCompressions, *compression) > 0);
}

bool isRaw(const TiffBlock& block) {
    const auto first = block.firstDirectory();
    const auto below = first.find(kTiffSubDirectories);
    if (holdsSensorPixels(first)) {
        return true;
    }
    for (std::uint32_t index = 0; below && index < std::min(below->count, kMostSubDirectories); ++index) {
        const auto offset = static_cast<std::uint32_t>(integerAt(*below, index).value_or(0));
        if (holdsSensorPixels(block.directoryAt(offset))) {
            return true;
        }
    }
    return false;
}

ContentType tiffType(const TiffBlock& block) {
    const auto first = block.firstDirectory();
    if (first.find(kTiffDngVersion)) {
        return {Container::TiffRaw, "com.adobe.raw-image"};
    }
    const auto make = first.find(kTiffMake);
    const std::string name = make ? textOf(*make) : std::string();
    const auto maker =
        std::ranges::find_if(kRawMakers, [&](const RawMaker& known) { return name.starts_with(known.make); });
    if (maker != std::end(kRawMakers) && isRaw(block)) {
        return {Container::TiffRaw, maker->identifier};
    }
    return {Container::Tiff, "public.tiff"};
}

/// By the file's own brand and those that it says it fits; a movie has none of the known ones.
ContentType typeByBrands(const ByteView& view) {
    const std::size_t end = std::min<std::size_t>({view.longAt(0).value_or(0), view.size(), kMostBrandBytes});
    for (const Brand& brand : kBrands) {
        for (std::size_t place = 8; place + 4 <= end;
             place += place == 8 ? 8 : 4) { // A version stands between.
            if (view.hasTextAt(place, brand.name)) {
                return {Container::Heif, brand.identifier};
            }
        }
    }
    return {};
}

} // namespace

ContentType contentTypeOf(const Data& file) {
    const ByteView view(file.bytes());
    const auto known = std::ranges::find_if(kSignatures,
        [&](const Signature& signature) { return view.hasTextAt(signature.offset, signature.bytes); });
    if (known != std::end(kSignatures)) {
        return known->type;
    }
    if (view.hasTextAt(4, "ftyp")) {
        return typeByBrands(view);
    }
    const auto block = TiffBlock::fromBytes(file.bytes());
    return block ? tiffType(*block) : ContentType();
}

} // namespace exifcard
