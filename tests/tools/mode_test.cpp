// What becomes of outlines that cross themselves and of holes, in files and in what is measured of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "tests/tools/support.h"
#include "tools/io/geojson.h"

namespace {

using mokshape::RegionFile;
using support::taken;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

constexpr auto keep = gmContourDefs::eKeep;
constexpr auto outerHull = gmContourDefs::eOuterHull;
constexpr auto regularize = gmContourDefs::eRegularize;

const std::string plate = "POLYGON((0 0,10 0,10 10,0 10,0 0),(4 4,6 4,6 6,4 6,4 4))";
const std::string bowTie = "POLYGON((0 0,2 2,2 0,0 2,0 0))";
/// With a loop inward at its lower edge, of area 6.
const std::string innerLoop = "POLYGON((0 0,6 0,6 3,4 3,4 -1,10 -1,10 10,0 10,0 0))";
const std::string noStart = "POLYGON((0 0,0 2,2 1,0 1,1 1,0 0))";

std::string refusal(const std::string& wkt, gmContourDefs::IntersectionMode mode) {
    return support::fileErrorOf([&] { taken(wkt, mode); });
}

TEST(TakeRegions, SetsTheHolesOfAPolygonOnItsOutline) {
    const RegionFile file = taken(plate);
    ASSERT_EQ(file.shapes.size(), 1u);
    const gmRegion& region = *file.shapes[0].region;
    EXPECT_EQ(region.area(false), 100.0);
    EXPECT_EQ(region.area(true), 96.0);
    ASSERT_EQ(region.holes().size(), 1u);
    EXPECT_FALSE(region.inside({5, 5}, true));
}

TEST(TakeRegions, LabelsARegionAsItsFeature) {
    const char* const labelled = R"({"type":"Feature","properties":{"label":7},"geometry":
        {"type":"Polygon","coordinates":[[[0,0],[2,2],[2,0],[0,2],[0,0]]]}})";
    for (const auto mode : {keep, regularize, outerHull}) {
        const RegionFile file = taken("a.geojson", mokshape::readGeoJson(labelled), mode);
        EXPECT_EQ(file.shapes[0].region->label(), 7u);
        EXPECT_EQ(file.file.outlines[0].label, 7u);
    }
}

TEST(TakeRegions, KeepsOutlinesThatCrossThemselves) {
    const RegionFile file = taken(bowTie, keep);
    EXPECT_EQ(support::text(file.file.outlines), "1.1.1 outer label 0: 0 0, 2 2, 2 0, 0 2\n");
    EXPECT_EQ(file.shapes[0].cleaned, 0u);
    EXPECT_TRUE(file.replaced.empty());
}

TEST(TakeRegions, ReplacesThemByTheirRegularisedFormOrTheirOuterHull) {
    EXPECT_EQ(support::text(taken(bowTie, regularize).file.outlines),
              "1.1.1 outer label 0: 2 0, 1 1, 0 0, 0 2, 1 1, 2 2\n");
    EXPECT_EQ(support::text(taken(bowTie, outerHull).file.outlines),
              "1.1.1 outer label 0: 1 1, 0 0, 0 2, 1 1, 2 2, 2 0\n");
    // The two differ in a loop that lies inside.
    EXPECT_EQ(taken(innerLoop, regularize).shapes[0].region->area(false), 100.0);
    EXPECT_EQ(taken(innerLoop, outerHull).shapes[0].region->area(false), 106.0);
}

TEST(TakeRegions, TellsWhatItReplaced) {
    const RegionFile file = taken(plate + bowTie, regularize);
    EXPECT_EQ(file.shapes[0].cleaned, 0u);
    EXPECT_EQ(file.shapes[1].cleaned, 1u);
    EXPECT_EQ(support::text(file.replaced), "2.1.1 outer label 0: 0 0, 2 2, 2 0, 0 2\n");
}

TEST(TakeRegions, CleansHolesAndSetsThemOnACleanedOutline) {
    const RegionFile file =
        taken("POLYGON((0 0,20 20,20 0,0 20,0 0),(18 8,18 12,16 10,18 8),(2 8,4 12,4 8,2 12,2 8))", regularize);
    EXPECT_EQ(file.shapes[0].cleaned, 2u);
    EXPECT_EQ(file.file.outlines.size(), 3u);
    const gmRegion& region = *file.shapes[0].region;
    EXPECT_EQ(region.holes().size(), 2u);
    EXPECT_EQ(region.area(false), 200.0);
    EXPECT_NEAR(region.area(true), 200.0 - 4.0 - 4.0, 1e-9);
    EXPECT_EQ(file.file.outlines[1].points, region.holes()[0]->points());
    EXPECT_EQ(file.file.outlines[2].points, region.holes()[1]->points());
    EXPECT_EQ(file.file.outlines[2].ring, 3u);
    EXPECT_EQ(file.replaced[1].ring, 3u);
}

TEST(TakeRegions, PassesLinesAndEmptyPolygonsOn) {
    const std::string others = "LINESTRING(0 0,4 4,4 0,0 4);POLYGON EMPTY;" + plate;
    for (const auto mode : {keep, regularize, outerHull}) {
        const RegionFile file = taken(others, mode);
        ASSERT_EQ(file.shapes.size(), 3u);
        EXPECT_TRUE(file.shapes[0].region.isNull());
        EXPECT_TRUE(file.shapes[0].part.isLine);
        EXPECT_TRUE(file.shapes[1].region.isNull());
        EXPECT_EQ(file.shapes[2].part.first, 2u);
        EXPECT_EQ(file.shapes[2].part.last, 4u);
        EXPECT_EQ(support::text(file.file.outlines), support::text(taken(others).file.outlines));
    }
}

