// What becomes of polygons that cross each other, and what the command says of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/tools/support.h"
#include "tools/io/file.h"
#include "tools/io/geojson.h"
#include "tools/mokshape/merging.h"

namespace {

using mokshape::Merged;
using mokshape::mergePolygons;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr auto outerHull = gmContourDefs::eOuterHull;
constexpr auto regularize = gmContourDefs::eRegularize;

const std::string first = "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0))\n";
const std::string second = "POLYGON ((2 2, 6 2, 6 6, 2 6, 2 2))\n";
const std::string both = "POLYGON ((0 0, 4 0, 4 2, 6 2, 6 6, 2 6, 2 4, 4 4, 4 2, 2 2, 2 4, 0 4, 0 0))\n";
const std::string plate = "POLYGON ((20 0, 30 0, 30 10, 20 10, 20 0), (24 4, 26 4, 26 6, 24 6, 24 4))\n";
const std::string bar = "POLYGON ((0 0, 10 0, 10 2, 0 2, 0 0))\n";
const std::string leftOnBar = "POLYGON ((1 -1, 3 -1, 3 1, 1 1, 1 -1))\n";
const std::string rightOnBar = "POLYGON ((6 -1, 8 -1, 8 1, 6 1, 6 -1))\n";
const std::string bowTie = "POLYGON ((0 0, 2 2, 2 0, 0 2, 0 0))\n";
const std::string cleanedBowTie = "POLYGON ((2 0, 1 1, 0 0, 0 2, 1 1, 2 2, 2 0))\n";
/// Crosses itself, and the library finds no edge to start from.
const std::string noStart = "POLYGON ((0 0, 0 2, 2 1, 0 1, 1 1, 0 0))\n";
const std::string line = "LINESTRING (0 0, 9 9, 9 0, 0 9)\n";

Merged merged(const std::string& wkt, gmContourDefs::IntersectionMode mode = regularize) {
    return mergePolygons(support::taken(wkt), mode);
}

std::string refusal(const std::string& wkt, gmContourDefs::IntersectionMode mode = regularize) {
    return support::fileErrorOf([&] { merged(wkt, mode); });
}

TEST(MergePolygons, MakesOneOutlineOfTwoThatCross) {
    const Merged result = merged(first + second);
    EXPECT_EQ(support::text(result.outlines),
              "3.1.1 outer label 0: 0 0, 4 0, 4 2, 6 2, 6 6, 2 6, 2 4, 4 4, 4 2, 2 2, 2 4, 0 4\n");
    EXPECT_EQ(support::text(result.replaced),
              "1.1.1 outer label 0: 0 0, 4 0, 4 4, 0 4\n2.1.1 outer label 0: 2 2, 6 2, 6 6, 2 6\n");
    EXPECT_EQ(result.polygonsBefore, 2u);
    EXPECT_EQ(result.polygonsAfter, 1u);
    EXPECT_EQ(result.areaBefore, 32.0);
    EXPECT_EQ(result.areaAfter, 24.0);
    EXPECT_FALSE(result.isStillCrossing);
}

TEST(MergePolygons, SaysThatOneSweepLeftACrossing) {
    const Merged once = merged(bar + leftOnBar + rightOnBar);
    EXPECT_EQ(once.polygonsBefore, 3u);
    EXPECT_EQ(once.polygonsAfter, 2u);
    EXPECT_TRUE(once.isStillCrossing);
    // The one that was not compared with what the others became keeps its place.
    ASSERT_EQ(once.outlines.size(), 2u);
    EXPECT_EQ(once.outlines[0].feature, 3u);
    EXPECT_EQ(once.outlines[1].feature, 4u);
    EXPECT_EQ(once.replaced.size(), 2u);
    const Merged twice = mergePolygons(support::taken("a.wkt", once.outlines), regularize);
    EXPECT_EQ(twice.polygonsAfter, 1u);
    EXPECT_FALSE(twice.isStillCrossing);
}

TEST(MergePolygons, KeepsWhatIsApartWithLabelsFeaturesAndHoles) {
    const auto outlines = mokshape::readGeoJson(R"({"type":"FeatureCollection","features":[
        {"type":"Feature","properties":{"label":9},"geometry":{"type":"MultiPolygon","coordinates":[
            [[[0,0],[9,0],[9,9],[0,9],[0,0]],[[4,4],[6,4],[6,6],[4,4]]],
            [[[30,0],[40,0],[40,10],[30,0]]]]}},
        {"type":"Feature","properties":{"label":4},"geometry":{"type":"LineString","coordinates":[[1,2],[3,4]]}},
        {"type":"Feature","properties":{"label":2},"geometry":{"type":"Polygon","coordinates":[]}}]})");
    for (const auto mode : {regularize, outerHull}) {
        const Merged result = mergePolygons(support::taken("a.geojson", outlines), mode);
        EXPECT_EQ(support::text(result.outlines), support::text(outlines));
        EXPECT_TRUE(result.replaced.empty());
        EXPECT_EQ(result.polygonsBefore, 3u);
        EXPECT_EQ(result.polygonsAfter, 3u);
        EXPECT_EQ(result.droppedHoles, 0u);
    }
}

