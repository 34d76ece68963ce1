#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "tests/tools/support.h"
#include "tools/mokshape/answers.h"
#include "tools/mokshape/points.h"

namespace {

using mokshape::Answer;
using mokshape::askRegions;
using mokshape::Format;
using mokshape::parsePoint;
using mokshape::readPoints;
using mokshape::RegionFile;
using support::taken;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

const std::string plate = "POLYGON((0 0,10 0,10 10,0 10,0 0),(4 4,6 4,6 6,4 6,4 4))";

TEST(Point, IsReadWithACommaOrABlankBetweenItsNumbers) {
    const gmVector<2> expected(1.5, -20.0);
    for (const char* text : {"1.5,-20", "1.5 -20", " 1.5 ,\t-2e1 ", "1.5\t \t-20", "+1.5, -20\r"})
        EXPECT_EQ(parsePoint(text), expected) << text;
}

TEST(Point, IsTwoFiniteNumbers) {
    for (const char* text : {"", " ", ",", "1", "1,", ",1", "1,2,3", "1 2 3", "1;2", "nan,1", "1,inf", "1,1e999", "x,1",
                             "1,2x", "(1,2)", "0x1,2", "1,,2", "--1,2"})
        EXPECT_FALSE(parsePoint(text)) << text;
}

TEST(Points, StandOneALine) {
    EXPECT_THAT(readPoints("\xef\xbb\xbf"
                           "1,2\r\n\n  \n# 7,7\n  # 8,8\n3 4"),
                ElementsAre(gmVector<2>(1, 2), gmVector<2>(3, 4)));
    EXPECT_TRUE(readPoints("").empty());
    EXPECT_TRUE(readPoints("# none\n").empty());
}

TEST(Points, NameTheLineThatIsNone) {
    EXPECT_EQ(support::fileErrorOf([] { readPoints("1,2\n\n# x\nnan\x1b,2\n3,4\n"); }),
              "line 4: a point X,Y of two finite numbers is expected, not 'nan?,2'");
}

/// "1.1 inside 4": feature and part, and the distance; of all answers.
std::vector<std::string> ask(const gmVector<2>& point, const std::vector<RegionFile>& files) {
    std::vector<std::string> texts;
    for (const Answer& answer : askRegions(point, files)) {
        EXPECT_EQ(answer.point, point);
        std::ostringstream text;
        if (answer.outline)
            text << answer.file->file.name << ' ' << answer.outline->feature << '.' << answer.outline->part;
        text << (answer.isInside ? " inside" : " outside");
        if (answer.distance)
            text << ' ' << *answer.distance;
        texts.push_back(text.str());
    }
    return texts;
}

TEST(AskRegions, FindsTheRegionThatHoldsAPointAndItsNearestBoundary) {
    EXPECT_THAT(ask({1, 5}, {taken(plate)}), ElementsAre("a.wkt 1.1 inside 1"));
    EXPECT_THAT(ask({3.5, 5}, {taken(plate)}), ElementsAre("a.wkt 1.1 inside 0.5"));
}

TEST(AskRegions, TellsThatAHoleIsNotInTheRegion) {
    EXPECT_THAT(ask({5, 5.5}, {taken(plate)}), ElementsAre("a.wkt 1.1 outside 0.5"));
}

TEST(AskRegions, FindsAnIslandInAHole) {
    const std::string island =
        "MULTIPOLYGON(((0 0,30 0,30 30,0 30,0 0),(10 10,20 10,20 20,10 20,10 10)),"
        "((12 12,18 12,18 18,12 18,12 12)))";
    EXPECT_THAT(ask({15, 16}, {taken(island)}), ElementsAre("a.wkt 1.2 inside 2"));
    EXPECT_THAT(ask({11.5, 15}, {taken(island)}), ElementsAre("a.wkt 1.2 outside 0.5"));
    EXPECT_THAT(ask({10.25, 15}, {taken(island)}), ElementsAre("a.wkt 1.1 outside 0.25"));
}

TEST(AskRegions, ListsEveryRegionThatHoldsAPointInTheOrderOfTheFiles) {
    EXPECT_THAT(ask({1, 2}, {taken("POLYGON((5 5,9 5,9 9,5 5));POLYGON((0 0,4 0,4 4,0 4,0 0))"), taken(plate)}),
                ElementsAre("a.wkt 2.1 inside 1", "a.wkt 1.1 inside 1"));
}

TEST(AskRegions, NamesTheFirstOfTheNearestWhereNoneHoldsThePoint) {
    const std::string three =
        "POLYGON((0 0,1 0,1 1,0 1,0 0));POLYGON((9 0,10 0,10 1,9 1,9 0));POLYGON((3 0,4 0,4 1,3 1,3 0))";
    EXPECT_THAT(ask({6.5, 0.5}, {taken(three)}), ElementsAre("a.wkt 2.1 outside 2.5"));
    EXPECT_THAT(ask({2.5, 0.5}, {taken(three)}), ElementsAre("a.wkt 3.1 outside 0.5"));
    EXPECT_THAT(ask({2, 0.5}, {taken(three)}), ElementsAre("a.wkt 1.1 outside 1"));
}

TEST(AskRegions, TakesNoLineForARegion) {
    EXPECT_THAT(ask({1, 1}, {taken("LINESTRING(0 0,2 0,2 2,0 2,0 0);POLYGON EMPTY")}), ElementsAre(" outside"));
    EXPECT_THAT(ask({1, 1}, {}), ElementsAre(" outside"));
}

TEST(AskRegions, LeavesOutADistanceBeyondTheRangeOfNumbers) {
    EXPECT_THAT(ask({-1e308, -1e308}, {taken("POLYGON((1e308 1e308,1.1e308 1e308,1e308 1.1e308,1e308 1e308))")}),
                ElementsAre("a.wkt 1.1 outside"));
}

using Inside = support::InFolder;

TEST_F(Inside, PrintsATableOfItsAnswers) {
    write("a.wkt", "MULTIPOLYGON(((20 0,30 0,30 10,20 0)),((0 0,10 0,10 10,0 10,0 0),(4 4,6 4,6 6,4 6,4 4)))");
    const Run run = this->run("inside a.wkt --point 1,5 --point=-0.5,5 --point -2.5,5");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out,
              "point                                       to the\n"
              "   x y  lies               feature  label  boundary\n"
              "   1 5  inside             1.2      0        1.0000\n"
              "-0.5 5  in none, nearest:  1.2      0        0.5000\n"
              "-2.5 5  in none, nearest:  1.2      0        2.5000\n"
              "\n"
              "3 points, 1 in a region\n");
}

