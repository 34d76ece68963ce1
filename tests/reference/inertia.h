#pragma once

#include <cmath>
#include <vector>

#include "foundation/math/matrix.h"
#include "foundation/object/exception.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/lineseg.h"
#include "tests/reference/outline.h"

namespace reference {

/// Signed area, centre of mass and central second moments.
struct Moments {
    double area = 0.0;
    gmVector<2> center;
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
};

inline Moments sum(const Moments& a, const Moments& b) {
    if (a.area == 0.0)
        return b;
    if (b.area == 0.0)
        return a;
    Moments result;
    result.area = a.area + b.area;
    if (std::fabs(result.area) > 1e-16)
        result.center = (a.area * a.center + b.area * b.center) / result.area;
    const gmVector<2> da = result.center - a.center;
    const gmVector<2> db = result.center - b.center;
    double wa = a.area;
    double wb = b.area;
    double sa = 1.0;
    double sb = 1.0;
    if (a.area * b.area > 0.0) {
        wa = std::fabs(a.area);
        wb = std::fabs(b.area);
    }
    if (a.area * b.area < 0.0) {
        if (a.area > b.area)
            sb = -1.0;
        else
            sa = -1.0;
    }
    result.xx = wa * (da.x() * da.x()) + sa * a.xx + sb * b.xx + wb * (db.x() * db.x());
    result.xy = sa * a.xy + wa * da.x() * da.y() + sb * b.xy + wb * db.x() * db.y();
    result.yy = wa * (da.y() * da.y()) + sa * a.yy + sb * b.yy + wb * (db.y() * db.y());
    return result;
}

inline Moments triangle(gmVector<2> p, gmVector<2> q, gmVector<2> r) {
    for (int turn = 0; turn < 2; turn++) {
        if (!(gmLineSeg(p, q).distToPoint(r) - 1e-10 > gmLineSeg(p, q).line().distToPoint(r)))
            break;
        const gmVector<2> first = p;
        p = q;
        q = r;
        r = first;
    }
    const gmVector<2> f = gmLineSeg(p, q).line().proj(r).position();
    const double d1 = (f - p).len();
    const double d2 = (f - q).len();
    const double h = (f - r).len();

    double area = (d1 + d2) * h / 2.0;
    const double lx = (d2 - d1) / 3.0;
    double ly = h / 3.0;
    const double yy = (d1 + d2) * (h * h * h) / 12.0 - (h / 3.0) * (h / 3.0) * area;
    double xy = (d2 * d2 - d1 * d1) * (h * h) / 24.0 - (h / 3.0) * ((d2 - d1) / 3.0) * area;
    const double xx = (d1 * d1 * d1 + d2 * d2 * d2) * h / 12.0 - ((d2 - d1) / 3.0) * ((d2 - d1) / 3.0) * area;
    if ((q.x() - p.x()) * (r.y() - p.y()) - (r.x() - p.x()) * (q.y() - p.y()) < 0.0) {
        area = -area;
        ly = -ly;
        xy = -xy;
    }

    const gmVector<2> base = q - p;
    const double len = base.len();
    const double c = len == 0.0 ? 1.0 : base.x() / len;
    const double s = len == 0.0 ? 0.0 : base.y() / len;
    Moments result;
    result.area = area;
    result.center = f + gmVector<2>(c * lx - s * ly, s * lx + c * ly);
    result.xx = c * c * xx - 2.0 * s * c * xy + s * s * yy;
    result.xy = (c * c - s * s) * xy + s * c * xx - s * c * yy;
    result.yy = s * s * xx + 2.0 * s * c * xy + c * c * yy;
    return result;
}

inline gmVector<2> centerOfMass(const Points& points) {
    if (points.size() <= 2)
        return {0.0, 0.0};
    double S = 0.0;
    double Sx = 0.0;
    double Sy = 0.0;
    gmVector<2> prev = points.back();
    for (const gmVector<2>& cur : points) {
        const double k = prev.x() * cur.y() - prev.y() * cur.x();
        if (!(std::fabs(k) <= 1e-15)) {
            const gmVector<2> g = (prev + cur) / 3.0;
            S += k;
            Sx += k * g.x();
            Sy += k * g.y();
        }
        prev = cur;
    }
    if (std::fabs(S) > 1e-6)
        return {Sx * (1.0 / S), Sy * (1.0 / S)};
    return {0.0, 0.0};
}

inline Moments inertiaDataPolygon(const Points& points) {
    const std::size_t n = points.size();
    if (n <= 2)
        return Moments();
    const gmVector<2> c0 = centerOfMass(points);
    std::vector<Moments> triangles;
    for (std::size_t i = 0; i < n; i++)
        triangles.push_back(triangle(c0, points[i == 0 ? n - 1 : i - 1], points[i]));
    double areas = 0.0;
    for (const Moments& t : triangles)
        areas += t.area;
    const double m = areas / static_cast<double>(n);

    Moments total;
    std::vector<bool> taken(n, false);
    const auto take = [&](std::size_t i) {
        total = sum(total, triangles[i]);
        taken[i] = true;
    };
    for (std::size_t i = 0; i < n; i++)
        if (triangles[i].area > m || (m < 0.0 && triangles[i].area < m))
            take(i);
    const double t = m > 0.0 ? 1e-6 : -1e-6;
    for (std::size_t i = 0; i < n; i++)
        if (!taken[i] && (triangles[i].area > t || (t < 0.0 && triangles[i].area < t)))
            take(i);
    for (std::size_t i = 0; i < n; i++)
        if (!taken[i])
            take(i);
    return total;
}

inline double area(const Points& points) {
    if (points.size() < 3)
        return 0.0;
    double doubled = 0.0;
    gmVector<2> prev = points.back();
    for (const gmVector<2>& cur : points) {
        doubled += prev.x() * cur.y() - cur.x() * prev.y();
        prev = cur;
    }
    return std::fabs(doubled * 0.5);
}

inline gmEllipse ellipseFromMoments(const Moments& data) {
    const gmMatrix<2> M(data.xx, data.xy, data.xy, data.yy);
    const gmRadian theta(0.5 * std::atan2(2.0 * M(0, 1), M(0, 0) - M(1, 1)));
    const gmMatrix<2> D = gmMatrix<2>(-theta, -theta, 1.0, 1.0) * M * gmMatrix<2>(theta, theta, 1.0, 1.0);
    const double lambda1 = std::fabs(D(0, 0));
    const double lambda2 = std::fabs(D(1, 1));
    if (!(lambda1 > 1e-12 && lambda2 > 1e-12))
        throw gmMathError::Singular();
    const double inversePiSquared = 0.10132118364233778;
    const double first = std::pow(16.0 * lambda1 * lambda1 * lambda1 * inversePiSquared / lambda2, 0.125);
    const double second = std::pow(16.0 * lambda2 * lambda2 * lambda2 * inversePiSquared / lambda1, 0.125);
    return gmEllipse(gmEllipse::gmEllipseGeom{data.center, first, second, theta});
}

inline double stdDev(const std::vector<double>& values) {
    const double factor = 1.0 / static_cast<double>(values.size());
    double total = 0.0;
    for (const double v : values)
        total += v;
    const double mean = factor * total;
    double squares = 0.0;
    for (const double v : values)
        squares += (v - mean) * (v - mean);
    return std::sqrt(factor * squares);
}

}  // namespace reference
