// What is added up over the edges of an outline, several of them at a time, beside the plain loops: for every number of
// vertices that may be left over, to the bit.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "cntr/contour.h"
#include "cntr/detail/trianglefan.h"
#include "cntr/inertia.h"
#include "tests/reference/inertia.h"
#include "tests/reference/measures.h"
#include "tests/support/bits.h"
#include "tests/support/random.h"
#include "tests/support/text.h"

using reference::Points;
using support::Random;
using support::same;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double turn = 6.283185307179586;

std::vector<int> sizes() {
    std::vector<int> result;
    for (int n = 0; n <= 20; n++)
        result.push_back(n);
    for (const int n : {63, 64, 65, 127, 128, 129})
        result.push_back(n);
    return result;
}

struct Shape {
    const char* name;
    gmVector<2> (*vertex)(Random& random, int i, int n);

    friend void PrintTo(const Shape& shape, std::ostream* out) { *out << shape.name; }
};

const Shape shapes[] = {
    {"Circle", [](Random&, int i, int n) { return gmVector<2>(10.0, gmRadian(turn * i / n)); }},
    {"CircleElsewhere",
     [](Random&, int i, int n) { return gmVector<2>(640.0, 480.0) + gmVector<2>(99.0, gmRadian(turn * i / n)); }},
    {"Clockwise", [](Random&, int i, int n) { return gmVector<2>(10.0, gmRadian(-turn * i / n)); }},
    {"Star", [](Random& random, int i, int n) { return gmVector<2>(random.real(1, 10), gmRadian(turn * i / n)); }},
    {"ClockwiseStar",
     [](Random& random, int i, int n) { return gmVector<2>(random.real(1, 10), gmRadian(-turn * i / n)); }},
    {"Spiral", [](Random&, int i, int) { return gmVector<2>(0.1 * i + 1.0, gmRadian(0.7 * i)); }},
    {"Scattered", [](Random& random, int, int) { return random.point(-500, 500); }},
    {"Grid", [](Random& random, int, int) { return random.gridPoint(-3, 3); }},
    {"Flat", [](Random& random, int, int) { return gmVector<2>(random.real(-9, 9), 1e-8 * random.real(-1, 1)); }},
    {"OnALine", [](Random& random, int, int) { return gmVector<2>(1.0, 3.0) * random.integer(-5, 5); }},
    {"Small", [](Random& random, int, int) { return random.point(-1, 1) * 1e-9; }},
    {"Large", [](Random& random, int, int) { return random.point(-1, 1) * 1e5; }},
    {"Far", [](Random& random, int, int) { return gmVector<2>(1e9, 1e9) + random.gridPoint(0, 99); }},
    {"Huge", [](Random& random, int, int) { return random.point(-1, 1) * 1e160; }},
    {"AllSizes",
     [](Random& random, int, int) { return random.point(-1, 1) * std::pow(10.0, random.integer(-12, 12)); }},
};

/// Some vertices twice, some of them almost; some coordinates no numbers.
Points spoiled(Points points, Random& random) {
    const bool withOdd = random.chance(0.5);
    for (std::size_t i = 1; i < points.size(); i++) {
        if (random.chance(0.2))
            points[i] = points[i - 1];
        else if (random.chance(0.1))
            points[i] = points[i - 1] + random.gridPoint(-1, 1) * 1e-15;
        if (withOdd && random.chance(2.0 / static_cast<double>(points.size()))) {
            const double odd = random.oneOf<double>({std::nan(""), infinity, -infinity, -0.0});
            points[i] = random.chance(0.5) ? gmVector<2>(odd, points[i].y()) : gmVector<2>(points[i].x(), odd);
        }
    }
    return points;
}

void expectPlainSums(const Points& points) {
    SCOPED_TRACE(support::text(points));
    for (const bool closed : {false, true}) {
        const reference::Outline outline{points, closed};
        const gmContour contour(points, closed);
        EXPECT_TRUE(same(contour.length(), reference::length(outline)));
        if (points.size() >= 2) {
            EXPECT_TRUE(same(contour.meanPosition(), reference::meanPosition(outline)));
        }
        const gmXform<2> xform(gmMatrix<2>(0.8, -0.6, 1.2, 0.7), {31.5, -1e-3});
        Points mapped;
        for (const gmVector<2>& v : points)
            mapped.push_back(xform * v);
        gmContour out;
        contour.map(xform, out);
        EXPECT_TRUE(same(out.points(), mapped));
        gmContour inPlace = contour;
        inPlace.map(xform, inPlace);
        EXPECT_TRUE(same(inPlace.points(), mapped));
    }
    EXPECT_TRUE(same(gf_Area(points), reference::area(points)));
    EXPECT_TRUE(same(gnContour::centerOfMass(points), reference::centerOfMass(points)));
    EXPECT_TRUE(same(gf_InertiaDataPolygon(points), support::inertiaData(reference::inertiaDataPolygon(points))));
}

/// Each triangle of the fan by itself, also where the sum would hide it.
void expectPlainFan(const gmVector<2>& center, const Points& points) {
    SCOPED_TRACE(support::text(center) + " and " + support::text(points));
    const auto fan = detail::triangleFan(center, points);
    ASSERT_EQ(fan.size(), points.size());
    for (std::size_t i = 0; i < points.size(); i++) {
        const auto expected = reference::triangle(center, points[i == 0 ? points.size() - 1 : i - 1], points[i]);
        const detail::Moments<double>& m = fan[i];
        const reference::Moments actual{m.area, {m.x, m.y}, m.xx, m.xy, m.yy};
        EXPECT_TRUE(same(support::inertiaData(actual), support::inertiaData(expected))) << "triangle " << i;
    }
}