TEST_F(Inside, NamesTheFilesWhereThereAreSeveral) {
    write("a.wkt", plate);
    write("b.wkt", "LINESTRING(0 0,1 1)");
    EXPECT_THAT(run("inside a.wkt b.wkt --point '1 5'").out, HasSubstr("  file   feature  label  "));
    EXPECT_THAT(run("inside a.wkt b.wkt --point 1,5").out, HasSubstr("inside  a.wkt  1        0  "));
    EXPECT_THAT(run("inside b.wkt --point 1,5").out, HasSubstr("  in none  -        -             -\n"));
}

TEST_F(Inside, WritesJsonAndCsv) {
    write("a.geojson", R"({"type":"Feature","properties":{"label":7},"geometry":{"type":"Polygon","coordinates":
        [[[0,0],[10,0],[10,10],[0,10],[0,0]]]}})");
    write("b.wkt", "LINESTRING(0 0,1 1)");
    const std::string points = " --point 0.1,5 --point 12.5,5";
    EXPECT_EQ(run("inside a.geojson --format csv" + points).out,
              "x,y,inside,file,feature,part,label,distance\n"
              "0.1,5,true,a.geojson,1,1,7,0.1\n"
              "12.5,5,false,a.geojson,1,1,7,2.5\n");
    EXPECT_EQ(run("inside b.wkt --format csv --point 1,2").out,
              "x,y,inside,file,feature,part,label,distance\n1,2,false,,,,,\n");
    const auto document = nlohmann::json::parse(run("inside a.geojson --format json" + points).out);
    EXPECT_EQ(document, nlohmann::json::parse(R"({"answers":[
        {"point":[0.1,5],"inside":true,"file":"a.geojson","feature":1,"part":1,"label":7,"distance":0.1},
        {"point":[12.5,5],"inside":false,"file":"a.geojson","feature":1,"part":1,"label":7,"distance":2.5}],
        "summary":{"points":2,"inside":1}})"));
    EXPECT_EQ(nlohmann::json::parse(run("inside b.wkt --format json --point 1,2").out)["answers"][0],
              nlohmann::json::parse(R"({"point":[1,2],"inside":false,"file":null,"feature":null,"part":null,
                                        "label":null,"distance":null})"));
}

