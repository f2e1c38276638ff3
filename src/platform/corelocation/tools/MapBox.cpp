#include "platform/corelocation/tools/MapBox.h"

#include "platform/corelocation/GazetteerFormat.h"
#include "platform/corelocation/MapGrid.h"

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

/// Along the chord between points of the sphere, from the cosine of the angle between them.
double chord(double cosine) {
    return gazetteer::kEarthRadius * std::sqrt(std::max(2 - 2 * cosine, 0.0));
}

} // namespace

MapPoint::MapPoint(const CLLocationCoordinate2D& coordinateOfPoint)
    : coordinate(coordinateOfPoint)
    , sineOfLatitude(std::sin(coordinate.latitude * gazetteer::kRadiansPerDegree))
    , cosineOfLatitude(std::cos(coordinate.latitude * gazetteer::kRadiansPerDegree)) {
}

MapBox::MapBox(const CLLocationCoordinate2D& southWest, const CLLocationCoordinate2D& northEast)
    : _southWest(southWest)
    , _northEast(northEast) {
}

CLLocationCoordinate2D MapBox::middle() const {
    return {.latitude = (southWest().latitude + northEast().latitude) / 2,
        .longitude = (southWest().longitude + northEast().longitude) / 2};
}

double MapBox::width() const {
    const bool isAcrossEquator = southWest().latitude < 0 && northEast().latitude > 0;
    const double cosine =
        isAcrossEquator ? 1 : std::max(_southWest.cosineOfLatitude, _northEast.cosineOfLatitude);
    return (northEast().longitude - southWest().longitude) * gazetteer::kKilometresPerDegree * cosine;
}

double MapBox::height() const {
    return (northEast().latitude - southWest().latitude) * gazetteer::kKilometresPerDegree;
}

bool MapBox::contains(const CLLocationCoordinate2D& coordinate) const {
    return coordinate.latitude >= southWest().latitude && coordinate.latitude < northEast().latitude &&
           coordinate.longitude >= southWest().longitude && coordinate.longitude < northEast().longitude;
}

bool MapBox::mayBeCrossedBy(const CLLocationCoordinate2D& begin, const CLLocationCoordinate2D& end) const {
    constexpr double kMargin = 1e-4;
    const double south = southWest().latitude - kMargin;
    const double west = southWest().longitude - kMargin;
    const double north = northEast().latitude + kMargin;
    const double east = northEast().longitude + kMargin;
    if (std::max(begin.latitude, end.latitude) < south || std::min(begin.latitude, end.latitude) > north ||
        std::max(begin.longitude, end.longitude) < west || std::min(begin.longitude, end.longitude) > east) {
        return false;
    }
    // All corners lie on one side of the line when it passes by.
    const auto side = [&](double latitude, double longitude) {
        return (end.longitude - begin.longitude) * (latitude - begin.latitude) -
               (end.latitude - begin.latitude) * (longitude - begin.longitude);
    };
    const auto [least, greatest] =
        std::minmax({side(south, west), side(south, east), side(north, west), side(north, east)});
    return least <= 0 && greatest >= 0;
}

MapBox::Distances MapBox::distancesFrom(const MapPoint& point) const {
    constexpr double kSlack = 0.01;
    const double halfWidth = (northEast().longitude - southWest().longitude) / 2;
    const double apart =
        std::abs(gazetteer::wrappedLongitude(point.coordinate.longitude - middle().longitude));
    // Along a parallel the distance grows with the difference of longitude.
    const double nearer = std::cos(std::max(apart - halfWidth, 0.0) * gazetteer::kRadiansPerDegree);
    const double farther = std::cos(std::min(apart + halfWidth, 180.0) * gazetteer::kRadiansPerDegree);
    // Along a meridian its cosine has one top.
    const auto cosineAt = [&point](const MapPoint& corner, double cosineOfLongitude) {
        return point.sineOfLatitude * corner.sineOfLatitude +
               point.cosineOfLatitude * corner.cosineOfLatitude * cosineOfLongitude;
    };
    const auto slopeAt = [&point, nearer](const MapPoint& corner) {
        return point.sineOfLatitude * corner.cosineOfLatitude -
               point.cosineOfLatitude * corner.sineOfLatitude * nearer;
    };
    const bool isTopWithin = slopeAt(_southWest) > 0 && slopeAt(_northEast) < 0;
    const double nearest = isTopWithin ? std::hypot(point.sineOfLatitude, point.cosineOfLatitude * nearer)
                                       : std::max(cosineAt(_southWest, nearer), cosineAt(_northEast, nearer));
    const double farthest = std::min(cosineAt(_southWest, farther), cosineAt(_northEast, farther));
    return {.least = std::max(chord(nearest) - kSlack, 0.0), .greatest = chord(farthest) + kSlack};
}

std::pair<MapBox, MapBox> MapBox::halvedByMeridian(double longitude) const {
    return {MapBox(southWest(), {northEast().latitude, longitude}),
        MapBox({southWest().latitude, longitude}, northEast())};
}

std::pair<MapBox, MapBox> MapBox::halvedByParallel(double latitude) const {
    return {MapBox(southWest(), {latitude, northEast().longitude}),
        MapBox({latitude, southWest().longitude}, northEast())};
}

} // namespace exifcard
