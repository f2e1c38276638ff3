#pragma once

#include "platform/corelocation/CLLocation.h"
#include "platform/corelocation/GazetteerFormat.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>

/// What makes one place a better name for a spot than another.
namespace exifcard {

/// The coordinate on the sphere of `GazetteerFormat.h`; its radius is 0.
gazetteer::Point pointAtCoordinate(const CLLocationCoordinate2D& coordinate);

/// How far from being in a place one is: −1 in its centre, 0 at the edge of its
/// extent, beyond that the kilometres to the edge.
///
/// So among the places that one stands in, that one counts whose centre is
/// relatively nearer: a city beats the hamlet next door, but in the middle of a
/// village it is the village. Outside of all it is the one with the nearest edge.
template<typename Number>
Number placeScore(Number distance, Number radius) {
    return distance < radius ? distance / radius - 1 : distance - radius;
}

/// Farther away, no place names a point. Kilometres.
constexpr float kReachOfPlaces = 50;
/// A quarter is named as far beyond its edge as this, since quarters are taken for discs but lie close
/// together. Kilometres.
constexpr float kBesideQuarter = 0.5;

struct FoundPlace {
    std::uint32_t record = 0;
    float distance = 0; ///< Kilometres.
    float score = 0;
};

/// What to look for around a point.
struct PlaceSearch {
    gazetteer::Point point;
    float reach = 0; ///< Only what is nearer counts. Kilometres.
    /// Only what is better counts.
    float scoreBelow = std::numeric_limits<float>::infinity();
};

/// What a place must beat. Squares are compared, so that roots are drawn of good places only.
class PlaceBar {
public:
    explicit PlaceBar(const PlaceSearch& search) : _reach(search.reach) { raise(search.scoreBelow); }

    /// Whether something with this radius, so far away, has a low enough score.
    bool isBeatenAt(float squaredDistance, float radius) const {
        const float farthest = std::min(radius * _factor + _summand, _reach);
        return squaredDistance < farthest * farthest;
    }
    /// `placeScore` turned round.
    void raise(float score) {
        _factor = score < 0 ? score + 1 : 1;
        _summand = score < 0 ? 0 : score;
    }

private:
    float _reach = 0;
    float _factor = 1;
    float _summand = 0;
};

/// The place with the lowest score among those of the candidates for which `isWanted(record)`, which is asked
/// only about places better than all before.
template<typename IsWanted>
std::optional<FoundPlace> bestPlace(
    const PlaceSearch& search, std::span<const gazetteer::Candidate> candidates, IsWanted isWanted) {
    const auto square = [](float value) { return value * value; };
    PlaceBar bar(search);
    std::optional<FoundPlace> best;
    for (const auto& [point, record] : candidates) {
        // Along the chord, which at 50 km is shorter than the way on the ground by less than a metre.
        const float squared = square(point.x - search.point.x) + square(point.y - search.point.y) +
                              square(point.z - search.point.z);
        if (bar.isBeatenAt(squared, point.radius) && isWanted(record)) {
            const float distance = std::sqrt(squared);
            best = {.record = record, .distance = distance, .score = placeScore(distance, point.radius)};
            bar.raise(best->score);
        }
    }
    return best;
}

} // namespace exifcard