class OutlineSums : public testing::TestWithParam<Shape> {};

INSTANTIATE_TEST_SUITE_P(Of, OutlineSums, testing::ValuesIn(shapes),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(OutlineSums, AreThePlainOnesForEveryNumberOfVertices) {
    Random random(1);
    for (const int n : sizes())
        for (int repeat = n < 30 ? 12 : 3; repeat > 0 && !HasFailure(); repeat--) {
            Points points;
            for (int i = 0; i < n; i++)
                points.push_back(GetParam().vertex(random, i, n));
            expectPlainSums(points);
            expectPlainSums(spoiled(points, random));
        }
}

TEST_P(OutlineSums, HavePlainTrianglesAroundAnyCenter) {
    Random random(2);
    for (const int n : sizes())
        for (int repeat = n < 30 ? 12 : 3; repeat > 0 && !HasFailure(); repeat--) {
            Points points;
            for (int i = 0; i < n; i++)
                points.push_back(GetParam().vertex(random, i, n));
            expectPlainFan(random.gridPoint(-2, 2), points);
            if (n > 0)
                expectPlainFan(random.oneOf(points), points);
            expectPlainFan(random.point(-10, 10), spoiled(points, random));
        }
}

/// The triangles of these corners with the center, as every other one of a fan.
Points trianglesAround(const gmVector<2>& center, const std::vector<std::pair<gmVector<2>, gmVector<2>>>& corners) {
    Points points;
    for (const auto& [a, b] : corners) {
        points.push_back(center + a);
        points.push_back(center + b);
    }
    return points;
}

TEST(TriangleFan, TurnsTheBaseAsThePlainTriangleDoesAroundTheLimit) {
    // Where the third corner lies beyond the base by just so much that turning is due, or a little less or more.
    Random random(3);
    for (const double base : {1e-160, 1e-16, 1e-12, 1e-10, 1e-9, 1e-3, 1.0, 60.0, 9999.0, 10001.0, 1e7})
        for (const double height : {0.0, 1e-160, 1e-12, 1e-6, 1e-2, 1.0, 80.0, 9999.0, 10001.0, 1e7, 1e9})
            for (int repeat = 0; repeat < 20 && !testing::Test::HasFailure(); repeat++) {
                std::vector<std::pair<gmVector<2>, gmVector<2>>> corners;
                const gmRadian angle(repeat % 2 == 0 ? 0.0 : random.real(0, turn));
                const gmMatrix<2> rotation(angle, angle, 1.0, 1.0);
                for (int i = 0; i < 8; i++) {
                    // hypot(excess, height) - height = 1e-10 here, times a share.
                    const double excess =
                        std::sqrt((1e-10 + 2.0 * height) * 1e-10) *
                        random.oneOf<double>({-9, -1, 0.0, 0.5, 1 - 1e-9, 1, 1 + 1e-9, 1.2, 1.5, 2, 3, 9});
                    const double x = random.chance(0.5) ? -excess : base + excess;
                    const double side = random.chance(0.5) ? 1.0 : -1.0;
                    corners.push_back({rotation * gmVector<2>(base, 0.0), rotation * gmVector<2>(x, side * height)});
                    if (random.chance(0.5))
                        std::swap(corners.back().first, corners.back().second);
                }
                const gmVector<2> center = repeat % 3 == 0 ? gmVector<2>() : random.point(-100, 100);
                expectPlainFan(center, trianglesAround(center, corners));
            }
}

TEST(TriangleFan, OfPixelCornersIsThePlainOne) {
    // Right angles at either end of the base, and corners in line with it.
    Points points;
    for (int a = -2; a <= 2; a++)
        for (int b = -2; b <= 2; b++)
            for (int c = -2; c <= 2; c++)
                for (int d = -2; d <= 2; d++) {
                    points.emplace_back(a, b);
                    points.emplace_back(c, d);
                }
    expectPlainFan({0.0, 0.0}, points);
    expectPlainFan({0.5, 0.5}, points);
    for (gmVector<2>& v : points)
        v = v * 0.1;
    expectPlainFan({0.0, 0.0}, points);
    expectPlainFan({0.1, 0.2}, points);
}

TEST(OutlineSumsOfOneVertex, CountTheEdgeToItself) {
    for (const double odd : {std::nan(""), infinity, 1e300}) {
        expectPlainSums({{odd, 1.0}});
        EXPECT_EQ(std::isnan(gmContour({{1.0, odd}}, true).length()), !std::isfinite(odd));
        EXPECT_EQ(gmContour({{1.0, odd}}, false).length(), 0.0);
    }
}

TEST(AreaSum, CountsEdgesInTheirOrder) {
    // Numbers that a sum in any other order would round away, or overflow in.
    for (int n = 3; n <= 20; n++) {
        Points points;
        for (int i = 0; i < n; i++)
            points.emplace_back(i % 3 == 0 ? 1e150 : i, i % 3 == 1 ? -1e158 : 1e-3 * i);
        EXPECT_TRUE(same(gf_Area(points), reference::area(points))) << n;
    }
}

}  // namespace
