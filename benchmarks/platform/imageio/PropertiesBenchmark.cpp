#include "platform/foundation/Dictionary.h"
#include "platform/imageio/CGImageSource.h"

#include <benchmark/benchmark.h>
#include <exiv2/exiv2.hpp>

#include <string>
#include <string_view>
#include <vector>

// Decides whether the properties dictionary may be read through Exiv2's image
// classes: the rows of a list of photos have to come about as fast as Exiv2
// reads their metadata, so the dictionary must take well below what that takes,
// at most seven tenths.

namespace exifcard {
namespace {

/// Photos of a phone and of five makers of cameras, with and without XMP.
constexpr std::string_view kPhotos[] = {"apple-iphone4s-lens.jpg", "apple-iphone7-makernote.jpg",
    "canon-1dmk3.jpg", "canon-6d-elephants.jpg", "fuji-x100t-film-d.jpg", "nikon-d70-makernote.jpg",
    "olympus-em5m3.jpg", "pentax-k10d.jpg"};

std::string pathOf(std::string_view photo) {
    return std::string(EXIFCARD_TEST_DATA "/").append(photo);
}

void countPhotos(benchmark::State& state) {
    state.counters["photos"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

void readsProperties(benchmark::State& state, std::string_view photo) {
    const auto url = URL::fileURLWithPath(pathOf(photo));
    for ([[maybe_unused]] auto _ : state) {
        const auto source = CGImageSourceCreateWithURL(url);
        benchmark::DoNotOptimize(CGImageSourceCopyPropertiesAtIndex(*source, 0));
    }
    countPhotos(state);
}

void readsMetadataByExiv2(benchmark::State& state, std::string_view photo) {
    const auto path = pathOf(photo);
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    Exiv2::XmpParser::initialize();
    for ([[maybe_unused]] auto _ : state) {
        const auto image = Exiv2::ImageFactory::open(path);
        image->readMetadata();
        benchmark::DoNotOptimize(image->exifData().count());
    }
    countPhotos(state);
}

const bool kIsRegistered = [] {
    for (const std::string_view photo : kPhotos) {
        const auto name = std::string(photo);
        benchmark::RegisterBenchmark(("exiv2/" + name).c_str(), readsMetadataByExiv2, photo);
        benchmark::RegisterBenchmark(("properties/" + name).c_str(), readsProperties, photo);
    }
    return true;
}();

} // namespace
} // namespace exifcard
