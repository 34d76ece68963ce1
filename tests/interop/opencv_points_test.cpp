// Points of OpenCV and vertices of contours, there and back.
#include "interop/opencv.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "tests/interop/support.h"

namespace {

using interop_test::backwards;
using interop_test::Points;
using interop_test::refusal;
using interop_test::square;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

template <class Number>
class OpenCvPointsOf : public testing::Test {};
using Numbers = testing::Types<unsigned char, signed char, unsigned short, short, int, std::int64_t, float, double>;
TYPED_TEST_SUITE(OpenCvPointsOf, Numbers, );

TYPED_TEST(OpenCvPointsOf, GoThereAndBackUnchanged) {
    using Point = cv::Point_<TypeParam>;
    support::Random random(1);
    for (int count = 0; count < 40; ++count) {
        std::vector<Point> points;
        for (int i = 0; i < count; ++i)
            points.emplace_back(static_cast<TypeParam>(random.integer(0, 5)),
                                static_cast<TypeParam>(random.integer(0, 127)));
        const gmContour contour = gnOpenCv::contourFrom(points, count % 2 == 0, 7);
        EXPECT_EQ(contour.isClosed(), count % 2 == 0);
        EXPECT_EQ(contour.label(), 7U);
        ASSERT_EQ(contour.points().size(), points.size());
        for (std::size_t i = 0; i < points.size(); ++i)
            EXPECT_EQ(contour.points()[i],
                      gmVector<2>(static_cast<double>(points[i].x), static_cast<double>(points[i].y)));
        EXPECT_EQ(gnOpenCv::pointsFrom<Point>(contour), points);
    }
}

TYPED_TEST(OpenCvPointsOf, TakesItsWholeRangeAndNothingBeyond) {
    using Point = cv::Point_<TypeParam>;
    const auto back = [](double x) {
        return gnOpenCv::pointsFrom<Point>(gmContour({{x, 0}}, true), gnInterop::eNearest)[0].x;
    };
    using Limits = std::numeric_limits<TypeParam>;
    const double lowest = static_cast<double>(Limits::lowest());
    EXPECT_EQ(back(lowest), Limits::lowest());
    if constexpr (Limits::is_integer) {
        const double beyond = std::ldexp(1.0, Limits::digits);
        EXPECT_NE(refusal([&] { back(beyond); }), "accepted");
        EXPECT_NE(refusal([&] { back(lowest - std::fabs(lowest) * 1e-15 - 1.0); }), "accepted");
        EXPECT_EQ(back(std::floor(std::nextafter(beyond, 0.0))),
                  static_cast<TypeParam>(std::floor(std::nextafter(beyond, 0.0))));
    }
}

/// A list of points in every layout that a matrix has for it.
template <class Number>
void expectLayouts(int depth) {
    const std::vector<Number> numbers = {1, 2, 3, 4, 5, 6};
    const Points expected = {{1, 2}, {3, 4}, {5, 6}};
    const cv::Mat column(3, 1, CV_MAKETYPE(depth, 2), const_cast<Number*>(numbers.data()));
    const cv::Mat row(1, 3, CV_MAKETYPE(depth, 2), const_cast<Number*>(numbers.data()));
    const cv::Mat two(3, 2, CV_MAKETYPE(depth, 1), const_cast<Number*>(numbers.data()));
    // A column of a wider matrix, so that rows do not follow each other in memory.
    cv::Mat wide(3, 4, CV_MAKETYPE(depth, 2), cv::Scalar::all(9.0));
    column.copyTo(wide.col(2));
    for (const cv::Mat& mat : {column, row, two, wide.col(2)})
        EXPECT_EQ(gnOpenCv::contourFrom(mat, true).points(), expected) << depth;
    if (depth != CV_16F) {
        const cv::Mat back = gnOpenCv::matFrom(gmContour(expected, true), depth);
        ASSERT_EQ(back.type(), CV_MAKETYPE(depth, 2));
        ASSERT_EQ(back.rows, 3);
        ASSERT_EQ(back.cols, 1);
        EXPECT_EQ(cv::norm(back, column, cv::NORM_INF), 0.0);
    }
}

TEST(OpenCvMatrices, HoldPointsOfAnyDepthInAnyLayout) {
    expectLayouts<unsigned char>(CV_8U);
    expectLayouts<signed char>(CV_8S);
    expectLayouts<unsigned short>(CV_16U);
    expectLayouts<short>(CV_16S);
    expectLayouts<int>(CV_32S);
    expectLayouts<float>(CV_32F);
    expectLayouts<double>(CV_64F);
}

TEST(OpenCvMatrices, HoldPointsOfHalfPrecision) {
    cv::Mat_<cv::Vec2f> wide(3, 1);
    wide(0) = {0.5F, 2.0F};
    wide(1) = {-3.0F, 4.0F};
    wide(2) = {5.0F, 0.25F};
    cv::Mat half;
    wide.convertTo(half, CV_16F);
    EXPECT_EQ(gnOpenCv::contourFrom(half, true).points(), (Points{{0.5, 2}, {-3, 4}, {5, 0.25}}));
}

TEST(OpenCvMatrices, HoldOneAndNoPoint) {
    EXPECT_EQ(gnOpenCv::contourFrom(cv::Mat(1, 1, CV_32SC2, cv::Scalar(3, 4)), false).points(), (Points{{3, 4}}));
    EXPECT_EQ(gnOpenCv::contourFrom(cv::Mat(1, 2, CV_32S, cv::Scalar(3)), false).points(), (Points{{3, 3}}));
    for (const cv::Mat& empty : {cv::Mat(), cv::Mat(0, 1, CV_32FC2), cv::Mat(0, 2, CV_64F)})
        EXPECT_TRUE(gnOpenCv::contourFrom(empty, true).points().empty());
    EXPECT_EQ(gnOpenCv::matFrom(gmContour(), CV_32S).rows, 0);
}

TEST(OpenCvMatrices, AreRefusedWhereTheyAreNoPointsOfThePlane) {
    const auto refused = [](const cv::Mat& mat) { return refusal([&] { gnOpenCv::contourFrom(mat, true); }); };
    EXPECT_EQ(refused(cv::Mat(5, 1, CV_32FC3)),
              "a matrix of 5 x 1 elements with 3 channels is no list of points in the plane");
    EXPECT_EQ(refused(cv::Mat(0, 1, CV_32FC3)),
              "a matrix of 0 x 1 elements with 3 channels is no list of points in the plane");
    EXPECT_EQ(refused(cv::Mat(5, 3, CV_64F)),
              "a matrix of 5 x 3 elements with 1 channels is no list of points in the plane");
    EXPECT_EQ(refused(cv::Mat(5, 4, CV_32SC2)),
              "a matrix of 5 x 4 elements with 2 channels is no list of points in the plane");
    const int sizes[] = {2, 3, 4};
    EXPECT_EQ(refused(cv::Mat(3, sizes, CV_32SC2)),
              "a matrix of 3 dimensions with 2 channels is no list of points in the plane");
    const std::vector<cv::Point3f> solid(4);
    EXPECT_EQ(refused(cv::Mat(solid)), "a matrix of 4 x 1 elements with 3 channels is no list of points in the plane");
    EXPECT_EQ(refusal([] { gnOpenCv::matFrom(gmContour(), CV_16F); }), "depth 7: no matrix of points is made of it");
}

TEST(OpenCvPoints, RefuseDigitsThatADoubleHasNot) {
    using Point = cv::Point_<std::int64_t>;
    const std::int64_t most = std::int64_t{1} << 53;
    EXPECT_EQ(gnOpenCv::contourFrom(std::vector<Point>{{most, -most}}, true).points()[0],
              gmVector<2>(9007199254740992.0, -9007199254740992.0));
    EXPECT_EQ(refusal([&] {
                  gnOpenCv::contourFrom(std::vector<Point>{{0, 0}, {0, most + 1}}, true);
              }),
              "point 1: y has more digits than a double");
    EXPECT_EQ(refusal([] {
                  gnOpenCv::contourFrom(std::vector<Point>{{std::numeric_limits<std::int64_t>::max(), 0}}, true);
              }),
              "point 0: x has more digits than a double");
    EXPECT_EQ(
        gnOpenCv::contourFrom(std::vector<Point>{{std::numeric_limits<std::int64_t>::min(), 0}}, true).points()[0].x(),
        -9223372036854775808.0);
}

TEST(OpenCvPoints, RefuseALabelThatDoesNotFit) {
    EXPECT_EQ(refusal([] { gnOpenCv::contourFrom(std::vector<cv::Point>(), true, 1UL << 32U); }),
              "label does not fit in 32 bits");
}

TEST(OpenCvPoints, AreNeverRoundedUnasked) {
    const gmContour contour({{1, 2}, {3, 0.5}, {-0.0, 4}}, true);
    EXPECT_EQ(refusal([&] { gnOpenCv::pointsFrom<cv::Point>(contour); }), "point 1: y = 0.5 is not a whole number");
    EXPECT_EQ(refusal([&] { gnOpenCv::matFrom(contour, CV_16S); }), "point 1: y = 0.5 is not a whole number");
    EXPECT_EQ(gnOpenCv::pointsFrom<cv::Point2f>(contour)[1], cv::Point2f(3.0F, 0.5F));
    EXPECT_EQ(refusal([] {
                  gnOpenCv::pointsFrom<cv::Point2f>(gmContour({{0.1, 0}}, true));
              }),
              "point 0: x = 0.1 has more digits than a float");
}

TEST(OpenCvPoints, AreRoundedToTheNearestAndHalfWayToTheEvenOne) {
    const gmContour contour({{0.5, 1.5}, {2.5, -0.5}, {-1.5, 2.49}, {2.51, -2.75}}, true);
    EXPECT_EQ(gnOpenCv::pointsFrom<cv::Point>(contour, gnInterop::eNearest),
              (std::vector<cv::Point>{{0, 2}, {2, 0}, {-2, 2}, {3, -3}}));
    EXPECT_EQ(gnOpenCv::pointsFrom<cv::Point2f>(gmContour({{0.1, 1e-60}}, true), gnInterop::eNearest)[0],
              cv::Point2f(0.1F, 0.0F));
    EXPECT_EQ(gnOpenCv::pointsFrom<cv::Point_<unsigned char>>(gmContour({{255.4, -0.4}}, true), gnInterop::eNearest)[0],
              cv::Point_<unsigned char>(255, 0));
}

TEST(OpenCvPoints, RefuseWhatIsOutOfRangeHoweverRounded) {
    for (const gnInterop::Rounding rounding : {gnInterop::eExact, gnInterop::eNearest}) {
        const auto refused = [&](double y, auto point) {
            using Point = decltype(point);
            return refusal([&] { gnOpenCv::pointsFrom<Point>(gmContour({{0, 0}, {0, y}}, true), rounding); });
        };
        EXPECT_EQ(refused(2147483648.0, cv::Point()), "point 1: y = 2147483648 is out of range");
        EXPECT_EQ(refused(-2147483649.0, cv::Point()), "point 1: y = -2147483649 is out of range");
        EXPECT_EQ(refused(1e300, cv::Point_<std::int64_t>()), "point 1: y = 1e+300 is out of range");
        EXPECT_EQ(refused(-1.0, cv::Point_<unsigned char>()), "point 1: y = -1 is out of range");
        EXPECT_EQ(refused(1e39, cv::Point2f()), "point 1: y = 1e+39 is out of range");
        EXPECT_EQ(refused(nan, cv::Point()), "point 1: y = nan is not a whole number");
        EXPECT_EQ(refused(-infinity, cv::Point()), "point 1: y = -inf is not a whole number");
    }
}

TEST(OpenCvPoints, CarryNaNAndInfinityAsFloats) {
    const gmContour contour = gnOpenCv::contourFrom(
        std::vector<cv::Point2f>{{std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::infinity()}},
        true);
    EXPECT_TRUE(std::isnan(contour.points()[0].x()));
    EXPECT_EQ(contour.points()[0].y(), -infinity);
    const cv::Point2f back = gnOpenCv::pointsFrom<cv::Point2f>(contour)[0];
    EXPECT_TRUE(std::isnan(back.x));
    EXPECT_EQ(back.y, -std::numeric_limits<float>::infinity());
}

TEST(OpenCvRegions, RunCounterClockwiseFromTheFirstPointOn) {
    const Points square4 = square(0, 0, 4);
    std::vector<cv::Point> points = gnOpenCv::pointsFrom<cv::Point>(gmContour(backwards(square4), true));
    EXPECT_EQ(gnOpenCv::regionFrom(points).points(), square4);
    EXPECT_EQ(gnOpenCv::regionFrom(cv::Mat(points)).points(), square4);
    points = gnOpenCv::pointsFrom<cv::Point>(gmContour(square4, true));
    EXPECT_EQ(gnOpenCv::regionFrom(points).points(), square4);
    for (std::size_t count = 0; count < 3; ++count) {
        points.resize(count);
        EXPECT_EQ(gnOpenCv::regionFrom(points).points().size(), count);
    }
}

TEST(OpenCvIndices, EndWhereOpenCvsDo) {
    EXPECT_EQ(gnOpenCv::detail::indexFrom(2147483647), 2147483647);
    EXPECT_EQ(refusal([] { gnOpenCv::detail::indexFrom(2147483648); }), "more than OpenCV counts: 2147483648");
}

}  // namespace
