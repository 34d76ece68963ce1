#include "foundation/fit/convexhull.h"

#include <algorithm>

#include "tests/foundation/support.h"

namespace {

using support::infinity;
using support::nan;
using Vector = gmVector<2>;
using Points = std::vector<Vector>;

Points hullOf(const Points& points) {
    Points out = {{7.0, 7.0}};
    gfConvexHull(points, out);
    return out;
}

/// The hull of points on a grid by trying every pair: p -> q is a side when nothing lies right of it and, of what
/// lies on its line, nothing beyond q or before p.
Points bruteHull(const Points& points) {
    const auto isSide = [&points](const Vector& p, const Vector& q) {
        for (const Vector& r : points) {
            const double turn = (q - p).cross(r - p);
            if (turn < 0.0)
                return false;
            if (turn == 0.0 && ((q - p).dot(r - p) < 0.0 || (p - q).dot(r - q) < 0.0))
                return false;
        }
        return true;
    };
    const auto before = [](const Vector& a, const Vector& b) {
        return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
    };
    Points hull = {*std::min_element(points.begin(), points.end(), before)};
    for (;;) {
        const auto next = std::find_if(points.begin(), points.end(),
                                       [&](const Vector& q) { return q != hull.back() && isSide(hull.back(), q); });
        if (next == points.end() || *next == hull.front())
            return hull;
        hull.push_back(*next);
    }
}

TEST(ConvexHull, OfNothingIsNothing) {
    EXPECT_TRUE(hullOf({}).empty());
}

TEST(ConvexHull, OfOnePlaceIsThatVertex) {
    EXPECT_EQ(hullOf({{1.0, 2.0}}), (Points{{1.0, 2.0}}));
    EXPECT_EQ(hullOf({{1.0, 2.0}, {1.0, 2.0}, {1.0, 2.0}}), (Points{{1.0, 2.0}}));
}

TEST(ConvexHull, OfTwoPlacesIsBoth) {
    EXPECT_EQ(hullOf({{3.0, 1.0}, {1.0, 2.0}}), (Points{{1.0, 2.0}, {3.0, 1.0}}));
    EXPECT_EQ(hullOf({{3.0, 1.0}, {1.0, 2.0}, {3.0, 1.0}}), (Points{{1.0, 2.0}, {3.0, 1.0}}));
}

TEST(ConvexHull, OfATriangleRunsCounterClockwise) {
    const Points expected = {{0.0, 0.0}, {4.0, 0.0}, {0.0, 3.0}};
    EXPECT_EQ(hullOf({{0.0, 0.0}, {4.0, 0.0}, {0.0, 3.0}}), expected);
    EXPECT_EQ(hullOf({{0.0, 3.0}, {4.0, 0.0}, {0.0, 0.0}}), expected);
}

TEST(ConvexHull, StartsAtTheLowestXThenTheLowestY) {
    EXPECT_EQ(hullOf({{1.0, 1.0}, {0.0, 1.0}, {1.0, 0.0}, {0.0, 0.0}}),
              (Points{{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}}));
}

TEST(ConvexHull, OfPointsOnALineIsItsTwoEnds) {
    Points onALine;
    for (int i = 0; i < 20; ++i)
        onALine.emplace_back((i * 7) % 20, 2.0 * ((i * 7) % 20));
    EXPECT_EQ(hullOf(onALine), (Points{{0.0, 0.0}, {19.0, 38.0}}));
    EXPECT_EQ(hullOf({{2.0, 5.0}, {2.0, -1.0}, {2.0, 3.0}}), (Points{{2.0, -1.0}, {2.0, 5.0}}));
}

TEST(ConvexHull, KeepsNoVertexInTheMiddleOfASide) {
    EXPECT_EQ(hullOf({{0.0, 0.0}, {1.0, 0.0}, {2.0, 0.0}, {2.0, 1.0}, {2.0, 2.0}, {1.0, 1.0}, {1.0, 2.0}, {0.0, 2.0}}),
              (Points{{0.0, 0.0}, {2.0, 0.0}, {2.0, 2.0}, {0.0, 2.0}}));
}

TEST(ConvexHull, AgreesWithTryingEveryPairOnGrids) {
    support::Random random(71);
    for (int i = 0; i < 20000; ++i) {
        Points points;
        const int size = random.integer(1, 4);
        for (int n = random.integer(1, 14); n > 0; --n)
            points.push_back(random.gridVector(size));
        ASSERT_EQ(hullOf(points), bruteHull(points)) << testing::PrintToString(points);
    }
}

TEST(ConvexHull, IsStrictlyConvexAndHoldsEveryPoint) {
    // Points near a line far away, where rounded cross products turn the wrong way.
    support::Random random(72);
    for (int i = 0; i < 300; ++i) {
        Points points;
        const Vector direction = random.vector(1.0);
        for (int n = 0; n < 60; ++n)
            points.push_back(Vector(1e3, 1e3) + direction * random.uniform(-1.0, 1.0));
        const Points hull = hullOf(points);
        ASSERT_GE(hull.size(), 2U);
        for (std::size_t k = 0; k < hull.size() && hull.size() > 2; ++k) {
            // Differences of such neighbours and their products fit a long double exactly.
            const auto turn = [](const Vector& a, const Vector& b, const Vector& c) {
                const long double left = static_cast<long double>(b.x() - a.x()) * (c.y() - a.y());
                const long double right = static_cast<long double>(b.y() - a.y()) * (c.x() - a.x());
                return left - right;
            };
            const Vector& a = hull[k];
            const Vector& b = hull[(k + 1) % hull.size()];
            ASSERT_GE(turn(a, b, hull[(k + 2) % hull.size()]), 0.0L);
            for (const Vector& point : points)
                ASSERT_GE(turn(a, b, point), -1e-35L);
        }
    }
}

TEST(ConvexHull, LeavesOutWhatIsNotFinite) {
    EXPECT_EQ(hullOf({{nan, 0.0}, {0.0, 0.0}, {infinity, 1.0}, {4.0, 0.0}, {1.0, -infinity}, {0.0, 3.0}, {0.0, nan}}),
              (Points{{0.0, 0.0}, {4.0, 0.0}, {0.0, 3.0}}));
    EXPECT_TRUE(hullOf({{nan, nan}, {infinity, 0.0}}).empty());
}

TEST(ConvexHull, TreatsZerosOfEitherSignAsOnePlace) {
    EXPECT_EQ(hullOf({{0.0, -0.0}, {-0.0, 0.0}, {1.0, 0.0}, {1.0, -0.0}}).size(), 2U);
}

TEST(ConvexHull, FillsTheVectorItReadsFrom) {
    Points points = {{1.0, 1.0}, {0.0, 1.0}, {0.5, 0.5}, {1.0, 0.0}, {0.0, 0.0}};
    gfConvexHull(points, points);
    EXPECT_EQ(points, (Points{{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}}));
}

TEST(ConvexHull, OfItsOwnVerticesIsItself) {
    support::Random random(73);
    Points points;
    for (int i = 0; i < 1000; ++i)
        points.push_back(random.vector(5.0));
    const Points hull = hullOf(points);
    EXPECT_EQ(hullOf(hull), hull);
}

}  // namespace
