#include "tools/mokshape/report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>

#include "tests/tools/support.h"
#include "tools/io/geojson.h"
#include "tools/io/text.h"
#include "tools/io/wkt.h"
#include "tools/mokshape/table.h"

namespace {

using mokshape::Format;
using mokshape::MeasuredFile;
using mokshape::Table;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

MeasuredFile measured(const std::string& name, std::vector<mokshape::Outline> outlines,
                      gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep) {
    return support::measured(support::taken(name, std::move(outlines), mode));
}

std::string report(Format format, const std::vector<MeasuredFile>& files) {
    std::ostringstream out;
    mokshape::writeReport(out, format, files);
    return out.str();
}

constexpr const char* rectangleWithHole =
    R"({"type":"Feature","properties":{"label":1},"geometry":{"type":"Polygon","coordinates":
    [[[1,1],[5,1],[5,4],[1,4],[1,1]],[[1.5,1.25],[3.5,1.25],[3.5,3.25],[1.5,3.25],[1.5,1.25]]]}})";

TEST(TableReport, AlignsItsColumnsAndRounds) {
    EXPECT_EQ(
        report(Format::eTable, {measured("a.geojson", mokshape::readGeoJson(rectangleWithHole))}),
        "                                    centre                  with holes              bounding box              "
        "  "
        "          ellipse        self-\n"
        "label  vertices  length    area       x      y  holes    area      x      y       x      y  width height  "
        "diameter   major  minor angle  crossing\n"
        "1             4  14.000  12.000  3.0000 2.5000      1  8.0000 3.2500 2.6250  1.0000 1.0000 4.0000 3.0000    "
        "5.0000  5.0000 5.0000   0.0  no\n"
        "all           4       -  12.000  3.0000 2.5000      1  8.0000 3.2500 2.6250  1.0000 1.0000 4.0000 3.0000    "
        "     -       -      -     -  no\n"
        "second moments of all: xx 16, xy 0, yy 9\n"
        "\n"
        "1 outline, 4 vertices, 1 hole, 0 self-crossing\n");
}

TEST(TableReport, ShowsDashesForMissingMeasures) {
    EXPECT_EQ(report(Format::eTable, {measured("a.wkt", mokshape::readWkt("POLYGON EMPTY;LINESTRING(0 0,3 4)"))}),
              "                                            centre             with holes       bounding box            "
              "        "
              "     ellipse       self-\n"
              "feature  label   vertices  length  area       x      y  holes  area x y       x      y  width height  "
              "diameter "
              " major minor angle  crossing\n"
              "1        0              0       -     -       -      -      0     - - -       -      -      -      -    "
              "     - "
              "     -     -     -  no\n"
              "2        0 line         2  5.0000     -  1.5000 2.0000      0     - - -  0.0000 0.0000 3.0000 4.0000    "
              "5.0000 "
              "     -     -     -  no\n"
              "\n"
              "2 outlines, 2 vertices, 0 holes, 0 self-crossing\n");
}

TEST(TableReport, NamesEachOfSeveralFilesAndCountsThemTogether) {
    const auto bowTie = mokshape::readWkt("POLYGON((0 0,4 4,4 0,0 4,0 0))");
    const std::string text = report(
        Format::eTable, {measured("one.wkt", bowTie), measured("none\x1b.geojson", {}), measured("two.wkt", bowTie)});
    EXPECT_THAT(text, StartsWith("one.wkt\n"));
    EXPECT_THAT(text, HasSubstr("  yes\n\nnone?.geojson\n\ntwo.wkt\n"));
    EXPECT_THAT(text, EndsWith("  yes\n\n2 outlines, 8 vertices, 0 holes, 2 self-crossing\n"));
}

TEST(TableReport, OfNoOutlineIsItsSummary) {
    EXPECT_EQ(report(Format::eTable, {measured("a.geojson", {})}),
              "0 outlines, 0 vertices, 0 holes, 0 self-crossing\n");
}

const std::string crossingSquares = "POLYGON((0 0,4 0,4 4,0 4,0 0));POLYGON((2 2,6 2,6 6,2 6,2 2));";

