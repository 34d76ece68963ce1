#include "foundation/shapes/circle.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/polygon.h"
#include "tests/foundation/support.h"

namespace {

using Vector = gmVector<2>;

TEST(Circle, HoldsCentreAndRadiusZeroByDefault) {
    EXPECT_TRUE(gmCircle() == gmCircle({0.0, 0.0}, 0.0));
    const gmCircle circle({1.0, 2.0}, 3.0);
    EXPECT_EQ(circle.center(), Vector(1.0, 2.0));
    EXPECT_EQ(circle.radius(), 3.0);
}

TEST(Circle, CopiesMovesAndAssigns) {
    gmCircle circle({1.0, 2.0}, 3.0);
    const gmCircle copy(circle);
    gmCircle assigned;
    assigned = circle;
    const gmCircle moved(std::move(circle));
    EXPECT_TRUE(copy == assigned);
    EXPECT_TRUE(copy == moved);
    EXPECT_FALSE(copy == gmCircle({1.0, 2.0}, 4.0));
    EXPECT_FALSE(copy == gmCircle({1.0, 3.0}, 3.0));
}

TEST(Ellipse, IsAllZeroByDefault) {
    const gmEllipse ellipse;
    EXPECT_EQ(ellipse.center(), Vector());
    EXPECT_EQ(ellipse.xRadius(), 0.0);
    EXPECT_EQ(ellipse.yRadius(), 0.0);
    EXPECT_EQ(ellipse.rotation().value(), 0.0);
}

TEST(Ellipse, OfACircleHasEqualRadii) {
    const gmEllipse ellipse(gmCircle({1.0, 2.0}, 3.0));
    EXPECT_EQ(ellipse.center(), Vector(1.0, 2.0));
    EXPECT_EQ(ellipse.xRadius(), 3.0);
    EXPECT_EQ(ellipse.yRadius(), 3.0);
    EXPECT_EQ(ellipse.rotation().value(), 0.0);
}

TEST(Ellipse, HoldsItsDescription) {
    gmEllipse::gmEllipseGeom geom;
    geom.center = {1.0, 2.0};
    geom.xRadius = 3.0;
    geom.yRadius = 4.0;
    geom.rotation = gmRadian(0.5);
    const gmEllipse ellipse(geom);
    EXPECT_EQ(ellipse.geom().center, geom.center);
    EXPECT_EQ(ellipse.xRadius(), 3.0);
    EXPECT_EQ(ellipse.yRadius(), 4.0);
    EXPECT_EQ(ellipse.rotation(), gmRadian(0.5));
    gmEllipse copy;
    copy = ellipse;
    EXPECT_TRUE(copy == ellipse);
    geom.rotation = gmRadian(0.25);
    EXPECT_FALSE(copy == gmEllipse(geom));
}

TEST(Polygon, HoldsItsVerticesInOrder) {
    const gmPolygon polygon({{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}}, gmPolygon::eNonZero);
    EXPECT_EQ(polygon.size(), 3);
    EXPECT_EQ(polygon[0], Vector(0.0, 0.0));
    EXPECT_EQ(polygon[1], Vector(1.0, 0.0));
    EXPECT_EQ(polygon[2], Vector(0.0, 1.0));
    EXPECT_EQ(polygon.fillMode(), gmPolygon::eNonZero);
}

TEST(Polygon, IsEmptyAndEvenOddByDefault) {
    const gmPolygon polygon;
    EXPECT_EQ(polygon.size(), 0);
    EXPECT_EQ(polygon.fillMode(), gmPolygon::eEvenOdd);
    EXPECT_TRUE(polygon == gmPolygon({}, static_cast<gmPolygon::PolyFillMode>(0)));
}

TEST(Polygon, HasNoVertexBeyondItsSize) {
    const gmPolygon polygon({{0.0, 0.0}, {1.0, 0.0}}, gmPolygon::eEvenOdd);
    for (const long index : {-1L, 2L, std::numeric_limits<long>::min(), std::numeric_limits<long>::max()})
        EXPECT_THROW(static_cast<void>(polygon[index]), gmMathError::OutOfRange) << index;
    EXPECT_THROW(static_cast<void>(gmPolygon()[0]), gmMathError::OutOfRange);
}

TEST(Polygon, ComparesVerticesAndFillMode) {
    const gmPolygon polygon({{0.0, 0.0}, {1.0, 0.0}}, gmPolygon::eEvenOdd);
    EXPECT_FALSE(polygon == gmPolygon({{0.0, 0.0}, {1.0, 0.0}}, gmPolygon::eNonZero));
    EXPECT_FALSE(polygon == gmPolygon({{1.0, 0.0}, {0.0, 0.0}}, gmPolygon::eEvenOdd));
}

}  // namespace
