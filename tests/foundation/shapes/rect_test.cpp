#include "foundation/shapes/rect.h"

#include "tests/foundation/support.h"

namespace {

using support::infinity;
using support::nan;
using Vector = gmVector<2>;

const gmRect unit({0.0, 0.0}, {1.0, 1.0});

TEST(Rect, IsEmptyByDefault) {
    const gmRect rect;
    EXPECT_TRUE(rect.isEmpty());
    EXPECT_EQ(rect.origin(), Vector());
    EXPECT_EQ(rect.size(), Vector());
}

TEST(Rect, HoldsOriginAndSize) {
    const gmRect rect({1.0, -2.0}, {3.0, 4.0});
    EXPECT_FALSE(rect.isEmpty());
    EXPECT_EQ(rect.origin(), Vector(1.0, -2.0));
    EXPECT_EQ(rect.size(), Vector(3.0, 4.0));
    EXPECT_EQ(rect.lower(), Vector(1.0, -2.0));
    EXPECT_EQ(rect.upper(), Vector(4.0, 2.0));
}

TEST(Rect, OfNegativeSizeIsEmpty) {
    EXPECT_TRUE(gmRect({0.0, 0.0}, {-1.0, 1.0}).isEmpty());
    EXPECT_TRUE(gmRect({0.0, 0.0}, {1.0, -1.0}).isEmpty());
    EXPECT_TRUE(gmRect({0.0, 0.0}, {1.0, -1.0}) == gmRect());
}

TEST(Rect, WithoutNumbersIsEmpty) {
    EXPECT_TRUE(gmRect({nan, 0.0}, {1.0, 1.0}).isEmpty());
    EXPECT_TRUE(gmRect({0.0, nan}, {1.0, 1.0}).isEmpty());
    EXPECT_TRUE(gmRect({0.0, 0.0}, {nan, 1.0}).isEmpty());
    EXPECT_TRUE(gmRect({0.0, 0.0}, {1.0, nan}).isEmpty());
    EXPECT_TRUE(gmRect({-infinity, 0.0}, {infinity, 1.0}).isEmpty());
}

TEST(Rect, OfNoSizeIsAPointAndNotEmpty) {
    const gmRect point({2.0, 3.0}, {0.0, 0.0});
    EXPECT_FALSE(point.isEmpty());
    EXPECT_TRUE(point.within({2.0, 3.0}));
    EXPECT_FALSE(point.within({2.0, std::nextafter(3.0, 4.0)}));
    EXPECT_FALSE(point.within({std::nextafter(2.0, 1.0), 3.0}));
}

TEST(RectWithin, IncludesTheBorder) {
    for (const double x : {0.0, 0.5, 1.0})
        for (const double y : {0.0, 0.5, 1.0})
            EXPECT_TRUE(unit.within({x, y})) << x << ' ' << y;
}

TEST(RectWithin, ExcludesWhatLiesOutside) {
    for (const double out : {-1e-300, std::nextafter(1.0, 2.0), infinity, -infinity, nan}) {
        EXPECT_FALSE(unit.within({out, 0.5})) << out;
        EXPECT_FALSE(unit.within({0.5, out})) << out;
    }
}

TEST(RectWithin, OfAnEmptyRectangleIsNeverTrue) {
    for (const double x : {0.0, 1e308, infinity, -infinity, nan})
        EXPECT_FALSE(gmRect().within({x, x}));
}

TEST(RectEnclose, OfTwoPointsIsTheirBox) {
    const Vector p(3.0, -1.0);
    const Vector q(-2.0, 7.0);
    const gmRect box = gmRect(p, {0.0, 0.0}).enclose(gmRect(q, {0.0, 0.0}));
    EXPECT_EQ(box.origin(), Vector(-2.0, -1.0));
    EXPECT_EQ(box.size(), Vector(5.0, 8.0));
    EXPECT_TRUE(box == gmRect(q, {0.0, 0.0}).enclose(gmRect(p, {0.0, 0.0})));
}

TEST(RectEnclose, TouchesItsPointsExactly) {
    support::Random random(41);
    for (int i = 0; i < 10000; ++i) {
        const Vector p = random.vector(1e6);
        const Vector q = random.vector(1e-3);
        const gmRect box = gmRect(p, {0.0, 0.0}).enclose(gmRect(q, {0.0, 0.0}));
        ASSERT_TRUE(box.within(p));
        ASSERT_TRUE(box.within(q));
        ASSERT_EQ(box.lower(), Vector(std::min(p.x(), q.x()), std::min(p.y(), q.y())));
        ASSERT_EQ(box.upper(), Vector(std::max(p.x(), q.x()), std::max(p.y(), q.y())));
    }
}

TEST(RectEnclose, IgnoresEmptyRectangles) {
    EXPECT_TRUE(unit.enclose(gmRect()) == unit);
    EXPECT_TRUE(gmRect().enclose(unit) == unit);
    EXPECT_TRUE(gmRect().enclose(gmRect()).isEmpty());
}

TEST(RectEnclose, KeepsARectangleInsideAnother) {
    EXPECT_TRUE(unit.enclose(gmRect({0.25, 0.25}, {0.5, 0.5})) == unit);
}

TEST(RectOverlaps, CountsTouchingAtASideOrACorner) {
    EXPECT_TRUE(unit.overlaps(gmRect({1.0, 0.0}, {1.0, 1.0})));
    EXPECT_TRUE(unit.overlaps(gmRect({0.0, 1.0}, {1.0, 1.0})));
    EXPECT_TRUE(unit.overlaps(gmRect({1.0, 1.0}, {1.0, 1.0})));
    EXPECT_TRUE(unit.overlaps(gmRect({-1.0, -1.0}, {1.0, 1.0})));
    EXPECT_TRUE(unit.overlaps(gmRect({1.0, 1.0}, {0.0, 0.0})));
}

TEST(RectOverlaps, NeedsACommonPoint) {
    const double next = std::nextafter(1.0, 2.0);
    EXPECT_FALSE(unit.overlaps(gmRect({next, 0.0}, {1.0, 1.0})));
    EXPECT_FALSE(unit.overlaps(gmRect({0.0, next}, {1.0, 1.0})));
    EXPECT_FALSE(unit.overlaps(gmRect({-2.0, 0.0}, {1.0, 1.0})));
    EXPECT_FALSE(unit.overlaps(gmRect({0.0, -2.0}, {1.0, 1.0})));
}

TEST(RectOverlaps, IsSymmetricAndSeesContainment) {
    support::Random random(42);
    EXPECT_TRUE(unit.overlaps(gmRect({0.25, 0.25}, {0.5, 0.5})));
    for (int i = 0; i < 5000; ++i) {
        const gmRect a(random.gridVector(3), {static_cast<double>(random.integer(0, 2)), 1.0});
        const gmRect b(random.gridVector(3), {1.0, static_cast<double>(random.integer(0, 2))});
        bool common = false;
        for (double x = -3.0; x <= 5.0; ++x)
            for (double y = -3.0; y <= 5.0; ++y)
                common = common || (a.within({x, y}) && b.within({x, y}));
        ASSERT_EQ(a.overlaps(b), common);
        ASSERT_EQ(b.overlaps(a), common);
    }
}

TEST(RectOverlaps, IsNeverTrueOfAnEmptyRectangle) {
    EXPECT_FALSE(gmRect().overlaps(unit));
    EXPECT_FALSE(unit.overlaps(gmRect()));
    EXPECT_FALSE(gmRect().overlaps(gmRect()));
    EXPECT_FALSE(gmRect().overlaps(gmRect({0.0, 0.0}, {infinity, infinity})));
}

}  // namespace
