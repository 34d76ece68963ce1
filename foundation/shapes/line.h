#pragma once

#include <cmath>

#include "foundation/math/vector.h"
#include "foundation/shapes/point.h"
#include "foundation/shapes/shape.h"

/// Where the foot of the perpendicular from v lies on the line through `start` along `direction`: 0 at the start,
/// 1 one direction further, NaN without a direction.
inline double gfFootParameter(const gmVector<2>& start, const gmVector<2>& direction, const gmVector<2>& v) {
    return (v - start).dot(direction) / direction.dot(direction);
}

/// An infinite line: a point on it and a direction of any length. Default: through (0, 0), direction (0, 0).
///
/// A line without direction (the square of its length is 0 or not finite) stands for its point: everything projects
/// onto that point, and it is parallel to every line. Archived as the point, then the direction.
class MOKSTD_API gmLine : public gmShape {
  public:
    gmLine() = default;
    gmLine(const gmVector<2>& through, const gmVector<2>& direction) : through_(through), direction_(direction) {}

    const gmVector<2>& through() const { return through_; }
    const gmVector<2>& direction() const { return direction_; }

    /// The foot of the perpendicular from v.
    gmPoint proj(const gmVector<2>& v) const;

    /// True when the sine of the angle between the two is at most 1e-12 in magnitude, or either has no direction.
    bool isParallel(const gmLine& other) const;

    /// The point where this line meets the other, found along this line; absent when they are parallel.
    gmPoint intersect(const gmLine& other) const;

    /// The perpendicular distance.
    double distToPoint(const gmVector<2>& v) const;

    friend bool operator==(const gmLine& a, const gmLine& b) {
        return a.through_ == b.through_ && a.direction_ == b.direction_;
    }

  private:
    bool hasDirection() const {
        const double square = direction_.dot(direction_);
        return square > 0.0 && std::isfinite(square);
    }
    void archiveContent(gmArchive& archive) override;

    gmVector<2> through_;
    gmVector<2> direction_;
};
