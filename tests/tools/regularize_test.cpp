#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "tests/tools/support.h"
#include "tools/io/file.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Json = nlohmann::json;

using Regularize = support::InFolder;

const std::string plate = "POLYGON ((0 0, 10 0, 10 10, 0 10, 0 0), (4 4, 6 4, 6 6, 4 6, 4 4))\n";
const std::string bowTie = "POLYGON ((0 0, 2 2, 2 0, 0 2, 0 0))\n";
const std::string cleanedBowTie = "POLYGON ((2 0, 1 1, 0 0, 0 2, 1 1, 2 2, 2 0))\n";
const std::string line = "LINESTRING (0 0, 4 4, 4 0, 0 4)\n";

TEST_F(Regularize, ReplacesOutlinesThatCrossThemselvesAndNothingElse) {
    write("a.wkt", plate + bowTie + line);
    const Run run = this->run("regularize a.wkt -o b.wkt");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "1 of 3 outlines crossed itself\n");
    EXPECT_EQ(support::readWhole(path("b.wkt")), plate + cleanedBowTie + line);
    EXPECT_THAT(names(), ElementsAre("a.wkt", "b.wkt"));
}

TEST_F(Regularize, CountsEveryHoleAndNoLine) {
    write("a.wkt", "POLYGON((0 0,20 20,20 0,0 20,0 0),(2 8,4 12,4 8,2 12,2 8))");
    EXPECT_EQ(run("regularize a.wkt -o b.wkt").out, "2 of 2 outlines crossed themselves\n");
    write("c.wkt", line);
    EXPECT_EQ(run("regularize c.wkt -o b.wkt").out, "0 of 0 outlines crossed themselves\n");
}

TEST_F(Regularize, TakesTheOuterHullWhenToldTo) {
    // With a loop inward at its lower edge, of area 6.
    write("a.wkt", "POLYGON((0 0,6 0,6 3,4 3,4 -1,10 -1,10 10,0 10,0 0))");
    EXPECT_EQ(run("regularize a.wkt -o regular.wkt").status, 0);
    EXPECT_EQ(run("regularize a.wkt --outer-hull -o hull.wkt").status, 0);
    const auto areaOf = [&](const std::string& file) {
        return Json::parse(run("measure --format json " + file).out)["outlines"][0]["area"].get<double>();
    };
    EXPECT_EQ(areaOf("hull.wkt"), 106.0);
    EXPECT_EQ(areaOf("regular.wkt"), 100.0);
}

TEST_F(Regularize, KeepsLabelsFeaturesAndHoles) {
    write("a.geojson", R"({"type":"FeatureCollection","features":[
        {"type":"Feature","properties":{"label":9},"geometry":{"type":"MultiPolygon","coordinates":[
            [[[0,0],[20,20],[20,0],[0,20],[0,0]],[[18,8],[18,12],[16,10],[18,8]]],
            [[[30,0],[40,0],[40,10],[30,0]]]]}},
        {"type":"Feature","properties":{"label":4},"geometry":{"type":"LineString","coordinates":[[1,2],[3,4]]}}]})");
    EXPECT_EQ(run("regularize a.geojson -o b.json").out, "1 of 3 outlines crossed itself\n");
    EXPECT_EQ(support::text(mokshape::readOutlines(path("b.json")).outlines),
              "1.1.1 outer label 9: 20 0, 10 10, 0 0, 0 20, 10 10, 20 20\n"
              "1.1.2 hole label 9: 18 8, 18 12, 16 10\n"
              "1.2.1 outer label 9: 30 0, 40 0, 40 10\n"
              "2.1.1 line label 4: 1 2, 3 4\n");
}

TEST_F(Regularize, MeasuresTheSameAfterwardsAsMeasureDoesWithTheMode) {
    const std::string lasso = std::string("'") + MOK_SAMPLES_DIR + "/lasso.geojson'";
    EXPECT_EQ(run("regularize " + lasso + " -o out.geojson").out, "1 of 1 outline crossed itself\n");
    auto written = Json::parse(run("measure --format json out.geojson").out)["outlines"][0];
    auto direct = Json::parse(run("measure --format json --mode regularize " + lasso).out)["outlines"][0];
    EXPECT_EQ(written["selfCrossing"], false);
    EXPECT_EQ(written["cleaned"], false);
    EXPECT_EQ(direct["cleaned"], true);
    for (const char* const key : {"file", "cleaned"}) {
        written.erase(key);
        direct.erase(key);
    }
    EXPECT_EQ(written, direct);
}

TEST_F(Regularize, ReadsAndWritesByExtension) {
    write("a.wkt", bowTie);
    EXPECT_EQ(run("regularize a.wkt -o b.geojson").status, 0);
    EXPECT_EQ(run("regularize b.geojson -o c.wkt").out, "0 of 1 outline crossed themselves\n");
    EXPECT_EQ(support::readWhole(path("c.wkt")), cleanedBowTie);
}