TEST(TableReport, EndsWithAllPolygonsTogetherButNoLines) {
    const std::string text =
        report(Format::eTable, {measured("a.wkt", mokshape::readWkt(crossingSquares + "LINESTRING(0 0,99 0)"))});
    EXPECT_THAT(text,
                HasSubstr("\nall                     8       -  32.000   3.000 3.0000      0  32.000 3.0000 3.0000  "
                          "0.0000 0.0000  6.000 6.0000         -       -      -     -  yes\n"
                          "second moments of all: xx 74.667, xy 32, yy 74.667\n\n3 outlines, "));
    const auto noPolygon = mokshape::readWkt("LINESTRING(0 0,99 0);POLYGON EMPTY");
    EXPECT_THAT(report(Format::eTable, {measured("a.wkt", noPolygon)}), Not(HasSubstr("all")));
}

TEST(TableReport, DoesNotShowTheRoundingOfAMomentThatVanishes) {
    const auto turned = mokshape::readWkt("POLYGON((0.1 0.3,0.7 0.3,0.7 0.9,0.1 0.9,0.1 0.3))");
    const MeasuredFile file = measured("a.wkt", turned);
    ASSERT_NE((*file.all->moments)(0, 1), 0.0);
    EXPECT_THAT(report(Format::eTable, {file}), HasSubstr(": xx 0.0108, xy 0, yy 0.0108\n"));
}

TEST(TableReport, LeavesOutMomentsThatDoNotExist) {
    const std::string text =
        report(Format::eTable, {measured("a.wkt", mokshape::readWkt("POLYGON((0 0,1 0,2 0,0 0))"))});
    EXPECT_THAT(text, HasSubstr("\nall "));
    EXPECT_THAT(text, Not(HasSubstr("moments")));
}

TEST(CsvReport, HasARowForTheSetOfEachFileWithPolygons) {
    const auto line = mokshape::readWkt("LINESTRING(0 0,1 1)");
    const std::string text = report(
        Format::eCsv, {measured("a.wkt", mokshape::readWkt(crossingSquares)), measured("b.wkt", line),
                       measured("c.wkt", {}), measured("d.wkt", mokshape::readWkt("POLYGON((0 0,1 0,2 0,0 0))"))});
    EXPECT_THAT(text, HasSubstr("\na.wkt,,,set,,,8,,32,3,3,0,32,3,3,0,0,6,6,,,,,,,,true,,"));
    EXPECT_THAT(text, HasSubstr("\nd.wkt,,,set,,,3,,0,,,0,0,,,0,0,2,0,,,,,,,,false,,,,\n"));
    EXPECT_THAT(text, Not(HasSubstr("\nb.wkt,,,set")));
    EXPECT_THAT(text, Not(HasSubstr("\nc.wkt,,,set")));
}

TEST(JsonReport, HasASetForEachFileWithPolygons) {
    const auto squares = mokshape::readWkt(crossingSquares);
    const auto files = {measured("a.wkt", squares), measured("b.wkt", mokshape::readWkt("LINESTRING(0 0,1 1)")),
                        measured("c.wkt", mokshape::readWkt("POLYGON((0 0,1 0,2 0,0 0))"))};
    const auto sets = nlohmann::json::parse(report(Format::eJson, files))["sets"];
    ASSERT_EQ(sets.size(), 2u);
    EXPECT_EQ(sets[0]["file"], "a.wkt");
    EXPECT_EQ(sets[0]["polygons"], 2);
    EXPECT_EQ(sets[0]["selfCrossing"], true);
    EXPECT_EQ(sets[1]["file"], "c.wkt");
    EXPECT_TRUE(sets[1]["moments"].is_null());
    EXPECT_TRUE(sets[1]["centre"].is_null());
}

TEST(TableReport, NumbersPartsOfAFeature) {
    const std::string text =
        report(Format::eTable, {measured("a.wkt", mokshape::readWkt("MULTILINESTRING((0 0,1 1),(2 2,3 4))"))});
    EXPECT_THAT(text, HasSubstr("\n1        0 line "));
    EXPECT_THAT(text, HasSubstr("\n1.2      0 line "));
}

