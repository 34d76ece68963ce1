// Boost.Geometry on crossings and measures.
#include <boost/geometry/index/rtree.hpp>

#include "bench/peers/boost.h"

namespace peers::with_boost {
namespace {

namespace bgi = boost::geometry::index;

using EdgeTree = bgi::rtree<Edge, bgi::quadratic<16>>;

std::vector<Vertex> crossings(const EdgeTree& tree, const Edge& segment) {
    std::vector<Vertex> places;
    for (auto found = tree.qbegin(bgi::intersects(segment)); found != tree.qend(); ++found)
        bg::intersection(segment, *found, places);
    return places;
}

Contestant kept(const Points& shape, const std::vector<Segment>& segments) {
    return repeated([tree = EdgeTree(edges(shape)), queries = edges(segments)](std::size_t i) {
        return crossings(tree, pick(queries, i)).size();
    });
}

std::vector<Line> lines(const std::vector<Segment>& segments) {
    std::vector<Line> made;
    for (const Segment& segment : segments)
        made.push_back(Line{vertex(segment.from), vertex(segment.to)});
    return made;
}

/// Of contours and lines Boost merges places that are equal, of which there are none here.
Contestant direct(const Inputs& in) {
    return keepsNothing(in, [line = closedLine(in.outline), queries = lines(in.longSegments)](std::size_t i) {
        Vertices places;
        bg::intersection(line, pick(queries, i), places);
        return places.size();
    });
}

Contestant eachEdge(const Inputs& in) {
    return keepsNothing(in, [all = edges(in.outline), queries = edges(in.longSegments)](std::size_t i) {
        const Edge& segment = pick(queries, i);
        std::vector<Vertex> places;
        for (const Edge& edge : all)
            bg::intersection(segment, edge, places);
        return places.size();
    });
}

Contestant contours(const Inputs& in) {
    return keepsNothing(in, [a = closedLine(in.outline), b = closedLine(in.other)](std::size_t) {
        Vertices places;
        bg::intersection(a, b, places);
        return places.size();
    });
}

Contestant contoursByTree(const Inputs& in) {
    return keepsNothing(in, [a = edges(in.outline), b = edges(in.other)](std::size_t) {
        const EdgeTree tree(a);
        std::size_t count = 0;
        for (const Edge& edge : b)
            count += crossings(tree, edge).size();
        return count;
    });
}

Contestant selfTurns(const Inputs& in, const Points& shape) {
    return keepsNothing(in, [shape = ring(shape)](std::size_t) { return bg::intersects(shape); });
}

Contestant hull(const Inputs& in, const Points& shape) {
    const auto vertices = std::make_shared<const Ring>(ring(shape));
    return keepsNothing(
        in,
        [vertices](std::size_t) {
            Ring out;
            bg::convex_hull(*vertices, out);
            return out.size();
        },
        [vertices](std::size_t) {
            Ring out;
            bg::convex_hull(*vertices, out);
            return std::abs(bg::area(out));
        });
}

using Matrix = bg::strategy::transform::matrix_transformer<double, 2, 2>;

std::vector<Matrix> matrices(const std::vector<gmXform<2>>& xforms) {
    std::vector<Matrix> made;
    for (const gmXform<2>& xform : xforms) {
        const gmMatrix<2> m = xform.matrix();
        made.emplace_back(m(0, 0), m(0, 1), xform.translation().x(), m(1, 0), m(1, 1), xform.translation().y(), 0.0,
                          0.0, 1.0);
    }
    return made;
}

/// Of a kept hull, since that is all that a rectangle hangs on.
Contestant rectangle(const Inputs& in) {
    Ring hull;
    bg::convex_hull(ring(in.outline), hull);
    return repeated([hull, matrices = matrices(in.transforms), out = Ring()](std::size_t i) mutable {
        out.clear();
        bg::transform(hull, out, pick(matrices, i));
        const Box box = bg::return_envelope<Box>(out);
        return digest({box.min_corner().x(), box.min_corner().y()}, {box.max_corner().x(), box.max_corner().y()});
    });
}

const Entry entries[] = {
    {Row::longCrossings, "Boost R-tree of edges", [](const Inputs& in) { return kept(in.outline, in.longSegments); }},
    {Row::longCrossingsTraced, "Boost R-tree of edges",
     [](const Inputs& in) { return kept(in.traced, in.tracedSegments); }},
    {Row::shortCrossings, "Boost R-tree of edges", [](const Inputs& in) { return kept(in.outline, in.shortSegments); }},
    {Row::crossingsCold, "Boost intersection", direct},
    {Row::crossingsCold, "Boost intersection of each edge", eachEdge},
    {Row::contourCrossings, "Boost intersection", contours},
    {Row::contourCrossings, "Boost R-tree of edges", contoursByTree},
    {Row::selfIntersectingNo, "Boost intersects", [](const Inputs& in) { return selfTurns(in, in.outline); }},
    {Row::selfIntersectingYes, "Boost intersects", [](const Inputs& in) { return selfTurns(in, in.knotted); }},
    {Row::rectangle, "Boost transform and envelope of the hull", rectangle},
    {Row::hull, "Boost convex_hull", [](const Inputs& in) { return hull(in, in.outline); }},
    {Row::hullTraced, "Boost convex_hull", [](const Inputs& in) { return hull(in, in.traced); }},
    {Row::length, "Boost perimeter",
     [](const Inputs& in) {
         return keepsNothing(in, [shape = ring(in.outline)](std::size_t) { return bg::perimeter(shape); });
     }},
    {Row::area, "Boost area",
     [](const Inputs& in) {
         return keepsNothing(in, [shape = ring(in.outline)](std::size_t) { return std::abs(bg::area(shape)); });
     }},
    {Row::map, "Boost transform",
     [](const Inputs& in) {
         return keepsNothing(
             in, [shape = ring(in.outline), matrices = matrices(in.transforms), out = Ring()](std::size_t i) mutable {
                 out.clear();
                 bg::transform(shape, out, pick(matrices, i));
                 return out.back().x() + out.back().y();
             });
     }},
    {Row::centre, "Boost centroid",
     [](const Inputs& in) {
         return keepsNothing(in, [shape = ring(in.outline)](std::size_t) {
             Vertex centre(0.0, 0.0);
             bg::centroid(shape, centre);
             return centre.x() + centre.y();
         });
     }},
};

}  // namespace
}  // namespace peers::with_boost
