#include "platform/foundation/ByteCountFormatter.h"
#include "platform/foundation/DateFormatter.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/foundation/NumberFormatter.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace exifcard {
namespace {

void countTexts(benchmark::State& state) {
    state.counters["texts"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

/// Decides whether a row may format its value each time it is asked: a photo has about 60 such texts.
void fillsFormats(benchmark::State& state) {
    const Value model("ILCE-7M3");
    double exposure = 0;
    for ([[maybe_unused]] auto _ : state) {
        exposure += 0.1;
        benchmark::DoNotOptimize(stringWithFormat("%0.1f", {exposure}));
        benchmark::DoNotOptimize(stringWithFormat("%ld x %ld", {6000, 4000}));
        benchmark::DoNotOptimize(stringWithFormat("%@ %@", {model, "FE 24-70mm"}));
    }
    state.counters["texts"] =
        benchmark::Counter(3.0 * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(fillsFormats);

/// Decides whether labels are looked up each time: a photo has about 130 of them.
void looksTextsUp(benchmark::State& state, const char* language) {
    setenv("LC_ALL", language, 1);
    resetLocalization();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(localizedString("Zero KB"));
    }
    countTexts(state);
}
BENCHMARK_CAPTURE(looksTextsUp, english, "en_US.UTF-8");
BENCHMARK_CAPTURE(looksTextsUp, german, "de_DE.UTF-8");

/// Decides whether the program may choose its language at every start.
void choosesLanguage(benchmark::State& state, const char* language) {
    setenv("LC_ALL", language, 1);
    for ([[maybe_unused]] auto _ : state) {
        resetLocalization();
        benchmark::DoNotOptimize(localizedString("Zero KB"));
    }
}
BENCHMARK_CAPTURE(choosesLanguage, english, "en_US.UTF-8");
BENCHMARK_CAPTURE(choosesLanguage, german, "de_DE.UTF-8");

/// Decides whether metadata dates need a reader of their own: every photo has one or two.
void readsDate(benchmark::State& state, const char* text) {
    const DateFormatter formatter("yyyy:MM:dd HH:mm:ss", Locale::system());
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(formatter.dateFromString(text));
    }
    countTexts(state);
}
BENCHMARK_CAPTURE(readsDate, whole, "2020:01:02 03:04:05");
BENCHMARK_CAPTURE(readsDate, timeOnly, "12:34:56");

void writesDate(benchmark::State& state) {
    const DateFormatter formatter("dd-MM-YYYY hh:mm:ss a", Locale("en_US"));
    Date moment{1577707506};
    for ([[maybe_unused]] auto _ : state) {
        moment.secondsSince1970 += 1000;
        benchmark::DoNotOptimize(formatter.stringFromDate(moment));
    }
    countTexts(state);
}
BENCHMARK(writesDate);

void writesNumber(benchmark::State& state) {
    const NumberFormatter formatter({NumberFormatter::Style::Decimal, 1}, Locale("en_US"));
    double number = 0;
    for ([[maybe_unused]] auto _ : state) {
        number += 0.37;
        benchmark::DoNotOptimize(formatter.stringFromNumber(number));
    }
    countTexts(state);
}
BENCHMARK(writesNumber);

void writesFileSize(benchmark::State& state) {
    const ByteCountFormatter formatter(
        {.isAdaptive = false, .includesActualByteCount = true}, Locale("en_US"));
    std::int64_t count = 0;
    for ([[maybe_unused]] auto _ : state) {
        count += 123'457;
        benchmark::DoNotOptimize(formatter.stringFromByteCount(count));
    }
    countTexts(state);
}
BENCHMARK(writesFileSize);

} // namespace
} // namespace exifcard