TEST(MergePolygons, KeepsWhatIsApartBesideOthersThatMerge) {
    const auto outlines = mokshape::readGeoJson(R"({"type":"FeatureCollection","features":[
        {"type":"Feature","properties":{"label":9},"geometry":{"type":"MultiPolygon","coordinates":[
            [[[0,0],[4,0],[4,4],[0,4],[0,0]],[[1,1],[2,1],[2,1.5],[1,1]]],
            [[[30,0],[40,0],[40,10],[30,0]],[[38,1],[39,1],[39,2],[38,1]]]]}},
        {"type":"Feature","properties":{"label":4},"geometry":{"type":"LineString","coordinates":[[1,2],[3,4]]}},
        {"type":"Feature","properties":{"label":7},"geometry":{"type":"Polygon","coordinates":
            [[[2,2],[6,2],[6,6],[2,6],[2,2]]]}},
        {"type":"Feature","properties":{"label":5},"geometry":{"type":"Polygon","coordinates":
            [[[50,0],[52,2],[52,0],[50,2],[50,0]],[[51.5,0.8],[51.8,1],[51.5,1.2],[51.5,0.8]]]}}]})");
    const Merged result = mergePolygons(support::taken("a.geojson", outlines), regularize);
    EXPECT_EQ(support::text(result.outlines),
              "1.2.1 outer label 9: 30 0, 40 0, 40 10\n"
              "1.2.2 hole label 9: 38 1, 39 1, 39 2\n"
              "2.1.1 line label 4: 1 2, 3 4\n"
              "4.1.1 outer label 5: 52 0, 51 1, 50 0, 50 2, 51 1, 52 2\n"
              "5.1.1 outer label 0: 0 0, 4 0, 4 2, 6 2, 6 6, 2 6, 2 4, 4 4, 4 2, 2 2, 2 4, 0 4\n");
    EXPECT_EQ(result.replaced.size(), 5u);
    EXPECT_EQ(result.droppedHoles, 2u);
    EXPECT_EQ(result.polygonsBefore, 4u);
    EXPECT_EQ(result.polygonsAfter, 3u);
}

TEST(MergePolygons, LeavesAPolygonInsideAnotherAlone) {
    const std::string nested = "POLYGON((0 0,9 0,9 9,0 9,0 0));POLYGON((3 3,4 3,4 4,3 3))";
    const Merged result = merged(nested);
    EXPECT_EQ(support::text(result.outlines), support::text(support::taken(nested).file.outlines));
    EXPECT_FALSE(result.isStillCrossing);
}

TEST(MergePolygons, DoesNotLookAtHoles) {
    // The second lies across the hole of the first.
    const std::string across = "POLYGON((0 0,9 0,9 9,0 9,0 0),(3 3,6 3,6 6,3 6,3 3));POLYGON((2 4,7 4,7 5,2 5,2 4))";
    EXPECT_EQ(support::text(merged(across).outlines), support::text(support::taken(across).file.outlines));
}

TEST(MergePolygons, TakesTheOuterHullWhenToldTo) {
    // The second runs the other way: the overlap is a loop inside.
    const std::string clockwise = "POLYGON((2 2,2 6,6 6,6 2,2 2))";
    EXPECT_EQ(merged(first + clockwise, regularize).areaAfter, 24.0);
    EXPECT_EQ(merged(first + clockwise, outerHull).areaAfter, 28.0);
    EXPECT_EQ(support::text(merged(bowTie, outerHull).outlines), "1.1.1 outer label 0: 1 1, 0 0, 0 2, 1 1, 2 2, 2 0\n");
}

TEST(MergePolygons, NamesTheOutlineThatCannotBeCleanedByItself) {
    const std::string apart = "POLYGON((50 0,60 0,60 9,50 0))";
    for (const auto mode : {regularize, outerHull})
        EXPECT_EQ(
            refusal(plate + apart + noStart, mode),
            "a.wkt: feature 3, part 1, ring 1: the outline crosses itself and cannot be cleaned: invalid contour");
}

TEST(MergePolygons, NamesTwoThatCannotBeMerged) {
    // Every edge crosses two others: the trace has none to start from.
    EXPECT_EQ(refusal(plate + "POLYGON((4 0,0 2,3 4,4 0));POLYGON((0 3,1 0,4 3,0 3))"),
              "a.wkt: feature 2, part 1, ring 1: the polygon cannot be merged with feature 3, part 1, which it "
              "crosses: invalid contour");
}

