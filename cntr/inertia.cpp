#include "cntr/inertia.h"

#include <cmath>
#include <limits>

#include "cntr/detail/edges.h"
#include "cntr/detail/tolerances.h"
#include "foundation/fit/circlefit.h"
#include "foundation/fit/ellipsefit.h"
#include "foundation/object/exception.h"
#include "foundation/shapes/lineseg.h"

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

/// The moments of the triangle, negative area for a clockwise one.
gm_InertiaData triangleMoments(gmVector<2> p, gmVector<2> q, gmVector<2> r) {
    // A base whose segment r projects onto. Two turns reach every side; far from the origin rounding would ask for a
    // third, and for ever.
    for (int turn = 0; turn < 2; ++turn) {
        const gmLineSeg base(p, q);
        if (!(base.distToPoint(r) - detail::beyondBase > base.line().distToPoint(r)))
            break;
        const gmVector<2> first = p;
        p = q;
        q = r;
        r = first;
    }
    const gmVector<2> foot = gmLineSeg(p, q).line().proj(r).position();
    const double d1 = foot.distance(p);
    const double d2 = foot.distance(q);
    const double h = foot.distance(r);

    // In the frame with its origin at the foot, x along the base and r on the +y side.
    double area = (d1 + d2) * h / 2.0;
    const double localX = (d2 - d1) / 3.0;
    double localY = h / 3.0;
    const double yy = (d1 + d2) * cube(h) / 12.0 - square(h / 3.0) * area;
    double xy = (square(d2) - square(d1)) * square(h) / 24.0 - h / 3.0 * ((d2 - d1) / 3.0) * area;
    const double xx = (cube(d1) + cube(d2)) * h / 12.0 - square((d2 - d1) / 3.0) * area;
    if ((q.x() - p.x()) * (r.y() - p.y()) - (r.x() - p.x()) * (q.y() - p.y()) < 0.0) {
        area = -area;
        localY = -localY;
        xy = -xy;
    }

    // The direction cosines of the base, straight from its components: an angle and back would cost more and round.
    const gmVector<2> along = q - p;
    const double length = along.len();
    const double c = length > 0.0 ? along.x() / length : 1.0;
    const double s = length > 0.0 ? along.y() / length : 0.0;
    const double worldXY = (square(c) - square(s)) * xy + s * c * xx - s * c * yy;
    const gmMatrix<2> moments(square(c) * xx - 2.0 * s * c * xy + square(s) * yy, worldXY, worldXY,
                              square(s) * xx + 2.0 * s * c * xy + square(c) * yy);
    return gm_InertiaData(area, foot + gmMatrix<2>(c, -s, s, c) * gmVector<2>(localX, localY), moments);
}

}  // namespace

gm_InertiaData gm_InertiaData::operator+(const gm_InertiaData& other) const {
    if (area_ == 0.0)
        return other;
    if (other.area_ == 0.0)
        return *this;
    const double area = area_ + other.area_;
    const gmVector<2> center = std::fabs(area) > detail::cancelled
                                   ? (area_ * centerOfMass_ + other.area_ * other.centerOfMass_) / area
                                   : gmVector<2>();
    const gmVector<2> da = center - centerOfMass_;
    const gmVector<2> db = center - other.centerOfMass_;
    double wa = area_;
    double wb = other.area_;
    double sa = 1.0;
    double sb = 1.0;
    if (area_ * other.area_ > 0.0) {
        wa = std::fabs(wa);
        wb = std::fabs(wb);
    } else if (area_ * other.area_ < 0.0) {
        (area_ > other.area_ ? sb : sa) = -1.0;
    }
    const gmMatrix<2>& ma = inertiaMatrix_;
    const gmMatrix<2>& mb = other.inertiaMatrix_;
    const double xx = wa * square(da.x()) + sa * ma(0, 0) + sb * mb(0, 0) + wb * square(db.x());
    const double xy = sa * ma(0, 1) + wa * da.x() * da.y() + sb * mb(0, 1) + wb * db.x() * db.y();
    const double yy = wa * square(da.y()) + sa * ma(1, 1) + sb * mb(1, 1) + wb * square(db.y());
    return gm_InertiaData(area, center, gmMatrix<2>(xx, xy, xy, yy));
}

gm_InertiaData gf_InertiaDataPolygon(const std::vector<gmVector<2>>& points) {
    if (points.size() <= 2)
        return gm_InertiaData();
    const gmVector<2> center = gnContour::centerOfMass(points);
    std::vector<gm_InertiaData> triangles;
    triangles.reserve(points.size());
    double sum = 0.0;
    detail::forEachEdge(points, true, [&](const gmVector<2>& from, const gmVector<2>& to) {
        triangles.push_back(triangleMoments(center, from, to));
        sum += triangles.back().area();
    });

    gm_InertiaData total;
    std::vector<bool> taken(triangles.size(), false);
    const auto add = [&](auto wanted) {
        for (std::size_t i = 0; i < triangles.size(); ++i)
            if (!taken[i] && wanted(triangles[i].area())) {
                total = total + triangles[i];
                taken[i] = true;
            }
    };
    // A triangle that passes the first test on a negative mean is any that differs from the mean: kept as it is.
    const auto beyond = [](double limit) {
        return [limit](double area) { return area > limit || (limit < 0.0 && area < limit); };
    };
    const double mean = sum / static_cast<double>(triangles.size());
    add(beyond(mean));
    add(beyond(mean > 0.0 ? detail::smallTriangle : -detail::smallTriangle));
    add([](double) { return true; });
    return total;
}

double gf_Area(const std::vector<gmVector<2>>& points) {
    if (points.size() < 3)
        return 0.0;
    double sum = 0.0;
    detail::forEachEdge(points, true, [&](const gmVector<2>& from, const gmVector<2>& to) {
        sum += from.x() * to.y() - to.x() * from.y();
    });
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
