#include "tools/mokshape/picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/tools/support.h"
#include "tools/io/text.h"
#include "tools/mokshape/panels.h"

namespace {

using mokshape::layOut;
using mokshape::MeasuredFile;
using mokshape::Panel;
using testing::HasSubstr;
using testing::Not;

constexpr double nearly = 1e-9;

gmRect contentOf(const Panel& panel, const gmRect& extent) {
    const gmVector<2> low = panel.xform * extent.lower();
    return gmRect(low, panel.xform * extent.upper() - low);
}

void expectInside(const gmRect& inner, const gmRect& outer) {
    EXPECT_TRUE(outer.within(inner.lower()) && outer.within(inner.upper()));
}

TEST(Panels, HoldTheirContentsInTheMiddleAndDoNotOverlap) {
    std::vector<gmRect> extents;
    for (int i = 1; i <= 7; ++i) {
        extents.emplace_back(gmVector<2>(1000.0 * i, -50.0 * i), gmVector<2>(40.0 * i, 300.0 / i));
        const std::vector<Panel> panels = layOut(extents);
        ASSERT_EQ(panels.size(), extents.size());
        for (std::size_t a = 0; a < panels.size(); ++a) {
            const gmRect content = contentOf(panels[a], extents[a]);
            expectInside(content, panels[a].frame);
            const gmVector<2> middle = content.origin() + content.size() / 2.0;
            const gmVector<2> frameMiddle = panels[a].frame.origin() + panels[a].frame.size() / 2.0;
            EXPECT_NEAR(middle.distance(frameMiddle), 0.0, 1e-6);
            for (std::size_t b = 0; b < a; ++b)
                EXPECT_FALSE(panels[a].frame.overlaps(panels[b].frame));
        }
    }
}

TEST(Panels, ShareAScaleInARowWhenContentsAreOfSimilarSize) {
    const auto panels = layOut({gmRect({0, 0}, {100, 80}), gmRect({500, 500}, {60, 90})});
    EXPECT_EQ(panels[0].frame.origin().y(), panels[1].frame.origin().y());
    EXPECT_EQ(panels[0].scale(), panels[1].scale());
}

TEST(Panels, MakeContentsOfDifferentSizeEquallyLarge) {
    const std::vector<gmRect> extents{gmRect({0, 0}, {1, 1}), gmRect({0, 0}, {1000, 1000})};
    const auto panels = layOut(extents);
    EXPECT_NEAR(contentOf(panels[0], extents[0]).size().x(), contentOf(panels[1], extents[1]).size().x(), nearly);
}

TEST(Panels, FillTheWidthOfThePictureInEveryRow) {
    const auto panels = layOut(std::vector<gmRect>(5, gmRect({0, 0}, {100, 70})));
    EXPECT_LT(panels[0].frame.origin().y(), panels[4].frame.origin().y());
    double right = 0.0;
    for (const Panel& panel : panels)
        right = std::max(right, panel.frame.upper().x());
    EXPECT_NEAR(panels[4].frame.upper().x(), right, nearly);
    EXPECT_EQ(panels[0].frame.origin().x(), 0.0);
}

TEST(Panels, GiveAPointAndAStraightLineRoom) {
    const auto panels = layOut({gmRect({5, 5}, {0, 0}), gmRect({0, 0}, {0, 10})});
    for (const Panel& panel : panels) {
        EXPECT_GT(panel.frame.size().x(), 50.0);
        EXPECT_GT(panel.frame.size().y(), 50.0);
        EXPECT_GT(panel.scale(), 0.0);
    }
    EXPECT_TRUE(layOut({}).empty());
}

MeasuredFile measured(const std::string& wkt, gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep) {
    return support::measured(support::taken(wkt, mode));
}

std::string picture(const std::vector<MeasuredFile>& files) {
    std::ostringstream out;
    mokshape::writePicture(out, files);
    return out.str();
}

std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

const std::string outlineColor = "stroke=\"#1f3654\"";
const std::string holeColor = "stroke=\"#7a92ad\"";
const std::string crossingColor = "stroke=\"#c4302b\"";
const std::string replacedColor = "stroke=\"#f0bab4\"";
const std::string boxColor = "stroke=\"#cdbe96\"";
const std::string ellipseColor = "stroke=\"#269686\"";
const std::string centreColor = "stroke=\"#e06c28\"";

TEST(Picture, DrawsOutlinesBelowTheirMeasures) {
    const std::string svg = picture({measured("POLYGON((2 0,6 0,8 2,8 6,6 8,2 8,0 6,0 2,2 0),(3 3,4 3,4 4,3 3))")});
    const std::size_t overlay = svg.find("<g id=\"overlay\"");
    ASSERT_NE(overlay, std::string::npos);
    const std::string below = svg.substr(0, overlay);
    const std::string above = svg.substr(overlay);
    EXPECT_EQ(countOf(below, outlineColor), 1u);
    EXPECT_EQ(countOf(below, holeColor), 1u);
    EXPECT_EQ(countOf(above, boxColor), 1u);
    EXPECT_EQ(countOf(above, ellipseColor), 1u);
    EXPECT_EQ(countOf(above, centreColor), 2u);
    EXPECT_EQ(countOf(svg, crossingColor), 0u);
}

TEST(Picture, GivesOutlinesThatCrossThemselvesAnotherColour) {
    const std::string svg = picture({measured("POLYGON((0 0,4 4,4 0,0 4,0 0))")});
    EXPECT_EQ(countOf(svg, crossingColor), 1u);
    EXPECT_EQ(countOf(svg, outlineColor), 0u);
}

TEST(Picture, DrawsEveryEdgeOfAnOutline) {
    const std::string svg = picture({measured("LINESTRING(0 0,4 0,4 3,8 3)")});
    std::smatch path;
    ASSERT_TRUE(std::regex_search(svg, path, std::regex(outlineColor + " d=\"([^\"]*)\"")));
    EXPECT_EQ(countOf(path.str(1), "L"), 3u);
}

TEST(Picture, KeepsAnEllipseThatFitsBadlyInItsPanel) {
    // Almost on a line: the ellipse is many times as long as the outline.
    const std::string svg = picture({measured("LINESTRING(0 0,1 0.01,2 0,3 0.012,4 0,5 0.009,6 0.02)")});
    std::smatch box;
    ASSERT_TRUE(std::regex_search(svg, box, std::regex("viewBox=\"\\S+ \\S+ (\\S+) (\\S+)\"")));
    EXPECT_LT(mokshape::parseNumber(box.str(1)).value(), 1000.0);
    EXPECT_LT(mokshape::parseNumber(box.str(2)).value(), 1000.0);
}

TEST(Picture, OfNothingIsAnEmptyPicture) {
    const std::string svg = picture({measured("POLYGON EMPTY")});
    EXPECT_THAT(svg, HasSubstr("</svg>"));
    EXPECT_THAT(svg, Not(HasSubstr("<path")));
}

TEST(Picture, RefusesOutlinesBeyondTheRangeOfNumbers) {
    const std::string error = "a.wkt: the outlines are too large to draw";
    EXPECT_EQ(support::fileErrorOf([] { picture({measured("LINESTRING(-1e308 0,1e308 0)")}); }), error);
    EXPECT_EQ(support::fileErrorOf([] { picture({measured("LINESTRING(0 0,1e305 0)")}); }), error);
}

TEST(Picture, ShowsFaintlyWhatWasCleanedAndOverItWhatBecameOfIt) {
    const std::string svg =
        picture({measured("POLYGON((0 0,4 4,4 0,0 4,0 0));POLYGON((9 0,9 4,5 2,9 0))", gmContourDefs::eRegularize)});
    EXPECT_EQ(countOf(svg, replacedColor), 1u);
    EXPECT_EQ(countOf(svg, crossingColor), 0u);
    EXPECT_EQ(countOf(svg, outlineColor), 2u);
    EXPECT_LT(svg.find(replacedColor), svg.find(outlineColor));
}

TEST(Picture, MarksAHoleThatCrossesItselfAndNotItsOutline) {
    const std::string svg = picture({measured("POLYGON((0 0,9 0,9 9,0 9,0 0),(2 2,4 4,4 2,2 4,2 2))")});
    EXPECT_EQ(countOf(svg, crossingColor), 1u);
    EXPECT_EQ(countOf(svg, outlineColor), 1u);
    EXPECT_EQ(countOf(svg, holeColor), 0u);
}

TEST(Picture, HasRoomForWhatWasCleaned) {
    MeasuredFile file = measured("POLYGON((0 0,1 0,1 1,0 0))");
    file.regions.replaced = support::taken("POLYGON((0 0,400 0,400 400,0 0))").file.outlines;
    const std::string svg = picture({file});
    std::smatch box;
    ASSERT_TRUE(std::regex_search(svg, box, std::regex("viewBox=\"\\S+ \\S+ (\\S+) (\\S+)\"")));
    EXPECT_LT(mokshape::parseNumber(box.str(1)).value(), 1000.0);
}

std::string beforeAndAfter(const std::string& wkt) {
    const mokshape::OutlineFile before = support::taken(wkt).file;
    std::ostringstream out;
    const mokshape::RegionFile after = support::taken(wkt, gmContourDefs::eRegularize);
    mokshape::writeBeforeAndAfter(out, before, after.file.outlines, after.replaced);
    return out.str();
}

/// The x of the first point of each path of this colour.
std::vector<double> startsOf(const std::string& svg, const std::string& color) {
    std::vector<double> xs;
    const std::regex path(color + " d=\"M([^ ,L]+)");
    for (std::sregex_iterator it(svg.begin(), svg.end(), path), end; it != end; ++it)
        xs.push_back(mokshape::parseNumber((*it).str(1)).value());
    return xs;
}

TEST(BeforeAndAfter, ShowsTheCleanedOutlineRightOfWhatItWas) {
    // Wide: even so the two stand beside each other.
    const std::string svg =
        beforeAndAfter("POLYGON((0 0,90 4,90 0,0 4,0 0),(95 0,96 0,96 1,95 0));LINESTRING(0 5,90 5)");
    const std::vector<double> crossing = startsOf(svg, crossingColor);
    const std::vector<double> plain = startsOf(svg, outlineColor);
    const std::vector<double> holes = startsOf(svg, holeColor);
    ASSERT_EQ(crossing.size(), 1u);
    ASSERT_EQ(plain.size(), 3u);
    ASSERT_EQ(holes.size(), 2u);
    EXPECT_LT(plain[0], 700.0);
    EXPECT_LT(crossing[0], 700.0);
    EXPECT_GT(plain[1], 700.0);
    EXPECT_GT(plain[2], 700.0);
    EXPECT_GT(holes[1], holes[0] + 600.0);
}

TEST(BeforeAndAfter, OfNothingIsAnEmptyPicture) {
    EXPECT_THAT(beforeAndAfter("POLYGON EMPTY"), Not(HasSubstr("<path")));
}

TEST(BeforeAndAfter, RefusesOutlinesBeyondTheRangeOfNumbers) {
    EXPECT_EQ(support::fileErrorOf([] { beforeAndAfter("LINESTRING(0 0,1e305 0)"); }),
              "a.wkt: the outlines are too large to draw");
}

}  // namespace
