#include "platform/imageio/RawPixels.h"

#include "platform/foundation/LoadableModule.h"
#include "platform/imageio/EmbeddedPreviews.h"
#include "platform/imageio/PixelModules.h"
#include "platform/uivalues/Bitmap.h"

#include <utility>
#include <vector>

namespace exifcard {
namespace {

constexpr std::string_view kJpegType = "public.jpeg";

const RawDeveloper* rawDeveloper() {
    static const auto* const developer = moduleService<RawDeveloperEntry>("raw", kRawDeveloperEntry);
    return developer;
}

class RawPixels : public PixelSource {
public:
    RawPixels(Data file, PixelSize stored) : _file(std::move(file)), _stored(stored) {}

    std::shared_ptr<const Bitmap> decode(std::optional<CGSize> smallest) const override {
        const auto wanted = smallest ? wholePixels(*smallest) : std::nullopt;
        auto bitmap = wanted ? previewFor(*wanted) : std::nullopt;
        if (!bitmap && rawDeveloper() != nullptr) {
            bitmap = rawDeveloper()->develop(_file.bytes(), wanted);
        }
        if (!bitmap) {
            bitmap = previewFor(std::nullopt);
        }
        const bool isWhole = bitmap && !_file.wasCutShort();
        return isWhole ? std::make_shared<const Bitmap>(std::move(*bitmap)) : nullptr;
    }

private:
    std::optional<Bitmap> previewFor(std::optional<PixelSize> wanted) const;
    std::optional<Bitmap> developersPreview(std::optional<PixelSize> wanted) const;

    Data _file;
    PixelSize _stored;
};

/// A finished picture in the file; of any size when none is wanted, the largest first.
std::optional<Bitmap> RawPixels::previewFor(std::optional<PixelSize> wanted) const {
    if (const auto preview = embeddedPreview(_file, _stored, wanted)) {
        if (auto bitmap = decodedBitmap(preview->jpeg.bytes(), kJpegType, wanted)) {
            return bitmap;
        }
    }
    return developersPreview(wanted);
}

/// Some makers hide previews where only the developer finds them.
std::optional<Bitmap> RawPixels::developersPreview(std::optional<PixelSize> wanted) const {
    auto preview = rawDeveloper() != nullptr ? rawDeveloper()->preview(_file.bytes()) : std::nullopt;
    if (!preview) {
        return std::nullopt;
    }
    if (preview->jpeg.empty()) {
        const PixelSize size = {preview->bitmap.width, preview->bitmap.height};
        return isSufficient(size, _stored, wanted) ? std::optional(std::move(preview->bitmap)) : std::nullopt;
    }
    const auto size = sizeOfJpeg(Data::fromBytes(preview->jpeg));
    return size && isSufficient(*size, _stored, wanted) ? decodedBitmap(preview->jpeg, kJpegType, wanted)
                                                        : std::nullopt;
}

} // namespace

bool isRawType(std::string_view type) {
    return type.find("raw-image") != std::string_view::npos;
}

std::optional<RawFacts> rawFacts(const Data& file) {
    return rawDeveloper() != nullptr ? rawDeveloper()->facts(file.bytes()) : std::nullopt;
}

std::shared_ptr<const PixelSource> rawPixels(const Data& file, PixelSize stored) {
    return std::make_shared<RawPixels>(file, stored);
}

} // namespace exifcard
