#pragma once

#include <utility>

#include "foundation/math/realeq.h"
#include "foundation/shapes/line.h"
#include "foundation/shapes/lineseg.h"
#include "foundation/shapes/rect.h"
#include "tests/reference/extent.h"
#include "tests/reference/outline.h"

namespace reference {

/// What there is to know about each edge, in edge order. A degenerate edge has default values.
struct EdgeTable {
    std::vector<gmLineSeg> lineSegs;
    std::vector<gmLine> lines;
    std::vector<gmRect> rects;
    std::vector<bool> valid;
};

inline gmRect boxOf(const gmVector<2>& a, const gmVector<2>& b) {
    return gmRect(a, gmVector<2>(0.0, 0.0)).enclose(gmRect(b, gmVector<2>(0.0, 0.0)));
}

inline EdgeTable edgeTable(const Outline& outline) {
    EdgeTable table;
    for (const Edge& edge : edges(outline)) {
        const gmVector<2>& a = outline.points[edge.from];
        const gmVector<2>& b = outline.points[edge.to];
        if (gfRealEq(a, b, 1e-15)) {
            table.lineSegs.push_back(gmLineSeg());
            table.lines.push_back(gmLine());
            table.rects.push_back(gmRect());
            table.valid.push_back(false);
        } else {
            table.lineSegs.push_back(gmLineSeg(a, b));
            table.lines.push_back(gmLineSeg(a, b).line());
            table.rects.push_back(boxOf(a, b));
            table.valid.push_back(true);
        }
    }
    return table;
}

/// Where a segment meets a contour, and at which edge.
struct Crossing {
    gmVector<2> position;
    int edge;
};

/// The crossings of one segment, given what is known about the edges and the box of the whole. One vertex at least.
inline std::vector<Crossing> crossings(const EdgeTable& table, const gmRect& contourBox, const gmLineSeg& seg,
                                       bool includeEndpointEdges) {
    std::vector<Crossing> kept;
    const gmLine line = seg.line();
    const gmRect segBox = boxOf(seg.p1(), seg.p2());
    if (!segBox.overlaps(contourBox))
        return kept;
    for (std::size_t k = 0; k < table.valid.size(); k++) {
        if (!table.valid[k])
            continue;
        if (!table.rects[k].overlaps(segBox))
            continue;
        if (table.lines[k].isParallel(line))
            continue;
        if (!includeEndpointEdges) {
            if (table.lineSegs[k].distToPoint(seg.p1()) <= 1e-6)
                continue;
            if (table.lineSegs[k].distToPoint(seg.p2()) <= 1e-6)
                continue;
        }
        const gmVector<2> p = table.lines[k].intersect(line).position();
        if (table.lineSegs[k].distToPoint(p) < 1e-6 && seg.distToPoint(p) < 1e-6)
            kept.push_back({p, static_cast<int>(k)});
    }
    const gmVector<2> s = seg.p1();
    const gmVector<2> d = seg.p2() - seg.p1();
    const auto key = [&](const Crossing& c) {
        return (c.position.x() - s.x()) * d.x() + (c.position.y() - s.y()) * d.y();
    };
    for (std::size_t i = 0; i + 1 < kept.size(); i++)
        for (std::size_t j = i + 1; j < kept.size(); j++)
            if (key(kept[i]) > key(kept[j]))
                std::swap(kept[i], kept[j]);
    return kept;
}

inline std::vector<Crossing> crossings(const Outline& outline, const gmLineSeg& seg, bool includeEndpointEdges) {
    return crossings(edgeTable(outline), encloseRect(outline, gmXform<2>()), seg, includeEndpointEdges);
}

inline Points intersections(const Outline& outline, const gmLineSeg& seg, bool includeEndpointEdges) {
    Points result;
    for (const Crossing& crossing : crossings(outline, seg, includeEndpointEdges))
        result.push_back(crossing.position);
    return result;
}

inline Points intersections(const Outline& outline, const Outline& other) {
    Points result;
    for (const Edge& edge : edges(other))
        for (const gmVector<2>& p :
             intersections(outline, gmLineSeg(other.points[edge.from], other.points[edge.to]), true))
            result.push_back(p);
    return result;
}

inline bool isSelfIntersecting(const Outline& outline) {
    if (outline.points.empty())
        return false;
    const EdgeTable table = edgeTable(outline);
    const gmRect box = encloseRect(outline, gmXform<2>());
    for (std::size_t k = 0; k < table.valid.size(); k++)
        if (table.valid[k] && !crossings(table, box, table.lineSegs[k], false).empty())
            return true;
    return false;
}

}  // namespace reference
