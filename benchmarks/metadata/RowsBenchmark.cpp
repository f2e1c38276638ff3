#include "metadata/ExifInformation.h"
#include "platform/foundation/Dictionary.h"
#include "platform/imageio/CGImageSource.h"
#include "settings/AppSettings.h"

#include <benchmark/benchmark.h>
#include <exiv2/exiv2.hpp>

#include <memory>
#include <string>

// Decides whether the rows need to be made lazily: a record and the rows of its
// card must cost at most three tenths of what reading the file's metadata costs.

namespace exifcard {
namespace {

const std::string kPhoto = EXIFCARD_TEST_DATA "/canon-6d-elephants.jpg";

void countPhotos(benchmark::State& state) {
    state.counters["photos"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

DictionaryPtr propertiesOfPhoto() {
    const auto source = CGImageSourceCreateWithURL(URL::fileURLWithPath(kPhoto));
    return source ? CGImageSourceCopyPropertiesAtIndex(*source, 0) : nullptr;
}

/// The peer: what every reader of the file pays.
void readsMetadataWithExiv2(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        const auto image = Exiv2::ImageFactory::open(kPhoto);
        image->readMetadata();
        benchmark::DoNotOptimize(image->exifData().count());
    }
    countPhotos(state);
}
BENCHMARK(readsMetadataWithExiv2);

void makesRecord(benchmark::State& state) {
    const auto properties = propertiesOfPhoto();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ExifInformation::exifInformationFromMetaDataDictionary(properties));
    }
    countPhotos(state);
}
BENCHMARK(makesRecord);

void makesRecordAndItsRows(benchmark::State& state) {
    const auto properties = propertiesOfPhoto();
    const ExifKeys keys = AppSettings::exifKeysDefaultOrderedArray();
    for ([[maybe_unused]] auto _ : state) {
        const auto record = ExifInformation::exifInformationFromMetaDataDictionary(properties);
        record->fileSizeInBytes = 2'500'000;
        record->location = CLLocation{.coordinate = {48.8584, 2.2945}};
        for (const auto& key : keys) {
            benchmark::DoNotOptimize(record->exifValueFor(*key));
        }
    }
    countPhotos(state);
}
BENCHMARK(makesRecordAndItsRows);

/// The dearest rows one by one, to see where the time goes.
void makesRow(benchmark::State& state, const char* key) {
    const auto record = ExifInformation::exifInformationFromMetaDataDictionary(propertiesOfPhoto());
    record->fileSizeInBytes = 2'500'000;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(record->performCustomSelector(key));
    }
}
BENCHMARK_CAPTURE(makesRow, DateTaken, "DateTaken");
BENCHMARK_CAPTURE(makesRow, FileSize, "FileSize");
BENCHMARK_CAPTURE(makesRow, ResolutionInMegaPixel, "ResolutionInMegaPixel");
BENCHMARK_CAPTURE(makesRow, ExposureTime, "ExposureTime");
BENCHMARK_CAPTURE(makesRow, MeteringMode, "MeteringMode");
BENCHMARK_CAPTURE(makesRow, GPSAltitude, "GPSAltitude");

} // namespace
} // namespace exifcard
