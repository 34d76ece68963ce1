// Shapes that no search structure likes, where everything is as near or as far as everything else: us beside plain
// loops.
#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "bench/peers/contest.h"
#include "cntr/region.h"
#include "foundation/shapes/lineseg.h"

namespace peers {
namespace {

constexpr double turn = 6.283185307179586;

/// The questions are at the centre, or within a rounding of it.
Points regularPolygon(std::size_t n) {
    Points points;
    for (std::size_t i = 0; i < n; ++i)
        points.emplace_back(400.0, gmRadian(turn * static_cast<double>(i) / static_cast<double>(n)));
    return points;
}

/// Vertices anywhere: every edge is long, and every box is large.
Points tangle(std::size_t n) {
    std::mt19937 engine(7);
    const auto coordinate = [&] { return static_cast<double>(engine()) / 4294967.296; };
    Points points;
    for (std::size_t i = 0; i < n; ++i) {
        const double x = coordinate();
        points.emplace_back(x, coordinate());
    }
    return points;
}

/// Twenty turns inwards, close beside each other, and out again through the middle.
Points spiral(std::size_t n) {
    Points points;
    for (std::size_t i = 0; i < n; ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(n);
        points.push_back(Point(500.0, 500.0) + Point(500.0 * (1.0 - share), gmRadian(20.0 * turn * share)));
    }
    return points;
}

template <class Visit>
void forEachEdge(const Points& points, Visit visit) {
    const Point* from = &points.back();
    for (const Point& to : points) {
        visit(*from, to);
        from = &to;
    }
}

Point closest(const Points& points, const Point& p) {
    double best = std::numeric_limits<double>::infinity();
    const Point* from = nullptr;
    const Point* to = nullptr;
    forEachEdge(points, [&](const Point& a, const Point& b) {
        const double distance = gfDistToSeg(a, b, p);
        if (distance < best) {
            best = distance;
            from = &a;
            to = &b;
        }
    });
    const double t = std::clamp(gfFootParameter(*from, *to - *from, p), 0.0, 1.0);
    return *from + (*to - *from) * t;
}

Point closestVertex(const Points& points, const Point& p) {
    return *std::min_element(points.begin(), points.end(),
                             [&](const Point& a, const Point& b) { return (a - p).dot(a - p) < (b - p).dot(b - p); });
}

bool isInside(const Points& points, const Point& p) {
    bool odd = false;
    forEachEdge(points, [&](const Point& a, const Point& b) {
        if ((a.y() > p.y()) != (b.y() > p.y()) && ((b - a).cross(p - a) > 0.0) == (b.y() > a.y()))
            odd = !odd;
    });
    return odd;
}

/// The places, from the segment's start to its end.
std::size_t crossings(const Points& points, const Segment& segment) {
    std::vector<std::pair<double, Point>> found;
    const Point along = segment.to - segment.from;
    forEachEdge(points, [&](const Point& a, const Point& b) {
        const double start = along.cross(a - segment.from);
        const double end = along.cross(b - segment.from);
        if ((start > 0.0) == (end > 0.0) ||
            ((b - a).cross(segment.from - a) > 0.0) == ((b - a).cross(segment.to - a) > 0.0))
            return;
        const Point place = a + (b - a) * (start / (start - end));
        found.emplace_back((place - segment.from).dot(along), place);
    });
    std::sort(found.begin(), found.end(), [](const auto& one, const auto& other) { return one.first < other.first; });
    return found.size();
}

double farthestPair(const Points& points) {
    double most = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i)
        for (std::size_t j = i + 1; j < points.size(); ++j)
            most = std::max(most, (points[i] - points[j]).dot(points[i] - points[j]));
    return std::sqrt(most);
}

/// The centre, in the numbers of places next to it.
Points centres() {
    Points places;
    for (std::size_t i = 0; i < questionCount; ++i)
        places.emplace_back(1e-13 * static_cast<double>(i % 3), 1e-13 * static_cast<double>(i % 5));
    return places;
}

using MakePoints = Points (*)(std::size_t);

/// The places that a row asks about.
using Places = Points (*)(const Inputs&);

Points anywhere(const Inputs& in) {
    return in.questions;
}
Points inTheMiddle(const Inputs&) {
    return centres();
}

/// Both contestants of a row.
struct Pair {
    Entry ours;
    Entry plain;
};

template <class Shape, class Ask>
Contestant asked(Shape shape, Points questions, Ask ask) {
    return repeated([shape = std::move(shape), questions = std::move(questions), ask](std::size_t i) {
        return static_cast<double>(ask(shape, pick(questions, i)));
    });
}

/// Ours asks a contour, which a region is as well; the loop asks the vertices.
template <class Ours, class Plain>
Pair aboutPlaces(Row row, MakePoints points, Places places, Ours ours, Plain plain) {
    return {{row, "ours", [=](const Inputs& in) { return asked(gmRegion(points(in.n)), places(in), ours); }},
            {row, "plain loop", [=](const Inputs& in) { return asked(points(in.n), places(in), plain); }}};
}

Pair closestPoints(Row row, MakePoints points, Places places) {
    return aboutPlaces(
        row, points, places,
        [](const gmRegion& region, const Point& p) { return region.closestPoint(p, false).distance(p); },
        [](const Points& shape, const Point& p) { return closest(shape, p).distance(p); });
}

Pair closestVertices(Row row, MakePoints points, Places places) {
    return aboutPlaces(
        row, points, places,
        [](const gmRegion& region, const Point& p) { return region.closestPoint(p, true).distance(p); },
        [](const Points& shape, const Point& p) { return closestVertex(shape, p).distance(p); });
}

Pair insides(Row row, MakePoints points, Places places) {
    return aboutPlaces(
        row, points, places, [](const gmRegion& region, const Point& p) { return region.inside(p, false); }, isInside);
}

Pair segments(Row row, MakePoints points) {
    return {{row, "ours",
             [=](const Inputs& in) {
                 return repeated([contour = gmContour(points(in.n), true), &in](std::size_t i) {
                     const Segment& segment = pick(in.longSegments, i);
                     return contour.intersections(gmLineSeg(segment.from, segment.to), true).size();
                 });
             }},
            {row, "plain loop", [=](const Inputs& in) {
                 return repeated(
                     [shape = points(in.n), &in](std::size_t i) { return crossings(shape, pick(in.longSegments, i)); });
             }}};
}

const Pair pairs[] = {
    closestPoints(Row::hardCentrePoint, regularPolygon, inTheMiddle),
    closestVertices(Row::hardCentreVertex, regularPolygon, inTheMiddle),
    insides(Row::hardCentreInside, regularPolygon, inTheMiddle),
    closestPoints(Row::hardTanglePoint, tangle, anywhere),
    closestVertices(Row::hardTangleVertex, tangle, anywhere),
    insides(Row::hardTangleInside, tangle, anywhere),
    segments(Row::hardTangleCrossings, tangle),
    closestPoints(Row::hardSpiralPoint, spiral, anywhere),
    closestVertices(Row::hardSpiralVertex, spiral, anywhere),
    insides(Row::hardSpiralInside, spiral, anywhere),
    segments(Row::hardSpiralCrossings, spiral),
};

const Pair farthest{
    {Row::hardPolygonPair, "ours",
     [](const Inputs& in) {
         const auto contour = std::make_shared<gmContour>(regularPolygon(in.n), true);
         return cold(
             in, [contour](std::size_t) { contour->isClosed(true); },
             [contour](std::size_t, std::size_t) { return contour->diameter(gmContourDefs::eMaxVertexPair); });
     }},
    {Row::hardPolygonPair, "plain loop", [](const Inputs& in) {
         return keepsNothing(in, [shape = regularPolygon(in.n)](std::size_t) { return farthestPair(shape); });
     }}};

}  // namespace
}  // namespace peers
