#include <algorithm>
#include <cmath>

#include "cntr/contour.h"
#include "cntr/detail/edges.h"
#include "cntr/detail/tolerances.h"

namespace {

struct Crossing {
    gmVector<2> position;
    int edge;
    double key;  // how far along the segment
};

/// Whether the edge comes close to an end of the segment.
bool touchesAnEnd(const gmLineSeg& edge, const gmLineSeg& seg) {
    return edge.distToPoint(seg.p1()) <= detail::touching || edge.distToPoint(seg.p2()) <= detail::touching;
}

gmRect boxOf(const gmLineSeg& seg) {
    return gmRect(seg.p1(), {}).enclose(gmRect(seg.p2(), {}));
}

std::vector<Crossing> findCrossings(const detail::Edges& edges, const gmLineSeg& seg, const gmRect& box,
                                    bool includeEndpointEdges) {
    std::vector<Crossing> crossings;
    const gmLine line = seg.line();
    const gmVector<2> along = seg.p2() - seg.p1();
    for (std::size_t k = 0; k < edges.valid.size(); ++k) {
        if (!edges.valid[k] || !edges.rects[k].overlaps(box))
            continue;
        const gmLineSeg& edge = edges.lineSegs[k];
        if (edges.lines[k].isParallel(line) || (!includeEndpointEdges && touchesAnEnd(edge, seg)))
            continue;
        const gmVector<2> position = edges.lines[k].intersect(line).position();
        if (edge.distToPoint(position) < detail::touching && seg.distToPoint(position) < detail::touching)
            crossings.push_back({position, static_cast<int>(k), (position - seg.p1()).dot(along)});
    }
    return crossings;
}

/// Orders the crossings along the segment. Those at one place stand as exchanging every pair out of order leaves them;
/// where there are none, any sort gives the same.
void sortAlong(std::vector<Crossing>& crossings) {
    const auto before = [](const Crossing& a, const Crossing& b) { return a.key < b.key; };
    std::vector<Crossing> sorted = crossings;
    const bool numbers = std::none_of(sorted.begin(), sorted.end(), [](const auto& c) { return std::isnan(c.key); });
    if (numbers) {
        std::sort(sorted.begin(), sorted.end(), before);
        const auto sameKey = [](const Crossing& a, const Crossing& b) { return a.key == b.key; };
        if (std::adjacent_find(sorted.begin(), sorted.end(), sameKey) == sorted.end()) {
            crossings.swap(sorted);
            return;
        }
    }
    for (std::size_t i = 0; i < crossings.size(); ++i)
        for (std::size_t j = i + 1; j < crossings.size(); ++j)
            if (crossings[i].key > crossings[j].key)
                std::swap(crossings[i], crossings[j]);
}

}  // namespace

std::vector<gmVector<2>> gmContour::intersections(const gmLineSeg& seg, std::vector<int>& edgeIndex,
                                                  bool includeEndpointEdges) const {
    checkHasVertex();
    edgeIndex.clear();
    const gmRect box = boxOf(seg);
    if (!box.overlaps(encloseRect(gmXform<2>::I)))
        return {};
    std::vector<Crossing> crossings = findCrossings(edges(), seg, box, includeEndpointEdges);
    sortAlong(crossings);
    std::vector<gmVector<2>> positions;
    for (const Crossing& crossing : crossings) {
        positions.push_back(crossing.position);
        edgeIndex.push_back(crossing.edge);
    }
    return positions;
}

std::vector<gmVector<2>> gmContour::intersections(const gmLineSeg& seg, bool includeEndpointEdges) const {
    std::vector<int> edgeIndex;
    return intersections(seg, edgeIndex, includeEndpointEdges);
}

std::vector<gmVector<2>> gmContour::intersections(const gmContour& other) const {
    checkHasVertex();
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
    return caches_.isSelfIntersecting.get([&](bool& crossed) {
        crossed = false;
        const detail::Edges& all = edges();
        for (std::size_t k = 0; k < all.valid.size() && !crossed; ++k)
            crossed = all.valid[k] && !intersections(all.lineSegs[k], false).empty();
    });
}
