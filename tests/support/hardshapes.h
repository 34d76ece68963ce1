// Outlines of any size that are hard on whoever looks at a few of the edges only: with ties, with differences that
// vanish in rounding, with runs of edges whose boxes say little, and with coordinates where no bound holds.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/generators.h"
#include "tests/support/random.h"

namespace support {

constexpr double twoPi = 6.283185307179586;

/// An outline, and the place that its vertices lie around, where they do.
struct HardShape {
    Outline outline;
    gmVector<2> center;
};

/// `n` vertices, drawn around the center.
using HardPoints = Points (*)(Random&, int n, const gmVector<2>& center);

inline Points hardScattered(Random& random, int n, const gmVector<2>&) {
    Points points;
    while (n-- > 0)
        points.push_back(random.point(-100, 100));
    return points;
}

inline Points hardJittered(Random& random, int n, const gmVector<2>& center) {
    const double depth = random.oneOf<double>({1e-12, 1e-6, 0.01, 2.0, 30.0});
    Points points;
    for (int i = 0; i < n; i++)
        points.push_back(center + gmVector<2>(50.0 + random.real(0.0, depth), gmRadian(twoPi * i / n)));
    return points;
}

/// Around several times and through itself, each edge across the whole or a loop at a time.
inline Points hardCrossing(Random& random, int n, const gmVector<2>& center) {
    const bool star = random.chance(0.5);
    const int step = random.integer(2, std::max(2, n / 2));
    const int lobes = random.integer(2, 7);
    const int turns = random.integer(1, 3);
    Points points;
    for (int i = 0; i < n; i++) {
        const double angle = twoPi * i / n;
        if (star)
            points.push_back(center + gmVector<2>(40.0, gmRadian(twoPi * (i * step % n) / n)));
        else
            points.push_back(center + gmVector<2>(30.0 + 25.0 * std::cos(lobes * angle + 0.3),  //
                                                  gmRadian(turns * angle)));
    }
    return points;
}

inline Points hardGrid(Random& random, int n, const gmVector<2>&) {
    const int size = random.oneOf<int>({2, 5, 12, 40});
    Points points;
    while (n-- > 0)
        points.push_back(random.gridPoint(0, size));
    return points;
}

inline Points hardWalk(Random& random, int n, const gmVector<2>& center) {
    const double size = random.oneOf<double>({0.5, 1.0, 1.0, 0.1});
    Points points;
    gmVector<2> at = center;
    while (n-- > 0)
        points.push_back(at = at + random.gridPoint(-1, 1) * size);
    return points;
}

/// All vertices, and all edges, as far from the center as the others, but for rounding.
inline Points hardRegular(Random& random, int n, const gmVector<2>& center) {
    const double radius = random.oneOf<double>({1.0, 1.0, 5.0, 0.1, 1000.0});
    const double phase = random.oneOf<double>({0.0, 0.1, 1.0});
    Points points;
    for (int i = 0; i < n; i++)
        points.push_back(center + gmVector<2>(radius, gmRadian(twoPi * i / n + phase)));
    return points;
}

/// All vertices exactly as far from the origin as the others: the integer points of one circle, in order or in none.
inline Points hardLatticeCircle(Random& random, int n, const gmVector<2>&) {
    static const Points circle = [] {
        Points found;
        const int radius = 5 * 13 * 17;
        for (int x = -radius; x <= radius; x++)
            for (const int sign : {-1, 1}) {
                const int y = static_cast<int>(std::lround(std::sqrt(double(radius) * radius - double(x) * x))) * sign;
                if (x * x + y * y == radius * radius)
                    found.emplace_back(x, y);
            }
        std::sort(found.begin(), found.end(), [](const gmVector<2>& a, const gmVector<2>& b) {
            return std::atan2(a.y(), a.x()) < std::atan2(b.y(), b.x());
        });
        return found;
    }();
    const bool inOrder = random.chance(0.5);
    Points points;
    for (int i = 0; i < n; i++)
        points.push_back(inOrder ? circle[static_cast<std::size_t>(i) % circle.size()] : random.oneOf(circle));
    return points;
}

/// Edges of about the size of the tolerance of crossings.
inline Points hardShortEdges(Random& random, int n, const gmVector<2>& center) {
    const double size = random.oneOf<double>({1e-6, 5e-7, 2e-6, 1e-7});
    const bool onGrid = random.chance(0.5);
    Points points;
    gmVector<2> at = center;
    while (n-- > 0)
        points.push_back(at = at + (onGrid ? random.gridPoint(-1, 1) : random.point(-1, 1)) * size);
    return points;
}

/// Of pixel size at a place where coordinates are coarse.
inline Points hardFar(Random& random, int n, const gmVector<2>&) {
    const double offset = random.oneOf<double>({9.9e5, 1e6, 1e7, 1e9, 1e12});
    const gmVector<2> place = gmVector<2>(offset, offset * random.oneOf<double>({1.0, -0.5, 0.0}));
    Points points = random.oneOf<HardPoints>({hardScattered, hardJittered, hardCrossing, hardWalk})(random, n, {});
    for (gmVector<2>& v : points)
        v = v + place;
    return points;
}

/// As large as the place that hardFar() puts its outlines at.
inline Points hardLarge(Random& random, int n, const gmVector<2>&) {
    const double size = random.oneOf<double>({1e4, 9e3, 1e6, 1e7, 1e10});
    Points points = random.oneOf<HardPoints>({hardScattered, hardJittered, hardCrossing, hardGrid})(random, n, {});
    for (gmVector<2>& v : points)
        v = v * size;
    return points;
}

/// The pixels of a circle, each several times.
inline Points hardPixels(Random& random, int n, const gmVector<2>&) {
    const double radius = n / random.real(7.0, 14.0);
    Points points;
    for (int i = 0; i < n; i++) {
        const gmVector<2> v(radius, gmRadian(twoPi * i / n));
        points.emplace_back(std::round(v.x()), std::round(v.y()));
    }
    return points;
}

inline Points hardComb(Random& random, int n, const gmVector<2>&) {
    const bool even = random.chance(0.5);
    Points points = {{0.0, -1.0}};
    for (int i = 1; i < n; i++) {
        const double tooth = even ? 10.0 : random.integer(1, 40);
        points.emplace_back(i / 2, i % 4 == 1 || i % 4 == 2 ? tooth : 0.0);
    }
    return points;
}

inline Points hardSpiral(Random& random, int n, const gmVector<2>& center) {
    const double turns = random.oneOf<double>({5.0, 20.0, 60.0});
    Points points;
    for (int i = 0; i < n; i++)
        points.push_back(center + gmVector<2>(1.0 + 30.0 * i / n, gmRadian(twoPi * turns * i / n)));
    return points;
}

/// Stairs or a box whose sides are runs of vertices, some of them doubled, exactly or almost.
inline Points hardRuns(Random& random, int n, const gmVector<2>& center) {
    const bool box = random.chance(0.5);
    const double step = random.oneOf<double>({1.0, 0.25, 0.1});
    const double almost = random.oneOf<double>({0.0, 1e-16, 1e-15, 3e-15, 1e-9});
    Points points;
    gmVector<2> at = center;
    gmVector<2> along(step, 0.0);
    for (int i = 0; i < n; i++) {
        points.push_back(at);
        if (random.chance(0.1))
            at = at + random.gridPoint(-1, 1) * almost;
        else
            at = at + along;
        if (box ? i % (n / 4 + 1) == n / 4 : random.chance(0.1))
            along = box || random.chance(0.5) ? gmVector<2>(-along.y(), along.x()) : gmVector<2>(along.y(), along.x());
    }
    return points;
}

/// Two bunches so far apart that what tells their vertices' distances apart is rounded away, or barely not.
inline Points hardBunches(Random& random, int n, const gmVector<2>&) {
    const double size = random.oneOf<double>({1e-3, 4e-3, 1e-2, 0.1});
    const gmVector<2> apart = random.oneOf<gmVector<2>>({{1e6, 0.0}, {0.0, 1e6}, {6e5, 8e5}});
    Points points;
    for (int i = 0; i < n; i++)
        points.push_back(apart * random.integer(0, 1) + random.gridPoint(-4, 4) * size);
    return points;
}

/// The center first, and the others around it except toward two corners of the box: the box reaches farther from there
/// than twice the largest distance from the first vertex.
inline Points hardHub(Random& random, int n, const gmVector<2>& center) {
    const double width = random.real(15.0, 25.0);
    const double radius = random.oneOf<double>({1.0, 10.0, 300.0});
    Points points = {center};
    for (int i = 1; i < n; i++) {
        const double degrees = 135.0 + 360.0 * i / n;
        const double off = std::fmod(degrees + 180.0 - 45.0, 180.0);
        if (off > width && off < 180.0 - width)
            points.push_back(center + gmVector<2>(radius, gmRadian(degrees / 360.0 * twoPi)));
    }
    while (static_cast<int>(points.size()) < n)
        points.push_back(points.back());
    return points;
}

inline Points hardStacked(Random& random, int n, const gmVector<2>& center) {
    const Points places = {center, center + random.gridPoint(-1, 1), random.gridPoint(-3, 3), center};
    const int used = random.integer(1, 4);
    Points points;
    while (n-- > 0)
        points.push_back(places[static_cast<std::size_t>(random.integer(0, used - 1))]);
    return points;
}

/// Along an axis and back and forth across it, with steps at the turns that are about as large as the tolerance of
/// crossings: edges meet beyond their ends, two edges on.
inline Points hardNotches(Random& random, int n, const gmVector<2>& center) {
    const double step = random.oneOf<double>({0.9e-6, 1.1e-6, 1.2e-6, 1.3e-6, 1.35e-6, 1.5e-6});
    const bool once = random.chance(0.7);
    const int notch = random.integer(0, n);
    const bool upright = random.chance(0.5);
    const double way = random.oneOf<double>({-1.0, 1.0});
    Points points;
    gmVector<2> at;
    for (int i = 0; i < n; i++) {
        points.push_back(center + (upright ? gmVector<2>(at.y(), at.x()) : at) * way);
        if (i % 3 == 0)
            at = at + gmVector<2>(1.0, -1.0);
        else if (i % 3 == 2)
            at = at + gmVector<2>(1.0, 1.0);
        else if (!once || i / 3 == notch / 3)
            at = at + gmVector<2>(0.0, step);
        else
            at = at + gmVector<2>(0.5, 0.0);
    }
    return points;
}

/// With a few vertices that are no place, or so far off that squares overflow.
inline Points hardBroken(Random& random, int n, const gmVector<2>& center) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::vector<double> odd = random.chance(0.5)
                                        ? std::vector<double>{std::nan(""), infinity, -infinity}
                                        : std::vector<double>{1e151, -1e151, 9e149, 1e154, 1e200, -1e300, 1.7e308};
    Points points = random.oneOf<HardPoints>({hardScattered, hardJittered, hardCrossing, hardGrid})(random, n, center);
    for (int i = random.integer(1, 3); i > 0 && !points.empty(); i--) {
        gmVector<2>& v = points[static_cast<std::size_t>(random.integer(0, n - 1))];
        v = random.chance(0.5) ? gmVector<2>(random.oneOf(odd), v.y()) : gmVector<2>(v.x(), random.oneOf(odd));
    }
    return points;
}