TEST(MergePolygons, DoesNotNameAnOutlineThatCouldBeMergedAlthoughNotCleaned) {
    const std::string over = "POLYGON((-1.25 0.25,1.75 0.25,1.75 3.25,-1.25 3.25,-1.25 0.25))";
    EXPECT_EQ(merged(noStart + over).polygonsAfter, 1u);
    EXPECT_EQ(refusal(noStart + over + "POLYGON((54 0,50 2,53 4,54 0));POLYGON((50 3,51 0,54 3,50 3))"),
              "a.wkt: feature 3, part 1, ring 1: the polygon cannot be merged with feature 4, part 1, which it "
              "crosses: invalid contour");
}

TEST(MergePolygons, NamesTheFileWhenOnlySeveralTogetherCannotBeMerged) {
    EXPECT_EQ(refusal("POLYGON((7 19,0 5,17 14,7 19));POLYGON((15 16,10 8,12 11,15 16));"
                      "POLYGON((3 12,14 7,7 10,3 12));POLYGON((4 14,16 19,9 14,4 14))"),
              "a.wkt: polygons that cross each other cannot be merged: invalid contour");
}

TEST(MergePolygons, NamesTheOutlineOfWhichNothingIsLeft) {
    EXPECT_EQ(refusal(plate + "POLYGON((0 1,4 2,1 2,1 5,4 0,0 1,4 3,0 1))", outerHull),
              "a.wkt: feature 2, part 1, ring 1: the outline crosses itself and cannot be cleaned: next to nothing is "
              "left of it");
}

TEST(MergePolygons, NamesTheFileWhenNothingIsLeftOfWhatItMerged) {
    EXPECT_EQ(refusal("POLYGON((0 1,4 2,1 2,1 5,4 0,0 1,4 3,0 1));"
                      "POLYGON((4.25 1.75,4.75 -2,1.5 -0.5,4.25 1.75))",
                      outerHull),
              "a.wkt: polygons that cross each other cannot be merged: next to nothing is left of them");
}

using Merge = support::InFolder;

TEST_F(Merge, WritesOnePolygonForTwoThatCross) {
    write("a.wkt", first + plate + line + second);
    const Run run = this->run("merge a.wkt -o b.wkt");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "3 polygons became 2\nthe area inside outlines was 132 and is 124\n");
    EXPECT_EQ(support::readWhole(path("b.wkt")), plate + line + both);
    EXPECT_THAT(names(), ElementsAre("a.wkt", "b.wkt"));
}

TEST_F(Merge, SaysHowManyHolesAreDroppedAndThatOutlinesStillCross) {
    const std::string hole = ",(9 0.5,9.5 0.5,9.5 1,9 0.5)";
    write("a.wkt", "POLYGON((0 0,10 0,10 2,0 2,0 0)" + hole + ")" + leftOnBar + rightOnBar);
    EXPECT_EQ(run("merge a.wkt -o b.wkt").out,
              "3 polygons became 2\n"
              "the area inside outlines was 28 and is 24\n"
              "1 hole is dropped\n"
              "outlines still cross: merging the output again may join them\n");
    write("a.wkt", "POLYGON((0 0,10 0,10 2,0 2,0 0)" + hole + ",(5 1,5.5 1,5.5 1.5,5 1))" + leftOnBar);
    EXPECT_THAT(run("merge a.wkt -o b.wkt").out, HasSubstr("\n2 holes are dropped\n"));
}

TEST_F(Merge, KeepsFilesWithoutPolygonsThatCross) {
    for (const std::string& text : {line, plate, plate + first, std::string("POLYGON EMPTY\n")}) {
        write("a.wkt", text);
        for (const char* const hull : {"", " --outer-hull"}) {
            const Run run = this->run(std::string("merge a.wkt -o b.wkt") + hull);
            EXPECT_EQ(run.status, 0) << run.err;
            EXPECT_EQ(support::readWhole(path("b.wkt")), text);
        }
    }
    write("a.wkt", plate + first);
    EXPECT_EQ(run("merge a.wkt -o b.wkt").out, "2 polygons became 2\n");
    write("a.wkt", line);
    EXPECT_EQ(run("merge a.wkt -o b.wkt").out, "0 polygons became 0\n");
    write("a.geojson", R"({"type":"FeatureCollection","features":[]})");
    EXPECT_EQ(run("merge a.geojson -o b.wkt").out, "0 polygons became 0\n");
    EXPECT_EQ(support::readWhole(path("b.wkt")), "GEOMETRYCOLLECTION EMPTY\n");
}

TEST_F(Merge, TakesTheOuterHullWhenToldTo) {
    write("a.wkt", first + "POLYGON((2 2,2 6,6 6,6 2,2 2))");
    EXPECT_THAT(run("merge a.wkt -o b.wkt").out, HasSubstr(" was 32 and is 24\n"));
    EXPECT_THAT(run("merge a.wkt -o b.wkt --outer-hull").out, HasSubstr(" was 32 and is 28\n"));
}

