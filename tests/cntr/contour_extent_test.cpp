#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "tests/support/bits.h"
#include "tests/support/queries.h"
#include "tests/support/testcontour.h"

using support::contour;
using support::openContour;
using support::same;
using support::TestContour;

namespace {

constexpr double halfPi = 1.5707963267948966;
constexpr double infinity = std::numeric_limits<double>::infinity();
const double nan = std::nan("");
const char* const unitSquare = "0 0, 1 0, 1 1, 0 1";

const gmXform<2> quarterTurn(gmMatrix<2>(0, -1, 1, 0), {0, 0});

gmRect rect(double left, double bottom, double right, double top) {
    return gmRect({left, bottom}, {0, 0}).enclose(gmRect({right, top}, {0, 0}));
}

TEST(ContourEncloseRect, OfTheIdentityIsTheBoundingBox) {
    EXPECT_TRUE(same(contour("1 2, -3 4, 5 -6").encloseRect(gmXform<2>::I), rect(-3, -6, 5, 4)));
    EXPECT_TRUE(same(openContour("1 2, -3 4, 5 -6").encloseRect(gmXform<2>()), rect(-3, -6, 5, 4)));
}

TEST(ContourEncloseRect, IsTheBoxOfTheMappedVerticesAndNotAMappedBox) {
    const TestContour triangle = contour("0 0, 4 0, 4 2");
    EXPECT_TRUE(same(triangle.encloseRect(quarterTurn), rect(-2, 0, 0, 4)));
    const gmXform<2> shear(gmMatrix<2>(1, -2, 0, 1), {10, 20});
    EXPECT_TRUE(same(triangle.encloseRect(shear), rect(10, 20, 14, 22)));
}

TEST(ContourEncloseRect, OfASingleVertexHasNoSizeAndIsNotEmpty) {
    const gmRect box = openContour("3 4").encloseRect(gmXform<2>::I);
    EXPECT_TRUE(same(box, rect(3, 4, 3, 4)));
    EXPECT_FALSE(box.isEmpty());
}

TEST(ContourEncloseRect, TakesATransformWithinTheToleranceForTheIdentity) {
    const gmXform<2> almost(gmMatrix<2>(1, 0, 0, 1), {1e-15, -1e-15});
    const gmXform<2> notQuite(gmMatrix<2>(1, 0, 0, 1), {2e-15, 0});
    const TestContour shape = contour("0 0, 1e-9 0, 0 1e-9");
    EXPECT_TRUE(same(shape.encloseRect(almost), rect(0, 0, 1e-9, 1e-9)));
    EXPECT_TRUE(same(shape.encloseRect(notQuite), rect(2e-15, 0, 1e-9 + 2e-15, 1e-9)));
}

TEST(ContourEncloseRect, LeavesOutVerticesThatAreNotNumbers) {
    EXPECT_TRUE(same(contour("nan 9, 1 2, 9 nan, 3 0").encloseRect(gmXform<2>::I), rect(1, 0, 3, 2)));
    EXPECT_TRUE(contour("nan 9, 9 nan").encloseRect(gmXform<2>::I).isEmpty());
}

TEST(ContourEncloseRect, ReachesToInfiniteVertices) {
    EXPECT_TRUE(same(contour("inf 0, 1 -inf").encloseRect(gmXform<2>::I), rect(1, -infinity, infinity, 0)));
}

TEST(ContourEncloseRect, OfATransformThatIsNotANumberIsEmpty) {
    const gmXform<2> broken(gmMatrix<2>(1, 0, 0, 1), {nan, 0});
    EXPECT_TRUE(contour(unitSquare).encloseRect(broken).isEmpty());
    EXPECT_TRUE(same(contour(unitSquare).encloseRect(gmXform<2>::I), rect(0, 0, 1, 1)));
}

TEST(ContourEncloseCircle, OfTheFarthestPairHasItForDiameter) {
    const TestContour square = contour(unitSquare);
    const gmCircle circle = square.encloseCircle(gmContourDefs::eMaxVertexPair);
    EXPECT_TRUE(same(circle, gmCircle({0.5, 0.5}, std::sqrt(2.0) * 0.5)));
    EXPECT_EQ(square.diameter(gmContourDefs::eMaxVertexPair), std::sqrt(2.0));
}

TEST(ContourEncloseCircle, OfEquallyFarPairsTakesTheFirst) {
    const auto center = [](const char* vertices) {
        return openContour(vertices).encloseCircle(gmContourDefs::eMaxVertexPair).center();
    };
    // Both bars of the cross are 5 long: the pair with the lowest first vertex wins, and then the lowest second one.
    EXPECT_EQ(center("0 0, 2 2.5, 2 -2.5, 5 0"), gmVector<2>(2.5, 0));
    EXPECT_EQ(center("2 2.5, 0 0, 5 0, 2 -2.5"), gmVector<2>(2, 0));
    EXPECT_EQ(center("0 0, 3 4, 4 3"), gmVector<2>(1.5, 2));
}

TEST(ContourEncloseCircle, OfTheFarthestPairNeedNotEncloseEveryVertex) {
    const gmCircle circle = contour("0 0, 2 0, 1 1.7").encloseCircle(gmContourDefs::eMaxVertexPair);
    EXPECT_TRUE(same(circle, gmCircle({1, 0}, 1)));
    EXPECT_GT(circle.center().distance({1, 1.7}), circle.radius());
}

TEST(ContourEncloseCircle, WithoutADistinctPairIsTheDefaultCircle) {
    for (const char* vertices : {"", "5 5", "5 5, 5 5, 5 5", "nan 0, 1 1"})
        EXPECT_TRUE(same(contour(vertices).encloseCircle(gmContourDefs::eMaxVertexPair), gmCircle())) << vertices;
    EXPECT_EQ(contour("5 5").diameter(gmContourDefs::eMaxVertexPair), 0.0);
}

TEST(ContourEncloseCircle, WithoutADistinctPairIsTheDefaultCircleAlsoAfterAChange) {
    TestContour shape = contour(unitSquare);
    shape.encloseCircle(gmContourDefs::eMaxVertexPair);
    shape.points({{5, 5}, {5, 5}});
    EXPECT_TRUE(same(shape.encloseCircle(gmContourDefs::eMaxVertexPair), gmCircle()));
    shape.points({});
    EXPECT_TRUE(same(shape.encloseCircle(gmContourDefs::eMaxVertexPair), gmCircle()));
}

TEST(ContourEncloseCircle, FromTheFirstVertexReachesTheFarthest) {
    const TestContour square = contour(unitSquare);
    EXPECT_TRUE(same(square.encloseCircle(gmContourDefs::eFromFirstVertex), gmCircle({0, 0}, std::sqrt(2.0))));
    EXPECT_EQ(square.diameter(gmContourDefs::eFromFirstVertex), 2.0 * std::sqrt(2.0));
    EXPECT_TRUE(same(openContour("1 1, 4 5, 2 2").encloseCircle(gmContourDefs::eFromFirstVertex), gmCircle({1, 1}, 5)));
}

TEST(ContourEncloseCircle, FromASingleVertexHasNoRadius) {
    EXPECT_TRUE(same(contour("5 6").encloseCircle(gmContourDefs::eFromFirstVertex), gmCircle({5, 6}, 0)));
}

TEST(ContourEncloseCircle, FromTheFirstOfNoVerticesIsRefused) {
    EXPECT_THROW(contour("").encloseCircle(gmContourDefs::eFromFirstVertex), gmContourDefs::EmptyContour);
    EXPECT_THROW(contour("").diameter(gmContourDefs::eFromFirstVertex), gmContourDefs::EmptyContour);
}

TEST(ContourEncloseCircle, KeepsTheModesApart) {
    const TestContour square = contour(unitSquare);
    for (int ask = 0; ask < 2; ask++) {
        EXPECT_EQ(square.encloseCircle(gmContourDefs::eFromFirstVertex).center(), gmVector<2>(0, 0));
        EXPECT_EQ(square.encloseCircle(gmContourDefs::eMaxVertexPair).center(), gmVector<2>(0.5, 0.5));
    }
}

TEST(ContourEncloseCircle, RefusesOtherModes) {
    for (const TestContour& shape : {contour(unitSquare), contour("")})
        for (const int mode : {2, 3, 256, 257, 1000, -1, std::numeric_limits<int>::min()}) {
            const auto refused = support::diameterMode(mode);
            try {
                shape.encloseCircle(refused);
                ADD_FAILURE() << "accepted " << mode;
            } catch (const gmContourDefs::BadParams& error) {
                EXPECT_EQ(error.message(), "diameterMode is not one of the valid enums");
            }
            try {
                shape.diameter(refused);
                ADD_FAILURE() << "accepted " << mode;
            } catch (const gmContourDefs::BadParams& error) {
                EXPECT_EQ(error.message(), "diameterMode is not one of the valid enums");
            }
        }
}

TEST(ContourExtremalVertex, IsTheFarthestInTheDirection) {
    const TestContour shape = contour("0 0, 4 1, 3 4, -1 3");
    EXPECT_EQ(shape.extremalVertexIndex(gmRadian(0.0)), 1);
    EXPECT_EQ(shape.extremalVertexIndex(gmRadian(halfPi)), 2);
    EXPECT_EQ(shape.extremalVertexIndex(gmRadian(2 * halfPi)), 3);
    EXPECT_EQ(shape.extremalVertexIndex(gmRadian(-halfPi)), 0);
    EXPECT_EQ(shape.extremalVertexIndex(gmRadian(halfPi / 2)), 2);
    EXPECT_EQ(shape.extremalVertexIndex(gmDegree(135)), 3);
    EXPECT_EQ(shape.extremalVertexPosition(gmRadian(0.0)), gmVector<2>(4, 1));
}

TEST(ContourExtremalVertex, OfEquallyFarTakesTheLowestIndex) {
    const TestContour shape = contour("0 0, 4 0, 4 4, 0 4");
    EXPECT_EQ(shape.extremalVertexIndex(gmRadian(0.0)), 1);
    EXPECT_EQ(shape.extremalVertexIndex(gmRadian(halfPi)), 2);
    EXPECT_EQ(shape.extremalVertexIndex(gmRadian(2 * halfPi)), 0);
    EXPECT_EQ(shape.extremalVertexIndex(gmRadian(3 * halfPi)), 0);
}

TEST(ContourExtremalVertex, AlongAnAxisTheCoordinateItselfDecides) {
    // The cosine of the double nearest to pi/2 is not zero: a large x would outweigh the difference in y.
    ASSERT_NE(std::cos(halfPi), 0.0);
    const TestContour vertical = contour("1e16 0, 0 1e-1, 0 0.2, -1e17 -9");
    EXPECT_EQ(vertical.extremalVertexIndex(gmRadian(halfPi)), 2);
    EXPECT_EQ(contour("1e17 0, 0 -0.1, 0 -0.2, -1e17 9").extremalVertexIndex(gmRadian(-halfPi)), 2);
    EXPECT_EQ(contour("0 -1e17, -0.1 0, -0.2 0, 9 1e17").extremalVertexIndex(gmRadian(2 * halfPi)), 2);
    EXPECT_EQ(contour("0 1e17, 0.1 0, 0.2 0, -9 -1e17").extremalVertexIndex(gmRadian(1e-16)), 2);
}

TEST(ContourExtremalVertex, OffAnAxisByMoreThanTheToleranceBothCoordinatesDecide) {
    EXPECT_EQ(contour("0.2 0, 0 1e17").extremalVertexIndex(gmRadian(2e-15)), 1);
    EXPECT_EQ(contour("0.2 0, 0 1e17").extremalVertexIndex(gmRadian(1e-15)), 0);
}

TEST(ContourExtremalVertex, SkipsVerticesThatAreNotNumbers) {
    EXPECT_EQ(contour("nan 0, 1 0, 2 nan, 3 0").extremalVertexIndex(gmRadian(0.0)), 3);
    EXPECT_EQ(contour("nan 0, 1 0, 3 nan, 2 0").extremalVertexIndex(gmRadian(0.5)), 3);
}

TEST(ContourExtremalVertex, IsNoneWhenNoVertexIsAnywhere) {
    const TestContour nowhere = contour("nan nan, nan 1");
    EXPECT_EQ(nowhere.extremalVertexIndex(gmRadian(0.0)), -1);
    EXPECT_EQ(nowhere.extremalVertexIndex(gmRadian(0.0)), -1);
    EXPECT_EQ(contour("-inf 0").extremalVertexIndex(gmRadian(0.0)), -1);
    EXPECT_EQ(contour("-1.7976931348623157e308 0").extremalVertexIndex(gmRadian(0.0)), -1);
    EXPECT_EQ(contour("-1.7976931348623155e308 0").extremalVertexIndex(gmRadian(0.0)), 0);
    EXPECT_EQ(contour("1 1").extremalVertexIndex(gmRadian(nan)), -1);
    EXPECT_EQ(contour("1 1").extremalVertexIndex(gmRadian(infinity)), -1);
}

TEST(ContourExtremalVertex, WithoutOneHasNoPosition) {
    for (const gmRadian angle : {gmRadian(0.0), gmRadian(nan)}) {
        try {
            contour("nan nan, nan 1").extremalVertexPosition(angle);
            ADD_FAILURE() << "answered";
        } catch (const gmContourDefs::BadParams& error) {
            EXPECT_EQ(error.message(), "no extremal vertex");
        }
    }
}

TEST(ContourFitEllipse, FindsTheEllipseOfItsVertices) {
    reference::Points points;
    for (int i = 0; i < 12; i++) {
        const gmRadian t(i * 0.5);
        points.push_back(gmVector<2>(7, 8) + gmMatrix<2>(gmRadian(0.5), gmRadian(0.5), 3, 2) * gmVector<2>(1, t));
    }
    gmEllipse ellipse;
    double residual = -9;
    TestContour(points, true).fitEllipse(ellipse, residual);
    EXPECT_NEAR(ellipse.center().distance({7, 8}), 0, 1e-9);
    EXPECT_NEAR(ellipse.xRadius(), 3, 1e-9);
    EXPECT_NEAR(ellipse.yRadius(), 2, 1e-9);
    EXPECT_NEAR(ellipse.rotation().value(), 0.5, 1e-9);
    EXPECT_NEAR(residual, 0, 1e-9);
}

TEST(ContourFitEllipse, GivesACircleWhereNoEllipseIsDetermined) {
    gmEllipse ellipse;
    double residual = -9;
    contour("0 0, 2 0, 2 2, 0 2").fitEllipse(ellipse, residual);
    EXPECT_NEAR(ellipse.center().distance({1, 1}), 0, 1e-12);
    EXPECT_NEAR(ellipse.xRadius(), std::sqrt(2.0), 1e-12);
    EXPECT_EQ(ellipse.yRadius(), ellipse.xRadius());
    EXPECT_NEAR(residual, 0, 1e-12);
}

TEST(ContourFitEllipse, GivesADefaultEllipseAndMinusOneWhereNothingIsDetermined) {
    for (const char* vertices : {"5 5", "0 0, 1 1, 2 2, 3 3, 4 4, 5 5", "nan 0, 1 1, 2 5, 3 3, 4 0, 5 9"}) {
        gmEllipse ellipse(gmCircle({1, 2}, 3));
        double residual = 7;
        const TestContour shape = contour(vertices);
        for (int ask = 0; ask < 2; ask++) {
            shape.fitEllipse(ellipse, residual);
            EXPECT_TRUE(same(ellipse, gmEllipse())) << vertices;
            EXPECT_EQ(residual, -1.0) << vertices;
        }
    }
}

TEST(ContourFitEllipse, LeavesTheResultsAloneWhenItRefuses) {
    gmEllipse ellipse(gmCircle({1, 2}, 3));
    double residual = 7;
    EXPECT_THROW(contour("").fitEllipse(ellipse, residual), gmContourDefs::EmptyContour);
    EXPECT_TRUE(same(ellipse, gmEllipse(gmCircle({1, 2}, 3))));
    EXPECT_EQ(residual, 7);
}

}  // namespace
