#include <algorithm>
#include <unordered_map>

#include "cntr/detail/tolerances.h"
#include "cntr/region.h"

namespace {

constexpr double pi = 3.141592653589793;

/// The direction of a ray from a point that sees the vertices under these angles: it keeps off all of them, where
/// there is room.
gmVector<2> rayDirection(std::vector<double>& angles) {
    std::sort(angles.begin(), angles.end());
    const double wideEnough = pi / static_cast<double>(angles.size());
    for (std::size_t i = 0; i < angles.size(); ++i) {
        const double next = i + 1 < angles.size() ? angles[i + 1] : angles.front();
        const double gap = gmRadian(next - angles[i]).norm().value();
        if (gap > wideEnough)
            return gmVector<2>(1.0, gmRadian(angles[i] + 0.5 * gap));
    }
    return {1.0, 0.0};
}

}  // namespace

long gmRegion::insideCount(const gmVector<2>& p, bool bothDirections) const {
    if (!encloseRect(gmXform<2>::I).within(p))
        return 0;
    std::vector<double> angles;
    angles.reserve(points().size());
    for (const gmVector<2>& vertex : points()) {
        const gmVector<2> d = vertex - p;
        if (!(d.len() > detail::touching))  // so for a vertex with a NaN as well: no angle is one
            return 1;
        angles.push_back(d.angle().norm().value());
    }
    const gmVector<2> ray = rayDirection(angles) * (2.0 * encloseCircle(gmContourDefs::eFromFirstVertex).radius());
    const auto crossings = [&](const gmVector<2>& end) {
        return static_cast<long>(intersections(gmLineSeg(p, end), false, false).size());
    };
    const long count = crossings(p + ray);
    return bothDirections ? std::min(count, crossings(p - ray)) : count;
}

bool gmRegion::insideOutline(const gmVector<2>& p) const {
    return insideCount(p, false) % 2 == 1;
}

// What a region says of a point that its outline holds depends on what its holes say, and that on theirs. The walk
// keeps the regions it has begun in a list of its own, so that nesting costs no stack, and asks each region once.
bool gmRegion::inside(const gmVector<2>& p, bool considerHoles) const {
    if (!insideOutline(p))
        return false;
    if (!considerHoles || holes_.empty())
        return true;

    enum class Answer { eOpen, eInside, eOutside };
    struct Begun {
        const gmRegion* region;
        Answer* answer;
        std::size_t nextHole;
    };
    std::unordered_map<const gmRegion*, Answer> answers;
    std::vector<Begun> path{{this, &answers[this], 0}};
    while (true) {
        Begun& last = path.back();
        if (last.nextHole == last.region->holes_.size()) {
            *last.answer = Answer::eInside;
        } else {
            const gmRegion& hole = *last.region->holes_[last.nextHole];
            const auto [found, isNew] = answers.emplace(&hole, Answer::eOutside);
            if (isNew && hole.insideOutline(p)) {
                found->second = Answer::eOpen;
                path.push_back({&hole, &found->second, 0});
                continue;
            }
            if (found->second == Answer::eOpen)
                throw gmContourDefs::BadParams("holes form a cycle");
            if (found->second == Answer::eOutside) {
                ++last.nextHole;
                continue;
            }
            *last.answer = Answer::eOutside;
        }
        if (path.size() == 1)
            return *last.answer == Answer::eInside;
        path.pop_back();
    }
}

long gmRegion::closestVertexIndex(const gmVector<2>& p, bool considerHoles, long& holeIndex) const {
    holeIndex = -1;
    long nearest = closestVertexIndex(p);
    if (!considerHoles)
        return nearest;
    double best = p.distance(points()[static_cast<std::size_t>(nearest)]);
    for (std::size_t i = 0; i < holes_.size(); ++i) {
        const gmRegion& hole = *holes_[i];
        const long candidate = hole.closestVertexIndex(p);
        const double distance = p.distance(hole.points()[static_cast<std::size_t>(candidate)]);
        if (distance < best) {
            best = distance;
            holeIndex = static_cast<long>(i);
            nearest = candidate;
        }
    }
    return nearest;
}

gmVector<2> gmRegion::closestPoint(const gmVector<2>& p, bool vertexOnly, bool considerHoles) const {
    if (vertexOnly) {
        long holeIndex = -1;
        const auto nearest = static_cast<std::size_t>(closestVertexIndex(p, considerHoles, holeIndex));
        return (holeIndex < 0 ? *this : *holes_[static_cast<std::size_t>(holeIndex)]).points()[nearest];
    }
    gmVector<2> nearest = closestPoint(p, false);
    double best = p.distance(nearest);
    for (const RegionCPtr& hole : holes_) {
        const gmVector<2> candidate = hole->closestPoint(p, false);
        const double distance = p.distance(candidate);
        if (distance < best) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

double gmRegion::distToPoint(const gmVector<2>& p, bool vertexOnly, bool considerHoles, bool insideIsZero) const {
    if (insideIsZero && inside(p, considerHoles))
        return 0.0;
    return p.distance(closestPoint(p, vertexOnly, considerHoles));
}

namespace {

/// What ask(outline) lists for the region's outline and, if they are considered, for those of its holes.
template <class Ask>
std::vector<gmVector<2>> listFor(const gmRegion& region, bool considerHoles, Ask ask) {
    std::vector<gmVector<2>> all = ask(region);
    if (considerHoles)
        for (const RegionCPtr& hole : region.holes()) {
            const std::vector<gmVector<2>> more = ask(*hole);
            all.insert(all.end(), more.begin(), more.end());
        }
    return all;
}

}  // namespace

std::vector<gmVector<2>> gmRegion::intersections(const gmContour& other, bool considerHoles) const {
    return listFor(*this, considerHoles, [&](const gmContour& outline) { return outline.intersections(other); });
}

std::vector<gmVector<2>> gmRegion::intersections(const gmLineSeg& seg, bool includeEndpointEdges,
                                                 bool considerHoles) const {
    return listFor(*this, considerHoles,
                   [&](const gmContour& outline) { return outline.intersections(seg, includeEndpointEdges); });
}