/// Of a size whose squares vanish, or nearly, or overflow, or nearly.
inline Points hardScaled(Random& random, int n, const gmVector<2>&) {
    const double size =
        random.oneOf<double>({1e-200, 1e-165, 1e-163, 1e-162, 1e-160, 1e-156, 1e75, 1e148, 1e152, 1e160});
    Points points = random.oneOf<HardPoints>({hardScattered, hardJittered, hardCrossing, hardGrid})(random, n, {});
    for (gmVector<2>& v : points)
        v = v * size;
    return points;
}

struct HardFamily {
    const char* name;
    HardPoints draw;

    friend void PrintTo(const HardFamily& family, std::ostream* out) { *out << family.name; }
};

inline std::vector<HardFamily> hardFamilies() {
    return {{"Scattered", hardScattered},
            {"Jittered", hardJittered},
            {"Crossing", hardCrossing},
            {"Grid", hardGrid},
            {"Walk", hardWalk},
            {"Regular", hardRegular},
            {"Lattice", hardLatticeCircle},
            {"ShortEdges", hardShortEdges},
            {"Far", hardFar},
            {"Large", hardLarge},
            {"Pixels", hardPixels},
            {"Comb", hardComb},
            {"Spiral", hardSpiral},
            {"Runs", hardRuns},
            {"Bunches", hardBunches},
            {"Hub", hardHub},
            {"Notches", hardNotches},
            {"Stacked", hardStacked},
            {"Broken", hardBroken},
            {"Scaled", hardScaled}};
}

/// Around the sizes at which a run of eight edges, eight such runs, and eight of these are full.
inline std::vector<int> hardSizes() {
    return {1, 2, 3, 5, 8, 9, 16, 31, 32, 33, 34, 63, 64, 65, 66, 100, 129, 256, 257, 513, 600, 1025};
}

inline HardShape hardShape(const HardFamily& family, Random& random, int n) {
    const gmVector<2> center = random.oneOf<gmVector<2>>({{0.0, 0.0}, {0.0, 0.0}, {3.0, 7.0}, {0.5, -0.25}});
    Points points = family.draw(random, n, center);
    return {made(random, std::move(points), 0.7), center};
}

}  // namespace support
