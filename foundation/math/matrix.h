#pragma once

#include "foundation/export.h"
#include "foundation/math/angle.h"
#include "foundation/math/vector.h"

template <int N>
class gmMatrix;

/// A 2x2 matrix of doubles, zero by default.
template <>
class MOKSTD_API gmMatrix<2> {
  public:
    constexpr gmMatrix() = default;
    /// Row by row: (a b) over (c d).
    constexpr gmMatrix(double a, double b, double c, double d) : element_{{a, b}, {c, d}} {}
    /// The matrix whose columns are the x axis turned by `xRotation` and scaled by `xScale`, and the y axis
    /// turned by `yRotation` and scaled by `yScale`. Equal rotations and scales 1, 1 give a plain rotation.
    gmMatrix(const gmRadian& xRotation, const gmRadian& yRotation, double xScale, double yScale)
        : element_{{xScale * std::cos(xRotation.value()), -yScale * std::sin(yRotation.value())},
                   {xScale * std::sin(xRotation.value()), yScale * std::cos(yRotation.value())}} {}

    /// `row` and `column` are 0 or 1.
    constexpr double operator()(int row, int column) const { return element_[row][column]; }

    constexpr gmMatrix operator*(const gmMatrix& m) const {
        return {element_[0][0] * m.element_[0][0] + element_[0][1] * m.element_[1][0],
                element_[0][0] * m.element_[0][1] + element_[0][1] * m.element_[1][1],
                element_[1][0] * m.element_[0][0] + element_[1][1] * m.element_[1][0],
                element_[1][0] * m.element_[0][1] + element_[1][1] * m.element_[1][1]};
    }
    constexpr gmVector<2> operator*(const gmVector<2>& v) const {
        return {element_[0][0] * v.x() + element_[0][1] * v.y(), element_[1][0] * v.x() + element_[1][1] * v.y()};
    }

    friend constexpr bool operator==(const gmMatrix& a, const gmMatrix& b) {
        return a.element_[0][0] == b.element_[0][0] && a.element_[0][1] == b.element_[0][1] &&
               a.element_[1][0] == b.element_[1][0] && a.element_[1][1] == b.element_[1][1];
    }
    friend constexpr bool operator!=(const gmMatrix& a, const gmMatrix& b) { return !(a == b); }

  private:
    double element_[2][2] = {{0.0, 0.0}, {0.0, 0.0}};
};
