// Clipper, which counts in integers: coordinates are taken a million times as large.
#include <cmath>
#include <polyclipping/clipper.hpp>

#include "bench/peers/contest.h"

namespace peers {
namespace {

using ClipperLib::IntPoint;
using ClipperLib::Path;
using ClipperLib::Paths;

constexpr double scale = 1e6;

IntPoint scaled(const Point& point) {
    return {std::llround(scale * point.x()), std::llround(scale * point.y())};
}

Path path(const Points& points) {
    Path made;
    for (const Point& point : points)
        made.push_back(scaled(point));
    return made;
}

double areaOf(const Path& ring) {
    return std::abs(ClipperLib::Area(ring)) / (scale * scale);
}

bool holds(const Path& outline, const Paths& holes, const IntPoint& point) {
    if (ClipperLib::PointInPolygon(point, outline) == 0)
        return false;
    for (const Path& hole : holes)
        if (ClipperLib::PointInPolygon(point, hole) != 0)
            return false;
    return true;
}

Paths paths(const std::vector<Points>& shapes) {
    Paths made;
    for (const Points& shape : shapes)
        made.push_back(path(shape));
    return made;
}

Contestant inside(const Inputs& in, const std::vector<Points>& holes, bool isCold) {
    const auto ask = [outline = path(in.outline), inner = paths(holes), points = path(in.questions)](std::size_t i) {
        return holds(outline, inner, pick(points, i));
    };
    return isCold ? keepsNothing(in, ask) : repeated(ask);
}

Contestant simplify(const Inputs& in) {
    const auto ask = [chain = path(in.chained), out = Paths()](std::size_t) mutable {
        ClipperLib::SimplifyPolygon(chain, out, ClipperLib::pftNonZero);
        return out.size();
    };
    return keepsNothing(in, ask, [chain = path(in.chained)](std::size_t) {
        Paths out;
        ClipperLib::SimplifyPolygon(chain, out, ClipperLib::pftNonZero);
        double sum = 0.0;
        for (const Path& ring : out)
            sum += areaOf(ring);
        return sum;
    });
}

const Entry entries[] = {
    {Row::inside, "Clipper PointInPolygon", [](const Inputs& in) { return inside(in, {}, false); }},
    {Row::insideCold, "Clipper PointInPolygon", [](const Inputs& in) { return inside(in, {}, true); }},
    {Row::insideHoles, "Clipper PointInPolygon", [](const Inputs& in) { return inside(in, in.holes, false); }},
    {Row::insideHolesCold, "Clipper PointInPolygon", [](const Inputs& in) { return inside(in, in.holes, true); }},
    {Row::regularize, "Clipper SimplifyPolygon", simplify},
    {Row::area, "Clipper Area",
     [](const Inputs& in) {
         return keepsNothing(in, [outline = path(in.outline)](std::size_t) { return areaOf(outline); });
     }},
};

}  // namespace
}  // namespace peers