TEST(TableReport, TellsWhichOutlinesWereCleaned) {
    const auto outlines = mokshape::readWkt("POLYGON((0 0,4 4,4 0,0 4,0 0));POLYGON((9 0,9 4,5 2,9 0))");
    const std::string text = report(Format::eTable, {measured("a.wkt", outlines, gmContourDefs::eRegularize)});
    EXPECT_THAT(text, HasSubstr("  cleaned\n2 "));
    EXPECT_THAT(text, EndsWith("\n\n2 outlines, 9 vertices, 0 holes, 0 self-crossing, 1 cleaned\n"));
}

TEST(CsvReport, WritesNumbersThatRoundTripAndNothingForMissingOnes) {
    EXPECT_EQ(report(Format::eCsv, {measured("a.geojson", mokshape::readGeoJson(rectangleWithHole)),
                                    measured("b.wkt", mokshape::readWkt("LINESTRING(0 0,0.3 0.4);POLYGON EMPTY"))}),
              "file,feature,part,kind,label,closed,vertices,length,area,centre_x,centre_y,holes,area_with_holes,"
              "centre_with_holes_x,centre_with_holes_y,box_x,box_y,box_width,box_height,diameter,ellipse_x,ellipse_y,"
              "ellipse_major,ellipse_minor,ellipse_angle,ellipse_residual,self_crossing,cleaned,moment_xx,moment_xy,"
              "moment_yy\n"
              "a.geojson,1,1,polygon,1,true,4,14,12,3,2.5,1,8,3.25,2.625,1,1,4,3,5,3,2.5,5,5,0,0,false,false,,,\n"
              "a.geojson,,,set,,,4,,12,3,2.5,1,8,3.25,2.625,1,1,4,3,,,,,,,,false,,16,0,9.000000000000004\n"
              "b.wkt,1,1,line,0,false,2,0.5,,0.15,0.2,0,,,,0,0,0.3,0.4,0.5,,,,,,,false,false,,,\n"
              "b.wkt,2,1,polygon,0,true,0,,,,,0,,,,,,,,,,,,,,,false,false,,,\n");
}

TEST(CsvReport, QuotesNamesAsSpreadsheetsExpect) {
    const auto line = mokshape::readWkt("LINESTRING(0 0,1 1)");
    EXPECT_THAT(report(Format::eCsv, {measured("a,\"b\".wkt", line)}), HasSubstr("\n\"a,\"\"b\"\".wkt\",1,"));
    EXPECT_THAT(report(Format::eCsv, {measured("a\nb", line)}), HasSubstr("\n\"a\nb\",1,"));
}

TEST(CsvReport, TellsWhichOutlinesWereCleaned) {
    const auto bowTie = mokshape::readWkt("POLYGON((0 0,4 4,4 0,0 4,0 0))");
    EXPECT_THAT(report(Format::eCsv, {measured("a.wkt", bowTie)}), HasSubstr(",true,false,,,\na.wkt,,,set,"));
    EXPECT_THAT(report(Format::eCsv, {measured("a.wkt", bowTie, gmContourDefs::eOuterHull)}),
                HasSubstr(",false,true,,,\na.wkt,,,set,"));
}

TEST(JsonReport, IsOneDocumentWithEveryMeasure) {
    const auto files = {measured("a.geojson", mokshape::readGeoJson(rectangleWithHole)),
                        measured("b.wkt", mokshape::readWkt("POLYGON EMPTY"))};
    const auto document = nlohmann::json::parse(report(Format::eJson, files));
    EXPECT_EQ(document["outlines"].size(), 2u);
    EXPECT_EQ(document["outlines"][0], nlohmann::json::parse(R"({
        "file":"a.geojson","feature":1,"part":1,"kind":"polygon","label":1,"closed":true,"vertices":4,
        "length":14,"area":12,"centre":[3,2.5],"holes":1,"areaWithHoles":8,"centreWithHoles":[3.25,2.625],
        "box":{"x":1,"y":1,"width":4,"height":3},"diameter":5,
        "ellipse":{"centre":[3,2.5],"major":5,"minor":5,"angle":0,"residual":0},
        "selfCrossing":false,"cleaned":false})"));
    EXPECT_EQ(document["outlines"][1], nlohmann::json::parse(R"({
        "file":"b.wkt","feature":1,"part":1,"kind":"polygon","label":0,"closed":true,"vertices":0,
        "length":null,"area":null,"centre":null,"holes":0,"areaWithHoles":null,"centreWithHoles":null,
        "box":null,"diameter":null,"ellipse":null,"selfCrossing":false,"cleaned":false})"));
    EXPECT_EQ(document["sets"], nlohmann::json::parse(R"([{
        "file":"a.geojson","polygons":1,"vertices":4,"area":12,"centre":[3,2.5],"holes":1,"areaWithHoles":8,
        "centreWithHoles":[3.25,2.625],"box":{"x":1,"y":1,"width":4,"height":3},
        "moments":{"xx":16,"xy":0,"yy":9.000000000000004},"selfCrossing":false}])"));
    EXPECT_EQ(document["summary"],
              nlohmann::json::parse(R"({"outlines":2,"vertices":4,"holes":1,"selfCrossing":0,"cleaned":0})"));
}

