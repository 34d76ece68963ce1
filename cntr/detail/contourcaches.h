#pragma once

#include <array>
#include <vector>

#include "cntr/detail/cached.h"
#include "cntr/detail/edgetree.h"
#include "cntr/detail/keyedcache.h"
#include "cntr/detail/rectcache.h"
#include "cntr/regionptr.h"
#include "foundation/math/vector.h"
#include "foundation/shapes/circle.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/lineseg.h"
#include "foundation/shapes/rect.h"

namespace detail {

/// The edges of a contour for those who ask for them, one entry an edge in edge order. A degenerate edge has a default
/// segment, which stands for no place in the plane.
struct Edges {
    std::vector<gmLineSeg> lineSegs;
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
    EdgeIndex edgeIndex;
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
        edgeIndex.invalidate();
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
