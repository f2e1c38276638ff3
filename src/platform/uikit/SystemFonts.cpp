#include "platform/uikit/SystemFonts.h"

#include "platform/foundation/DispatchQueue.h"

#include <fontconfig/fontconfig.h>

#include <memory>
#include <utility>

namespace exifcard {
namespace {

using Fonts = std::shared_ptr<FcConfig>;

/// How edges are drawn is what most systems say, until they are asked.
constexpr char kNoFonts[] = R"(<?xml version="1.0"?>
<fontconfig>
  <match target="pattern">
    <edit name="hintstyle" mode="append"><const>hintslight</const></edit>
  </match>
</fontconfig>)";

Fonts newFonts() {
    return {FcConfigCreate(), FcConfigDestroy};
}

bool hasPlaceForCaches(FcConfig* fonts) {
    const std::unique_ptr<FcStrList, void (*)(FcStrList*)> folders(
        FcConfigGetCacheDirs(fonts), FcStrListDone);
    return folders && FcStrListNext(folders.get()) != nullptr;
}

/// Null where that is better left to the library.
Fonts systemFonts() {
    auto fonts = newFonts();
    const bool isRead = fonts && FcConfigParseAndLoad(fonts.get(), nullptr, FcFalse) == FcTrue &&
                        hasPlaceForCaches(fonts.get()) && FcConfigBuildFonts(fonts.get()) == FcTrue;
    return isRead ? std::move(fonts) : nullptr;
}

/// @param fonts  Null for what the library reads by itself.
void use(const Fonts& fonts) {
    FcConfigSetCurrent(fonts.get());
}

} // namespace

void loadSystemFonts() {
    use(systemFonts());
}

void loadNoFonts() {
    const auto fonts = newFonts();
    if (fonts && FcConfigParseAndLoadFromMemory(
                     fonts.get(), reinterpret_cast<const FcChar8*>(kNoFonts), FcFalse) == FcTrue) {
        use(fonts);
    }
}

void loadSystemFontsLater(std::function<void()> whenLoaded) {
    DispatchQueue::globalQueue(DispatchQueue::Priority::Background)
        .async([whenLoaded = std::move(whenLoaded)] {
            DispatchQueue::mainQueue().async([fonts = systemFonts(), whenLoaded] {
                use(fonts);
                whenLoaded();
            });
        });
}

} // namespace exifcard
