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

/// Whether a vector points anywhere: the square of its length is neither 0 nor infinite.
inline bool gfHasDirection(const gmVector<2>& v) {
    const double square = v.dot(v);
    return square > 0.0 && std::isfinite(square);
}

/// True when the sine of the angle between the two is at most 1e-12 in magnitude, or either has no direction.
inline bool gfAreParallel(const gmVector<2>& a, const gmVector<2>& b) {
    constexpr double parallelSine = 1e-12;
    if (!gfHasDirection(a) || !gfHasDirection(b))
        return true;
    const double area = std::fabs(a.cross(b));
    // Mostly the squares tell, whatever rounding does to them.
    if (area * area > 4.0 * parallelSine * parallelSine * a.dot(a) * b.dot(b))
        return false;
    return area <= parallelSine * a.len() * b.len();
}

/// The foot of the perpendicular from v on the line through `start` along `direction`; `start` without a direction.
inline gmVector<2> gfFoot(const gmVector<2>& start, const gmVector<2>& direction, const gmVector<2>& v) {
    return gfHasDirection(direction) ? start + direction * gfFootParameter(start, direction, v) : start;
}

/// Where the line through `start` along `direction` meets the other, which is not parallel to it.
inline gmVector<2> gfMeeting(const gmVector<2>& start, const gmVector<2>& direction, const gmVector<2>& otherStart,
                             const gmVector<2>& otherDirection) {
    return start + direction * ((otherStart - start).cross(otherDirection) / direction.cross(otherDirection));
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
    gmPoint proj(const gmVector<2>& v) const { return gmPoint(gfFoot(through_, direction_, v)); }

    /// True when the sine of the angle between the two is at most 1e-12 in magnitude, or either has no direction.
    bool isParallel(const gmLine& other) const { return gfAreParallel(direction_, other.direction_); }

    /// The point where this line meets the other, found along this line; absent when they are parallel.
    gmPoint intersect(const gmLine& other) const;

    /// The perpendicular distance.
    double distToPoint(const gmVector<2>& v) const;

    friend bool operator==(const gmLine& a, const gmLine& b) {
        return a.through_ == b.through_ && a.direction_ == b.direction_;
    }

  private:
    bool hasDirection() const { return gfHasDirection(direction_); }
    void archiveContent(gmArchive& archive) override;

    gmVector<2> through_;
    gmVector<2> direction_;
};
