#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "foundation/math/vector.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/rect.h"
#include "tools/mokshape/regions.h"

namespace mokshape {

/// What is measured of a polygon or a line. Without "with holes" in the name it is the outline alone that counts. What
/// does not exist, for too few vertices or beyond the range of numbers, is not there.
struct Measures {
    struct FittedEllipse {
        gmEllipse ellipse;
        double residual = 0.0;  ///< root mean square distance of the vertices from the ellipse
    };

    std::size_t vertices = 0;
    std::optional<double> length;
    std::optional<double> area;  ///< of polygons; never negative
    /// Of the enclosed area; of the line itself where it is open or encloses next to nothing.
    std::optional<gmVector<2>> centre;
    std::size_t holes = 0;
    /// Of polygons. Negative where the holes are larger than the outline.
    std::optional<double> areaWithHoles;
    /// Of polygons; missing where the holes leave next to nothing.
    std::optional<gmVector<2>> centreWithHoles;
    std::optional<gmRect> box;
    std::optional<double> diameter;  ///< the largest distance between two vertices
    std::optional<FittedEllipse> ellipse;
    std::vector<std::size_t> crossingRings;  ///< those that cross themselves, by number, from 1; a line is 1

    bool isSelfCrossing() const { return !crossingRings.empty(); }
};

/// A file and the measures of each of its shapes, in the same order.
struct MeasuredFile {
    RegionFile regions;
    std::vector<Measures> measures;
};

Measures measureLine(const gmContour& line);
Measures measureRegion(const gmRegion& region);

/// Measures all shapes of a file. `progress` advances by workOf each of their outlines.
MeasuredFile measure(RegionFile regions, Progress& progress);

/// The rotation of an ellipse in degrees, in (-90, 90].
double angleInDegrees(const gmEllipse& ellipse);

}  // namespace mokshape
