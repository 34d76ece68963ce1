#include "cntr/contour.h"
#include "cntr/detail/crossings.h"
#include "cntr/detail/edges.h"
#include "cntr/detail/tolerances.h"
#include "foundation/math/realeq.h"

detail::Crossed gmContour::crossed(const detail::EdgeTree* tree) const {
    return {points_, isClosed(), caches_.edgeIndex.extent(points_), tree};
}

namespace {

gmRect boxOf(const gmLineSeg& seg) {
    gmRect box;
    box.extend(seg.p1());
    box.extend(seg.p2());
    return box;
}

std::vector<gmVector<2>> positionsOf(const std::vector<detail::Crossing>& crossings) {
    std::vector<gmVector<2>> positions;
    positions.reserve(crossings.size());
    for (const detail::Crossing& crossing : crossings)
        positions.push_back(crossing.position);
    return positions;
}

}  // namespace

std::vector<gmVector<2>> gmContour::intersections(const gmLineSeg& seg, std::vector<int>& edgeIndex,
                                                  bool includeEndpointEdges) const {
    checkHasVertex();
    edgeIndex.clear();
    if (!boxOf(seg).overlaps(identityBox()))
        return {};
    const auto crossings = detail::crossingsOf(seg, includeEndpointEdges, crossed(treeForOne()));
    edgeIndex.reserve(crossings.size());
    for (const detail::Crossing& crossing : crossings)
        edgeIndex.push_back(crossing.edge);
    return positionsOf(crossings);
}

std::vector<gmVector<2>> gmContour::intersections(const gmLineSeg& seg, bool includeEndpointEdges) const {
    checkHasVertex();
    if (!boxOf(seg).overlaps(identityBox()))
        return {};
    return positionsOf(detail::crossingsOf(seg, includeEndpointEdges, crossed(treeForOne())));
}

std::vector<gmVector<2>> gmContour::intersections(const gmContour& other) const {
    checkHasVertex();
    if (other.edgeCount() > 0 && isSearchable() && other.caches_.edgeIndex.extent(other.points()).isTame)
        return detail::crossingsOfEdges(other.crossed(other.treeForMany()), crossed(treeForMany()));
    std::vector<gmVector<2>> positions;
    detail::forEachEdge(other.points(), other.isClosed(), [&](const gmVector<2>& from, const gmVector<2>& to) {
        const std::vector<gmVector<2>> found = intersections(gmLineSeg(from, to), true);
        positions.insert(positions.end(), found.begin(), found.end());
    });
    return positions;
}

bool gmContour::isSelfIntersecting() const {
    if (points_.empty())
        return false;
    return caches_.isSelfIntersecting.get([&](bool& crosses) {
        crosses = false;
        for (std::size_t k = 0; k < edgeCount() && !crosses; ++k) {
            const auto [from, to] = detail::edgeEnds(points_.size(), isClosed(), k);
            if (gfRealEq(points_[from], points_[to], detail::sameValue))
                continue;
            if (isSearchable()) {
                crosses = detail::crossesItself(crossed(nullptr));
                return;
            }
            crosses = !intersections(gmLineSeg(points_[from], points_[to]), false).empty();
        }
    });
}

/// Whether trees can tell what crosses. The box that is remembered for the identity decides, and it may be that of a
/// mirror image.
bool gmContour::isSearchable() const {
    const detail::Extent& extent = caches_.edgeIndex.extent(points_);
    if (!extent.isTame)
        return false;
    const gmRect& box = identityBox();
    return box.lower() == extent.low && box.upper() == extent.high;
}
