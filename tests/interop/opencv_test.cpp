// Contours with a hierarchy, and regions with holes.
#include "interop/opencv.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <opencv2/imgproc.hpp>
#include <string>
#include <vector>

#include "tests/interop/support.h"

namespace {

using interop_test::doubling;
using interop_test::nest;
using interop_test::outlines;
using interop_test::Points;
using interop_test::refusal;
using interop_test::shared;
using interop_test::square;
using Contours = std::vector<std::vector<cv::Point>>;
using Hierarchy = std::vector<cv::Vec4i>;

struct Traced {
    Contours contours;
    Hierarchy hierarchy;
};

Traced traced(const cv::Mat& picture, int mode = cv::RETR_TREE, int method = cv::CHAIN_APPROX_NONE) {
    Traced result;
    cv::findContours(picture, result.contours, result.hierarchy, mode, method);
    return result;
}

/// Two plates; in the first a hole, in which there is a ring, in which there is a pin; in the second two holes.
cv::Mat nestedPicture() {
    cv::Mat picture = cv::Mat::zeros(80, 140, CV_8UC1);
    const auto box = [&](int x, int y, int side, double value) {
        cv::rectangle(picture, cv::Rect(x, y, side, side), cv::Scalar(value), cv::FILLED);
    };
    box(5, 5, 70, 255);
    box(10, 10, 60, 0);
    box(20, 20, 40, 255);
    box(25, 25, 30, 0);
    box(35, 35, 10, 255);
    box(80, 10, 50, 255);
    box(85, 15, 10, 0);
    box(100, 30, 20, 0);
    return picture;
}

cv::Mat filled(const Contours& contours, const Hierarchy& hierarchy, const cv::Size& size) {
    cv::Mat picture = cv::Mat::zeros(size, CV_8UC1);
    if (!contours.empty())
        cv::drawContours(picture, contours, -1, cv::Scalar(255.0), cv::FILLED, cv::LINE_8, hierarchy);
    return picture;
}

TEST(FoundContours, BecomeRegionsWithHolesAndIslandsOfTheirOwn) {
    const Traced tree = traced(nestedPicture());
    const std::vector<RegionCPtr> regions = gnOpenCv::regionsFrom(tree.contours, tree.hierarchy);
    ASSERT_EQ(regions.size(), 4U);
    std::vector<std::size_t> holes;
    for (const RegionCPtr& region : regions) {
        holes.push_back(region->holes().size());
        EXPECT_EQ(region->points().size(), tree.contours[region->label()].size());
        for (const RegionCPtr& hole : region->holes()) {
            EXPECT_EQ(tree.hierarchy[hole->label()][3], static_cast<int>(region->label()));
            EXPECT_TRUE(hole->holes().empty());
        }
    }
    EXPECT_THAT(holes, testing::UnorderedElementsAre(2U, 1U, 1U, 0U));
    const gmRegionSet set(regions);
    EXPECT_TRUE(set.inside({7, 40}, true));
    EXPECT_FALSE(set.inside({15, 40}, true));
    EXPECT_TRUE(set.inside({22, 40}, true));
    EXPECT_FALSE(set.inside({30, 40}, true));
    EXPECT_TRUE(set.inside({40, 40}, true));
}

TEST(FoundContours, GiveTheSameRegionsAsATreeAndInTwoLevels) {
    std::vector<std::vector<std::vector<Points>>> results;
    for (const int mode : {cv::RETR_TREE, cv::RETR_CCOMP}) {
        const Traced found = traced(nestedPicture(), mode);
        std::vector<std::vector<Points>> result;
        for (const RegionCPtr& region : gnOpenCv::regionsFrom(found.contours, found.hierarchy)) {
            result.push_back(outlines(*region));
            std::sort(result.back().begin() + 1, result.back().end(),
                      [](const Points& a, const Points& b) { return a[0].x() < b[0].x(); });
        }
        std::sort(result.begin(), result.end(), [](const auto& a, const auto& b) { return a[0][0].x() < b[0][0].x(); });
        results.push_back(result);
    }
    EXPECT_EQ(results[0], results[1]);
}

TEST(FoundContours, WithoutLevelsAreRegionsWithoutHoles) {
    for (const int mode : {cv::RETR_LIST, cv::RETR_EXTERNAL}) {
        const Traced found = traced(nestedPicture(), mode);
        const std::vector<RegionCPtr> regions = gnOpenCv::regionsFrom(found.contours, found.hierarchy);
        EXPECT_EQ(regions.size(), mode == cv::RETR_LIST ? 8U : 2U);
        for (const RegionCPtr& region : regions)
            EXPECT_TRUE(region->holes().empty());
    }
}

TEST(FoundContours, MayBeMatrices) {
    const Traced found = traced(nestedPicture());
    std::vector<cv::Mat> matrices;
    for (const std::vector<cv::Point>& contour : found.contours)
        matrices.emplace_back(contour, true);
    const std::vector<RegionCPtr> regions = gnOpenCv::regionsFrom(matrices, found.hierarchy);
    const std::vector<RegionCPtr> expected = gnOpenCv::regionsFrom(found.contours, found.hierarchy);
    ASSERT_EQ(regions.size(), expected.size());
    for (std::size_t i = 0; i < regions.size(); ++i)
        EXPECT_EQ(outlines(*regions[i]), outlines(*expected[i]));
    matrices[1] = cv::Mat(4, 1, CV_32SC3);
    EXPECT_EQ(refusal([&] { gnOpenCv::regionsFrom(matrices, found.hierarchy); }),
              "contour 1: a matrix of 4 x 1 elements with 3 channels is no list of points in the plane");
}

TEST(FoundContours, HaveTheMomentsThatOpenCvSees) {
    cv::Mat picture = cv::Mat::zeros(60, 80, CV_8UC1);
    cv::rectangle(picture, cv::Point(10, 10), cv::Point(70, 20), cv::Scalar(255.0), cv::FILLED);
    cv::rectangle(picture, cv::Point(10, 10), cv::Point(20, 50), cv::Scalar(255.0), cv::FILLED);
    const Traced found = traced(picture);
    const cv::Moments expected = cv::moments(found.contours[0]);
    const RegionCPtr region = gnOpenCv::regionsFrom(found.contours, found.hierarchy)[0];
    EXPECT_NEAR(region->area(false), expected.m00, 1e-9 * expected.m00);
    EXPECT_NEAR(region->inertiaMatrix(false)(0, 0), expected.mu20, 1e-9 * expected.mu20);
    EXPECT_NEAR(region->inertiaMatrix(false)(0, 1), expected.mu11, 1e-9 * expected.mu20);
    EXPECT_NEAR(region->inertiaMatrix(false)(1, 1), expected.mu02, 1e-9 * expected.mu20);
}

TEST(FoundContours, AreDrawnToThePixelAfterTheWayThereAndBack) {
    support::Random random(5);
    int compared = 0;
    for (int round = 0; round < 60; ++round) {
        cv::Mat picture = cv::Mat::zeros(120, 160, CV_8UC1);
        if (round == 0)
            picture = nestedPicture();
        // Walls of three pixels and more, so that no hole touches an outline.
        for (int ring = random.integer(0, 4); ring > 0 && round > 0; --ring) {
            const cv::Point centre(random.integer(20, 140), random.integer(20, 100));
            double value = 255.0;
            for (int radius = random.integer(5, 40); radius > 0; radius -= random.integer(5, 9)) {
                cv::circle(picture, centre, radius, cv::Scalar(value), cv::FILLED);
                value = 255.0 - value;
            }
        }
        cv::morphologyEx(picture, picture, cv::MORPH_OPEN, cv::Mat::ones(3, 3, CV_8U));
        for (const int mode : {cv::RETR_TREE, cv::RETR_CCOMP})
            for (const int method : {cv::CHAIN_APPROX_NONE, cv::CHAIN_APPROX_SIMPLE}) {
                const Traced found = traced(picture, mode, method);
                std::vector<int> leftOut;
                const std::vector<RegionCPtr> regions =
                    gnOpenCv::regionsFrom(found.contours, found.hierarchy, &leftOut);
                if (!leftOut.empty())
                    continue;
                Hierarchy hierarchy;
                const Contours contours = gnOpenCv::contoursFrom(regions, hierarchy);
                EXPECT_EQ(cv::countNonZero(filled(contours, hierarchy, picture.size()) != picture), 0) << round;
                EXPECT_EQ(contours.size(), found.contours.size());
                ++compared;
            }
    }
    EXPECT_GT(compared, 200);
}

TEST(FoundContours, OfNoiseHaveAHierarchyThatIsRead) {
    support::Random random(6);
    for (int round = 0; round < 40; ++round) {
        cv::Mat picture = cv::Mat::zeros(24, 24, CV_8UC1);
        for (int i = random.integer(0, 500); i > 0; --i)
            picture.at<unsigned char>(random.integer(0, 23), random.integer(0, 23)) = 255;
        for (const int mode : {cv::RETR_TREE, cv::RETR_CCOMP, cv::RETR_LIST, cv::RETR_EXTERNAL}) {
            const Traced found = traced(picture, mode);
            std::vector<int> leftOut;
            const std::vector<RegionCPtr> regions = gnOpenCv::regionsFrom(found.contours, found.hierarchy, &leftOut);
            std::size_t held = regions.size() + leftOut.size();
            for (const RegionCPtr& region : regions)
                held += region->holes().size();
            EXPECT_EQ(held, found.contours.size());
        }
    }
}

TEST(FoundContours, CoverAsManyPixelsAsTheGuideCounts) {
    const cv::Mat picture = nestedPicture();
    const Traced found = traced(picture);
    double pixels = 0.0;
    for (const RegionCPtr& region : gnOpenCv::regionsFrom(found.contours, found.hierarchy)) {
        double points = 0.0;
        for (const Points& outline : outlines(*region))
            points += static_cast<double>(outline.size());
        pixels += region->area(true) + points / 2.0 + 1.0 - static_cast<double>(region->holes().size());
    }
    EXPECT_EQ(pixels, cv::countNonZero(picture));
}

TEST(HolesThatTouch, AreRefusedOrLeftOut) {
    cv::Mat picture = cv::Mat::zeros(40, 40, CV_8UC1);
    cv::rectangle(picture, cv::Rect(5, 5, 30, 30), cv::Scalar(255.0), cv::FILLED);
    cv::rectangle(picture, cv::Rect(6, 6, 5, 5), cv::Scalar(0.0), cv::FILLED);
    cv::rectangle(picture, cv::Rect(20, 20, 5, 5), cv::Scalar(0.0), cv::FILLED);
    const Traced found = traced(picture);
    ASSERT_EQ(found.contours.size(), 3U);
    const int touching = found.contours[1][0].x < 15 ? 1 : 2;
    EXPECT_EQ(refusal([&] { gnOpenCv::regionsFrom(found.contours, found.hierarchy); }),
              "contour " + std::to_string(touching) +
                  ": a hole that has a point in common with the outline around it, contour 0");
    std::vector<int> leftOut = {17};
    const std::vector<RegionCPtr> regions = gnOpenCv::regionsFrom(found.contours, found.hierarchy, &leftOut);
    EXPECT_EQ(leftOut, (std::vector<int>{17, touching}));
    ASSERT_EQ(regions.size(), 1U);
    ASSERT_EQ(regions[0]->holes().size(), 1U);
    EXPECT_EQ(regions[0]->holes()[0]->label(), static_cast<unsigned long>(3 - touching));
}

TEST(Hierarchies, AreRefusedWhereTheyAreNone) {
    const std::vector<cv::Point> box = {{0, 0}, {0, 9}, {9, 9}, {9, 0}};
    const auto refused = [&](const Hierarchy& hierarchy, std::size_t count) {
        return refusal([&] { gnOpenCv::regionsFrom(Contours(count, box), hierarchy); });
    };
    EXPECT_EQ(refused({}, 0), "accepted");
    EXPECT_EQ(refused({{-1, -1, -1, -1}}, 1), "accepted");
    EXPECT_EQ(refused({{-1, -1, -1, -1}}, 2), "hierarchy: 1 entries for 2 contours");
    EXPECT_EQ(refused({}, 1), "hierarchy: 0 entries for 1 contours");
    EXPECT_EQ(refused({{1, -1, -1, -1}}, 1), "contour 0: next is 1, which is none of 1 contours");
    EXPECT_EQ(refused({{-1, -2, -1, -1}}, 1), "contour 0: previous is -2, which is none of 1 contours");
    EXPECT_EQ(refused({{-1, -1, 7, -1}}, 1), "contour 0: first child is 7, which is none of 1 contours");
    EXPECT_EQ(refused({{-1, -1, -1, 2147483647}}, 1), "contour 0: parent is 2147483647, which is none of 1 contours");
    EXPECT_EQ(refused({{1, -1, -1, -1}, {-1, -1, -1, -1}}, 2), "contour 0: next is 1, which does not lead back");
    EXPECT_EQ(refused({{-1, -1, -1, -1}, {-1, 0, -1, -1}}, 2), "contour 1: previous is 0, which does not lead back");
    EXPECT_EQ(refused({{-1, -1, 1, -1}, {-1, -1, -1, -1}}, 2), "contour 0: first child is 1, which does not lead back");
    EXPECT_EQ(refused({{-1, -1, 2, -1}, {2, -1, -1, 0}, {-1, 1, -1, 0}}, 3),
              "contour 0: first child is 2, which does not lead back");
    // The parent has no such child; the next of the same level has another parent.
    EXPECT_EQ(refused({{-1, -1, -1, -1}, {-1, -1, -1, 0}}, 2),
              "contour 1: the hierarchy runs in a circle or does not lead to it");
    EXPECT_EQ(refused({{1, -1, -1, -1}, {-1, 0, -1, 0}}, 2), "contour 0: next is 1, which does not lead back");
}

TEST(Hierarchies, AreRefusedWhereTheyRunInACircle) {
    const std::vector<cv::Point> box = {{0, 0}, {0, 9}, {9, 9}, {9, 0}};
    const auto refused = [&](const Hierarchy& hierarchy) {
        return refusal([&] { gnOpenCv::regionsFrom(Contours(hierarchy.size(), box), hierarchy); });
    };
    const std::string circle = ": the hierarchy runs in a circle or does not lead to it";
    EXPECT_EQ(refused({{0, 0, -1, -1}}), "contour 0" + circle);
    EXPECT_EQ(refused({{-1, -1, 0, 0}}), "contour 0" + circle);
    EXPECT_EQ(refused({{-1, -1, -1, -1}, {2, 2, -1, -1}, {1, 1, -1, -1}}), "contour 1" + circle);
    EXPECT_EQ(refused({{-1, -1, -1, -1}, {-1, -1, 2, 2}, {-1, -1, 1, 1}}), "contour 1" + circle);
}

TEST(Hierarchies, AreRefusedWithAHoleInAContourWithoutPoints) {
    const Contours contours = {{}, {{0, 0}, {0, 9}, {9, 9}, {9, 0}}};
    EXPECT_EQ(refusal([&] {
                  gnOpenCv::regionsFrom(contours, {{-1, -1, 1, -1}, {-1, -1, -1, 0}});
              }),
              "contour 0: has a hole and no points");
}

TEST(Hierarchies, MayHoldContoursOfAnyNumberOfPoints) {
    const Contours contours = {{}, {{1, 1}}, {{1, 1}, {5, 5}}};
    const Hierarchy hierarchy = {{1, -1, -1, -1}, {2, 0, -1, -1}, {-1, 1, -1, -1}};
    const std::vector<RegionCPtr> regions = gnOpenCv::regionsFrom(contours, hierarchy);
    ASSERT_EQ(regions.size(), 3U);
    Hierarchy back;
    EXPECT_EQ(gnOpenCv::contoursFrom(regions, back), contours);
    EXPECT_EQ(back, hierarchy);
}

TEST(RegionsAsContours, HaveTheHierarchyOfATree) {
    const RegionCPtr island = shared(square(4, 4, 2));
    const RegionCPtr hole = shared(square(2, 2, 6), {island});
    const RegionCPtr second = shared(square(9, 9, 1));
    const std::vector<RegionCPtr> regions = {shared(square(0, 0, 12), {hole, second}), shared(square(20, 0, 5))};
    Hierarchy hierarchy;
    const Contours contours = gnOpenCv::contoursFrom(regions, hierarchy);
    ASSERT_EQ(contours.size(), 5U);
    EXPECT_EQ(contours[2][0], cv::Point(4, 4));
    EXPECT_EQ(hierarchy, (Hierarchy{{4, -1, 1, -1}, {3, -1, 2, 0}, {-1, -1, -1, 1}, {-1, 1, -1, 0}, {-1, 0, -1, -1}}));
    // Read again, the island is a region of its own, and everything encloses what it did.
    const gmRegionSet flat(gnOpenCv::regionsFrom(contours, hierarchy));
    ASSERT_EQ(flat.regions().size(), 3U);
    EXPECT_EQ(flat.area(true), 144.0 - 36.0 - 1.0 + 4.0 + 25.0);
    EXPECT_EQ(cv::countNonZero(filled(contours, hierarchy, {40, 40})), 169 - 25 - 0 + 9 + 36);
}

TEST(RegionsAsContours, NameWhatCannotBeHeld) {
    const RegionCPtr hole = shared({{2, 2}, {8, 2}, {8, 8.25}, {2, 8}}, {shared({{4, 4}, {6, 4}, {6.5, 6}})});
    const std::vector<RegionCPtr> regions = {shared(square(20, 20, 5)), shared(square(0, 0, 12), {hole})};
    Hierarchy hierarchy = {{1, 2, 3, 4}};
    EXPECT_EQ(refusal([&] { gnOpenCv::contoursFrom(regions, hierarchy); }),
              "region 1, hole 0, point 2: y = 8.25 is not a whole number");
    EXPECT_EQ(hierarchy, (Hierarchy{{1, 2, 3, 4}}));
    EXPECT_EQ(gnOpenCv::contoursFrom<cv::Point2f>(regions, hierarchy)[3][2], cv::Point2f(6.5F, 6.0F));
    EXPECT_EQ(gnOpenCv::contoursFrom(regions, hierarchy, gnInterop::eNearest)[3][2], cv::Point(6, 6));
    EXPECT_THROW(gnOpenCv::contoursFrom({RegionCPtr()}, hierarchy), gmBadPointer);
}

TEST(RegionsAsContours, ComeAsOftenAsTheyAreShared) {
    const RegionCPtr pin = shared(square(4, 4, 2));
    const RegionCPtr part = shared(square(0, 0, 12), {pin, shared(square(1, 1, 9), {pin})});
    Hierarchy hierarchy;
    EXPECT_EQ(gnOpenCv::contoursFrom({part, part}, hierarchy).size(), 8U);
    EXPECT_EQ(hierarchy[7], cv::Vec4i(-1, -1, -1, 6));
}

TEST(RegionsAsContours, RefuseHolesThatHoldEachOther) {
    const gmPtrHandle<gmRegion> outer(new gmRegion(square(0, 0, 9)));
    const gmPtrHandle<gmRegion> inner(new gmRegion(square(2, 2, 5)));
    outer->holes(std::vector<RegionCPtr>{inner});
    inner->holes(std::vector<RegionCPtr>{outer});
    Hierarchy hierarchy;
    EXPECT_EQ(refusal([&] { gnOpenCv::contoursFrom({outer}, hierarchy); }),
              "region 0, hole 0, hole 0: holes form a cycle");
    inner->holes(std::vector<RegionCPtr>());
}

TEST(RegionsAsContours, RefuseHolesThatAreSharedOnTooManyLevels) {
    const std::string why = "more than 262144 outlines came before: regions and holes are shared too often";
    Hierarchy hierarchy = {{1, 2, 3, 4}};
    EXPECT_THAT(refusal([&] {
                    gnOpenCv::contoursFrom({nest(2), doubling(40)}, hierarchy);
                }),
                testing::AllOf(testing::StartsWith("region 1, hole 0, "), testing::EndsWith(", hole 1: " + why)));
    EXPECT_EQ(hierarchy, (Hierarchy{{1, 2, 3, 4}}));
    // The outlines of all regions count together.
    const RegionCPtr most = doubling(18);
    const std::size_t outlines = (std::size_t{1} << 18) - 1;
    EXPECT_EQ(gnOpenCv::contoursFrom({most}, hierarchy).size(), outlines);
    EXPECT_THAT(refusal([&] {
                    gnOpenCv::contoursFrom({most, most}, hierarchy);
                }),
                testing::AllOf(testing::StartsWith("region 1, hole 0, "), testing::EndsWith(": " + why)));
}

TEST(RegionsAsContours, MayBeNestedDeeply) {
    Hierarchy hierarchy;
    const Contours contours = gnOpenCv::contoursFrom({nest(20000)}, hierarchy);
    ASSERT_EQ(contours.size(), 20000U);
    EXPECT_EQ(hierarchy[19999], cv::Vec4i(-1, -1, -1, 19998));
    EXPECT_EQ(gnOpenCv::regionsFrom(contours, hierarchy).size(), 10000U);
}

}  // namespace
