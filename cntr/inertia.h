#pragma once

#include <vector>

#include "cntr/export.h"
#include "foundation/image/edgelet.h"
#include "foundation/math/matrix.h"
#include "foundation/math/vector.h"
#include "foundation/shapes/ellipse.h"

/// Area, centre of mass and second moments of a plane figure. Default: all zero.
///
/// Far from the origin, compared with the size of the figure, digits of all of them are lost: of a square of size 1 at
/// 1e6, the centre is off by 1e-4. Move such a figure first.
///
/// The area is signed: positive for an outline traced counter-clockwise in a y-up frame. The second moments are
/// central, area-weighted, not divided by the area, and of a sign that does not depend on which way the outline runs:
/// (0,0) = integral of (x - cx)^2, (0,1) = (1,0) = integral of (x - cx)(y - cy), (1,1) = integral of (y - cy)^2.
class MOKCNTR_API gm_InertiaData {
  public:
    gm_InertiaData() = default;
    gm_InertiaData(double area, const gmVector<2>& centerOfMass, const gmMatrix<2>& inertiaMatrix)
        : area_(area), centerOfMass_(centerOfMass), inertiaMatrix_(inertiaMatrix) {}

    /// In square coordinate units.
    double area() const { return area_; }
    const gmVector<2>& centerOfMass() const { return centerOfMass_; }
    /// In coordinate units to the fourth power. Sums read the elements (0,0), (0,1) and (1,1) only.
    const gmMatrix<2>& inertiaMatrix() const { return inertiaMatrix_; }

    /// The union of two figures that do not overlap, by the parallel-axis rule. A figure of the opposite orientation
    /// is subtracted: of two such, the one with the smaller signed area. A figure of area 0 adds nothing: the other
    /// comes back unchanged.
    /// Deliberate: figures whose areas cancel (to 1e-16 square units) have their centre at (0, 0).
    gm_InertiaData operator+(const gm_InertiaData& other) const;

  private:
    double area_ = 0.0;
    gmVector<2> centerOfMass_;
    gmMatrix<2> inertiaMatrix_;
};

/// The moments of the closed polygon; the zero value for 2 points or fewer.
///
/// The polygon is cut into triangles from its centre of mass, which are added from the large ones to the slivers.
/// Deliberate: triangles are told large by their signed area against the mean, so that an outline which is traced
/// clockwise and not star-shaped around its centre gets moments that depend on its first vertex, and may be far off.
/// Turn such outlines round first.
/// Cost: O(n).
MOKCNTR_API gm_InertiaData gf_InertiaDataPolygon(const std::vector<gmVector<2>>& points);

/// The area of the closed polygon, never negative (the shoelace sum); 0 for fewer than 3 points.
/// Cost: O(n).
MOKCNTR_API double gf_Area(const std::vector<gmVector<2>>& points);
MOKCNTR_API double gf_Area(const std::vector<gmEdgelet>& edgelets);

namespace gnContour {
/// The centroid of the closed polygon; (0, 0) for 2 points or fewer and where the area vanishes (twice the area at
/// most 1e-6 in magnitude). Edges whose triangle with the origin has at most half of 1e-15 of area take no part.
/// Cost: O(n).
MOKCNTR_API gmVector<2> centerOfMass(const std::vector<gmVector<2>>& points);
}  // namespace gnContour

/// The same as gnContour::centerOfMass.
MOKCNTR_API gmVector<2> gf_CenterOfMass(const std::vector<gmVector<2>>& points);
MOKCNTR_API gmVector<2> gf_CenterOfMass(const std::vector<gmEdgelet>& edgelets);

/// The uniform ellipse with the same centre and second moments; its area may be another. The x radius lies along
/// `rotation`, which is in [-pi/2, pi/2], and is the larger one, where no moment is negative. Reads a symmetric matrix.
/// Throws: gmMathError::Singular when a principal moment is 1e-12 or less in magnitude.
MOKCNTR_API gmEllipse gf_EllipseFromInertiaData(const gm_InertiaData& data);

/// The least-squares ellipse of the points and the root mean square distance from it. Points that determine no
/// ellipse get their least-squares circle; those that determine no circle either, a default ellipse and the residual
/// -1.
/// Cost: O(n).
MOKCNTR_API void gf_FitEllipse(const std::vector<gmVector<2>>& points, gmEllipse& ellipse, double& residual);
MOKCNTR_API void gf_FitEllipse(const std::vector<gmEdgelet>& edgelets, gmEllipse& ellipse, double& residual);

/// The standard deviation of the values (divisor n); NaN for no value.
MOKCNTR_API double gf_StdDev(const std::vector<double>& values);