TEST(JsonReport, HoldsTheNumbersToTheBit) {
    const char* const triangle = "POLYGON((1 1,5 1,5 4,1 1),(3 1.7,4 1.9,4.5 3,3 1.7))";
    const auto files = {measured("a.wkt", mokshape::readWkt(triangle))};
    const auto row = nlohmann::json::parse(report(Format::eJson, files))["outlines"][0];
    const mokshape::Measures& expected = files.begin()->measures[0];
    EXPECT_EQ(row["length"].get<double>(), expected.length);
    EXPECT_EQ(row["centre"][0].get<double>(), expected.centre->x());
    EXPECT_EQ(row["areaWithHoles"].get<double>(), expected.areaWithHoles);
    EXPECT_EQ(row["centreWithHoles"][1].get<double>(), expected.centreWithHoles->y());
    EXPECT_EQ(row["ellipse"]["residual"].get<double>(), expected.ellipse->residual);
}

TEST(JsonReport, IsValidForAnyFileName) {
    const std::string text = report(Format::eJson, {measured("\xff\"\n", mokshape::readWkt("LINESTRING(0 0,1 1)"))});
    EXPECT_EQ(nlohmann::json::parse(text)["outlines"][0]["file"], "\xef\xbf\xbd\"\n");
    EXPECT_EQ(nlohmann::json::parse(report(Format::eJson, {measured("a", {})}))["outlines"].size(), 0u);
}

TEST(Table, RoundsAColumnByItsLargestNumber) {
    Table table;
    table.addNumbers("", "a", {1234.567, -0.001, std::nullopt});
    table.addNumbers("", "b", {1e12, 2.5, 0.0});
    table.addNumbers("", "c", {1.23456e-9, 0.0, std::nullopt});
    EXPECT_EQ(table.text(),
              "\n"
              "     a      b           c\n"
              "1234.6  1e+12  1.2346e-09\n"
              "   0.0    2.5           0\n"
              "     -      0           -\n");
}

TEST(Table, RoundsTotalsLikeTheNumbersAboveThem) {
    Table table;
    table.addNumbers("", "a", {1234.567, -0.001}, Table::Numbers{54321.678});
    table.addNumbers("", "b", {2.5, 1.0}, Table::Numbers{1e12});
    table.addNumbers("", "c", {2.5, 1.0}, Table::Numbers{std::nullopt});
    EXPECT_EQ(table.text(),
              "\n"
              "      a      b       c\n"
              " 1234.6    2.5  2.5000\n"
              "    0.0      1  1.0000\n"
              "54321.7  1e+12       -\n");
}

TEST(Table, PutsAHeadingOverItsGroup) {
    Table table;
    table.addText("", "left", {"x"}, Table::Side::eLeft);
    table.addText("pair", "one", {"1"}, Table::Side::eRight);
    table.addText("pair", "two", {"2"}, Table::Side::eRight);
    table.addText("self-", "crossing", {"no"}, Table::Side::eLeft);
    EXPECT_EQ(table.text(),
              "       pair    self-\n"
              "left  one two  crossing\n"
              "x       1   2  no\n");
}

}  // namespace
