#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "foundation/math/vector.h"
#include "foundation/object/exception.h"

namespace detail {

/// Points as a fit sees them: moved to their mean and divided by their extent, so that the sums of their powers
/// stay of one size. Throws: gmMathError::Singular for too few points, for points at one place and for points that
/// are not finite.
struct Normalized {
    Normalized(const std::vector<gmVector<2>>& original, std::size_t least) {
        if (original.size() < least)
            throw gmMathError::Singular("too few points for a fit");
        const double weight = 1.0 / static_cast<double>(original.size());
        for (const gmVector<2>& point : original)
            origin_ = origin_ + point * weight;
        // Far from the coordinates' own origin the mean above is rounded; seen from there it is not.
        for (const gmVector<2>& point : original)
            mean_ = mean_ + (point - origin_) * weight;
        points.reserve(original.size());
        for (const gmVector<2>& point : original) {
            points.push_back(point - origin_ - mean_);
            extent = std::fmax(extent, points.back().len());
        }
        if (!std::isfinite(origin_.x()) || !std::isfinite(origin_.y()) || !std::isfinite(extent) || !(extent > 0.0))
            throw gmMathError::Singular("points have no finite extent");
        for (gmVector<2>& point : points)
            point = point / extent;
    }

    /// Where a normalized place lies among the original points.
    gmVector<2> original(const gmVector<2>& place) const { return origin_ + (mean_ + place * extent); }

    double extent = 0.0;
    std::vector<gmVector<2>> points;

  private:
    gmVector<2> origin_;
    gmVector<2> mean_;  // from the origin
};

/// The root mean square of distance(point) over the points.
template <class Distance>
double rootMeanSquare(const std::vector<gmVector<2>>& points, Distance distance) {
    double sum = 0.0;
    for (const gmVector<2>& point : points) {
        const double d = distance(point);
        sum += d * d;
    }
    return std::sqrt(sum / static_cast<double>(points.size()));
}

/// fit(points), then up to `rounds` times again without the points for which distance(fitted, point) exceeds the
/// limit, until none is left out any more. A point that was left out stays out.
template <class Fit, class Distance>
auto fitWithoutOutliers(const std::vector<gmVector<2>>& points, unsigned long rounds, double limit, Fit fit,
                        Distance distance) {
    auto fitted = fit(points);
    std::vector<gmVector<2>> kept = points;
    for (unsigned long round = 0; round < rounds; ++round) {
        const auto outside = std::remove_if(
            kept.begin(), kept.end(), [&](const gmVector<2>& point) { return !(distance(fitted, point) <= limit); });
        if (outside == kept.end())
            break;
        kept.erase(outside, kept.end());
        fitted = fit(kept);
    }
    return fitted;
}

}  // namespace detail
