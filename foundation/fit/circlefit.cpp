#include "foundation/fit/circlefit.h"

#include <cmath>
#include <limits>

#include "foundation/fit/detail/pointfit.h"

namespace {

// A set of points thinner than about 1e-7 of its length looks straight to sums of squares.
constexpr double flat = 1e-14;
constexpr int maxSteps = 32;

/// Solves (a b; b c) * v = right; false when the matrix is singular to rounding.
bool solveSymmetric(double a, double b, double c, const gmVector<2>& right, gmVector<2>& solution) {
    const double determinant = a * c - b * b;
    if (!(determinant > flat * (a + c) * (a + c)))
        return false;
    solution = gmVector<2>(c * right.x() - b * right.y(), a * right.y() - b * right.x()) / determinant;
    return true;
}

struct Candidate {
    gmVector<2> center;
    double radius = 0.0;
    double residual = std::numeric_limits<double>::infinity();
    gmVector<2> step;  // of the centre, towards less residual
};

/// The best circle around a given centre, and the Gauss-Newton step of the centre from there: the distances are
/// regressed on the directions from the centre.
Candidate around(const gmVector<2>& center, const std::vector<gmVector<2>>& points) {
    const double weight = 1.0 / static_cast<double>(points.size());
    gmVector<2> meanDirection;
    double meanDistance = 0.0;
    for (const gmVector<2>& point : points) {
        const double distance = center.distance(point);
        if (distance > 0.0)
            meanDirection = meanDirection + (point - center) / distance * weight;
        meanDistance += distance * weight;
    }
    Candidate candidate{center, meanDistance, 0.0, {}};
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
    gmVector<2> right;
    for (const gmVector<2>& point : points) {
        const double distance = center.distance(point);
        const gmVector<2> direction = (distance > 0.0 ? (point - center) / distance : gmVector<2>()) - meanDirection;
        const double deviation = distance - meanDistance;
        xx += direction.x() * direction.x();
        xy += direction.x() * direction.y();
        yy += direction.y() * direction.y();
        right = right + direction * deviation;
        candidate.residual += deviation * deviation * weight;
    }
    candidate.residual = std::sqrt(candidate.residual);
    solveSymmetric(xx, xy, yy, right, candidate.step);
    return candidate;
}

gmVector<2> algebraicCenter(const std::vector<gmVector<2>>& points) {
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
    gmVector<2> right;
    for (const gmVector<2>& point : points) {
        xx += point.x() * point.x();
        xy += point.x() * point.y();
        yy += point.y() * point.y();
        right = right + point * (0.5 * point.dot(point));
    }
    gmVector<2> center;
    if (!solveSymmetric(xx, xy, yy, right, center))
        throw gmMathError::Singular("points on a line determine no circle");
    return center;
}

gmCircleFitResults fit(const std::vector<gmVector<2>>& points, double precision) {
    const detail::Normalized normalized(points, 3);
    const double smallestStep = precision * std::numeric_limits<double>::epsilon();
    Candidate best = around(algebraicCenter(normalized.points), normalized.points);
    for (int i = 0; i < maxSteps && best.step.len() > smallestStep; ++i) {
        const Candidate next = around(best.center + best.step, normalized.points);
        if (!(next.residual < best.residual))
            break;
        best = next;
    }
    const double extent = normalized.extent;
    return {gmCircle(normalized.original(best.center), best.radius * extent), best.residual * extent};
}

}  // namespace

void gfCircleFit(const gmCircleFitParams& params, const std::vector<gmVector<2>>& points, gmCircleFitResults& results) {
    results = detail::fitWithoutOutliers(
        points, params.outlierRounds(), params.outlierDistance(),
        [&](const std::vector<gmVector<2>>& kept) { return fit(kept, params.precision()); },
        [](const gmCircleFitResults& fitted, const gmVector<2>& point) {
            return std::fabs(fitted.circle().center().distance(point) - fitted.circle().radius());
        });
}
