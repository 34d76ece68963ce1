#include "foundation/fit/ellipsefit.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "foundation/fit/detail/pointfit.h"
#include "foundation/math/matrix.h"

namespace {

constexpr double pi = 3.141592653589793;

// Below this the equations leave more than one conic open, relative to their size.
constexpr double undetermined = 1e-13;

// A set of points thinner than this, relative to its length, is a line.
constexpr double straight = 1e-7;

// A length that cannot matter beside one of size 1, and whose products with others are still exact enough.
constexpr double negligible = 1e-150;

// Radii that agree to this are those of a circle: what is left is rounding, and its direction means nothing.
constexpr double circular = 1e-12;

using Triple = std::array<double, 3>;

Triple cross(const Triple& a, const Triple& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double dot(const Triple& a, const Triple& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// a x^2 + b x y + c y^2 + d x + e y + f = 0
struct Conic {
    Triple quadratic;  // a, b, c
    Triple linear;     // d, e, f
};

/// The largest root of x^3 - trace x^2 + minors x - determinant, whose roots are all real.
double largestRoot(double trace, double minors, double determinant) {
    const double mean = trace / 3.0;
    const double p = std::max(mean * mean - minors / 3.0, 0.0);
    const double q = mean * mean * mean - 0.5 * mean * minors + 0.5 * determinant;
    const double spread = std::sqrt(p);
    const double cosine = spread > 0.0 ? q / (p * spread) : 1.0;
    double root = mean + 2.0 * spread * std::cos(std::acos(std::clamp(cosine, -1.0, 1.0)) / 3.0);
    // The closed form loses the last digits of a root that is small beside the others; Newton brings them back.
    for (int i = 0; i < 3; ++i) {
        const double slope = (3.0 * root - 2.0 * trace) * root + minors;
        if (slope > 0.0)
            root -= (((root - trace) * root + minors) * root - determinant) / slope;
    }
    return root;
}

/// The vector that the symmetric matrix, of rank 2, maps to zero. Throws: gmMathError::Singular for a lower rank.
Triple nullVector(const std::array<Triple, 3>& rows) {
    double size = 0.0;
    for (const Triple& row : rows)
        size = std::max(size, dot(row, row));
    Triple best{};
    for (const Triple& candidate : {cross(rows[0], rows[1]), cross(rows[1], rows[2]), cross(rows[2], rows[0])})
        if (dot(candidate, candidate) > dot(best, best))
            best = candidate;
    if (!(std::sqrt(dot(best, best)) > undetermined * size))
        throw gmMathError::Singular("points determine no ellipse");
    return best;
}

/// The conic of least algebraic distance with 4ac - b^2 = 1, up to a factor.
Conic fitConic(const std::vector<gmVector<2>>& points) {
    // With the mean at the origin the linear terms are eliminated by two small systems.
    std::array<Triple, 3> reduced{};  // sums of products of (x^2, xy, y^2), less what the linear terms explain
    Triple alongX{};                  // sums of x * (x^2, xy, y^2)
    Triple alongY{};
    Triple squares{};  // sums of (x^2, xy, y^2)
    for (const gmVector<2>& point : points) {
        const Triple terms{point.x() * point.x(), point.x() * point.y(), point.y() * point.y()};
        for (std::size_t i = 0; i < 3; ++i) {
            for (std::size_t j = 0; j < 3; ++j)
                reduced[i][j] += terms[i] * terms[j];
            alongX[i] += terms[i] * point.x();
            alongY[i] += terms[i] * point.y();
            squares[i] += terms[i];
        }
    }
    const double determinant = squares[0] * squares[2] - squares[1] * squares[1];
    Triple perX;  // coefficients that give the linear terms from the quadratic ones
    Triple perY;
    Triple perOne;
    for (std::size_t i = 0; i < 3; ++i) {
        perX[i] = -(squares[2] * alongX[i] - squares[1] * alongY[i]) / determinant;
        perY[i] = -(squares[0] * alongY[i] - squares[1] * alongX[i]) / determinant;
        perOne[i] = -squares[i] / static_cast<double>(points.size());
    }
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            reduced[i][j] += alongX[i] * perX[j] + alongY[i] * perY[j] + squares[i] * perOne[j];

    // Of rank 2 at least, or else more than one conic runs through all the points.
    static_cast<void>(nullVector(reduced));

    // reduced * q = root * constraint * q, where q' constraint q = 4ac - b^2: the ellipse belongs to the largest
    // root, the only one that is not negative.
    const std::array<Triple, 3> m = {
        Triple{0.5 * reduced[2][0], 0.5 * reduced[2][1], 0.5 * reduced[2][2]},
        Triple{-reduced[1][0], -reduced[1][1], -reduced[1][2]},
        Triple{0.5 * reduced[0][0], 0.5 * reduced[0][1], 0.5 * reduced[0][2]},
    };
    const double minors = m[0][0] * m[1][1] - m[0][1] * m[1][0] + m[0][0] * m[2][2] - m[0][2] * m[2][0] +
                          m[1][1] * m[2][2] - m[1][2] * m[2][1];
    const double root = largestRoot(m[0][0] + m[1][1] + m[2][2], minors, dot(m[0], cross(m[1], m[2])));
    reduced[0][2] -= 2.0 * root;
    reduced[2][0] -= 2.0 * root;
    reduced[1][1] += root;
    const Triple q = nullVector(reduced);
    return {q, {dot(perX, q), dot(perY, q), dot(perOne, q)}};
}

/// Points turned to their principal axes and divided by their spread along each. Which ellipse fits best does not
/// depend on it, but flat ellipses would drown in the rounding of the sums above.
struct Whitened {
    explicit Whitened(const std::vector<gmVector<2>>& original) {
        double xx = 0.0;
        double xy = 0.0;
        double yy = 0.0;
        for (const gmVector<2>& point : original) {
            xx += point.x() * point.x();
            xy += point.x() * point.y();
            yy += point.y() * point.y();
        }
        rotation = 0.5 * std::atan2(2.0 * xy, xx - yy);
        const gmVector<2> axis(std::cos(rotation), std::sin(rotation));
        points.reserve(original.size());
        for (const gmVector<2>& point : original) {
            points.emplace_back(axis.dot(point), axis.cross(point));
            spreadX += points.back().x() * points.back().x();
            spreadY += points.back().y() * points.back().y();
        }
        spreadX = std::sqrt(spreadX / static_cast<double>(points.size()));
        spreadY = std::sqrt(spreadY / static_cast<double>(points.size()));
        if (!(spreadY > straight * spreadX))
            throw gmMathError::Singular("points on a line determine no ellipse");
        for (gmVector<2>& point : points)
            point = gmVector<2>(point.x() / spreadX, point.y() / spreadY);
    }

    /// The conic in the frame of the principal axes, at its own size.
    Conic unscaled(const Conic& conic) const {
        const auto& [a, b, c] = conic.quadratic;
        const auto& [d, e, f] = conic.linear;
        return {{a / (spreadX * spreadX), b / (spreadX * spreadY), c / (spreadY * spreadY)},
                {d / spreadX, e / spreadY, f}};
    }

    double rotation = 0.0;
    double spreadX = 0.0;
    double spreadY = 0.0;
    std::vector<gmVector<2>> points;
};

/// The distance of points to an ellipse.
class DistanceTo {
  public:
    explicit DistanceTo(const gmEllipse& ellipse)
        : center_(ellipse.center()),
          axis_(std::cos(ellipse.rotation().value()), std::sin(ellipse.rotation().value())),
          xRadius_(std::fabs(ellipse.xRadius())),
          yRadius_(std::fabs(ellipse.yRadius())) {}

    double operator()(const gmVector<2>& point) const;

  private:
    gmVector<2> center_;
    gmVector<2> axis_;
    double xRadius_;
    double yRadius_;
};

double DistanceTo::operator()(const gmVector<2>& point) const {
    // In the frame of the axes, in the first quadrant, the longer axis along x.
    const gmVector<2> offset = point - center_;
    double x = std::fabs(axis_.dot(offset));
    double y = std::fabs(axis_.cross(offset));
    double a = xRadius_;
    double b = yRadius_;
    if (a < b) {
        std::swap(a, b);
        std::swap(x, y);
    }
    // In units of the largest length, so that no product leaves the range of a double.
    const double size = std::max({a, x, y});
    if (!std::isfinite(x + y + a + b) || size == 0.0)
        return x + y + a + b;
    x /= size;
    y /= size;
    a /= size;
    b /= size;
    const double focal = (a - b) * (a + b);
    if (y < negligible || b < negligible) {
        // On the longer axis (or where there is no other) the foot has a closed form.
        if (!(a * x < focal))
            return gmVector<2>(x - a, y).len() * size;
        const double cosine = a * x / focal;
        return gmVector<2>(x - a * cosine, y - b * std::sqrt(1.0 - cosine * cosine)).len() * size;
    }
    // The foot is (a^2 x / (t + a^2 - b^2), b^2 y / t) for the t that puts it on the ellipse. The inverse of its norm
    // in units of the radii is concave in t, so that Newton's steps on it climb to the root from below, and quickly
    // (Hebden 1973). Counted from b^2 on, t keeps its digits near the longer axis, where it is small.
    double t = std::max(b * y, a * x - focal);
    const auto foot = [&] { return gmVector<2>(a * x / (t + focal), b * y / t); };
    for (int i = 0; i < 100; ++i) {
        const gmVector<2> unit = foot();
        const double slope = unit.x() * unit.x() / (t + focal) + unit.y() * unit.y() / t;
        const double next = t + (unit.len() - 1.0) * unit.dot(unit) / slope;
        if (!(next > t))
            break;
        t = next;
    }
    return gmVector<2>(x - a * foot().x(), y - b * foot().y()).len() * size;
}

gmEllipseFitResults fit(const std::vector<gmVector<2>>& points, const gmRadian& circleRotation) {
    const detail::Normalized normalized(points, 5);
    const Whitened whitened(normalized.points);
    Conic conic = whitened.unscaled(fitConic(whitened.points));
    if (conic.quadratic[0] < 0.0) {
        for (double& value : conic.quadratic)
            value = -value;
        for (double& value : conic.linear)
            value = -value;
    }
    const auto [a, b, c] = conic.quadratic;
    const auto [d, e, f] = conic.linear;
    const double discriminant = 4.0 * a * c - b * b;
    const gmVector<2> center = gmVector<2>(b * e - 2.0 * c * d, b * d - 2.0 * a * e) / discriminant;
    const double level = -(f + 0.5 * (d * center.x() + e * center.y()));
    const double root = std::sqrt((a - c) * (a - c) + b * b);
    const double across = 0.5 * (a + c + root);  // the larger curvature of the quadratic form, and the smaller
    const double along = 0.25 * discriminant / across;
    const double xRadius = std::sqrt(level / along);
    const double yRadius = std::sqrt(level / across);
    if (!(discriminant > 0.0) || !(yRadius > 0.0) || !std::isfinite(xRadius))
        throw gmMathError::Singular("points determine no ellipse");

    gmEllipse::gmEllipseGeom geom;
    const gmRadian turn(whitened.rotation);
    geom.center = normalized.original(gmMatrix<2>(turn, turn, 1.0, 1.0) * center);
    geom.xRadius = xRadius * normalized.extent;
    geom.yRadius = yRadius * normalized.extent;
    const double rotation = std::remainder(turn.value() + 0.5 * std::atan2(-b, c - a), pi);
    geom.rotation = gmRadian(rotation > -0.5 * pi ? rotation : 0.5 * pi);
    if (xRadius - yRadius <= circular * xRadius)
        geom.rotation = circleRotation;
    const gmEllipse ellipse(geom);
    return {ellipse, detail::rootMeanSquare(points, DistanceTo(ellipse))};
}

}  // namespace

double gfDistToEllipse(const gmEllipse& ellipse, const gmVector<2>& point) {
    return DistanceTo(ellipse)(point);
}

void gfEllipseFit(const gmEllipseFitParams& params, const std::vector<gmVector<2>>& points,
                  gmEllipseFitResults& results) {
    results = detail::fitWithoutOutliers(
        points, params.outlierRounds(), params.outlierDistance(),
        [&](const std::vector<gmVector<2>>& kept) { return fit(kept, params.circleRotation()); },
        [](const gmEllipseFitResults& fitted, const gmVector<2>& point) {
            return gfDistToEllipse(fitted.ellipse(), point);
        });
}
