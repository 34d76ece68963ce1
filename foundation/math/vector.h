#pragma once

#include <cmath>

#include "foundation/export.h"
#include "foundation/math/angle.h"
#include "foundation/math/pair.h"

template <int N>
class gmVector;

/// A position or a displacement in the plane: two doubles, (0, 0) by default.
///
/// Lengths are sqrt(x*x + y*y) and nothing finer: every platform and every search structure built over the
/// same vectors gets the same bits. A length whose square leaves the range of a double is infinite or 0.
template <>
class MOKSTD_API gmVector<2> {
  public:
    constexpr gmVector() = default;
    constexpr gmVector(double x, double y) : x_(x), y_(y) {}
    constexpr gmVector(const gmPair<long>& pair)
        : x_(static_cast<double>(pair.x())), y_(static_cast<double>(pair.y())) {}
    /// Polar form: the vector of length `len` in the direction `angle`.
    gmVector(double len, const gmRadian& angle)
        : x_(len * std::cos(angle.value())), y_(len * std::sin(angle.value())) {}

    constexpr double x() const { return x_; }
    constexpr double y() const { return y_; }

    constexpr gmVector operator-() const { return {-x_, -y_}; }
    constexpr gmVector operator+(const gmVector& v) const { return {x_ + v.x_, y_ + v.y_}; }
    constexpr gmVector operator-(const gmVector& v) const { return {x_ - v.x_, y_ - v.y_}; }
    constexpr gmVector operator*(double factor) const { return {x_ * factor, y_ * factor}; }
    constexpr gmVector operator/(double divisor) const { return {x_ / divisor, y_ / divisor}; }
    friend constexpr gmVector operator*(double factor, const gmVector& v) { return v * factor; }

    constexpr double dot(const gmVector& v) const { return x_ * v.x_ + y_ * v.y_; }
    /// The z component of the cross product: positive when v lies to the left of this vector.
    constexpr double cross(const gmVector& v) const { return x_ * v.y_ - y_ * v.x_; }

    double len() const { return std::sqrt(x_ * x_ + y_ * y_); }
    double distance(const gmVector& v) const { return (*this - v).len(); }
    /// The direction in [-pi, pi], as std::atan2 has it: -pi only for a y of -0.0. Of (0, 0) with positive zeros, 0.
    gmRadian angle() const { return gmRadian(std::atan2(y_, x_)); }
    /// The vector divided by its length; NaN components for the zero vector.
    gmVector unit() const { return *this / len(); }

    /// Exact equality of both components.
    friend constexpr bool operator==(const gmVector& a, const gmVector& b) { return a.x_ == b.x_ && a.y_ == b.y_; }
    friend constexpr bool operator!=(const gmVector& a, const gmVector& b) { return !(a == b); }

  private:
    double x_ = 0.0;
    double y_ = 0.0;
};
