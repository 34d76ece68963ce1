#include "cntr/inertia.h"

#include <cmath>
#include <limits>

#include "cntr/detail/edgelanes.h"
#include "cntr/detail/edges.h"
#include "cntr/detail/tolerances.h"
#include "cntr/detail/trianglefan.h"
#include "foundation/fit/circlefit.h"
#include "foundation/fit/ellipsefit.h"
#include "foundation/object/exception.h"

namespace {

double square(double value) {
    return value * value;
}

double cube(double value) {
    return value * value * value;
}

std::vector<gmVector<2>> positions(const std::vector<gmEdgelet>& edgelets) {
    std::vector<gmVector<2>> points;
    points.reserve(edgelets.size());
    for (const gmEdgelet& edgelet : edgelets)
        points.push_back(edgelet.position());
    return points;
}

gmVector<2> toVector(const detail::Two& a) {
    return {detail::first(a), detail::second(a)};
}

/// The moments of figures together, one added after the other.
class Total {
  public:
    void add(const detail::Moments<double>& other) {
        if (other.area == 0.0 && area_ != 0.0)
            return;
        const detail::Two otherCenter = detail::loadTwo(gmVector<2>(other.x, other.y));
        if (area_ == 0.0) {
            area_ = other.area;
            center_ = otherCenter;
            xx_ = other.xx;
            xy_ = other.xy;
            yy_ = other.yy;
            return;
        }
        const double area = area_ + other.area;
        detail::Two center = detail::both(0.0);
        if (std::fabs(area) > detail::cancelled)
            center = (detail::both(area_) * center_ + detail::both(other.area) * otherCenter) / detail::both(area);
        const gmVector<2> a = toVector(center - center_);
        const gmVector<2> b = toVector(center - otherCenter);
        double wa = area_;
        double wb = other.area;
        double sa = 1.0;
        double sb = 1.0;
        if (area_ * other.area > 0.0) {
            wa = std::fabs(wa);
            wb = std::fabs(wb);
        } else if (area_ * other.area < 0.0) {
            (area_ > other.area ? sb : sa) = -1.0;
        }
        xx_ = wa * square(a.x()) + sa * xx_ + sb * other.xx + wb * square(b.x());
        xy_ = sa * xy_ + wa * a.x() * a.y() + sb * other.xy + wb * b.x() * b.y();
        yy_ = wa * square(a.y()) + sa * yy_ + sb * other.yy + wb * square(b.y());
        area_ = area;
        center_ = center;
    }

    gm_InertiaData data() const { return gm_InertiaData(area_, toVector(center_), gmMatrix<2>(xx_, xy_, xy_, yy_)); }

  private:
    double area_ = 0.0;
    detail::Two center_ = detail::both(0.0);
    double xx_ = 0.0;
    double xy_ = 0.0;
    double yy_ = 0.0;
};

}  // namespace

gm_InertiaData gm_InertiaData::operator+(const gm_InertiaData& other) const {
    if (area_ == 0.0)
        return other;
    if (other.area_ == 0.0)
        return *this;
    Total total;
    for (const gm_InertiaData* data : {this, &other}) {
        const gmMatrix<2>& m = data->inertiaMatrix_;
        total.add({data->area_, data->centerOfMass_.x(), data->centerOfMass_.y(), m(0, 0), m(0, 1), m(1, 1)});
    }
    return total.data();
}

gm_InertiaData gf_InertiaDataPolygon(const std::vector<gmVector<2>>& points) {
    if (points.size() <= 2)
        return gm_InertiaData();
    const gmVector<2> center = gnContour::centerOfMass(points);
    const std::vector<detail::Moments<double>> triangles = detail::triangleFan(center, points);
    double areas = 0.0;
    for (const detail::Moments<double>& triangle : triangles)
        areas += triangle.area;

    // A triangle that passes the first test on a negative mean is any that differs from the mean: kept as it is.
    const double mean = areas / static_cast<double>(triangles.size());
    const double least = mean > 0.0 ? detail::smallTriangle : -detail::smallTriangle;
    const auto isBeyond = [](double limit, double area) {
        return static_cast<unsigned>(area > limit) |
               (static_cast<unsigned>(limit < 0.0) & static_cast<unsigned>(area < limit));
    };
    // Told apart without a branch: which ones are large is anyone's guess.
    std::vector<const detail::Moments<double>*> large(triangles.size());
    std::vector<const detail::Moments<double>*> others(triangles.size());
    std::size_t largeCount = 0;
    std::size_t otherCount = 0;
    for (const detail::Moments<double>& triangle : triangles) {
        const unsigned isLarge = isBeyond(mean, triangle.area);
        large[largeCount] = others[otherCount] = &triangle;
        largeCount += isLarge;
        otherCount += 1U - isLarge;
    }
    large.resize(largeCount);
    others.resize(otherCount);

    Total total;
    for (const detail::Moments<double>* triangle : large)
        total.add(*triangle);
    for (const bool slivers : {false, true})
        for (const detail::Moments<double>* triangle : others)
            if (isBeyond(least, triangle->area) == (slivers ? 0U : 1U))
                total.add(*triangle);
    return total.data();
}