TEST_F(Inside, CountsAPointInSeveralRegionsOnce) {
    write("a.wkt", plate + plate);
    const Run run = this->run("inside a.wkt --point 1,5");
    EXPECT_THAT(run.out, EndsWith("\n1 point, 1 in a region\n"));
}

TEST_F(Inside, TakesPointsBeforeAndAfterTheFile) {
    write("a.wkt", plate);
    const Run run = this->run("inside --point 1,5 a.wkt --point -1,5 --format csv");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(run.out, EndsWith("\n1,5,true,a.wkt,1,1,0,1\n-1,5,false,a.wkt,1,1,0,1\n"));
}

TEST_F(Inside, ReadsItsPointsFromStandardInput) {
    write("a.wkt", plate);
    write("points.txt", "# x,y\n1,5\n\n12 5");
    const Run run = this->run("inside a.wkt --format csv <points.txt");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(run.out, EndsWith("\n1,5,true,a.wkt,1,1,0,1\n12,5,false,a.wkt,1,1,0,2\n"));
}

TEST_F(Inside, AsksCleanedRegionsWhenToldTo) {
    // With a loop inward at its lower edge.
    write("a.wkt", "POLYGON((0 0,6 0,6 3,4 3,4 -1,10 -1,10 10,0 10,0 0))");
    EXPECT_THAT(run("inside a.wkt --point 5,1.5 --format csv").out, HasSubstr("5,1.5,false"));
    EXPECT_THAT(run("inside a.wkt --point 5,1.5 --format csv --mode outer-hull").out, HasSubstr("5,1.5,true"));
}

TEST_F(Inside, RefusesWhatIsNoPointAndPrintsNothingElse) {
    write("a.wkt", plate);
    const auto expectRefusal = [&](const std::string& command, const std::string& error) {
        const Run run = this->run(command);
        EXPECT_EQ(run.status, 1) << command;
        EXPECT_EQ(run.out, "") << command;
        EXPECT_EQ(run.err, "mokshape: " + error + '\n') << command;
    };
    const std::string option = "--point: X,Y of two finite numbers is expected, not ";
    expectRefusal("inside a.wkt --point 1,5 --point 1,nan", option + "'1,nan'");
    expectRefusal("inside a.wkt --point ''", option + "''");
    const std::string input = "standard input: ";
    expectRefusal("inside a.wkt </dev/null", input + "no point in it");
    write("bad.txt", "1,5\n1;5\n");
    expectRefusal("inside a.wkt <bad.txt", input + "line 2: a point X,Y of two finite numbers is expected, not '1;5'");
    expectRefusal("inside a.wkt <&-", input + "cannot be read: Bad file descriptor");
    write("touching.wkt", "POLYGON((0 0,9 0,9 9,0 0),(9 5,8 5,8 6,9 5))");
    expectRefusal("inside a.wkt touching.wkt --point 1,5",
                  "touching.wkt: feature 1, part 1, ring 2: holes cannot intersect region");
}

TEST_F(Inside, NoticesOutputThatCannotBeWritten) {
    write("a.wkt", plate);
    for (const char* format : {"table", "json", "csv"}) {
        const Run run = this->run(std::string("inside a.wkt --point 1,5 >/dev/full --format ") + format);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.err, "mokshape: standard output cannot be written: No space left on device\n");
    }
    EXPECT_EQ(run("inside a.wkt --point 1,5 >&-").status, 1);
}

TEST_F(Inside, AnswersForALetterOfTheSamples) {
    // The o with label 42: its counter, its body, and the paper left of it.
    const Run run = this->run("inside '" MOK_SAMPLES_DIR
                              "/letters.geojson' --format json --point 53,63.5 --point 48,63.5 --point 45,63.5");
    const auto answers = nlohmann::json::parse(run.out)["answers"];
    ASSERT_EQ(answers.size(), 3u);
    EXPECT_EQ(answers[0]["inside"], false);
    EXPECT_EQ(answers[0]["label"], 42);
    EXPECT_EQ(answers[1]["inside"], true);
    EXPECT_EQ(answers[1]["label"], 42);
    EXPECT_EQ(answers[2]["inside"], false);
}

}  // namespace
