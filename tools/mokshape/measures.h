#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "foundation/math/vector.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/rect.h"
#include "tools/io/outline.h"

class gmContour;

namespace mokshape {

class Progress;

/// What is measured of one outline. What does not exist, for too few vertices or beyond the range of numbers, is not
/// there.
struct Measures {
    struct FittedEllipse {
        gmEllipse ellipse;
        double residual = 0.0;  ///< root mean square distance of the vertices from the ellipse
    };

    std::size_t vertices = 0;
    std::optional<double> length;
    std::optional<double> area;  ///< of closed outlines; each ring by itself, never negative
    /// Of the enclosed area; of the line itself where it is open or encloses next to nothing.
    std::optional<gmVector<2>> centre;
    std::optional<gmRect> box;
    std::optional<double> diameter;  ///< the largest distance between two vertices
    std::optional<FittedEllipse> ellipse;
    bool isSelfCrossing = false;
};

/// A file and the measures of each of its outlines, in the same order.
struct MeasuredFile {
    OutlineFile file;
    std::vector<Measures> measures;
};

gmContour contourOf(const Outline& outline);

Measures measure(const Outline& outline);

/// Measures all outlines of a file. `progress` advances by workOf each of them.
MeasuredFile measure(OutlineFile file, Progress& progress);

/// How long an outline takes to measure, in no particular unit: the diameter and the crossings compare every vertex
/// with every other.
double workOf(const Outline& outline);

/// The rotation of an ellipse in degrees, in (-90, 90].
double angleInDegrees(const gmEllipse& ellipse);

}  // namespace mokshape
