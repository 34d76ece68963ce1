// Orientations beside whole numbers wide enough for the determinant, where a shortcut might be taken: on grids, at
// equal points, near lines far from the origin.
#include <functional>

#include "foundation/math/orientation.h"
#include "tests/foundation/support.h"

namespace {

using support::Random;
using Vector = gmVector<2>;
__extension__ using Wide = __int128;

/// Of coordinates that are whole numbers of `unit`, fewer than 2^61 of them.
int wideOrientation(const Vector& a, const Vector& b, const Vector& c, double unit) {
    const auto whole = [unit](double value) {
        const double units = value / unit;
        EXPECT_LT(std::fabs(units), std::ldexp(1.0, 61));
        EXPECT_EQ(static_cast<double>(static_cast<long>(units)), units);
        return static_cast<Wide>(static_cast<long>(units));
    };
    const Wide left = (whole(b.x()) - whole(a.x())) * (whole(c.y()) - whole(a.y()));
    const Wide right = (whole(b.y()) - whole(a.y())) * (whole(c.x()) - whole(a.x()));
    return (left > right) - (left < right);
}

struct Corners {
    Vector a;
    Vector b;
    Vector c;
};

/// In every order, for so many draws.
void expectExact(int count, double unit, const std::function<Corners()>& draw) {
    int zeros = 0;
    for (int i = 0; i < count; ++i) {
        const auto [a, b, c] = draw();
        const int expected = wideOrientation(a, b, c, unit);
        zeros += expected == 0;
        ASSERT_EQ(gfOrientation(a, b, c), expected) << testing::PrintToString(std::vector<Vector>{a, b, c});
        ASSERT_EQ(gfOrientation(b, c, a), expected);
        ASSERT_EQ(gfOrientation(c, a, b), expected);
        ASSERT_EQ(gfOrientation(b, a, c), -expected) << testing::PrintToString(std::vector<Vector>{b, a, c});
        ASSERT_EQ(gfOrientation(a, c, b), -expected);
        ASSERT_EQ(gfOrientation(c, b, a), -expected);
    }
    EXPECT_LT(zeros, count) << "nothing but lines";
}

/// Near the line from a to b: on it, to rounding, or so many steps of a double from there.
Vector nearLine(Random& random, const Vector& a, const Vector& b, int steps) {
    const Vector place = a + (b - a) * random.uniform(-2.0, 2.0);
    const auto moved = [&](double value) {
        for (int n = random.integer(-steps, steps); n != 0; n += n < 0 ? 1 : -1)
            value = std::nextafter(value, n < 0 ? -support::infinity : support::infinity);
        return value;
    };
    const double x = moved(place.x());
    return {x, moved(place.y())};
}

TEST(OrientationOnGrids, IsExact) {
    // Up to and beyond differences whose products need no rounding.
    Random random(1);
    for (const int size : {2, 255, 4095, (1 << 23) - 1, 1 << 24, (1 << 25) + 1, 1 << 28, 1 << 30})
        for (const double offset : {0.0, std::ldexp(1.0, 40), -std::ldexp(1.0, 51)})
            expectExact(2000, 1.0, [&] {
                const Vector from(offset, -offset);
                return Corners{from + random.gridVector(size), from + random.gridVector(size),
                               from + random.gridVector(size)};
            });
}

TEST(OrientationOnGrids, IsExactNearLines) {
    // One determinant in two is 0 or nearly so.
    Random random(2);
    for (const int size : {3, 4095, (1 << 24) - 1, 1 << 24, (1 << 24) + 1, 1 << 26})
        for (const double unit : {1.0, 1.0 / 256.0, std::ldexp(1.0, 300), std::ldexp(1.0, -300)})
            expectExact(3000, unit, [&] {
                const int times = random.integer(1, 3);
                const Vector a = random.gridVector(100);
                const Vector step = random.gridVector(size / 3);
                const Vector c = a + step * times + random.gridVector(random.integer(0, 1));
                return Corners{a * unit, (a + step) * unit, c * unit};
            });
}

TEST(OrientationOfEqualPoints, IsZero) {
    Random random(3);
    for (int i = 0; i < 3000; ++i) {
        const Vector a = Vector(1e3, 1e-3) + random.vector(1.0);
        const Vector b = i % 2 == 0 ? random.vector(1e9) : nearLine(random, a, a, 2);
        for (const double unit : {1.0, 1e-138, 1e138, 1e300}) {
            const Vector p = a * unit;
            const Vector q = b * (unit > 1.0 ? 1e-9 : 1.0) * unit;
            ASSERT_EQ(gfOrientation(p, p, q), 0);
            ASSERT_EQ(gfOrientation(p, q, p), 0);
            ASSERT_EQ(gfOrientation(q, p, p), 0);
            ASSERT_EQ(gfOrientation(p, p, p), 0);
        }
    }
    EXPECT_EQ(gfOrientation({0.0, -0.0}, {-0.0, 0.0}, {3.0, 4.0}), 0);
}

TEST(OrientationNearLines, IsExactWhereverTheyLie) {
    Random random(4);
    constexpr double smallest = 1.0 / 64.0;  // of the coordinates, so that they have the unit below
    const double unit = std::ldexp(smallest, -53);
    for (const double size : {0.5, 1.0, 1.9})
        for (const Vector& from : {Vector(0.0, 0.0), Vector(1.0, 1.0), Vector(2.0, -1.0)})
            expectExact(5000, unit, [&] {
                const auto drawn = [&] {
                    for (;;) {
                        const Vector place = from + random.vector(size);
                        if (std::fabs(place.x()) >= smallest && std::fabs(place.y()) >= smallest)
                            return place;
                    }
                };
                for (;;) {
                    const Vector a = drawn();
                    const Vector b = random.integer(0, 1) == 0 ? drawn() : nearLine(random, a, a, 9);
                    const Vector c = nearLine(random, a, b, random.integer(0, 2));
                    if (std::fabs(c.x()) >= smallest && std::fabs(c.y()) >= smallest && std::fabs(c.x()) < 3.9 &&
                        std::fabs(c.y()) < 3.9)
                        return Corners{a, b, c};
                }
            });
}

TEST(OrientationNearLines, IsExactFarFromTheOrigin) {
    // Coordinates that are next to each other: a triangle of a few steps, or a needle.
    Random random(5);
    for (const int exponent : {0, 30, 100, -100})
        expectExact(20000, std::ldexp(1.0, exponent), [&] {
            const double far = std::ldexp(1.0, 52);
            const Vector a = Vector(far, -far) + random.gridVector(3);
            const Vector b = a + random.gridVector(random.integer(0, 1) == 0 ? 5 : 1 << 30);
            const Vector c = a + (b - a) * random.integer(-1, 2) + random.gridVector(1);
            const double unit = std::ldexp(1.0, exponent);
            return Corners{a * unit, b * unit, c * unit};
        });
}

TEST(OrientationNearTheOrigin, SeesWhatRoundingTakesFromADifference) {
    // Some coordinates vanish beside the others: the differences are rounded, to short numbers.
    Random random(6);
    const double unit = std::ldexp(1.0, -55);
    const auto coordinate = [&] {
        const int number = random.integer(-2, 2);
        return random.integer(0, 1) == 0 ? number : number * unit;
    };
    const auto place = [&] {
        const double x = coordinate();
        return Vector(x, coordinate());
    };
    expectExact(100000, unit, [&] {
        const Vector a = place();
        const Vector b = place();
        return Corners{a, b, place()};
    });
}

TEST(OrientationOfDrawnNumbers, IsExactForAllSizesAtOnce) {
    Random random(7);
    const auto coordinate = [&] {
        return std::ldexp(std::floor(std::ldexp(random.uniform(-1.0, 1.0), random.integer(1, 53))),
                          random.integer(0, 7));
    };
    const auto place = [&] {
        const double x = coordinate();
        return Vector(x, coordinate());
    };
    expectExact(100000, 1.0, [&] {
        const Vector a = place();
        const Vector b = place();
        Vector c = place();
        if (random.integer(0, 1) == 0) {
            const Vector middle = (a + b) * 0.5;
            c = Vector(std::floor(middle.x()), std::floor(middle.y()));
        }
        return Corners{a, b, c};
    });
}

}  // namespace
