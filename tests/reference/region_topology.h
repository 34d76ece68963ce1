#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <set>
#include <tuple>

#include "cntr/defs.h"
#include "tests/reference/region_containment.h"

namespace reference {

/// The vertex that the first edge with nothing on one of its sides starts at. The closing edge is not tried.
inline std::optional<std::size_t> boundaryStart(const Region& region) {
    const Points& v = region.points;
    const double eps = 0.01 * medianFeatureSize(boundary(region));
    for (std::size_t i = 0; i + 1 < v.size(); i++) {
        const gmVector<2> m = (v[i] + v[i + 1]) * 0.5;
        const gmVector<2> u = (v[i] - v[i + 1]).unit();
        const gmVector<2> w(-u.y() * eps, u.x() * eps);
        const gmVector<2> a = m + w;
        const gmVector<2> b = m - w;
        const std::size_t c1 = intersections(region, gmLineSeg(a, b), true, false).size();
        const std::size_t c2 = intersections(region, gmLineSeg(v[i], v[i + 1]), true, false).size();
        const bool outside = insideCount(region, a, true) == 0 || insideCount(region, b, true) == 0;
        if (c1 == 1 && c2 == 2 && outside)
            return i;
    }
    return std::nullopt;
}

/// What a step of the trace depends on, to the bit.
using TraceState = std::tuple<std::uint64_t, std::uint64_t, std::size_t, bool>;

inline TraceState traceState(const gmVector<2>& position, std::size_t index, bool forward) {
    const double x = position.x();
    const double y = position.y();
    std::uint64_t xBits = 0;
    std::uint64_t yBits = 0;
    std::memcpy(&xBits, &x, sizeof x);
    std::memcpy(&yBits, &y, sizeof y);
    return {xBits, yBits, index, forward};
}

/// Nothing when the trace never comes back to its start, which is when a step comes back before it does.
inline std::optional<Points> traceBoundary(const Region& region, std::size_t s) {
    const Points& v = region.points;
    const std::size_t n = v.size();
    Points trace;
    gmVector<2> P = v[s];
    std::size_t j = (s + 1) % n;
    bool forward = true;
    std::set<TraceState> seen;
    do {
        if (!seen.insert(traceState(P, j, forward)).second)
            return std::nullopt;
        const gmVector<2> target = forward ? v[j] : v[(j + n - 1) % n];
        const std::vector<Crossing> found = crossings(boundary(region), gmLineSeg(P, target), false);
        if (found.empty()) {
            P = target;
            j = forward ? (j + 1) % n : (j + n - 1) % n;
        } else {
            P = found[0].position;
            forward = !forward;
            j = static_cast<std::size_t>(found[0].edge);
        }
        trace.push_back(P);
    } while (!(P == v[s]));
    return trace;
}

/// `count` vertices from `first` on, around and around.
inline Points verticesFrom(const Points& points, std::size_t first, std::size_t count) {
    Points result;
    for (std::size_t i = 0; i < count; i++)
        result.push_back(points[(first + i) % points.size()]);
    return result;
}

/// Cuts one loop in two where two of its vertices touch. False when no loop touches itself.
inline bool splitOneLoop(std::vector<Region>& loops) {
    for (std::size_t r = 0; r < loops.size(); r++) {
        const Points points = loops[r].points;
        const std::size_t n = points.size();
        for (std::size_t k = 0; k < n; k++)
            for (const int answer : vertexIndex(boundary(loops[r]), points[k], 1e-6)) {
                std::size_t p = static_cast<std::size_t>(answer);
                if (p == k)
                    continue;
                if (p < k)
                    p += n;
                loops[r] = {verticesFrom(points, k, p - k), {}};
                loops.push_back({verticesFrom(points, p, k + n - p), {}});
                return true;
            }
    }
    return false;
}

/// Drops one loop that begins inside another. False when none does.
inline bool dropOneLoop(std::vector<Region>& loops) {
    for (std::size_t i = 0; i < loops.size(); i++)
        for (std::size_t j = 0; j < loops.size(); j++) {
            if (i == j)
                continue;
            const Points& points = loops[i].points;
            const gmVector<2> middle = (points[0] + points[1 % points.size()]) * 0.5;
            if (inside(loops[j], middle, true)) {
                loops[i] = Region(loops.back());
                loops.pop_back();
                return true;
            }
        }
    return false;
}

/// Joins two loops that share a vertex. False when none do.
inline bool joinTwoLoops(std::vector<Region>& loops) {
    for (std::size_t a = 0; a < loops.size(); a++)
        for (std::size_t b = a + 1; b < loops.size(); b++)
            for (std::size_t k = 0; k < loops[a].points.size(); k++) {
                const std::vector<int> shared = vertexIndex(boundary(loops[b]), loops[a].points[k], 1e-6);
                if (shared.empty())
                    continue;
                Points joined = verticesFrom(loops[a].points, k, loops[a].points.size());
                for (const gmVector<2>& v :
                     verticesFrom(loops[b].points, static_cast<std::size_t>(shared[0]), loops[b].points.size()))
                    joined.push_back(v);
                loops[a] = {joined, {}};
                loops[b] = Region(loops.back());
                loops.pop_back();
                return true;
            }
    return false;
}

inline Region outerHullRegularize(const Region& region, bool outerHullOnly) {
    if (region.points.size() < 3)
        throw gmContourDefs::EmptyContour();
    const std::optional<std::size_t> start = boundaryStart(region);
    if (!start)
        throw gmContourDefs::BadParams("invalid contour");
    const std::optional<Points> trace = traceBoundary(region, *start);
    if (!trace)
        throw gmContourDefs::BadParams("invalid contour");
    if (!outerHullOnly)
        return {*trace, {}};
    std::vector<Region> loops = {{*trace, {}}};
    while (splitOneLoop(loops)) {
    }
    while (dropOneLoop(loops)) {
    }
    while (joinTwoLoops(loops)) {
    }
    return loops[0];
}

inline Region regularize(const Region& region) {
    return isSelfIntersecting(boundary(region)) ? outerHullRegularize(region, false) : region;
}

inline Region outerHull(const Region& region) {
    return isSelfIntersecting(boundary(region)) ? outerHullRegularize(region, true) : region;
}

/// One outline that runs around the first region from a crossing with the other, and then around the other.
inline Points splice(const Region& region, const Region& other) {
    const EdgeTable table = edgeTable(boundary(region));
    for (std::size_t i = 0; i < table.valid.size(); i++) {
        if (!table.valid[i])
            continue;
        refuseWithoutVertex(boundary(other));
        const std::vector<Crossing> found = crossings(boundary(other), table.lineSegs[i], true);
        if (found.empty())
            continue;
        Points result = {found[0].position};
        for (const gmVector<2>& v : verticesFrom(region.points, i, region.points.size()))
            result.push_back(v);
        result.push_back(found[0].position);
        for (const gmVector<2>& v :
             verticesFrom(other.points, static_cast<std::size_t>(found[0].edge), other.points.size()))
            result.push_back(v);
        return result;
    }
    throw gmContourDefs::BadParams("spliced regions do not intersect");
}

}  // namespace reference
