#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "cntr/detail/tolerances.h"
#include "foundation/math/lanes.h"
#include "foundation/shapes/lineseg.h"

namespace detail {

/// Area, centre and second moments of a figure, or of eight.
template <class T>
struct Moments {
    T area;
    T x;
    T y;
    T xx;
    T xy;
    T yy;
};

template <class T>
struct Place {
    T x;
    T y;
};

inline double squareRoot(double value) {
    return std::sqrt(value);
}

inline double choose(bool holds, double a, double b) {
    return holds ? a : b;
}

template <class T>
T distance(const Place<T>& a, const Place<T>& b) {
    const T x = a.x - b.x;
    const T y = a.y - b.y;
    return squareRoot(x * x + y * y);
}

/// A triangle, or eight of them, over the base p-q.
template <class T>
struct Triangle {
    Place<T> p;
    Place<T> q;
    Place<T> r;
    Place<T> foot;  // of the perpendicular from r
    T cosine;       // of the direction of the base
    T sine;

    /// Negative area for a clockwise triangle.
    Moments<T> moments() const {
        const T d1 = distance(foot, p);
        const T d2 = distance(foot, q);
        const T h = distance(foot, r);

        // In the frame with its origin at the foot, x along the base and r on the +y side.
        T area = (d1 + d2) * h / 2.0;
        const T localX = (d2 - d1) / 3.0;
        T localY = h / 3.0;
        const T yy = (d1 + d2) * (h * h * h) / 12.0 - localY * localY * area;
        T xy = (d2 * d2 - d1 * d1) * (h * h) / 24.0 - localY * localX * area;
        const T xx = (d1 * d1 * d1 + d2 * d2 * d2) * h / 12.0 - localX * localX * area;
        const auto clockwise = (q.x - p.x) * (r.y - p.y) - (r.x - p.x) * (q.y - p.y) < 0.0;
        area = choose(clockwise, -1.0 * area, area);
        localY = choose(clockwise, -1.0 * localY, localY);
        xy = choose(clockwise, -1.0 * xy, xy);

        const T c = cosine;
        const T s = sine;
        return {area,
                foot.x + (c * localX - s * localY),
                foot.y + (s * localX + c * localY),
                c * c * xx - 2.0 * s * c * xy + s * s * yy,
                (c * c - s * s) * xy + s * c * xx - s * c * yy,
                s * s * xx + 2.0 * s * c * xy + c * c * yy};
    }
};

inline Moments<double> triangleMoments(gmVector<2> p, gmVector<2> q, gmVector<2> r) {
    // A base whose segment r projects onto. Two turns reach every side; far from the origin rounding would ask for a
    // third, and for ever.
    for (int turn = 0; turn < 2; ++turn) {
        const gmLineSeg base(p, q);
        if (!(base.distToPoint(r) - beyondBase > base.line().distToPoint(r)))
            break;
        const gmVector<2> first = p;
        p = q;
        q = r;
        r = first;
    }
    const gmVector<2> along = q - p;
    const gmVector<2> foot = gfFoot(p, along, r);
    // The direction cosines of the base, straight from its components: an angle and back would cost more and round.
    const double length = along.len();
    const double cosine = length > 0.0 ? along.x() / length : 1.0;
    const double sine = length > 0.0 ? along.y() / length : 0.0;
    return Triangle<double>{{p.x(), p.y()}, {q.x(), q.y()}, {r.x(), r.y()}, {foot.x(), foot.y()}, cosine, sine}
        .moments();
}

/// Whether r projects beyond the segment p-q as triangleMoments() sees it, where that can be told without a root or a
/// division.
struct Beyond {
    Beyond(const Place<Eight>& p, const Place<Eight>& q, const Place<Eight>& r) {
        const Eight x = q.x - p.x;
        const Eight y = q.y - p.y;
        const Eight square = x * x + y * y;
        const Eight before = -1.0 * ((r.x - p.x) * x + (r.y - p.y) * y);
        const Eight past = -1.0 * before - square;
        const EightBools isPast = past > before;
        const Eight excess = choose(isPast, past, before);
        const Eight endX = choose(isPast, q.x, p.x) - r.x;
        const Eight endY = choose(isPast, q.y, p.y) - r.y;
        const Eight toEnd = endX * endX + endY * endY;
        // How much farther r is from the segment than from its line is excess^2 / (square * (the sum of the two
        // distances)). Four times the limit leaves room for all rounding while the lengths are within these bounds.
        constexpr double limit = 4.0 * beyondBase;
        const EightBools measurable = (square > 1e-20) & (square < 1e8) & (toEnd < 1e8);
        const Eight squares = excess * excess;
        no = measurable & (excess <= 0.0);
        yes = measurable & (excess > 0.0) & (squares * squares > limit * limit * square * square * toEnd);
    }

