#include "platform/imageio/ContentType.h"

#include "platform/imageio/ByteView.h"

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

struct Signature {
    std::size_t offset;
    std::string_view bytes;
    ContentType type;
};

constexpr Signature kSignatures[] = {
    {0, "\xff\xd8\xff", {Container::Jpeg, "public.jpeg"}},
};

} // namespace

ContentType contentTypeOf(const Data& file) {
    const ByteView view(file.bytes());
    const auto known = std::ranges::find_if(kSignatures,
        [&](const Signature& signature) { return view.hasTextAt(signature.offset, signature.bytes); });
    return known == std::end(kSignatures) ? ContentType() : known->type;
}

} // namespace exifcard
