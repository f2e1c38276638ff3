#pragma once

#include "platform/corelocation/CLLocation.h"

#include <utility>

namespace exifcard {

/// A point with what distances to it are reckoned from.
struct MapPoint {
    explicit MapPoint(const CLLocationCoordinate2D& coordinate);

    CLLocationCoordinate2D coordinate;
    double sineOfLatitude = 0;
    double cosineOfLatitude = 0;
};

/// A rectangle between two parallels and two meridians, from −180° to 180°.
class MapBox {
public:
    MapBox(const CLLocationCoordinate2D& southWest, const CLLocationCoordinate2D& northEast);

    static MapBox wholeEarth() { return {{-90, -180}, {90, 180}}; }

    const CLLocationCoordinate2D& southWest() const { return _southWest.coordinate; }
    const CLLocationCoordinate2D& northEast() const { return _northEast.coordinate; }
    CLLocationCoordinate2D middle() const;
    /// Kilometres along its longest parallel, and along a meridian.
    double width() const;
    double height() const;

    bool contains(const CLLocationCoordinate2D& coordinate) const;
    /// Whether a straight line on the map may have a part in the box, or come as near as ten metres.
    bool mayBeCrossedBy(const CLLocationCoordinate2D& begin, const CLLocationCoordinate2D& end) const;

    struct Distances {
        double least = 0;
        double greatest = 0;
    };
    /// Of the points of the box from that point, along the chord: a few metres less and more, as the reader
    /// reckons with coarser numbers. Kilometres.
    Distances distancesFrom(const MapPoint& point) const;

    std::pair<MapBox, MapBox> halvedByMeridian(double longitude) const;
    std::pair<MapBox, MapBox> halvedByParallel(double latitude) const;

private:
    MapPoint _southWest;
    MapPoint _northEast;
};

} // namespace exifcard
