// Outlines to try: families that each stress something, drawn from a seed.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>
#include <vector>

#include "tests/reference/outline.h"
#include "tests/support/random.h"

namespace support {

using reference::Outline;
using reference::Points;

inline Outline made(Random& random, Points points, double closedShare = 0.7) {
    return {std::move(points), random.chance(closedShare)};
}

/// None to three vertices on a small grid.
inline Outline tinyOutline(Random& random) {
    Points points;
    for (int n = random.integer(0, 3); n > 0; n--)
        points.push_back(random.gridPoint(-2, 2));
    return made(random, points, 0.5);
}

inline Outline scatteredOutline(Random& random) {
    Points points;
    for (int n = random.integer(3, 12); n > 0; n--)
        points.push_back(random.point(-10, 10));
    return made(random, points);
}

/// On a grid so small that vertices repeat, touch edges and lie in line, and that crossings tie.
inline Outline gridOutline(Random& random) {
    Points points;
    const int size = random.integer(1, 5);
    for (int n = random.integer(3, 10); n > 0; n--)
        points.push_back(random.gridPoint(0, size));
    return made(random, points);
}

/// Each vertex perhaps several times, exactly or almost.
inline Outline repeatingOutline(Random& random) {
    const Outline base = random.chance(0.5) ? scatteredOutline(random) : gridOutline(random);
    const auto nearby = [&](const gmVector<2>& v) {
        const gmVector<2> step = random.gridPoint(-1, 1);
        return v + step * random.oneOf<double>({0.0, 0.0, 1e-16, 1e-15, 2e-15, 1e-9});
    };
    Points points;
    for (const gmVector<2>& v : base.points) {
        points.push_back(v);
        for (int again = random.integer(0, 2); again > 0; again--)
            points.push_back(nearby(v));
    }
    return {points, base.closed};
}

inline Outline collinearOutline(Random& random) {
    const gmVector<2> direction = random.gridPoint(-3, 3);
    const gmVector<2> start = random.gridPoint(-3, 3);
    Points points;
    for (int n = random.integer(2, 8); n > 0; n--)
        points.push_back(start + direction * (random.integer(-4, 4) * 0.5));
    return made(random, points);
}

inline Outline nonFiniteOutline(Random& random) {
    const Outline base = gridOutline(random);
    const double infinity = std::numeric_limits<double>::infinity();
    const std::vector<double> odd = {std::nan(""), infinity, -infinity};
    Points points;
    for (const gmVector<2>& v : base.points) {
        const double x = random.chance(0.15) ? random.oneOf(odd) : v.x();
        points.emplace_back(x, random.chance(0.15) ? random.oneOf(odd) : v.y());
    }
    return {points, base.closed};
}

/// Coordinates whose squares, sums or differences leave the range of a double.
inline Outline hugeOutline(Random& random) {
    const std::vector<double> scales = {1e100, 1e153, 1e154, 1e200, 1e300, 8e307, std::numeric_limits<double>::max()};
    const double common = random.oneOf(scales);
    const bool mixed = random.chance(0.5);
    Points points;
    const auto coordinate = [&] {
        const double scale = mixed ? random.oneOf(scales) : common;
        return scale * random.oneOf<double>({-1.0, -0.5, 0.0, 1e-300, 0.25, 1.0});
    };
    for (int n = random.integer(3, 9); n > 0; n--) {
        const double x = coordinate();
        points.emplace_back(x, coordinate());
    }
    return made(random, points);
}

/// Coordinates whose squares and products vanish.
inline Outline vanishingOutline(Random& random) {
    const std::vector<double> scales = {4.9406564584124654e-324, 1e-310, 1e-200, 1e-162, 1e-100, 1e-16, 1e-15, 1e-8};
    const double scale = random.oneOf(scales);
    Points points;
    for (int n = random.integer(3, 9); n > 0; n--)
        points.push_back(random.gridPoint(-3, 3) * scale);
    return made(random, points);
}

/// Steps of the size of the tolerance of crossings.
inline Outline touchingOutline(Random& random) {
    Points points;
    for (int n = random.integer(3, 9); n > 0; n--) {
        const gmVector<2> corner = random.gridPoint(0, 3);
        points.push_back(corner + random.gridPoint(-2, 2) * 5e-7);
    }
    return made(random, points);
}

/// A pixel outline seen far from the origin, where coordinates are coarse and areas cancel.
inline Outline farOutline(Random& random) {
    const double offset = random.oneOf<double>({1e6, 1e7, 1e9, 1e15});
    Points points;
    for (int n = random.integer(3, 8); n > 0; n--)
        points.push_back(gmVector<2>(offset, offset) + random.gridPoint(0, 90));
    return made(random, points);
}

/// Star-shaped around its middle, either way round.
inline Outline starOutline(Random& random) {
    const int n = random.integer(4, 24);
    const gmVector<2> center = random.point(-50, 50);
    Points points;
    for (int i = 0; i < n; i++)
        points.push_back(center + gmVector<2>(random.real(1, 10), gmRadian(6.283185307179586 * i / n)));
    if (random.chance(0.5))
        std::reverse(points.begin(), points.end());
    return made(random, points, 0.9);
}

/// A comb with teeth of one width and many lengths: edges in line and of equal length, not star-shaped.
inline Outline combOutline(Random& random) {
    const int teeth = random.integer(1, 6);
    Points points = {{0.0, -1.0}, {2.0 * teeth, -1.0}};
    for (int i = teeth; i-- > 0;) {
        const int tooth = random.integer(1, 4);
        for (const gmVector<2>& v : {gmVector<2>(2 * i + 2, 0), gmVector<2>(2 * i + 2, tooth),
                                     gmVector<2>(2 * i + 1, tooth), gmVector<2>(2 * i + 1, 0)})
            points.push_back(v);
    }
    if (random.chance(0.5))
        std::reverse(points.begin(), points.end());
    return made(random, points);
}

inline Outline spiralOutline(Random& random) {
    const int n = random.integer(5, 32);
    const double turn = random.real(0.3, 1.2);
    Points points;
    for (int i = 0; i < n; i++)
        points.emplace_back(0.5 + 0.25 * i, gmRadian(turn * i));
    return made(random, points, 0.5);
}

/// A star polygon, which crosses itself all over; now and then with a corner doubled or in the middle.
inline Outline crossingOutline(Random& random) {
    const int n = random.integer(4, 13);
    const int step = random.integer(2, n - 1);
    Points points;
    for (int i = 0; i < n; i++) {
        points.emplace_back(5.0, gmRadian(6.283185307179586 * (i * step % n) / n));
        if (random.chance(0.1))
            points.push_back(random.chance(0.5) ? points.back() : gmVector<2>());
    }
    return made(random, points);
}

/// The outline of a row of pixel columns, a vertex at every pixel corner.
inline Outline pixelOutline(Random& random) {
    std::vector<int> heights;
    for (int columns = random.integer(1, 6); columns > 0; columns--)
        heights.push_back(random.integer(1, 4));
    Points points;
    const int n = static_cast<int>(heights.size());
    for (int x = 0; x < n; x++)
        points.emplace_back(x, 0);
    int y = 0;
    for (int x = n; x > 0; x--) {
        const int height = heights[static_cast<std::size_t>(x - 1)];
        for (; y != height; y += y < height ? 1 : -1)
            points.emplace_back(x, y);
        points.emplace_back(x, y);
    }
    for (; y > 0; y--)
        points.emplace_back(0, y);
    return made(random, points, 0.9);
}

/// Enough vertices for several levels of any search structure.
inline Outline largeOutline(Random& random) {
    const int n = random.oneOf<int>({31, 32, 33, 63, 64, 65, 100, 130, 257, 400});
    const int kind = random.integer(0, 3);
    Points points;
    gmVector<2> at;
    for (int i = 0; i < n; i++) {
        if (kind == 0)
            points.push_back(random.gridPoint(0, 30));
        else if (kind == 1)
            points.emplace_back(random.real(20, 22), gmRadian(6.283185307179586 * i / n));
        else if (kind == 2)
            points.push_back(at = at + random.gridPoint(-1, 1));
        else
            points.emplace_back(0.01 * i, gmRadian(0.2 * i));
    }
    return made(random, points);
}

struct Family {
    const char* name;
    Outline (*draw)(Random&);
    int count;  ///< how many outlines a property test looks at

    friend void PrintTo(const Family& family, std::ostream* out) { *out << family.name; }
};

inline std::vector<Family> families() {
    return {{"Tiny", tinyOutline, 1000},          {"Scattered", scatteredOutline, 1000},
            {"Grid", gridOutline, 1600},          {"Repeating", repeatingOutline, 700},
            {"Collinear", collinearOutline, 800}, {"NonFinite", nonFiniteOutline, 800},
            {"Huge", hugeOutline, 800},           {"Vanishing", vanishingOutline, 800},
            {"Touching", touchingOutline, 1000},  {"Far", farOutline, 800},
            {"Star", starOutline, 500},           {"Comb", combOutline, 500},
            {"Spiral", spiralOutline, 400},       {"Crossing", crossingOutline, 800},
            {"Pixel", pixelOutline, 500},         {"Large", largeOutline, 30}};
}

}  // namespace support
