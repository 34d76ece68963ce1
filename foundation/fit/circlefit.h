#pragma once

#include <limits>
#include <vector>

#include "foundation/export.h"
#include "foundation/math/vector.h"
#include "foundation/shapes/circle.h"

/// Scope of the ways to fit a circle.
class MOKSTD_API gmCircleFitDefs {
  public:
    enum fit_mode { eLeastSquares = 0 };
};

/// How to fit a circle.
class MOKSTD_API gmCircleFitParams {
  public:
    /// `precision`: the refinement ends when a step is at most that many units in the last place of the points'
    /// extent. `outlierRounds`: how often points farther than `outlierDistance` (coordinate units) from the fit are
    /// left out and the rest is fitted again; 0 keeps every point.
    explicit gmCircleFitParams(gmCircleFitDefs::fit_mode mode = gmCircleFitDefs::eLeastSquares, double precision = 1.0,
                               unsigned long outlierRounds = 0,
                               double outlierDistance = std::numeric_limits<double>::infinity())
        : mode_(mode), precision_(precision), outlierRounds_(outlierRounds), outlierDistance_(outlierDistance) {}

    gmCircleFitDefs::fit_mode mode() const { return mode_; }
    double precision() const { return precision_; }
    unsigned long outlierRounds() const { return outlierRounds_; }
    double outlierDistance() const { return outlierDistance_; }

  private:
    gmCircleFitDefs::fit_mode mode_;
    double precision_;
    unsigned long outlierRounds_;
    double outlierDistance_;
};

/// A fitted circle and how well it fits. Default: the default circle, residual 0.
class MOKSTD_API gmCircleFitResults {
  public:
    gmCircleFitResults() = default;
    gmCircleFitResults(const gmCircle& circle, double residual) : circle_(circle), residual_(residual) {}

    const gmCircle& circle() const { return circle_; }
    /// The root mean square distance of the fitted points from the circle, in coordinate units.
    double residual() const { return residual_; }

  private:
    gmCircle circle_;
    double residual_ = 0.0;
};

/// The circle with the least squared distances to the points. `results` is untouched when it throws.
///
/// Method: the algebraic circle (Kåsa, 1976), refined by Gauss-Newton steps on the distances.
/// Cost: O(n) a step, at most 32 steps a round.
/// Throws: gmMathError::Singular for fewer than 3 points, points on a line or at one place, and points that are
/// not finite; also when leaving out outliers leaves such points.
MOKSTD_API void gfCircleFit(const gmCircleFitParams& params, const std::vector<gmVector<2>>& points,
                            gmCircleFitResults& results);