double gf_Area(const std::vector<gmVector<2>>& points) {
    if (points.size() < 3)
        return 0.0;
    double sum = 0.0;
    detail::forEachEdgePair(
        points, true,
        [&](const detail::Two& a, const detail::Two& b, const detail::Two& c) {
            const detail::Two products = firsts(a, b) * seconds(b, c) - firsts(b, c) * seconds(a, b);
            sum += detail::first(products);
            sum += detail::second(products);
        },
        [&](const gmVector<2>& a, const gmVector<2>& b) { sum += a.x() * b.y() - b.x() * a.y(); });
    return std::fabs(sum * 0.5);
}

double gf_Area(const std::vector<gmEdgelet>& edgelets) {
    return gf_Area(positions(edgelets));
}

gmVector<2> gnContour::centerOfMass(const std::vector<gmVector<2>>& points) {
    if (points.size() <= 2)
        return gmVector<2>();
    double sum = 0.0;
    gmVector<2> weighted;
    detail::forEachEdge(points, true, [&](const gmVector<2>& from, const gmVector<2>& to) {
        const double k = from.x() * to.y() - from.y() * to.x();
        if (std::fabs(k) <= detail::sliver)
            return;
        // The medians of the triangle with the origin meet at a third of the sum of its corners. Computed so, and not
        // from the two lines: the medians of a sliver may be parallel to rounding.
        sum += k;
        weighted = weighted + k * ((from + to) / 3.0);
    });
    return std::fabs(sum) > detail::noArea ? weighted * (1.0 / sum) : gmVector<2>();
}

gmVector<2> gf_CenterOfMass(const std::vector<gmVector<2>>& points) {
    return gnContour::centerOfMass(points);
}

gmVector<2> gf_CenterOfMass(const std::vector<gmEdgelet>& edgelets) {
    return gnContour::centerOfMass(positions(edgelets));
}

gmEllipse gf_EllipseFromInertiaData(const gm_InertiaData& data) {
    constexpr double inversePiSquared = 0.10132118364233778;
    const gmMatrix<2>& m = data.inertiaMatrix();
    const gmRadian rotation(0.5 * std::atan2(2.0 * m(0, 1), m(0, 0) - m(1, 1)));
    const gmMatrix<2> diagonal =
        gmMatrix<2>(-rotation, -rotation, 1.0, 1.0) * m * gmMatrix<2>(rotation, rotation, 1.0, 1.0);
    const double first = std::fabs(diagonal(0, 0));
    const double second = std::fabs(diagonal(1, 1));
    if (!(first > detail::noMoment) || !(second > detail::noMoment))
        throw gmMathError::Singular();
    const auto radius = [](double along, double across) {
        const double eighthPower = 16.0 * cube(along) * inversePiSquared / across;
        return std::sqrt(std::sqrt(std::sqrt(eighthPower)));
    };
    return gmEllipse(
        gmEllipse::gmEllipseGeom{data.centerOfMass(), radius(first, second), radius(second, first), rotation});
}

void gf_FitEllipse(const std::vector<gmVector<2>>& points, gmEllipse& ellipse, double& residual) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    try {
        gmEllipseFitResults results;
        gfEllipseFit(gmEllipseFitParams(gmEllipseFitDefs::eLeastSquares, gmRadian(0.0), 0, infinity), points, results);
        ellipse = results.ellipse();
        residual = results.residual();
        return;
    } catch (const gmException&) {  // a circle may still fit
    }
    try {
        gmCircleFitResults results;
        gfCircleFit(gmCircleFitParams(gmCircleFitDefs::eLeastSquares, 1.0, 0, infinity), points, results);
        ellipse = gmEllipse(results.circle());
        residual = results.residual();
    } catch (const gmException&) {
        ellipse = gmEllipse();
        residual = -1.0;
    }
}

void gf_FitEllipse(const std::vector<gmEdgelet>& edgelets, gmEllipse& ellipse, double& residual) {
    gf_FitEllipse(positions(edgelets), ellipse, residual);
}

double gf_StdDev(const std::vector<double>& values) {
    const double weight = 1.0 / static_cast<double>(values.size());
    double sum = 0.0;
    for (const double value : values)
        sum += value;
    const double mean = weight * sum;
    double squares = 0.0;
    for (const double value : values)
        squares += square(value - mean);
    return std::sqrt(weight * squares);
}
