#include <algorithm>
#include <limits>
#include <unordered_map>

#include "cntr/detail/evenodd.h"
#include "cntr/detail/nearest.h"
#include "cntr/detail/tolerances.h"
#include "cntr/region.h"

namespace {

constexpr double pi = 3.141592653589793;

/// The direction of a ray from p: it keeps off all vertices, where there is room.
gmVector<2> rayDirection(const std::vector<gmVector<2>>& points, const gmVector<2>& p) {
    std::vector<double> angles;
    angles.reserve(points.size());
    for (const gmVector<2>& vertex : points)
        angles.push_back((vertex - p).angle().norm().value());
    // The first gap that is wide enough mostly comes early: they are sorted only as far as it takes.
    const double wideEnough = pi / static_cast<double>(angles.size());
    constexpr std::size_t few = 32;
    for (std::size_t sorted = 0; sorted < angles.size();) {
        const std::size_t until = std::min(angles.size(), std::max(few, 8 * sorted));
        const auto at = [&](std::size_t i) { return angles.begin() + static_cast<std::ptrdiff_t>(i); };
        if (until < angles.size())
            std::nth_element(at(sorted), at(until), angles.end());
        std::sort(at(sorted), at(until));
        for (std::size_t i = sorted > 0 ? sorted - 1 : 0; i < until; ++i) {
            if (i + 1 == until && until < angles.size())
                break;
            const double next = i + 1 < angles.size() ? angles[i + 1] : angles.front();
            const double gap = gmRadian(next - angles[i]).norm().value();
            if (gap > wideEnough)
                return gmVector<2>(1.0, gmRadian(angles[i] + 0.5 * gap));
        }
        sorted = until;
    }
    return {1.0, 0.0};
}

}  // namespace

bool gmRegion::isInBox(const gmVector<2>& p) const {
    checkHasVertex();
    return identityBox().gmRect::within(p);
}

long gmRegion::insideCount(const gmVector<2>& p, bool bothDirections) const {
    if (!isInBox(p))
        return 0;
    if (isOnVertex(p))
        return 1;
    const gmVector<2> ray = rayDirection(points(), p) * (2.0 * encloseCircle(gmContourDefs::eFromFirstVertex).radius());
    const auto crossings = [&](const gmVector<2>& end) {
        return static_cast<long>(intersections(gmLineSeg(p, end), false, false).size());
    };
    const long count = crossings(p + ray);
    return bothDirections ? std::min(count, crossings(p - ray)) : count;
}

detail::Extent gmRegion::extentWithHoles() const {
    detail::Extent all = gmContour::caches_.edgeIndex.extent(points());
    for (const RegionCPtr& hole : holes_)
        all =
            hole.isNull() ? detail::Extent() : all.enclosing(hole->gmContour::caches_.edgeIndex.extent(hole->points()));
    return all;
}

/// A vertex with a NaN is everywhere: no angle is one.
bool gmRegion::isOnVertex(const gmVector<2>& p) const {
    if (!gmContour::caches_.edgeIndex.extent(points()).isTame)
        return std::any_of(points().begin(), points().end(),
                           [&](const gmVector<2>& v) { return !((v - p).len() > detail::touching); });
    detail::NearestVertex question(p);
    detail::Runs runs(points(), true);
    askLeastFirst(gmContour::caches_.edgeIndex.forOne(points(), true), runs, question);
    return question.distance() <= detail::touching;
}

bool gmRegion::insideOutline(const gmVector<2>& p) const {
    checkHasVertex();
    detail::EdgeIndex& index = gmContour::caches_.edgeIndex;
    const bool isFirst = !index.hasExtent();
    if (!isFirst && !isInBox(p))
        return false;
    const std::optional<bool> inside = detail::isInsideEvenOdd(p, points(), index);
    if (isFirst && !isInBox(p))
        return false;
    const auto radius = [&] { return encloseCircle(gmContourDefs::eFromFirstVertex).radius(); };
    const detail::Extent& extent = index.extent(points());
    const auto isClear = [&](auto... radiusIfNeeded) {
        return detail::isClearOfEnd(p, points().front(), extent, radiusIfNeeded...);
    };
    if (inside && (isClear() || isClear(radius())))
        return *inside;
    return insideCount(p, false) % 2 == 1;
}

bool gmRegion::inside(const gmVector<2>& p, bool considerHoles) const {
    if (!insideOutline(p))
        return false;
    if (considerHoles)
        for (const RegionCPtr& hole : holes_)
            if (hole->insideOutline(p))
                return hole->holes_.empty() ? false : insideNested(p);
    return true;
}

// What a region says of a point that its outline holds depends on what its holes say, and that on theirs. The walk
// keeps the regions it has begun in a list of its own, so that nesting costs no stack, and asks each region once.
bool gmRegion::insideNested(const gmVector<2>& p) const {
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

double gmRegion::leastDistance(const gmVector<2>& p, double limit) const {
    double least = std::numeric_limits<double>::infinity();
    const auto consider = [&](const gmRegion& region) {
        if (const auto nearest = region.closestPointWithin(limit, p))
            least = std::min(least, p.distance(*nearest));
    };
    consider(*this);
    for (const RegionCPtr& hole : holes_)
        consider(*hole);
    return least;
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
