#pragma once

#include <algorithm>

#include "foundation/math/vector.h"
#include "foundation/shapes/line.h"
#include "foundation/shapes/shape.h"

/// The distance from v to the nearest point of the segment p1-p2, its ends included. The foot of the
/// perpendicular is kept in the segment's own bounding box, as v sees it: so the distance to any box that holds
/// the segment, computed by the same subtractions, never exceeds it, whatever the rounding.
inline double gfDistToSeg(const gmVector<2>& p1, const gmVector<2>& p2, const gmVector<2>& v) {
    const gmVector<2> toStart = p1 - v;
    const gmVector<2> toEnd = p2 - v;
    const gmVector<2> along = p2 - p1;
    const double t = gfFootParameter(p1, along, v);
    if (t >= 1.0)
        return toEnd.len();
    if (!(t > 0.0))
        return toStart.len();
    const auto between = [](double value, double a, double b) {
        return std::max(std::min(a, b), std::min(value, std::max(a, b)));
    };
    return gmVector<2>(between(toStart.x() + along.x() * t, toStart.x(), toEnd.x()),
                       between(toStart.y() + along.y() * t, toStart.y(), toEnd.y()))
        .len();
}

/// The straight segment between two points, its ends included. Default: both ends (0, 0). Archived as the two
/// ends.
class MOKSTD_API gmLineSeg : public gmShape {
  public:
    gmLineSeg() = default;
    gmLineSeg(const gmVector<2>& p1, const gmVector<2>& p2) : p1_(p1), p2_(p2) {}

    const gmVector<2>& p1() const { return p1_; }
    const gmVector<2>& p2() const { return p2_; }

    /// The distance to the nearest point of the segment.
    double distToPoint(const gmVector<2>& v) const { return gfDistToSeg(p1_, p2_, v); }

    /// The infinite line through p1 in the direction p2 - p1; without direction when the two are equal,
    /// or so close that the square of their distance is 0.
    gmLine line() const { return gmLine(p1_, p2_ - p1_); }

    friend bool operator==(const gmLineSeg& a, const gmLineSeg& b) { return a.p1_ == b.p1_ && a.p2_ == b.p2_; }

  private:
    void archiveContent(gmArchive& archive) override;

    gmVector<2> p1_;
    gmVector<2> p2_;
};