TEST_F(Merge, WritesLabelsToGeoJson) {
    write("a.geojson", R"({"type":"FeatureCollection","features":[
        {"type":"Feature","properties":{"label":1},"geometry":{"type":"Polygon","coordinates":
            [[[0,0],[4,0],[4,4],[0,4],[0,0]]]}},
        {"type":"Feature","properties":{"label":2},"geometry":{"type":"Polygon","coordinates":
            [[[2,2],[6,2],[6,6],[2,6],[2,2]]]}},
        {"type":"Feature","properties":{"label":3},"geometry":{"type":"Polygon","coordinates":
            [[[9,0],[12,0],[12,4],[9,0]]]}}]})");
    EXPECT_EQ(run("merge a.geojson -o b.json").status, 0);
    EXPECT_EQ(support::text(mokshape::readOutlines(path("b.json")).outlines),
              "1.1.1 outer label 3: 9 0, 12 0, 12 4\n"
              "2.1.1 outer label 0: 0 0, 4 0, 4 2, 6 2, 6 6, 2 6, 2 4, 4 4, 4 2, 2 2, 2 4, 0 4\n");
}

TEST_F(Merge, DrawsTheOutlinesBeforeAndAfter) {
    write("a.wkt", first + second + plate);
    EXPECT_EQ(run("merge a.wkt -o b.wkt --svg c.svg").status, 0);
    const std::string svg = support::readWhole(path("c.svg"));
    const auto countOf = [&svg](const std::string& part) {
        std::size_t count = 0;
        for (std::size_t at = svg.find(part); at != std::string::npos; at = svg.find(part, at + 1))
            ++count;
        return count;
    };
    EXPECT_EQ(countOf("stroke=\"#c4302b\""), 2u);  // the two that were merged
    EXPECT_EQ(countOf("stroke=\"#1f3654\""), 3u);  // the plate, twice, and what became of them
    EXPECT_EQ(countOf("stroke=\"#7a92ad\""), 2u);  // the plate's hole
    EXPECT_THAT(names(), ElementsAre("a.wkt", "b.wkt", "c.svg"));
}

TEST_F(Merge, WritesNothingWhenItFails) {
    write("a.wkt", plate + bowTie + "POLYGON((50 0,50 2,52 1,50 1,51 1,50 0))");
    write("old.wkt", "old");
    const Run run = this->run("merge a.wkt -o old.wkt --svg new.svg");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "mokshape: a.wkt: feature 3, part 1, ring 1: the outline crosses itself and cannot be cleaned: invalid "
              "contour\n");
    write("a.wkt", "POLYGON((0 0,4 0,4 4,0 4,0 0),(1 2,5 1.5,3 2.5,1 2))");
    EXPECT_EQ(this->run("merge a.wkt -o old.wkt --svg new.svg").err,
              "mokshape: a.wkt: feature 1, part 1, ring 2: holes cannot intersect region\n");
    EXPECT_EQ(support::readWhole(path("old.wkt")), "old");
    EXPECT_THAT(names(), ElementsAre("a.wkt", "old.wkt"));
}

TEST_F(Merge, WritesNothingWhenOneOutputCannotBeWritten) {
    write("a.wkt", first + second);
    EXPECT_EQ(run("merge a.wkt -o no/such/b.wkt --svg c.svg").err,
              "mokshape: no/such/b.wkt: cannot be written: No such file or directory\n");
    EXPECT_EQ(run("merge a.wkt -o b.wkt --svg no/such/c.svg").status, 1);
    EXPECT_EQ(run("merge a.wkt -o b.wkt --svg c.svg >/dev/full").err,
              "mokshape: standard output cannot be written: No space left on device\n");
    EXPECT_THAT(names(), ElementsAre("a.wkt"));
}

TEST_F(Merge, RefusesOutputsThatReplaceItsInputAndFilesThatAreEmpty) {
    write("a.wkt", first + second);
    EXPECT_EQ(run("merge a.wkt -o ./a.wkt").err, "mokshape: ./a.wkt: the output would replace the file that is read\n");
    EXPECT_EQ(run("merge a.wkt -o b.wkt --svg ./b.wkt").err,
              "mokshape: ./b.wkt: the picture would replace the outlines\n");
    EXPECT_EQ(run("merge a.wkt -o b.txt").status, 1);
    EXPECT_EQ(support::readWhole(path("a.wkt")), first + second);
    write("empty.wkt", "");
    EXPECT_EQ(run("merge empty.wkt -o b.wkt").err, "mokshape: empty.wkt: the file is empty\n");
    EXPECT_THAT(names(), ElementsAre("a.wkt", "empty.wkt"));
}

}  // namespace
