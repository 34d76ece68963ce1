// What the entries of Boost.Geometry have in common.
#pragma once

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <boost/geometry/geometries/segment.hpp>
#include <vector>

#include "bench/peers/contest.h"

namespace peers::with_boost {

namespace bg = boost::geometry;
using Vertex = bg::model::d2::point_xy<double>;
using Edge = bg::model::segment<Vertex>;
using Box = bg::model::box<Vertex>;
/// Clockwise or not, and without the first vertex at the end, as the inputs are.
using Polygon = bg::model::polygon<Vertex, false, false>;
using Ring = Polygon::ring_type;
using Line = bg::model::linestring<Vertex>;
using Vertices = bg::model::multi_point<Vertex>;

inline Vertex vertex(const Point& point) {
    return {point.x(), point.y()};
}

inline std::vector<Vertex> vertices(const Points& points) {
    std::vector<Vertex> made;
    for (const Point& point : points)
        made.push_back(vertex(point));
    return made;
}

inline Ring ring(const Points& points) {
    const std::vector<Vertex> made = vertices(points);
    return Ring(made.begin(), made.end());
}

inline Polygon polygon(const Points& outline, const std::vector<Points>& holes = {}) {
    Polygon made;
    made.outer() = ring(outline);
    for (const Points& hole : holes) {
        made.inners().push_back(ring(hole));
        std::reverse(made.inners().back().begin(), made.inners().back().end());
    }
    return made;
}

inline Line closedLine(const Points& points) {
    std::vector<Vertex> made = vertices(points);
    made.push_back(made.front());
    return Line(made.begin(), made.end());
}

inline void addEdges(const Points& points, std::vector<Edge>& edges) {
    for (std::size_t i = 0, last = points.size() - 1; i < points.size(); last = i++)
        edges.emplace_back(vertex(points[last]), vertex(points[i]));
}

inline std::vector<Edge> edges(const Points& points) {
    std::vector<Edge> made;
    addEdges(points, made);
    return made;
}

inline std::vector<Edge> edges(const std::vector<Segment>& segments) {
    std::vector<Edge> made;
    for (const Segment& segment : segments)
        made.emplace_back(vertex(segment.from), vertex(segment.to));
    return made;
}

/// The place on an edge that the tree found to be the nearest: the tree itself does not say it.
inline Point nearestOn(const Edge& edge, const Point& to) {
    const Point from(edge.first.x(), edge.first.y());
    const Point along = Point(edge.second.x(), edge.second.y()) - from;
    const double part = (to - from).dot(along) / along.dot(along);
    return from + along * std::min(1.0, std::max(0.0, part));
}

}  // namespace peers::with_boost