TEST_F(Regularize, DrawsTheOutlinesBeforeAndAfter) {
    write("a.wkt", bowTie);
    EXPECT_EQ(run("regularize a.wkt -o b.wkt --svg c.svg").status, 0);
    const std::string svg = support::readWhole(path("c.svg"));
    const std::size_t before = svg.find("stroke=\"#c4302b\"");
    const std::size_t after = svg.find("stroke=\"#1f3654\"");
    EXPECT_NE(before, std::string::npos);
    EXPECT_NE(after, std::string::npos);
    EXPECT_LT(before, after);
    EXPECT_THAT(names(), ElementsAre("a.wkt", "b.wkt", "c.svg"));
}

TEST_F(Regularize, WritesNothingWhenAnOutlineCannotBeCleaned) {
    write("a.wkt", bowTie + "POLYGON((0 0,0 2,2 1,0 1,1 1,0 0))");
    write("old.wkt", "old");
    for (const char* const hull : {"", " --outer-hull"}) {
        const Run run = this->run(std::string("regularize a.wkt -o old.wkt --svg new.svg") + hull);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err,
                  "mokshape: a.wkt: feature 2, part 1, ring 1: the outline crosses itself and cannot be cleaned: "
                  "invalid contour\n");
    }
    EXPECT_EQ(support::readWhole(path("old.wkt")), "old");
    EXPECT_THAT(names(), ElementsAre("a.wkt", "old.wkt"));
}

TEST_F(Regularize, WritesNothingWhenAHoleMeetsItsOutline) {
    write("a.wkt", "POLYGON((0 0,4 4,4 0,0 4,0 0),(1 2,3 1.5,3 2.5,1 2))");
    const Run run = this->run("regularize a.wkt -o b.wkt");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "mokshape: a.wkt: feature 1, part 1, ring 2: holes cannot intersect region\n");
    EXPECT_THAT(names(), ElementsAre("a.wkt"));
}

TEST_F(Regularize, WritesNothingWhenOneOutputCannotBeWritten) {
    write("a.wkt", bowTie);
    EXPECT_EQ(run("regularize a.wkt -o no/such/b.wkt --svg c.svg").err,
              "mokshape: no/such/b.wkt: cannot be written: No such file or directory\n");
    EXPECT_EQ(run("regularize a.wkt -o b.wkt --svg no/such/c.svg").status, 1);
    EXPECT_EQ(run("regularize a.wkt -o b.wkt --svg c.svg >/dev/full").err,
              "mokshape: standard output cannot be written: No space left on device\n");
    EXPECT_EQ(run("regularize a.wkt -o b.wkt >&-").status, 1);
    EXPECT_THAT(names(), ElementsAre("a.wkt"));
    EXPECT_EQ(runShell("ln -s /dev/full full.wkt").status, 0);
    EXPECT_EQ(run("regularize a.wkt -o full.wkt --svg c.svg").err,
              "mokshape: full.wkt: cannot be written: No space left on device\n");
    EXPECT_THAT(names(), ElementsAre("a.wkt", "full.wkt"));
}

TEST_F(Regularize, RefusesOutputsThatReplaceItsInputOrEachOther) {
    write("a.wkt", bowTie);
    EXPECT_EQ(runShell("ln -s a.wkt link.wkt; ln -s new.wkt dangling.wkt").status, 0);
    const std::string input = ": the output would replace the file that is read\n";
    EXPECT_EQ(run("regularize a.wkt -o ./a.wkt").err, "mokshape: ./a.wkt" + input);
    EXPECT_EQ(run("regularize a.wkt -o link.wkt").err, "mokshape: link.wkt" + input);
    EXPECT_EQ(run("regularize a.wkt -o b.wkt --svg a.wkt").err, "mokshape: a.wkt" + input);
    const std::string each = ": the picture would replace the outlines\n";
    EXPECT_EQ(run("regularize a.wkt -o b.wkt --svg ./b.wkt").err, "mokshape: ./b.wkt" + each);
    EXPECT_EQ(run("regularize a.wkt -o new.wkt --svg dangling.wkt").err, "mokshape: dangling.wkt" + each);
    EXPECT_EQ(support::readWhole(path("a.wkt")), bowTie);
    EXPECT_THAT(names(), ElementsAre("a.wkt", "dangling.wkt", "link.wkt"));
}

TEST_F(Regularize, RefusesANameThatDoesNotTellWhatToWrite) {
    write("a.wkt", bowTie);
    EXPECT_EQ(run("regularize a.wkt -o b.txt").err,
              "mokshape: b.txt: the name must end in .geojson, .json, .wkt or .mok, so that it tells what to write\n");
    EXPECT_THAT(names(), ElementsAre("a.wkt"));
}

}  // namespace
