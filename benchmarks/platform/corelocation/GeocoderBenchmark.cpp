// Decides how much naming a place may cost beside the bare question for the nearest point, which a k-d tree
// of nanoflann answers over the same places: at most half as much again.
#include "platform/corelocation/CLGeocoder.h"
#include "platform/corelocation/Gazetteer.h"
#include "platform/corelocation/GazetteerFile.h"
#include "platform/corelocation/PlaceScore.h"
#include "platform/foundation/FilePaths.h"

#include <benchmark/benchmark.h>
#include <nanoflann.hpp>

#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <stdexcept>
#include <unordered_set>
#include <vector>

namespace exifcard {
namespace {

const Data& bundledFile() {
    static const Data file = [] {
        auto mapped = Data::mappedFile(resourcePath("gazetteer.bin"));
        return mapped ? *mapped : throw std::runtime_error("gazetteer.bin is missing");
    }();
    return file;
}

/// Every place once.
std::vector<gazetteer::Point> pointsOfPlaces() {
    const auto arrays = arraysOfGazetteerFile(bundledFile().bytes()).value();
    std::vector<gazetteer::Point> points;
    std::unordered_set<std::uint32_t> records;
    for (const auto& [point, record] : arrays.candidates) {
        if (records.insert(record).second) {
            points.push_back(point);
        }
    }
    return points;
}

/// The places as nanoflann wants to see them.
struct Cloud {
    std::vector<gazetteer::Point> points = pointsOfPlaces();

    std::size_t kdtree_get_point_count() const { return points.size(); }
    float kdtree_get_pt(std::size_t index, std::size_t axis) const {
        const auto& point = points[index];
        return axis == 0 ? point.x : axis == 1 ? point.y : point.z;
    }
    template<typename Box>
    bool kdtree_get_bbox(Box& /*box*/) const {
        return false;
    }
};

/// Spots where photos are taken: some kilometres around places, or anywhere on the earth.
std::vector<CLLocationCoordinate2D> spots(bool areAroundPlaces) {
    constexpr std::size_t kCount = 10'000;
    std::mt19937 random(7);
    const Cloud cloud;
    std::uniform_int_distribution<std::size_t> place(0, cloud.points.size() - 1);
    std::normal_distribution<double> degrees(0, 0.05);
    std::uniform_real_distribution<double> uniform(-1, 1);
    std::vector<CLLocationCoordinate2D> result;
    while (result.size() < kCount) {
        const auto& point = cloud.points[place(random)];
        const double north = areAroundPlaces ? double{point.z} / gazetteer::kEarthRadius : uniform(random);
        const double east =
            areAroundPlaces ? std::atan2(point.y, point.x) : uniform(random) * std::numbers::pi;
        const double latitude = std::asin(north) * 180 / std::numbers::pi;
        const double longitude = east * 180 / std::numbers::pi;
        const CLLocationCoordinate2D spot = {latitude + degrees(random), longitude + degrees(random)};
        if (CLLocationCoordinate2DIsValid(spot)) {
            result.push_back(spot);
        }
    }
    return result;
}

template<typename Ask>
void askAll(benchmark::State& state, Ask ask) {
    const auto coordinates = spots(state.range(0) != 0);
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        ask(coordinates[next]);
        next = (next + 1) % coordinates.size();
    }
    state.counters["places"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

void asksNanoflannForTheNearest(benchmark::State& state) {
    using Metric = nanoflann::L2_Simple_Adaptor<float, Cloud>;
    using Tree = nanoflann::KDTreeSingleIndexAdaptor<Metric, Cloud, 3>;
    const Cloud cloud;
    const Tree tree(3, cloud, nanoflann::KDTreeSingleIndexAdaptorParams(10));
    askAll(state, [&tree](const CLLocationCoordinate2D& coordinate) {
        const auto point = pointAtCoordinate(coordinate);
        const float query[] = {point.x, point.y, point.z};
        std::uint32_t index = 0;
        float squaredDistance = 0;
        nanoflann::KNNResultSet<float, std::uint32_t> result(1);
        result.init(&index, &squaredDistance);
        tree.findNeighbors(result, query, nanoflann::SearchParams());
        benchmark::DoNotOptimize(index);
    });
}
BENCHMARK(asksNanoflannForTheNearest)->ArgName("aroundPlaces")->Arg(1)->Arg(0);

void asksTheGazetteer(benchmark::State& state) {
    const auto gazetteer = Gazetteer::open(bundledFile());
    askAll(state, [&gazetteer](const CLLocationCoordinate2D& coordinate) {
        benchmark::DoNotOptimize(gazetteer->placeAt(coordinate));
    });
}
BENCHMARK(asksTheGazetteer)->ArgName("aroundPlaces")->Arg(1)->Arg(0);

/// With the texts, and the country in the user's language.
void asksTheGeocoder(benchmark::State& state) {
    askAll(state, [](const CLLocationCoordinate2D& coordinate) {
        benchmark::DoNotOptimize(placeAtCoordinate(coordinate));
    });
}
BENCHMARK(asksTheGeocoder)->ArgName("aroundPlaces")->Arg(1)->Arg(0);

} // namespace
} // namespace exifcard
