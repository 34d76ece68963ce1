// Outlines and regions to try where outlines cross, touch and repeat themselves, and where holes nest.
#pragma once

#include <set>
#include <tuple>
#include <utility>

#include "tests/reference/region_containment.h"
#include "tests/support/generators.h"

namespace support {

inline Outline closedOutline(Points points) {
    return {std::move(points), true};
}

/// The same loop, begun at another vertex and perhaps the other way round.
inline Points turned(Random& random, Points points) {
    if (points.empty())
        return points;
    const auto first = random.integer(0, static_cast<int>(points.size()) - 1);
    std::rotate(points.begin(), points.begin() + first, points.end());
    if (random.chance(0.5))
        std::reverse(points.begin(), points.end());
    return points;
}

/// A step to a neighbour on a grid of one of these sizes, or none.
inline gmVector<2> nearly(Random& random, const std::vector<double>& sizes) {
    const gmVector<2> step = random.gridPoint(-1, 1);
    return step * random.oneOf(sizes);
}

/// With some of the vertices given twice, the second time exactly or almost at the same place.
inline Points doubled(Random& random, const Points& points, double share) {
    Points result;
    for (const gmVector<2>& v : points) {
        result.push_back(v);
        if (random.chance(share))
            result.push_back(v + nearly(random, {0.0, 0.0, 1e-9, 4e-7, 1e-6, 2e-6}));
    }
    return result;
}

/// Two opposite sides of a box and the diagonals between them, straight or bent, with corners doubled or not.
inline Outline bowTieOutline(Random& random) {
    const double w = random.integer(1, 4);
    const double h = random.integer(1, 4);
    Points points = {{0, 0}, {w, h}, {w, 0}, {0, h}};
    if (random.chance(0.3))
        points.insert(points.begin() + 1, random.gridPoint(0, 4));
    if (random.chance(0.5))
        for (gmVector<2>& v : points)
            v = v + random.point(-0.4, 0.4);
    if (random.chance(0.5))
        points = doubled(random, points, 0.3);
    return closedOutline(turned(random, points));
}

/// Points on a curve that winds around the middle and through itself.
inline Outline lobedOutline(Random& random) {
    const int n = random.integer(9, 22);
    const int lobes = random.integer(2, 5);
    const int turns = random.integer(1, 3);
    const double depth = random.real(0.5, 2.0);
    const double phase = random.real(0.0, 6.3);
    Points points;
    for (int i = 0; i < n; i++) {
        const double angle = 6.283185307179586 * i / n;
        points.emplace_back(3.0 + 3.0 * depth * std::cos(lobes * angle + phase), gmRadian(turns * angle));
    }
    return closedOutline(turned(random, points));
}

/// A sum of two turnings at different rates: loops within loops.
inline Outline loopingOutline(Random& random) {
    const int n = random.integer(10, 24);
    const int rate = random.oneOf<int>({-4, -3, -2, 2, 3, 4});
    const double radius = random.real(0.3, 1.5);
    Points points;
    for (int i = 0; i < n; i++) {
        const double angle = 6.283185307179586 * i / n;
        points.push_back(gmVector<2>(1.0, gmRadian(angle)) + gmVector<2>(radius, gmRadian(rate * angle)));
    }
    return closedOutline(turned(random, points));
}

/// Steps along the axes, a grid corner at a time or several.
inline Outline stairsOutline(Random& random) {
    Points points = {{0, 0}};
    const int size = random.integer(2, 6);
    for (int n = random.integer(2, 6); n > 0; n--) {
        points.push_back(gmVector<2>(random.integer(0, size), points.back().y()));
        points.push_back(gmVector<2>(points.back().x(), random.integer(0, size)));
    }
    points.push_back(gmVector<2>(0, points.back().y()));
    return closedOutline(turned(random, points));
}

/// The boundary of pixels that touch along sides or only at corners, a vertex at every pixel corner or at every turn.
inline Outline blobOutline(Random& random) {
    std::vector<std::pair<int, int>> pixels = {{0, 0}};
    for (int n = random.integer(0, 12); n > 0; n--) {
        const std::pair<int, int> from = random.oneOf(pixels);
        const int x = from.first + random.integer(-1, 1);
        pixels.emplace_back(x, from.second + random.integer(-1, 1));
    }
    const std::set<std::pair<int, int>> filled(pixels.begin(), pixels.end());
    const bool turnsOnly = random.chance(0.5);
    const bool joinsCorners = random.chance(0.7);
    // Down the left side of the leftmost pixel, and on with the pixels always on the left.
    const int left = filled.begin()->first;
    const int top = filled.begin()->second + 1;
    int x = left;
    int y = top;
    int dx = 0;
    int dy = -1;
    Points points;
    do {
        x += dx;
        y += dy;
        const bool leftAhead = filled.count({x + (dx - dy - 1) / 2, y + (dy + dx - 1) / 2}) > 0;
        const bool rightAhead = filled.count({x + (dx + dy - 1) / 2, y + (dy - dx - 1) / 2}) > 0;
        const bool right = rightAhead && (leftAhead || joinsCorners);
        const bool straight = leftAhead && !rightAhead;
        if (!turnsOnly || !straight)
            points.emplace_back(x, y);
        if (!straight)
            std::tie(dx, dy) = right ? std::make_pair(dy, -dx) : std::make_pair(-dy, dx);
    } while (!(x == left && y == top && dx == 0 && dy == -1));
    return closedOutline(turned(random, points));
}

/// A loop with one of its vertices moved onto another vertex, onto an edge, or almost there.
inline Outline pinchedOutline(Random& random) {
    Points points = random.chance(0.5) ? starOutline(random).points : pixelOutline(random).points;
    const double off = random.oneOf<double>({0.0, 0.0, 5e-7, -5e-7, 1e-6, 3e-6});
    for (int pinches = random.integer(1, 2); pinches > 0; pinches--) {
        const auto any = [&] {
            return static_cast<std::size_t>(random.integer(0, static_cast<int>(points.size()) - 1));
        };
        const std::size_t moved = any();
        const std::size_t to = any();
        const gmVector<2> next = points[(to + 1) % points.size()];
        const gmVector<2> place = random.chance(0.4) ? points[to] : (points[to] + next) * 0.5;
        points[moved] = place + nearly(random, {off});
    }
    return closedOutline(points);
}

/// A loop of which a stretch is run through the other way round: it crosses itself, often several times.
inline Outline twistedOutline(Random& random) {
    using Draw = Outline (*)(Random&);
    Points points = random.oneOf<Draw>({starOutline, combOutline, pixelOutline, blobOutline})(random).points;
    const int n = static_cast<int>(points.size());
    for (int twists = random.integer(1, 2); twists > 0; twists--) {
        const int first = random.integer(0, n - 2);
        std::reverse(points.begin() + first, points.begin() + random.integer(first + 2, n));
    }
    if (random.chance(0.3))
        points = doubled(random, points, 0.1);
    return closedOutline(points);
}

/// Two loops in one outline, joined at a vertex: apart, one in the other, or across each other.
inline Outline joinedOutline(Random& random) {
    const auto loop = [&] {
        Points points = random.chance(0.5) ? blobOutline(random).points : starOutline(random).points;
        const gmVector<2> first = points[0];
        const double size = random.oneOf<double>({0.25, 0.5, 1.0, 1.0, 2.0});
        for (gmVector<2>& v : points)
            v = (v - first) * size;
        return points;
    };
    Points points = loop();
    for (const gmVector<2>& v : loop())
        points.push_back(v);
    return closedOutline(turned(random, points));
}

/// The same loop twice over, exactly, or beside itself, or back again.
inline Outline twiceOutline(Random& random) {
    Points points = random.chance(0.5) ? bowTieOutline(random).points : scatteredOutline(random).points;
    Points again = points;
    const gmVector<2> shift = nearly(random, {0.0, 0.0, 1e-7, 1e-3, 0.3});
    for (gmVector<2>& v : again)
        v = v + shift;
    if (random.chance(0.2))
        std::reverse(again.begin(), again.end());
    points.insert(points.end(), again.begin(), again.end());
    return closedOutline(points);
}

/// A crossing outline so small or so large that the fixed tolerances, or the range of numbers, come into it.
inline Outline scaledOutline(Random& random) {
    const double scale =
        random.oneOf<double>({1e-9, 1e-7, 1e-6, 3e-6, 1e-5, 1e-3, 1e6, 1e9, 1e12, 1e75, 1e150, 1e160, 1e307});
    const gmVector<2> shift = nearly(random, {0.0, 0.0, 1.0, 1e3, 1e9});
    Points points = random.chance(0.5) ? bowTieOutline(random).points : crossingOutline(random).points;
    for (gmVector<2>& v : points)
        v = v * scale + shift;
    return closedOutline(points);
}

/// A crossing outline with a coordinate or two that is no finite number.
inline Outline brokenOutline(Random& random) {
    Points points = random.chance(0.5) ? bowTieOutline(random).points : lobedOutline(random).points;
    const double infinity = std::numeric_limits<double>::infinity();
    for (int n = random.integer(1, 2); n > 0; n--) {
        const double odd = random.oneOf<double>({std::nan(""), infinity, -infinity});
        gmVector<2>& v = points[static_cast<std::size_t>(random.integer(0, static_cast<int>(points.size()) - 1))];
        v = random.chance(0.5) ? gmVector<2>(odd, v.y()) : gmVector<2>(v.x(), odd);
    }
    return closedOutline(points);
}

/// What the families of contours draw, and what matters to regions alone. Whether closed or open was drawn is not.
inline std::vector<Family> regionFamilies() {
    std::vector<Family> result = families();
    for (Family& family : result)
        if (family.draw == largeOutline)
            family.count = 15;  // the plain procedures take long over them
    const std::vector<Family> more = {
        {"BowTie", bowTieOutline, 2000},   {"Lobed", lobedOutline, 1000},  {"Looping", loopingOutline, 800},
        {"Stairs", stairsOutline, 1200},   {"Blob", blobOutline, 1500},    {"Pinched", pinchedOutline, 1200},
        {"Twisted", twistedOutline, 1500}, {"Joined", joinedOutline, 800}, {"Twice", twiceOutline, 800},
        {"Scaled", scaledOutline, 1200},   {"Broken", brokenOutline, 800}};
    result.insert(result.end(), more.begin(), more.end());
    return result;
}

/// Holes that lie inside, outside, in each other or across: what they are to each other is nobody's to check. One in a
/// while is too small to have an area, or has no vertex.
inline reference::Region regionOf(Random& random, Points points, int depth) {
    reference::Region region = {std::move(points), {}};
    if (depth == 0 || region.points.empty())
        return region;
    for (int n = random.integer(0, 3); n > 0; n--) {
        Points hole;
        if (random.chance(0.9)) {
            hole = region.points;
            if (random.chance(0.5))
                hole = random.oneOf(regionFamilies()).draw(random).points;
            const gmVector<2> about = random.chance(0.8) ? random.oneOf(region.points) : random.point(-5, 5);
            const double size = random.oneOf<double>({0.1, 0.5, 0.9, 1.0, 1.2});
            for (gmVector<2>& v : hole)
                v = about + (v - about) * size;
        } else {
            for (int vertices = random.integer(0, 2); vertices > 0; vertices--)
                hole.push_back(random.gridPoint(0, 4));
        }
        region.holes.push_back(regionOf(random, hole, depth - 1));
    }
    return region;
}

/// Squares in squares about the same middle, each perhaps with another beside it: islands in holes, and holes in them.
inline reference::Region nestedRegion(Random& random, const gmVector<2>& middle, double size, int depth) {
    reference::Region region;
    for (const gmVector<2>& corner : {gmVector<2>(-1, -1), gmVector<2>(1, -1), gmVector<2>(1, 1), gmVector<2>(-1, 1)})
        region.points.push_back(middle + corner * size);
    region.points = turned(random, region.points);
    if (depth == 0)
        return region;
    if (random.chance(0.5)) {
        region.holes.push_back(nestedRegion(random, middle, size * 0.7, depth - 1));
    } else {
        region.holes.push_back(nestedRegion(random, middle + gmVector<2>(size * 0.5, 0.0), size * 0.4, depth - 1));
        region.holes.push_back(nestedRegion(random, middle - gmVector<2>(size * 0.5, 0.0), size * 0.4, depth - 1));
    }
    return region;
}

}  // namespace support
