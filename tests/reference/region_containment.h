#pragma once

#include <algorithm>
#include <cmath>

#include "cntr/defs.h"
#include "tests/reference/extent.h"
#include "tests/reference/intersections.h"
#include "tests/reference/outline.h"
#include "tests/reference/proximity.h"

namespace reference {

/// The plain procedures' own idea of a region.
struct Region {
    Points points;
    std::vector<Region> holes;
};

inline Outline boundary(const Region& region) {
    return {region.points, true};
}

inline void refuseWithoutVertex(const Outline& outline) {
    if (outline.points.empty())
        throw gmContourDefs::EmptyContour();
}

inline Points intersections(const Region& region, const gmLineSeg& seg, bool includeEndpointEdges, bool considerHoles) {
    refuseWithoutVertex(boundary(region));
    Points result = intersections(boundary(region), seg, includeEndpointEdges);
    if (considerHoles)
        for (const Region& hole : region.holes) {
            refuseWithoutVertex(boundary(hole));
            for (const gmVector<2>& p : intersections(boundary(hole), seg, includeEndpointEdges))
                result.push_back(p);
        }
    return result;
}

inline Points intersections(const Region& region, const Outline& other, bool considerHoles) {
    refuseWithoutVertex(boundary(region));
    Points result = intersections(boundary(region), other);
    if (considerHoles)
        for (const Region& hole : region.holes) {
            refuseWithoutVertex(boundary(hole));
            for (const gmVector<2>& p : intersections(boundary(hole), other))
                result.push_back(p);
        }
    return result;
}

/// Ascending, and at the end those that are no numbers.
inline void sortAngles(std::vector<double>& angles) {
    const auto before = [](double a, double b) { return a < b || (!std::isnan(a) && std::isnan(b)); };
    for (std::size_t i = 1; i < angles.size(); i++)
        for (std::size_t j = i; j > 0 && before(angles[j], angles[j - 1]); j--)
            std::swap(angles[j], angles[j - 1]);
}

/// The direction midway through the first gap between neighbouring angles that is wide enough.
inline gmVector<2> rayDirection(std::vector<double> angles) {
    const std::size_t n = angles.size();
    const double step = 3.141592653589793 / static_cast<double>(n);
    sortAngles(angles);
    for (std::size_t i = 0; i < n; i++) {
        const std::size_t j = i + 1 == n ? 0 : i + 1;
        const double gap = gmRadian(angles[j] - angles[i]).norm().value();
        if (gap > step)
            return gmVector<2>(1.0, gmRadian(angles[i] + 0.5 * gap));
    }
    return {1.0, 0.0};
}

inline long insideCount(const Region& region, const gmVector<2>& p, bool bothDirections) {
    const Outline outline = boundary(region);
    refuseWithoutVertex(outline);
    if (!encloseRect(outline, gmXform<2>()).within(p))
        return 0;
    std::vector<double> angles;
    for (const gmVector<2>& v : outline.points) {
        const gmVector<2> d = v - p;
        if (!(d.len() > 1e-6))
            return 1;
        angles.push_back(d.angle().norm().value());
    }
    const gmVector<2> direction = rayDirection(angles);
    const double length = 2.0 * circleFromFirstVertex(outline).radius();
    const std::size_t ahead = intersections(region, gmLineSeg(p, p + length * direction), false, false).size();
    if (!bothDirections)
        return static_cast<long>(ahead);
    const std::size_t behind = intersections(region, gmLineSeg(p, p - length * direction), false, false).size();
    return static_cast<long>(std::min(ahead, behind));
}

inline bool inside(const Region& region, const gmVector<2>& p, bool considerHoles) {
    if (insideCount(region, p, false) % 2 == 0)
        return false;
    if (considerHoles)
        for (const Region& hole : region.holes)
            if (inside(hole, p, true))
                return false;
    return true;
}

/// A vertex of the outline (hole -1) or of a hole.
struct VertexOf {
    long index;
    long hole;
};

inline VertexOf closestVertexIndex(const Region& region, const gmVector<2>& p, bool considerHoles) {
    refuseWithoutVertex(boundary(region));
    VertexOf result = {closestVertexIndex(boundary(region), p), -1};
    if (!considerHoles)
        return result;
    double best = region.points[static_cast<std::size_t>(result.index)].distance(p);
    for (std::size_t i = 0; i < region.holes.size(); i++) {
        const Outline hole = boundary(region.holes[i]);
        refuseWithoutVertex(hole);
        const long h = closestVertexIndex(hole, p);
        const double d = hole.points[static_cast<std::size_t>(h)].distance(p);
        if (d < best) {
            best = d;
            result = {h, static_cast<long>(i)};
        }
    }
    return result;
}

/// The holes count for vertices when asked for, and always for edges.
inline gmVector<2> closestPoint(const Region& region, const gmVector<2>& p, bool vertexOnly, bool considerHoles) {
    if (vertexOnly) {
        const VertexOf closest = closestVertexIndex(region, p, considerHoles);
        const auto index = static_cast<std::size_t>(closest.index);
        return closest.hole < 0 ? region.points[index]
                                : region.holes[static_cast<std::size_t>(closest.hole)].points[index];
    }
    refuseWithoutVertex(boundary(region));
    gmVector<2> best = closestPoint(boundary(region), p, false);
    double d = best.distance(p);
    for (const Region& hole : region.holes) {
        refuseWithoutVertex(boundary(hole));
        const gmVector<2> candidate = closestPoint(boundary(hole), p, false);
        if (candidate.distance(p) < d) {
            best = candidate;
            d = candidate.distance(p);
        }
    }
    return best;
}

inline double distToPoint(const Region& region, const gmVector<2>& p, bool vertexOnly, bool considerHoles,
                          bool insideIsZero) {
    if (insideIsZero && inside(region, p, considerHoles))
        return 0.0;
    return closestPoint(region, p, vertexOnly, considerHoles).distance(p);
}

}  // namespace reference
