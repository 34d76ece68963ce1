#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "foundation/math/matrix.h"
#include "foundation/math/vector.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/rect.h"
#include "tools/mokshape/regions.h"

namespace mokshape {

/// What is measured of every shape and of all polygons together. Without "with holes" in the name it is outlines alone
/// that count. What does not exist, for too few vertices or beyond the range of numbers, is not there.
struct CommonMeasures {
    std::size_t vertices = 0;
    std::optional<double> area;  ///< of polygons; never negative
    std::optional<gmVector<2>> centre;
    std::size_t holes = 0;
    /// Of polygons. Negative where the holes are larger than the outlines.
    std::optional<double> areaWithHoles;
    /// Of polygons; missing where the holes leave next to nothing.
    std::optional<gmVector<2>> centreWithHoles;
    std::optional<gmRect> box;
};

/// What is measured of a polygon or a line. The centre is that of the enclosed area; of the line itself where it is
/// open or encloses next to nothing.
struct Measures : CommonMeasures {
    struct FittedEllipse {
        gmEllipse ellipse;
        double residual = 0.0;  ///< root mean square distance of the vertices from the ellipse
    };

    std::optional<double> length;
    std::optional<double> diameter;  ///< the largest distance between two vertices
    std::optional<FittedEllipse> ellipse;
    std::vector<std::size_t> crossingRings;  ///< those that cross themselves, by number, from 1; a line is 1

    bool isSelfCrossing() const { return !crossingRings.empty(); }
};

/// What is measured of polygons together, as a region set: where they overlap, each counts. Polygons that enclose next
/// to nothing have no part in the centre and the moments; without any other these are missing.
struct SetMeasures : CommonMeasures {
    std::size_t polygons = 0;
    /// Of the outlines, about their common centre, see gm_InertiaData.
    std::optional<gmMatrix<2>> moments;
    bool isSelfCrossing = false;  ///< an outline crosses itself or another; holes are not looked at
};

/// A file and the measures of each of its shapes, in the same order.
struct MeasuredFile {
    RegionFile regions;
    std::vector<Measures> measures;
    std::optional<SetMeasures> all;  ///< of its polygons; none where it has none
};

Measures measureLine(const gmContour& line);
Measures measureRegion(const gmRegion& region);
SetMeasures measureSet(const std::vector<RegionCPtr>& regions);

/// Measures all shapes of a file. `progress` advances by workOf each of their outlines.
MeasuredFile measure(RegionFile regions, Progress& progress);

/// The same without those of its polygons together.
MeasuredFile measureSingly(RegionFile regions, Progress& progress);

/// The rotation of an ellipse in degrees, in (-90, 90].
double angleInDegrees(const gmEllipse& ellipse);

}  // namespace mokshape
