#pragma once

#include <algorithm>
#include <array>
#include <vector>

#include "cntr/detail/cached.h"
#include "cntr/detail/keyedcache.h"
#include "cntr/detail/vertexgrid.h"
#include "cntr/regionptr.h"
#include "foundation/math/vector.h"
#include "foundation/math/xform.h"
#include "foundation/shapes/circle.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/line.h"
#include "foundation/shapes/lineseg.h"
#include "foundation/shapes/rect.h"

namespace detail {

/// The edges of a contour, one entry an edge in edge order. Entries of a degenerate edge are default values, and stand
/// for no place in the plane: whoever reads the others asks `valid` first.
struct Edges {
    std::vector<gmLineSeg> lineSegs;
    std::vector<gmLine> lines;
    std::vector<gmRect> rects;
    std::vector<bool> valid;
};

struct EllipseFit {
    gmEllipse ellipse;
    double residual = 0.0;
};

/// Orders transforms by the first five of their stored values. The sixth takes no part: two transforms that differ
/// there only share an entry. (No two do that keep the orientation and all angles; a reflection may share the entry of
/// a rotation.)
struct XformLess {
    bool operator()(const gmXform<2>& a, const gmXform<2>& b) const {
        return std::lexicographical_compare(a.values().begin(), a.values().begin() + 5, b.values().begin(),
                                            b.values().begin() + 5);
    }
};

/// Everything that the queries of a contour remember.
struct ContourCaches {
    KeyedCache<gmXform<2>, gmRect, XformLess> encloseRect;
    KeyedCache<double, long> extremalVertexIndex;
    std::vector<VertexGrid> vertexGrids;  // one a tolerance, in the order of their first use
    Cached<gmVector<2>> meanPosition;
    Cached<double> length;
    std::array<Cached<gmCircle>, 2> encloseCircle;  // by DiameterMode
    Cached<RegionCPtr> convexHull;
    Cached<EllipseFit> fitEllipse;
    Cached<bool> isSelfIntersecting;
    Cached<Edges> edges;
    Cached<double> medianFeatureSize;

    void invalidate() {
        encloseRect.clear();
        extremalVertexIndex.clear();
        vertexGrids.clear();
        meanPosition.invalidate();
        length.invalidate();
        for (auto& circle : encloseCircle)
            circle.invalidate();
        convexHull.invalidate();
        fitEllipse.invalidate();
        isSelfIntersecting.invalidate();
        edges.invalidate();
        medianFeatureSize.invalidate();
    }
};

}  // namespace detail
