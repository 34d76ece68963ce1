#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/bits.h"
#include "tests/support/consistent.h"
#include "tests/support/testcontour.h"

using support::contour;
using support::openContour;
using support::points;
using support::same;
using support::TestContour;
using testing::ElementsAre;

namespace {

constexpr unsigned long largestLabel = 4294967295UL;

/// Runs the action and returns the message of the BadParams that it must throw.
template <class Action>
std::string badParamsOf(Action action) {
    try {
        action();
    } catch (const gmContourDefs::BadParams& error) {
        return error.message();
    }
    ADD_FAILURE() << "nothing was thrown";
    return "";
}

TEST(ContourConstruction, DefaultIsAnEmptyClosedContourWithLabelZero) {
    const gmContour contour;
    EXPECT_TRUE(contour.points().empty());
    EXPECT_TRUE(contour.isClosed());
    EXPECT_EQ(contour.label(), 0U);
    EXPECT_EQ(contour.cachedVectorSize(), 3);
    support::expectConsistent(contour);
}

TEST(ContourConstruction, StoresPointsClosednessAndLabelAsGiven) {
    const auto vertices = points("1 2, 3 4, 3 4, nan inf");
    const gmContour open(vertices, false, 7);
    EXPECT_TRUE(same(open.points(), vertices));
    EXPECT_FALSE(open.isClosed());
    EXPECT_EQ(open.label(), 7U);
    EXPECT_EQ(open.cachedVectorSize(), 3);
    EXPECT_TRUE(gmContour(vertices, true).isClosed());
    EXPECT_EQ(gmContour(vertices, true).label(), 0U);
}

TEST(ContourConstruction, AcceptsNoVertexAndOneVertex) {
    EXPECT_TRUE(gmContour({}, false).points().empty());
    EXPECT_FALSE(gmContour({}, false).isClosed());
    EXPECT_EQ(gmContour({{1, 2}}, true).points().size(), 1U);
}

TEST(ContourConstruction, RefusesALabelThatDoesNotFit) {
    EXPECT_EQ(gmContour({}, true, largestLabel).label(), largestLabel);
    const std::string message = "label does not fit in 32 bits";
    EXPECT_EQ(badParamsOf([] { gmContour({}, true, largestLabel + 1); }), message);
    EXPECT_EQ(badParamsOf([] { gmContour(gmPolygon(), largestLabel + 1); }), message);
}

TEST(ContourConstruction, MakesAnEmptyClosedContourForTheRegistry) {
    const std::unique_ptr<gmPersistent> made(gmContour::make());
    const auto* contour = dynamic_cast<gmContour*>(made.get());
    ASSERT_NE(contour, nullptr);
    EXPECT_TRUE(*contour == gmContour());
    EXPECT_EQ(contour->label(), 0U);
}

TEST(ContourFromPolygon, TakesAllVerticesInOrderAndTheLabel) {
    const auto vertices = points("0 0, 4 0, 4 3");
    const gmContour contour(gmPolygon(vertices, gmPolygon::eNonZero), 5);
    EXPECT_EQ(contour.points(), vertices);
    EXPECT_EQ(contour.label(), 5U);
    EXPECT_EQ(contour.cachedVectorSize(), 3);
}

TEST(ContourFromPolygon, IsClosedWhenFirstAndLastVertexAgree) {
    const auto closedness = [](const char* vertices) {
        return gmContour(gmPolygon(points(vertices), gmPolygon::eEvenOdd)).isClosed();
    };
    EXPECT_FALSE(closedness("0 0, 4 0, 4 3"));
    EXPECT_TRUE(closedness("0 0, 4 0, 4 3, 0 0"));
    EXPECT_TRUE(closedness("0 0, 4 0, 4 3, 1e-15 -1e-15"));
    EXPECT_FALSE(closedness("0 0, 4 0, 4 3, 1.1e-15 0"));
    EXPECT_FALSE(closedness("0 0, 4 0, 4 3, 0 1.1e-15"));
    EXPECT_TRUE(closedness("3 3"));
    EXPECT_FALSE(closedness("nan 0, 4 0, nan 0"));
}

TEST(ContourFromPolygon, KeepsTheRepeatedClosingVertexAsADegenerateClosingEdge) {
    const gmContour contour(gmPolygon(points("0 0, 4 0, 4 3, 0 0"), gmPolygon::eEvenOdd));
    EXPECT_EQ(contour.points().size(), 4U);
    EXPECT_THAT(contour.validLine(), ElementsAre(false, true, true, true));
    EXPECT_EQ(contour.length(), 12.0);
}

TEST(ContourFromPolygon, AnEmptyPolygonGivesAnEmptyClosedContour) {
    const gmContour contour{gmPolygon()};
    EXPECT_TRUE(contour.points().empty());
    EXPECT_TRUE(contour.isClosed());
}

TEST(ContourPolygon, AClosedContourRepeatsItsFirstVertexAtTheEnd) {
    const gmPolygon polygon = contour("0 0, 4 0, 4 3").polygon();
    EXPECT_EQ(polygon, gmPolygon(points("0 0, 4 0, 4 3, 0 0"), gmPolygon::eEvenOdd));
    EXPECT_EQ(contour("1 2").polygon().size(), 2);
}

TEST(ContourPolygon, AnOpenContourGivesItsVerticesAsTheyAre) {
    EXPECT_EQ(openContour("0 0, 4 0, 4 3").polygon(), gmPolygon(points("0 0, 4 0, 4 3"), gmPolygon::eEvenOdd));
}

TEST(ContourPolygon, AnEmptyContourGivesAnEmptyPolygon) {
    EXPECT_EQ(contour("").polygon().size(), 0);
    EXPECT_EQ(openContour("").polygon().size(), 0);
}

TEST(ContourPolygon, AClosedContourComesBackClosedWithOneVertexMore) {
    const TestContour original = contour("0 0, 4 0, 4 3");
    const gmContour back(original.polygon());
    EXPECT_EQ(back.points().size(), original.points().size() + 1);
    EXPECT_TRUE(back.isClosed());
    EXPECT_FALSE(gmContour(openContour("0 0, 4 0, 4 3").polygon()).isClosed());
}

TEST(ContourEquality, ComparesVerticesExactly) {
    EXPECT_TRUE(contour("0 0, 4 0") == contour("-0 0, 4 0"));
    EXPECT_TRUE(contour("0 0, 4 0") != contour("1e-300 0, 4 0"));
    EXPECT_TRUE(contour("0 0, 4 0") != contour("0 0, 4 0, 4 0"));
    EXPECT_TRUE(contour("0 0, 4 0") != contour("4 0, 0 0"));
    EXPECT_TRUE(contour("0 0, 4 0") != contour("0 0, 4 1"));
    const TestContour nan = contour("nan 0");
    EXPECT_TRUE(nan != nan);
}

TEST(ContourEquality, ComparesClosedness) {
    EXPECT_TRUE(contour("0 0, 4 0") != openContour("0 0, 4 0"));
    EXPECT_TRUE(contour("") != openContour(""));
    EXPECT_TRUE(openContour("0 0, 4 0") == openContour("0 0, 4 0"));
}

TEST(ContourEquality, IgnoresTheLabel) {
    EXPECT_TRUE(contour("0 0, 4 0", 1) == contour("0 0, 4 0", 2));
}

TEST(ContourEquality, ComparesCachedVectorSize) {
    TestContour other = contour("0 0, 4 0");
    other.cachedVectorSize(4);
    EXPECT_TRUE(contour("0 0, 4 0") != other);
    EXPECT_FALSE(contour("0 0, 4 0") == other);
}

TEST(ContourEquality, IgnoresWhatIsRemembered) {
    const TestContour asked = contour("0 0, 4 0, 4 3");
    support::expectConsistent(asked);
    asked.length();
    EXPECT_TRUE(asked == contour("0 0, 4 0, 4 3"));
}

TEST(ContourLabel, IsReadAndWritten) {
    TestContour contour;
    contour.label(42);
    EXPECT_EQ(contour.label(), 42U);
    contour.label(largestLabel);
    EXPECT_EQ(contour.label(), largestLabel);
}

TEST(ContourLabel, RefusesWhatDoesNotFitAndKeepsTheOld) {
    TestContour contour;
    contour.label(42);
    const std::string message = "label does not fit in 32 bits";
    EXPECT_EQ(badParamsOf([&] { contour.label(largestLabel + 1); }), message);
    EXPECT_EQ(badParamsOf([&] { contour.label(std::numeric_limits<unsigned long>::max()); }), message);
    EXPECT_EQ(contour.label(), 42U);
}

TEST(ContourCachedVectorSize, TakesZeroAndUpwards) {
    TestContour contour;
    for (const long size : {0L, 1L, 1000L, 2147483647L}) {
        contour.cachedVectorSize(size);
        EXPECT_EQ(contour.cachedVectorSize(), size);
    }
}

TEST(ContourCachedVectorSize, RefusesANegativeNumberWithoutAMessageAndKeepsTheOld) {
    TestContour contour;
    contour.cachedVectorSize(5);
    EXPECT_EQ(badParamsOf([&] { contour.cachedVectorSize(-1); }), "");
    EXPECT_EQ(badParamsOf([&] { contour.cachedVectorSize(std::numeric_limits<long>::min()); }), "");
    EXPECT_EQ(contour.cachedVectorSize(), 5);
}

TEST(ContourCachedVectorSize, RefusesWhatDoesNotFitAndKeepsTheOld) {
    TestContour contour;
    contour.cachedVectorSize(5);
    const std::string message = "cachedVectorSize does not fit in 32 bits";
    EXPECT_EQ(badParamsOf([&] { contour.cachedVectorSize(2147483648L); }), message);
    EXPECT_EQ(badParamsOf([&] { contour.cachedVectorSize(std::numeric_limits<long>::max()); }), message);
    EXPECT_EQ(contour.cachedVectorSize(), 5);
}

TEST(ContourLength, CountsTheClosingEdgeOfAClosedContour) {
    EXPECT_EQ(contour("0 0, 4 0, 4 3").length(), 12.0);
    EXPECT_EQ(openContour("0 0, 4 0, 4 3").length(), 7.0);
}

TEST(ContourLength, IsZeroWithoutAnEdge) {
    EXPECT_EQ(contour("").length(), 0.0);
    EXPECT_EQ(openContour("").length(), 0.0);
    EXPECT_EQ(openContour("5 5").length(), 0.0);
    EXPECT_EQ(contour("5 5").length(), 0.0);
}

TEST(ContourLength, OfAClosedContourOfTwoVerticesIsTwiceTheirDistance) {
    EXPECT_EQ(contour("0 0, 3 4").length(), 10.0);
    EXPECT_EQ(openContour("0 0, 3 4").length(), 5.0);
}

TEST(ContourLength, FollowsTheClosedness) {
    TestContour triangle = contour("0 0, 4 0, 4 3");
    EXPECT_EQ(triangle.length(), 12.0);
    triangle.isClosed(false);
    EXPECT_EQ(triangle.length(), 7.0);
    triangle.isClosed(true);
    EXPECT_EQ(triangle.length(), 12.0);
}

TEST(ContourMeanPosition, WeightsMidpointsByEdgeLength) {
    EXPECT_TRUE(same(openContour("0 0, 6 0, 6 2").meanPosition(), gmVector<2>((6 * 3 + 2 * 6) * 0.125, 2 * 1 * 0.125)));
    EXPECT_TRUE(same(contour("0 0, 2 0, 2 2, 0 2").meanPosition(), gmVector<2>(1, 1)));
    EXPECT_TRUE(
        same(openContour("0 0, 2 0, 2 2, 0 2").meanPosition(), gmVector<2>(8.0 * (1.0 / 6.0), 6.0 * (1.0 / 6.0))));
}

TEST(ContourMeanPosition, NeedsTwoVertices) {
    for (const char* vertices : {"", "1 2"}) {
        EXPECT_THROW(contour(vertices).meanPosition(), gmContourDefs::EmptyContour);
        EXPECT_THROW(openContour(vertices).meanPosition(), gmContourDefs::EmptyContour);
    }
    EXPECT_TRUE(same(openContour("0 0, 2 4").meanPosition(), gmVector<2>(1, 2)));
}

TEST(ContourMeanPosition, IsNotANumberWhenAllVerticesCoincide) {
    TestContour point = contour("3 3, 3 3, 3 3");
    for (int ask = 0; ask < 2; ask++) {
        EXPECT_TRUE(std::isnan(point.meanPosition().x()));
        EXPECT_TRUE(std::isnan(point.meanPosition().y()));
        point.moveSecretly(0, {9, 9});  // that it is not a number is remembered as well
    }
    point.cleanCacheInfo();
    EXPECT_DOUBLE_EQ(point.meanPosition().x(), 6.0);
}

TEST(ContourCheckEmptyContour, RefusesFewerThanTwoVerticesWithoutAMessage) {
    for (const char* vertices : {"", "1 2"}) {
        try {
            contour(vertices).checkEmptyContour();
            ADD_FAILURE() << "not refused: " << vertices;
        } catch (const gmContourDefs::EmptyContour& error) {
            EXPECT_EQ(error.message(), "");
        }
    }
    EXPECT_NO_THROW(contour("1 2, 1 2").checkEmptyContour());
}

TEST(ContourLineSegs, AClosedContourStartsWithItsClosingEdge) {
    EXPECT_THAT(contour("0 0, 4 0, 4 3").lineSegs(),
                ElementsAre(gmLineSeg({4, 3}, {0, 0}), gmLineSeg({0, 0}, {4, 0}), gmLineSeg({4, 0}, {4, 3})));
    EXPECT_THAT(openContour("0 0, 4 0, 4 3").lineSegs(),
                ElementsAre(gmLineSeg({0, 0}, {4, 0}), gmLineSeg({4, 0}, {4, 3})));
    EXPECT_THAT(contour("0 0, 3 4").lineSegs(), ElementsAre(gmLineSeg({3, 4}, {0, 0}), gmLineSeg({0, 0}, {3, 4})));
}

TEST(ContourLineSegs, AContourWithoutEdgesHasNone) {
    EXPECT_TRUE(contour("").lineSegs().empty());
    EXPECT_TRUE(openContour("").validLine().empty());
    EXPECT_TRUE(openContour("1 2").lineSegs().empty());
}

TEST(ContourLineSegs, ASingleClosedVertexHasOneDegenerateEdge) {
    EXPECT_THAT(contour("1 2").lineSegs(), ElementsAre(gmLineSeg()));
    EXPECT_THAT(contour("1 2").validLine(), ElementsAre(false));
}

TEST(ContourLineSegs, DegenerateEdgesKeepTheirPlaceAsDefaults) {
    const TestContour repeating = contour("7 7, 9 7, 9 7, 9 9, 7 7");
    EXPECT_THAT(repeating.validLine(), ElementsAre(false, true, false, true, true));
    EXPECT_THAT(repeating.lineSegs(), ElementsAre(gmLineSeg(), gmLineSeg({7, 7}, {9, 7}), gmLineSeg(),
                                                  gmLineSeg({9, 7}, {9, 9}), gmLineSeg({9, 9}, {7, 7})));
}

TEST(ContourLineSegs, AnEdgeIsDegenerateUpToTheToleranceInBothCoordinates) {
    EXPECT_THAT(openContour("0 0, 1e-15 -1e-15").validLine(), ElementsAre(false));
    EXPECT_THAT(openContour("0 0, 1.1e-15 0").validLine(), ElementsAre(true));
    EXPECT_THAT(openContour("0 0, 0 1.1e-15").validLine(), ElementsAre(true));
}

TEST(ContourComputeLineSegs, FillsWhatLineSegsAnswers) {
    const TestContour triangle = contour("0 0, 4 0, 4 3");
    triangle.computeLineSegs();
    const auto* filled = triangle.lineSegs().data();
    triangle.computeLineSegs();
    EXPECT_EQ(triangle.lineSegs().data(), filled);
    EXPECT_EQ(triangle.lineSegs().size(), 3U);
    EXPECT_EQ(triangle.validLine().size(), 3U);
}

TEST(ContourMap, MapsEveryVertexInOrder) {
    const gmXform<2> xform(gmMatrix<2>(0, -2, 3, 1), {10, 20});
    TestContour out;
    openContour("1 2, 3 4", 9).map(xform, out);
    EXPECT_EQ(out.points(), points("6 25, 2 33"));
    EXPECT_FALSE(out.isClosed());
    EXPECT_EQ(out.label(), 9U);
}

TEST(ContourMap, ReplacesWhatTheTargetWas) {
    TestContour out = openContour("9 9, 8 8", 3);
    out.cachedVectorSize(0);
    out.length();
    contour("0 0, 4 0, 4 3", 1).map(gmXform<2>::I, out);
    EXPECT_EQ(out.points(), points("0 0, 4 0, 4 3"));
    EXPECT_TRUE(out.isClosed());
    EXPECT_EQ(out.label(), 1U);
    EXPECT_EQ(out.length(), 12.0);
}

TEST(ContourMap, GivesTheTargetTheUsualCachedVectorSize) {
    TestContour source = contour("0 0, 4 0");
    source.cachedVectorSize(8);
    TestContour out;
    out.cachedVectorSize(9);
    source.map(gmXform<2>::I, out);
    EXPECT_EQ(out.cachedVectorSize(), 3);
    EXPECT_EQ(source.cachedVectorSize(), 8);
}

TEST(ContourMap, OntoItselfKeepsLabelAndClosedness) {
    TestContour shape = openContour("1 2, 3 4", 9);
    shape.cachedVectorSize(8);
    shape.length();
    shape.map(gmXform<2>(gmMatrix<2>(2, 0, 0, 2), {1, 0}), shape);
    EXPECT_EQ(shape.points(), points("3 4, 7 8"));
    EXPECT_FALSE(shape.isClosed());
    EXPECT_EQ(shape.label(), 9U);
    EXPECT_EQ(shape.cachedVectorSize(), 3);
    support::expectConsistent(shape);
}

TEST(ContourMap, OfAnEmptyContourIsEmpty) {
    TestContour out = contour("1 2");
    openContour("", 4).map(gmXform<2>::I, out);
    EXPECT_TRUE(out.points().empty());
    EXPECT_FALSE(out.isClosed());
    EXPECT_EQ(out.label(), 4U);
}

}  // namespace
