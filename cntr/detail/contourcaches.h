#pragma once

#include <array>
#include <vector>

#include "cntr/detail/cached.h"
#include "cntr/detail/keyedcache.h"
#include "cntr/detail/rectcache.h"
#include "cntr/detail/vertexgrid.h"
#include "cntr/regionptr.h"
#include "foundation/math/vector.h"
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

/// Everything that the queries of a contour remember.
struct ContourCaches {
    RectCache encloseRect;
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
