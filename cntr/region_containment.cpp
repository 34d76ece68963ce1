#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <unordered_map>

#include "cntr/detail/evenodd.h"
#include "cntr/detail/nearest.h"
#include "cntr/detail/tolerances.h"
#include "cntr/region.h"

namespace {

constexpr double pi = 3.141592653589793;

/// The vertices that p sees at angles from 0 to a small one: a question to the runs of an outline.
class Wedge {
  public:
    // Angles round: the wedge that is looked at is a little wider, on both sides.
    Wedge(const gmVector<2>& p, double angle) : p_(p), angle_(angle), slope_(std::tan(angle) * (1.0 + 1e-9)) {}

    std::vector<double>& angles() { return angles_; }

    unsigned opens(const detail::Boxes& boxes) const {
        using detail::Eight;
        return mayHold(Eight::load(boxes.highX), Eight::load(boxes.lowY), Eight::load(boxes.highY)).bits();
    }

    void look(const detail::Run& run) {
        const auto own = detail::EightPlaces::load(run.own);
        for (unsigned open = mayHold(own.x, own.y, own.y).bits() & run.vertices; open != 0; open &= open - 1) {
            const double angle = (run.own[detail::lowestBit(open)] - p_).angle().norm().value();
            if (angle <= angle_)
                angles_.push_back(angle);
        }
    }

  private:
    /// Whether there may be a vertex with an x of at most `right` and a y between the others.
    detail::EightBools mayHold(const detail::Eight& right, const detail::Eight& low, const detail::Eight& high) const {
        const detail::Eight x = right - p_.x();
        return (low - p_.y() <= slope_ * x) & (p_.y() - high <= 1e-9 * x);
    }

    gmVector<2> p_;
    double angle_;
    double slope_;
    std::vector<double> angles_;
};

/// The direction midway through the first gap between neighbouring angles, in ascending order, that is wider than
/// `wideEnough`; after the last comes the first where the angles go all around.
std::optional<gmVector<2>> firstGap(std::vector<double>& angles, double wideEnough, bool goAllAround) {
    std::sort(angles.begin(), angles.end());
    for (std::size_t i = 0; i < angles.size(); ++i) {
        const bool isLast = i + 1 == angles.size();
        if (isLast && !goAllAround)
            break;
        const double gap = gmRadian(angles[isLast ? 0 : i + 1] - angles[i]).norm().value();
        if (gap > wideEnough)
            return gmVector<2>(1.0, gmRadian(angles[i] + 0.5 * gap));
    }
    return {};
}

/// The direction of a ray from p: it keeps off all vertices, where there is room.
gmVector<2> rayDirection(const std::vector<gmVector<2>>& points, const gmVector<2>& p, const detail::EdgeTree* tree) {
    const double wideEnough = pi / static_cast<double>(points.size());
    detail::Runs runs(points, true);
    // The first gap that is wide enough mostly comes early: a thin wedge has it, unless vertices are crowded there.
    double angle = 8.0 * wideEnough;
    while (angle < 1.5) {
        Wedge wedge(p, angle);
        askInOrder(tree, runs, wedge);
        if (const auto direction = firstGap(wedge.angles(), wideEnough, false))
            return *direction;
        if (wedge.angles().size() > points.size() / 8)
            break;
        angle *= 8.0;
    }
    std::vector<double> angles;
    angles.reserve(points.size());
    for (const gmVector<2>& vertex : points)
        angles.push_back((vertex - p).angle().norm().value());
    return firstGap(angles, wideEnough, true).value_or(gmVector<2>(1.0, 0.0));
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
    const gmVector<2> ray =
        rayDirection(points(), p, treeForOne()) * (2.0 * encloseCircle(gmContourDefs::eFromFirstVertex).radius());
    const auto crossings = [&](const gmVector<2>& end) {
        return static_cast<long>(intersections(gmLineSeg(p, end), false, false).size());
    };
    const long count = crossings(p + ray);
    return bothDirections && count > 0 ? std::min(count, crossings(p - ray)) : count;
}

detail::Extent gmRegion::extentWithHoles() const {
    detail::Extent all = gmContour::caches_.edgeIndex.extent(points());
    const gmRect* const box = gmContour::caches_.encloseRect.identity();
    if (box && (box->lower() != all.low || box->upper() != all.high))
        return detail::Extent();  // that of a mirror image is remembered, and decides what is outside
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
    askLeastFirst(treeForOne(), runs, question);
    return question.distance() <= detail::touching;
}

bool gmRegion::insideOutline(const gmVector<2>& p) const {
    checkHasVertex();
    detail::EdgeIndex& index = gmContour::caches_.edgeIndex;
    const bool isFirst = !index.hasExtent();
    if (!isFirst && !isInBox(p))
        return false;
    // A derived class may answer that it is open: then the ray decides.
    const std::optional<bool> inside = isClosed() ? detail::isInsideEvenOdd(p, points(), index) : std::optional<bool>();
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
