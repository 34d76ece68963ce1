#pragma once

#include <limits>
#include <vector>

#include "foundation/export.h"
#include "foundation/math/angle.h"
#include "foundation/math/vector.h"
#include "foundation/shapes/ellipse.h"

/// Scope of the ways to fit an ellipse.
class MOKSTD_API gmEllipseFitDefs {
  public:
    enum fit_mode { eLeastSquares = 0 };
};

/// How to fit an ellipse.
class MOKSTD_API gmEllipseFitParams {
  public:
    /// `circleRotation`: the rotation to report when the ellipse is a circle, whose axes lie anywhere.
    /// `outlierRounds`: how often points farther than `outlierDistance` (coordinate units) from the fit are left
    /// out and the rest is fitted again; 0 keeps every point.
    explicit gmEllipseFitParams(gmEllipseFitDefs::fit_mode mode = gmEllipseFitDefs::eLeastSquares,
                                const gmRadian& circleRotation = gmRadian(0.0), unsigned long outlierRounds = 0,
                                double outlierDistance = std::numeric_limits<double>::infinity())
        : mode_(mode),
          circleRotation_(circleRotation),
          outlierRounds_(outlierRounds),
          outlierDistance_(outlierDistance) {}

    gmEllipseFitDefs::fit_mode mode() const { return mode_; }
    const gmRadian& circleRotation() const { return circleRotation_; }
    unsigned long outlierRounds() const { return outlierRounds_; }
    double outlierDistance() const { return outlierDistance_; }

  private:
    gmEllipseFitDefs::fit_mode mode_;
    gmRadian circleRotation_;
    unsigned long outlierRounds_;
    double outlierDistance_;
};

/// A fitted ellipse and how well it fits. Default: the default ellipse, residual 0.
class MOKSTD_API gmEllipseFitResults {
  public:
    gmEllipseFitResults() = default;
    gmEllipseFitResults(const gmEllipse& ellipse, double residual) : ellipse_(ellipse), residual_(residual) {}

    const gmEllipse& ellipse() const { return ellipse_; }
    /// The root mean square distance of the fitted points from the ellipse, in coordinate units.
    double residual() const { return residual_; }

  private:
    gmEllipse ellipse_;
    double residual_ = 0.0;
};

/// The ellipse of least algebraic distance to the points: the x radius is the larger one, the rotation its
/// direction in (-pi/2, pi/2]. `results` is untouched when it throws.
///
/// Method: direct least squares (Fitzgibbon, Pilu and Fisher, 1999) in the numerically stable form (Halir and
/// Flusser, 1998), on points brought to size 1. Cost: O(n).
/// Throws: gmMathError::Singular for fewer than 5 points, points that determine no ellipse (on a line, at fewer
/// than 5 places), and points that are not finite; also when leaving out outliers leaves such points.
MOKSTD_API void gfEllipseFit(const gmEllipseFitParams& params, const std::vector<gmVector<2>>& points,
                             gmEllipseFitResults& results);

/// The distance from a point to the nearest point of an ellipse, in coordinate units.
MOKSTD_API double gfDistToEllipse(const gmEllipse& ellipse, const gmVector<2>& point);
