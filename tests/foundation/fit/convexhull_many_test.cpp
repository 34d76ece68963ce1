// Hulls of many points, most of which are left out early, beside the plain chains over all of them.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iterator>
#include <string>
#include <utility>

#include "foundation/fit/convexhull.h"
#include "tests/foundation/support.h"
#include "tests/support/plainhull.h"

namespace {

using support::infinity;
using support::nan;
using support::Random;
using Vector = gmVector<2>;
using Points = std::vector<Vector>;

constexpr double turn = 2.0 * support::pi;

/// Around where points are filtered at all, around whole blocks, and enough for a sample that is filtered itself.
const std::vector<int> sizes = {64, 65, 66, 95, 96, 127, 128, 129, 191, 193, 500, 1023, 1025, 2048, 4097};
constexpr int large = 20000;

using Bits = std::pair<std::uint64_t, std::uint64_t>;

Bits bitsOf(const Vector& v) {
    const double xy[] = {v.x(), v.y()};
    std::uint64_t bits[2];
    std::memcpy(bits, xy, sizeof bits);
    return {bits[0], bits[1]};
}

/// The hull is the plain one, whichever vector it goes to, and made of points that were given.
void expectPlainHull(const Points& points) {
    const Points expected = support::plainHull(points);
    Points hull = {{7.0, 7.0}};
    gfConvexHull(points, hull);
    // Not printed: there are too many.
    ASSERT_EQ(hull.size(), expected.size()) << "of " << points.size() << " points";
    for (std::size_t i = 0; i < hull.size(); ++i)
        ASSERT_EQ(hull[i], expected[i]) << "vertex " << i << " of the hull of " << points.size() << " points";
    std::vector<Bits> given;
    std::transform(points.begin(), points.end(), std::back_inserter(given), bitsOf);
    std::sort(given.begin(), given.end());
    for (const Vector& vertex : hull)
        ASSERT_TRUE(std::binary_search(given.begin(), given.end(), bitsOf(vertex))) << testing::PrintToString(vertex);
    Points inPlace = points;
    gfConvexHull(inPlace, inPlace);
    ASSERT_EQ(inPlace, hull);
}

Points shuffled(Points points, Random& random) {
    for (std::size_t i = points.size(); i > 1; --i)
        std::swap(points[i - 1], points[static_cast<std::size_t>(random.integer(0, static_cast<int>(i) - 1))]);
    return points;
}

/// In the order in which they come, in the opposite one, from another one on, mirrored, turned, and in no order.
void expectPlainHullInAnyOrder(const Points& points, Random& random) {
    ASSERT_NO_FATAL_FAILURE(expectPlainHull(points));
    Points others(points.rbegin(), points.rend());
    ASSERT_NO_FATAL_FAILURE(expectPlainHull(others));
    const int last = static_cast<int>(points.size()) - 1;
    std::rotate(others.begin(), others.begin() + random.integer(0, last), others.end());
    ASSERT_NO_FATAL_FAILURE(expectPlainHull(others));
    for (Vector& point : others)
        point = Vector(-point.y(), point.x());
    ASSERT_NO_FATAL_FAILURE(expectPlainHull(others));
    for (Vector& point : others)
        point = -point;
    ASSERT_NO_FATAL_FAILURE(expectPlainHull(others));
    ASSERT_NO_FATAL_FAILURE(expectPlainHull(shuffled(points, random)));
}

using Draw = std::function<Vector(int i, int n)>;

Points drawn(int n, const Draw& draw) {
    Points points;
    for (int i = 0; i < n; ++i)
        points.push_back(draw(i, n));
    return points;
}

/// `n` points drawn one by one, for every size.
void expectPlainHulls(Random& random, const Draw& draw) {
    for (const int n : sizes) {
        SCOPED_TRACE(n);
        for (int repeat = n < 200 ? 6 : 1; repeat > 0; --repeat)
            ASSERT_NO_FATAL_FAILURE(expectPlainHullInAnyOrder(drawn(n, draw), random));
    }
    ASSERT_NO_FATAL_FAILURE(expectPlainHull(drawn(large, draw)));
}

double angleOf(int i, int n) {
    return turn * i / n;
}

TEST(ConvexHullOfMany, OfACircleHasEveryPoint) {
    Random random(1);
    expectPlainHulls(random, [](int i, int n) { return Vector(1000.0, gmRadian(angleOf(i, n))); });
}

TEST(ConvexHullOfMany, OfAJitteredCircle) {
    for (const double jitter : {1e-9, 1e-3, 1.0, 200.0}) {
        Random random(2);
        expectPlainHulls(random, [&](int i, int n) {
            return Vector(300.0, 200.0) + Vector(1000.0 - random.uniform(0.0, jitter), gmRadian(angleOf(i, n)));
        });
    }
}

TEST(ConvexHullOfMany, OfWavyAndCreasedOutlines) {
    Random random(3);
    expectPlainHulls(random, [](int i, int n) {
        const double angle = angleOf(i, n);
        return Vector(5.0 + std::sin(7.0 * angle), gmRadian(angle));
    });
    expectPlainHulls(random, [](int i, int n) { return Vector(i % 2 == 0 ? 5.0 : 4.5, gmRadian(angleOf(i, n))); });
    expectPlainHulls(random, [](int i, int n) { return Vector(1.0 + 0.01 * i, gmRadian(20.0 * angleOf(i, n))); });
}

TEST(ConvexHullOfMany, OfPointsAnywhere) {
    Random random(4);
    expectPlainHulls(random, [&](int, int) { return random.vector(500.0); });
    expectPlainHulls(random,
                     [&](int, int) { return Vector(random.uniform(0.0, 1.0), gmRadian(random.uniform(0.0, turn))); });
    // Far from the origin, where what is certainly inside has to allow for rounding.
    expectPlainHulls(random, [&](int, int) { return Vector(1e15, -1e15) + random.vector(20.0); });
    expectPlainHulls(random, [&](int, int) { return Vector(1e9, 0.0) + random.vector(1e-6); });
}

TEST(ConvexHullOfMany, OfAHeapAndAFewFarOutside) {
    // Nearly all lie in one slab, and in one bucket.
    Random random(5);
    for (const int every : {17, 50, 400})
        expectPlainHulls(
            random, [&](int, int) { return random.integer(1, every) == 1 ? random.vector(1e6) : random.vector(1e-3); });
}

TEST(ConvexHullOfMany, OfPixels) {
    Random random(6);
    for (const int size : {1, 3, 20, 500})
        expectPlainHulls(random, [&](int, int) { return random.gridVector(size); });
    expectPlainHulls(random, [](int i, int n) {
        const Vector place = Vector(n / 6.0, gmRadian(angleOf(i, n)));
        return Vector(std::floor(place.x()), std::floor(place.y()));
    });
}

TEST(ConvexHullOfMany, OfPointsOnTheSidesOfAPolygon) {
    // What lies on a side of the hull of a sample is not inside it, whatever the rounding makes of the side.
    Random random(7);
    for (const int corners : {3, 4, 7}) {
        Points polygon;
        for (int i = 0; i < corners; ++i)
            polygon.push_back(random.vector(100.0));
        expectPlainHulls(random, [&](int i, int) {
            const auto at = static_cast<std::size_t>(i % corners);
            const Vector& from = polygon[at];
            const Vector& to = polygon[(at + 1) % polygon.size()];
            return from + (to - from) * random.uniform(0.0, 1.0);
        });
    }
}

TEST(ConvexHullOfMany, OfASteepOrFlatNeedle) {
    Random random(8);
    for (const double width : {1e-12, 1e-6, 1.0})
        expectPlainHulls(random,
                         [&](int, int) { return Vector(3.0 + random.uniform(0.0, width), random.uniform(-1e4, 1e4)); });
}

TEST(ConvexHullOfMany, OfPointsOnALine) {
    Random random(9);
    for (const Vector& direction : {Vector(1.0, 0.0), Vector(0.0, 1.0), Vector(1.0, 2.0), Vector(-3.0, 1.0)}) {
        for (const int n : sizes) {
            const Points points =
                drawn(n, [&](int, int) { return Vector(5.0, 7.0) + direction * random.integer(-1000, 1000); });
            ASSERT_NO_FATAL_FAILURE(expectPlainHullInAnyOrder(points, random));
            ASSERT_EQ(support::plainHull(points).size(), 2U);
        }
        // To rounding only: which of them are corners takes exact orientations.
        expectPlainHulls(random, [&](int, int) { return Vector(0.1, 0.3) + direction * random.uniform(-1.0, 1.0); });
    }
}

TEST(ConvexHullOfMany, OfOnePlaceIsThatPlace) {
    for (const int n : sizes) {
        const Points points(static_cast<std::size_t>(n), Vector(0.1, -0.2));
        Points hull;
        gfConvexHull(points, hull);
        ASSERT_EQ(hull, (Points{{0.1, -0.2}}));
        Points withAnother = points;
        withAnother[static_cast<std::size_t>(n) / 2 + 1] = Vector(0.1, -0.3);
        ASSERT_NO_FATAL_FAILURE(expectPlainHull(withAnother));
        withAnother.back() = Vector(0.2, 5.0);
        ASSERT_NO_FATAL_FAILURE(expectPlainHull(withAnother));
    }
}

TEST(ConvexHullOfMany, OfFewDistinctX) {
    Random random(10);
    for (const int columns : {1, 2, 3, 9})
        expectPlainHulls(random,
                         [&](int, int) { return Vector(random.integer(0, columns) * 0.1, random.uniform(-1.0, 1.0)); });
}

TEST(ConvexHullOfMany, WhoseSampleIsAPlaceOrALine) {
    // Those that are looked at first say nothing of the others.
    Random random(11);
    for (const int period : {2, 4, 16}) {
        expectPlainHulls(random, [&](int i, int) { return i % period == 0 ? Vector(1.0, 1.0) : random.vector(9.0); });
        expectPlainHulls(random, [&](int i, int) { return i % period == 0 ? Vector(i, i) : random.vector(9000.0); });
    }
}

TEST(ConvexHullOfMany, OfSmallAndOfLargeNumbers) {
    // Up to where orientations are exact, and beyond.
    Random random(12);
    for (const double unit : {1e-300, 1e-165, 1e-160, 1e-155, 1e-145, 1e-141, 1e-139, 1e-100, 1e100, 1e137, 1e138,
                              1e141, 1e150, 1e155, 1e200, 1e300})
        expectPlainHulls(random, [&](int, int) { return random.gridVector(100) * unit; });
    for (const double unit : {1e-138, 1e138})
        expectPlainHulls(random, [&](int i, int n) { return Vector(unit, gmRadian(angleOf(i, n))); });
}

TEST(ConvexHullOfMany, OfSmallAndLargeNumbersAtOnce) {
    Random random(13);
    const double scales[] = {1e-139, 1e-70, 1.0, 1e70, 1e139};
    const auto coordinate = [&] { return scales[random.integer(0, 4)] * random.integer(-3, 3); };
    expectPlainHulls(random, [&](int, int) {
        const double x = coordinate();
        return Vector(x, coordinate());
    });
}

TEST(ConvexHullOfMany, WithOneNumberThatOrientationsAreNotExactFor) {
    Random random(14);
    for (const double odd : {1e-141, 5e-324, 1e140, 1e155, 1e300, -1e-141, -1e140, -1e308})
        for (const int n : sizes)
            for (const int at : {0, 1, n / 2, n - 2, n - 1}) {
                Points points = drawn(n, [&](int, int) { return random.vector(1.0); });
                points[static_cast<std::size_t>(at)] = Vector(odd, 0.5);
                ASSERT_NO_FATAL_FAILURE(expectPlainHull(points)) << odd;
                points[static_cast<std::size_t>(at)] = Vector(0.5, odd);
                ASSERT_NO_FATAL_FAILURE(expectPlainHull(points)) << odd;
            }
}

TEST(ConvexHullOfMany, WhoseLastPointsOrientationsAreNotExactFor) {
    // No more than are left over behind the last eight.
    Random random(17);
    for (const double unit : {1e-163, 1e-160, 1e-155, 1e155, 1e200})
        for (const int n : {71, 127, 1023, 1025})
            for (int repeat = 0; repeat < 20; ++repeat) {
                const double size = unit < 1.0 ? 1e-139 : 1.0;
                ASSERT_NO_FATAL_FAILURE(expectPlainHull(drawn(n, [&](int i, int) {
                    return i < n / 8 * 8 ? random.gridVector(3) * size : random.gridVector(9) * unit;
                }))) << unit;
            }
}

TEST(ConvexHullOfMany, OfNumbersWhoseProductsVanish) {
    Random random(18);
    for (const double unit : {1e-163, 1e-162, 1e-161, 1e-160, 1e-158})
        for (const int n : {72, 128, 1024})
            for (int repeat = 0; repeat < 30; ++repeat) {
                const int size = random.integer(3, 90);
                ASSERT_NO_FATAL_FAILURE(expectPlainHull(drawn(n, [&](int, int) {
                    return random.gridVector(size) * unit;
                }))) << unit;
            }
}

TEST(ConvexHullOfMany, LeavesOutWhatIsNotFinite) {
    Random random(15);
    const double odd[] = {nan, infinity, -infinity};
    for (const int n : sizes)
        for (const int at : {0, 7, 8, 13, n / 2, n - 9, n - 1})
            for (const double value : odd) {
                Points points = drawn(n, [&](int, int) { return random.gridVector(50); });
                points[static_cast<std::size_t>(at)] = Vector(value, 60.0);
                ASSERT_NO_FATAL_FAILURE(expectPlainHull(points));
                points[static_cast<std::size_t>(at)] = Vector(60.0, value);
                ASSERT_NO_FATAL_FAILURE(expectPlainHull(points));
            }
    expectPlainHulls(random, [&](int, int) {
        return random.integer(0, 9) == 0 ? Vector(odd[random.integer(0, 2)], 99.0) : random.vector(50.0);
    });
}

TEST(ConvexHullOfMany, TreatsZerosOfEitherSignAsOne) {
    Random random(16);
    const auto coordinate = [&] { return random.integer(0, 2) == 0 ? -0.0 : random.integer(-2, 2); };
    expectPlainHulls(random, [&](int, int) {
        const double x = coordinate();
        return Vector(x, coordinate());
    });
    expectPlainHulls(random, [&](int, int) { return Vector(random.integer(0, 1) == 0 ? 0.0 : -0.0, -0.0); });
}

}  // namespace
