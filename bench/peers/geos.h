// What the entries of GEOS have in common.
#pragma once

#include <geos/geom/Coordinate.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LinearRing.h>
#include <geos/geom/MultiPolygon.h>
#include <geos/geom/Point.h>
#include <geos/geom/Polygon.h>

#include <memory>
#include <utility>
#include <vector>

#include "bench/peers/contest.h"

namespace peers::with_geos {

using geos::geom::Coordinate;
using geos::geom::Geometry;
using Shape = std::shared_ptr<const Geometry>;

inline const geos::geom::GeometryFactory& factory() {
    return *geos::geom::GeometryFactory::getDefaultInstance();
}

inline Coordinate coordinate(const Point& point) {
    return {point.x(), point.y()};
}

inline std::vector<Coordinate> coordinates(const Points& points) {
    std::vector<Coordinate> made;
    for (const Point& point : points)
        made.push_back(coordinate(point));
    return made;
}

/// GEOS closes its rings with the first vertex once more.
inline std::unique_ptr<geos::geom::CoordinateArraySequence> closedSequence(const Points& points) {
    std::vector<Coordinate> made = coordinates(points);
    made.push_back(made.front());
    return std::make_unique<geos::geom::CoordinateArraySequence>(std::move(made), 2);
}

inline std::unique_ptr<geos::geom::LinearRing> ring(const Points& points) {
    return factory().createLinearRing(closedSequence(points));
}

inline std::unique_ptr<geos::geom::Polygon> polygon(const Points& outline, const std::vector<Points>& holes = {}) {
    std::vector<std::unique_ptr<geos::geom::LinearRing>> inner;
    for (const Points& hole : holes)
        inner.push_back(ring(hole));
    return factory().createPolygon(ring(outline), std::move(inner));
}

inline std::vector<std::shared_ptr<const geos::geom::Point>> pointGeometries(const Points& points) {
    std::vector<std::shared_ptr<const geos::geom::Point>> made;
    for (const Point& point : points)
        made.emplace_back(factory().createPoint(coordinate(point)));
    return made;
}

inline Shape multiPolygon(const std::vector<Points>& shapes) {
    std::vector<std::unique_ptr<geos::geom::Polygon>> made;
    for (const Points& shape : shapes)
        made.push_back(polygon(shape));
    return factory().createMultiPolygon(std::move(made));
}

inline double distance(const Coordinate& a, const Point& b) {
    return Point(a.x, a.y).distance(b);
}

}  // namespace peers::with_geos