    EightBools no;
    EightBools yes;
};

inline Place<Eight> choose(const EightBools& holds, const Place<Eight>& a, const Place<Eight>& b) {
    return {choose(holds, a.x, b.x), choose(holds, a.y, b.y)};
}

/// The moments of the triangles center-from-to; those whose bit is missing in the result have to be computed one by
/// one.
inline unsigned triangleMoments(const gmVector<2>& center, const EightPlaces& from, const EightPlaces& to,
                                Moments<double>* result) {
    const Place<Eight> corner{center.x(), center.y()};
    const Place<Eight> start{from.x, from.y};
    const Place<Eight> end{to.x, to.y};
    Triangle<Eight> triangle{corner, start, end, {}, {}, {}};
    const Beyond first(corner, start, end);
    unsigned known = first.no.bits();
    if (known != 0xff) {
        const Beyond second(start, end, corner);
        const EightBools twice = first.yes & second.yes;
        triangle.p = choose(twice, end, choose(first.yes, start, corner));
        triangle.q = choose(twice, corner, choose(first.yes, end, start));
        triangle.r = choose(twice, start, choose(first.yes, corner, end));
        known |= (first.yes & (second.no | second.yes)).bits();
    }
    const auto& [p, q, r, foot, cosine, sine] = triangle;
    const Eight x = q.x - p.x;
    const Eight y = q.y - p.y;
    const Eight square = x * x + y * y;
    const Eight t = ((r.x - p.x) * x + (r.y - p.y) * y) / square;
    const Eight length = squareRoot(square);
    triangle.foot = {p.x + x * t, p.y + y * t};
    triangle.cosine = x / length;
    triangle.sine = y / length;

    const Moments<Eight> moments = triangle.moments();
    double lanes[6][8];
    moments.area.store(lanes[0]);
    moments.x.store(lanes[1]);
    moments.y.store(lanes[2]);
    moments.xx.store(lanes[3]);
    moments.xy.store(lanes[4]);
    moments.yy.store(lanes[5]);
    for (std::size_t i = 0; i < 8; ++i)
        result[i] = {lanes[0][i], lanes[1][i], lanes[2][i], lanes[3][i], lanes[4][i], lanes[5][i]};
    return known;
}

/// The moments of the triangles between the center and the edges of the closed polygon, in edge order.
inline std::vector<Moments<double>> triangleFan(const gmVector<2>& center, const std::vector<gmVector<2>>& points) {
    const std::size_t n = points.size();
    std::vector<Moments<double>> moments((n + 7) / 8 * 8);
    for (std::size_t begin = 0; begin < n; begin += 8) {
        // The closing edge comes first; behind the last one its end is repeated.
        std::array<gmVector<2>, 9> corners;
        for (std::size_t i = 0; i < corners.size(); ++i)
            corners[i] = points[begin + i == 0 ? n - 1 : std::min(begin + i, n) - 1];
        const unsigned known =
            triangleMoments(center, EightPlaces::load(&corners[0]), EightPlaces::load(&corners[1]), &moments[begin]);
        for (std::size_t i = 0; i < 8 && known != 0xff; ++i)
            if ((known >> i & 1U) == 0)
                moments[begin + i] = triangleMoments(center, corners[i], corners[i + 1]);
    }
    moments.resize(n);
    return moments;
}

}  // namespace detail
