#include "foundation/math/orientation.h"

#include "tests/foundation/support.h"

namespace {

using Vector = gmVector<2>;
__extension__ using Wide = __int128;

/// Coordinates as whole numbers of `unit` ones.
int exactOrientation(const Vector& a, const Vector& b, const Vector& c, double unit) {
    const auto whole = [unit](double value) { return static_cast<Wide>(static_cast<long>(value / unit)); };
    const Wide left = (whole(b.x()) - whole(a.x())) * (whole(c.y()) - whole(a.y()));
    const Wide right = (whole(b.y()) - whole(a.y())) * (whole(c.x()) - whole(a.x()));
    return (left > right) - (left < right);
}

void expectConsistent(const Vector& a, const Vector& b, const Vector& c, int expected) {
    ASSERT_EQ(gfOrientation(a, b, c), expected) << a.x() << ' ' << a.y() << ' ' << b.x() << ' ' << b.y();
    ASSERT_EQ(gfOrientation(b, c, a), expected);
    ASSERT_EQ(gfOrientation(c, a, b), expected);
    ASSERT_EQ(gfOrientation(b, a, c), -expected);
    ASSERT_EQ(gfOrientation(a, c, b), -expected);
    ASSERT_EQ(gfOrientation(c, b, a), -expected);
}

TEST(Orientation, LeftIsPositive) {
    EXPECT_EQ(gfOrientation({0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}), 1);
    EXPECT_EQ(gfOrientation({0.0, 0.0}, {1.0, 0.0}, {0.0, -1.0}), -1);
    EXPECT_EQ(gfOrientation({0.0, 0.0}, {1.0, 1.0}, {5.0, 5.0}), 0);
}

TEST(Orientation, OfEqualPointsIsZero) {
    const Vector a(0.1, 0.2);
    const Vector b(0.3, 0.7);
    EXPECT_EQ(gfOrientation(a, a, b), 0);
    EXPECT_EQ(gfOrientation(a, b, a), 0);
    EXPECT_EQ(gfOrientation(b, a, a), 0);
    EXPECT_EQ(gfOrientation(a, a, a), 0);
}

TEST(Orientation, AgreesWithWholeNumbersOnASmallGrid) {
    support::Random random(1);
    for (int i = 0; i < 50000; ++i) {
        const Vector a = random.gridVector(3);
        const Vector b = random.gridVector(3);
        const Vector c = random.gridVector(3);
        ASSERT_NO_FATAL_FAILURE(expectConsistent(a, b, c, exactOrientation(a, b, c, 1.0)));
    }
}

TEST(Orientation, AgreesWithWholeNumbersNearOneLine) {
    // Points whose determinant is far below the rounding of its terms: a step or none from a long line.
    support::Random random(2);
    constexpr int size = 1 << 30;
    const double units[] = {1.0, std::ldexp(1.0, 20), std::ldexp(1.0, -60)};
    for (const double unit : units) {
        for (int i = 0; i < 30000; ++i) {
            const Vector a = random.gridVector(size) * 1048576.0;
            const Vector step = random.gridVector(1000);
            const Vector b = a + step * static_cast<double>(random.integer(1, 1000000));
            const Vector c = a + step * static_cast<double>(random.integer(-1000000, 1000000)) + random.gridVector(1);
            ASSERT_NO_FATAL_FAILURE(
                expectConsistent(a * unit, b * unit, c * unit, exactOrientation(a * unit, b * unit, c * unit, unit)));
        }
    }
}

TEST(Orientation, SeesOneUnitInTheLastPlace) {
    const Vector a(12.0, 12.0);
    const Vector b(24.0, 24.0);
    // Here the differences are rounded, and the sign of the rounded determinant is often the wrong one.
    for (int i = 0; i < 64; ++i)
        for (int j = 0; j < 64; ++j) {
            const double ulp = std::ldexp(1.0, -53);
            const Vector c(0.5 + i * ulp, 0.5 + j * ulp);
            ASSERT_NO_FATAL_FAILURE(expectConsistent(a, b, c, (j > i) - (j < i)));
        }
}

TEST(Orientation, IsExactAcrossItsWholeRange) {
    for (const double size : {1e-140, 1e-100, 1e100, 1e140}) {
        const double next = std::nextafter(size, 1.0 / 0.0);
        const Vector origin(0.0, 0.0);
        ASSERT_NO_FATAL_FAILURE(expectConsistent(origin, {size, size}, {next, next}, 0));
        ASSERT_NO_FATAL_FAILURE(expectConsistent(origin, {size, size}, {size, next}, 1));
        ASSERT_NO_FATAL_FAILURE(expectConsistent({size, size}, {next, next}, {-size, -size}, 0));
        ASSERT_NO_FATAL_FAILURE(expectConsistent({size, size}, {next, size}, {-size, -size}, -1));
    }
    ASSERT_NO_FATAL_FAILURE(expectConsistent({1e-140, 1e140}, {-1e140, 1e-140}, {1e-140, -1e140}, 1));
}

TEST(Orientation, BeyondItsRangeOrWithoutNumbersIsSomeSign) {
    const double special[] = {0.0, 5e-324, 1e-200, 1e200, 1.7e308, -1.7e308, support::infinity, support::nan};
    for (const double x : special)
        for (const double y : special) {
            const int turn = gfOrientation({x, y}, {y, 1.0}, {1.0, x});
            EXPECT_TRUE(turn >= -1 && turn <= 1);
            if (std::isnan(x) || std::isnan(y)) {
                EXPECT_EQ(turn, 0);
            }
        }
}

}  // namespace
