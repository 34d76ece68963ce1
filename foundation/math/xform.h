#pragma once

#include <array>

#include "foundation/export.h"
#include "foundation/math/matrix.h"
#include "foundation/math/vector.h"

template <int N>
class gmXform;

/// An affine map of the plane: v -> matrix * v + translation. The identity by default.
template <>
class MOKSTD_API gmXform<2> {
  public:
    constexpr gmXform() : gmXform(gmMatrix<2>(1.0, 0.0, 0.0, 1.0), gmVector<2>()) {}
    constexpr gmXform(const gmMatrix<2>& matrix, const gmVector<2>& translation)
        : value_{translation.x(), translation.y(), matrix(0, 0), matrix(0, 1), matrix(1, 0), matrix(1, 1)} {}

    /// The identity.
    static const gmXform I;

    constexpr gmMatrix<2> matrix() const { return {value_[2], value_[3], value_[4], value_[5]}; }
    constexpr gmVector<2> translation() const { return {value_[0], value_[1]}; }

    constexpr gmVector<2> operator*(const gmVector<2>& v) const {
        return {value_[2] * v.x() + value_[3] * v.y() + value_[0], value_[4] * v.x() + value_[5] * v.y() + value_[1]};
    }
    /// The composition: (a * b) * v == a * (b * v), up to rounding.
    constexpr gmXform operator*(const gmXform& inner) const {
        return {matrix() * inner.matrix(), *this * inner.translation()};
    }

    /// The map that undoes this one. Throws: gmMathError::Singular when there is none (or none in finite numbers).
    gmXform inverse() const;

    /// The stored numbers: translation x and y, then the matrix row by row. In this order the first five tell
    /// any two rotations with scale and translation apart, which is what caches keyed by them compare.
    constexpr const std::array<double, 6>& values() const { return value_; }

    friend bool operator==(const gmXform& a, const gmXform& b) { return a.value_ == b.value_; }
    friend bool operator!=(const gmXform& a, const gmXform& b) { return !(a == b); }

  private:
    std::array<double, 6> value_;
};

inline constexpr gmXform<2> gmXform<2>::I{};
