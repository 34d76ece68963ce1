#include "foundation/math/xform.h"

#include <algorithm>
#include <cmath>

#include "foundation/object/exception.h"

gmXform<2> gmXform<2>::inverse() const {
    // Brought to size 1 first, so that the determinant of a very small or very large matrix stays a number.
    const double size =
        std::max({std::fabs(value_[2]), std::fabs(value_[3]), std::fabs(value_[4]), std::fabs(value_[5])});
    const double a = value_[2] / size;
    const double b = value_[3] / size;
    const double c = value_[4] / size;
    const double d = value_[5] / size;
    const double determinant = a * d - b * c;
    const auto element = [&](double cofactor) { return cofactor / determinant / size; };
    const gmMatrix<2> matrix(element(d), element(-b), element(-c), element(a));
    const gmXform result(matrix, -(matrix * translation()));
    for (const double value : result.value_)
        if (determinant == 0.0 || !std::isfinite(value))
            throw gmMathError::Singular("transform has no inverse");
    return result;
}