TEST(TakeRegions, NamesTheHoleThatMeetsItsOutline) {
    const std::string touching =
        "LINESTRING(0 0,1 1);MULTIPOLYGON(((20 0,30 0,30 9,20 0)),"
        "((0 0,10 0,10 10,0 10,0 0),(4 4,6 4,6 6,4 4),(0 5,2 4,2 6,0 5)))";
    for (const auto mode : {keep, regularize, outerHull})
        EXPECT_EQ(refusal(touching, mode), "a.wkt: feature 2, part 2, ring 3: holes cannot intersect region");
}

TEST(TakeRegions, RefusesAHoleThatMeetsOnlyTheCleanedOutline) {
    // It touches the crossing, which is a vertex afterwards; and it crosses the outline before already.
    EXPECT_EQ(refusal("POLYGON((0 0,4 4,4 0,0 4,0 0),(1 2,3 1.5,3 2.5,1 2))", regularize),
              "a.wkt: feature 1, part 1, ring 2: holes cannot intersect region");
}

TEST(TakeRegions, AcceptsHolesOutsideTheOutlineAndInEachOther) {
    const RegionFile file =
        taken("POLYGON((0 0,9 0,9 9,0 9,0 0),(20 0,22 0,22 2,20 0),(2 2,7 2,7 7,2 2),(5 3,6 3,6 4,5 3))");
    EXPECT_EQ(file.shapes[0].region->holes().size(), 3u);
}

TEST(TakeRegions, NamesTheOutlineThatCannotBeCleaned) {
    const std::string why = "the outline crosses itself and cannot be cleaned: invalid contour";
    EXPECT_EQ(refusal(plate + noStart, regularize), "a.wkt: feature 2, part 1, ring 1: " + why);
    EXPECT_EQ(refusal(noStart, outerHull), "a.wkt: feature 1, part 1, ring 1: " + why);
    EXPECT_EQ(refusal(noStart, keep), "no error");
    EXPECT_EQ(refusal("POLYGON((-9 -9,9 -9,9 9,-9 9,-9 -9),(0 0,0 2,2 1,0 1,1 1,0 0))", regularize),
              "a.wkt: feature 1, part 1, ring 2: " + why);
}

TEST(TakeRegions, RefusesAnOutlineOfWhichNothingIsLeft) {
    EXPECT_EQ(refusal("POLYGON((0 1,4 2,1 2,1 5,4 0,0 1,4 3,0 1))", outerHull),
              "a.wkt: feature 1, part 1, ring 1: the outline crosses itself and cannot be cleaned: next to nothing is "
              "left of it");
}

using MeasureMode = support::InFolder;

nlohmann::json firstOf(const std::string& report) {
    return nlohmann::json::parse(report)["outlines"][0];
}

TEST_F(MeasureMode, IsToKeepUnlessToldOtherwise) {
    write("a.wkt", bowTie);
    EXPECT_EQ(run("measure a.wkt").out, run("measure a.wkt --mode keep").out);
    const auto kept = firstOf(run("measure a.wkt --format json").out);
    EXPECT_EQ(kept["selfCrossing"], true);
    EXPECT_EQ(kept["cleaned"], false);
    EXPECT_EQ(kept["area"], 0.0);
}

TEST_F(MeasureMode, MeasuresWhatIsLeftAfterCleaning) {
    write("a.wkt", innerLoop);
    const auto regular = firstOf(run("measure a.wkt --format json --mode regularize").out);
    const auto hull = firstOf(run("measure a.wkt --format json --mode outer-hull").out);
    for (const auto& cleaned : {regular, hull}) {
        EXPECT_EQ(cleaned["selfCrossing"], false);
        EXPECT_EQ(cleaned["cleaned"], true);
    }
    EXPECT_EQ(hull["area"], 106.0);
    EXPECT_EQ(regular["area"], 100.0);
    EXPECT_THAT(run("measure a.wkt --mode regularize").out, HasSubstr("  cleaned\n"));
    EXPECT_THAT(run("measure a.wkt --mode regularize").out, EndsWith(", 0 holes, 0 self-crossing, 1 cleaned\n"));
}

TEST_F(MeasureMode, MeasuresAPolygonAsOneRowWithItsHoles) {
    write("a.wkt", plate);
    for (const char* mode : {"keep", "regularize", "outer-hull"}) {
        const auto row = firstOf(run(std::string("measure a.wkt --format json --mode ") + mode).out);
        EXPECT_EQ(row["holes"], 1);
        EXPECT_EQ(row["area"], 100.0);
        EXPECT_EQ(row["areaWithHoles"], 96.0);
        EXPECT_NEAR(row["centreWithHoles"][0].get<double>(), 5.0, 1e-12);
    }
    EXPECT_THAT(run("measure a.wkt").out, EndsWith("\n1 outline, 4 vertices, 1 hole, 0 self-crossing\n"));
}

TEST_F(MeasureMode, PrintsAndDrawsNothingWhenAPolygonIsRefused) {
    write("a.wkt", plate);
    write("b.wkt", noStart);
    const Run run = this->run("measure a.wkt b.wkt --mode regularize --svg out.svg");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "mokshape: b.wkt: feature 1, part 1, ring 1: the outline crosses itself and cannot be cleaned: invalid "
              "contour\n");
    EXPECT_THAT(names(), ElementsAre("a.wkt", "b.wkt"));
}

}  // namespace
