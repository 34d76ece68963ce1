#include "tools/mokshape/report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>

#include "tools/io/geojson.h"
#include "tools/io/text.h"
#include "tools/io/wkt.h"
#include "tools/mokshape/progress.h"
#include "tools/mokshape/table.h"

namespace {

using mokshape::Format;
using mokshape::MeasuredFile;
using mokshape::Table;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

MeasuredFile measured(const std::string& name, std::vector<mokshape::Outline> outlines) {
    std::ostringstream nowhere;
    mokshape::Progress progress(nowhere, false);
    return mokshape::measure({name, std::move(outlines)}, progress);
}

std::string report(Format format, const std::vector<MeasuredFile>& files) {
    std::ostringstream out;
    mokshape::writeReport(out, format, files);
    return out.str();
}

constexpr const char* rectangleWithHole =
    R"({"type":"Feature","properties":{"label":1},"geometry":{"type":"Polygon","coordinates":
    [[[1,1],[5,1],[5,4],[1,4],[1,1]],[[2,2],[3,2],[3,3],[2,2]]]}})";

/// The end of an outline's CSV row, of numbers that depend on how the library rounds.
std::string formatted(const char* json, std::size_t index) {
    const mokshape::Measures m = measured("", mokshape::readGeoJson(json)).measures.at(index);
    std::string row;
    for (const double number :
         {*m.length, *m.area, m.centre->x(), m.centre->y(), m.box->origin().x(), m.box->origin().y(), m.box->size().x(),
          m.box->size().y(), *m.diameter, m.ellipse->ellipse.center().x(), m.ellipse->ellipse.center().y(),
          2.0 * m.ellipse->ellipse.xRadius(), 2.0 * m.ellipse->ellipse.yRadius(), 0.0, m.ellipse->residual})
        row += mokshape::formatNumber(number) + ',';
    return row + "false\n";
}

TEST(TableReport, AlignsItsColumnsAndRounds) {
    EXPECT_EQ(
        report(Format::eTable, {measured("a.geojson", mokshape::readGeoJson(rectangleWithHole))}),
        "                                     centre             bounding box                          ellipse        "
        "self-\n"
        "label   vertices  length    area       x      y       x      y  width height  diameter   major  minor angle  "
        "crossing\n"
        "1              4  14.000  12.000  3.0000 2.5000  1.0000 1.0000 4.0000 3.0000    5.0000  5.0000 5.0000   0.0  "
        "no\n"
        "1 hole         3   3.414   0.500  2.6667 2.3333  2.0000 2.0000 1.0000 1.0000    1.4142  1.4142 1.4142   0.0  "
        "no\n"
        "\n"
        "2 outlines, 7 vertices, 0 self-crossing\n");
}

TEST(TableReport, ShowsDashesForMissingMeasures) {
    EXPECT_EQ(report(Format::eTable, {measured("a.wkt", mokshape::readWkt("POLYGON EMPTY"))}),
              "                                        centre bounding box                   ellipse       self-\n"
              "feature  label  vertices  length  area  x y  x y width height  diameter  major minor angle  crossing\n"
              "1        0             0       -     -  - -  - -     -      -         -      -     -     -  no\n"
              "\n"
              "1 outline, 0 vertices, 0 self-crossing\n");
}

TEST(TableReport, NamesEachOfSeveralFilesAndCountsThemTogether) {
    const auto bowTie = mokshape::readWkt("POLYGON((0 0,4 4,4 0,0 4,0 0))");
    const std::string text = report(
        Format::eTable, {measured("one.wkt", bowTie), measured("none\x1b.geojson", {}), measured("two.wkt", bowTie)});
    EXPECT_THAT(text, StartsWith("one.wkt\n"));
    EXPECT_THAT(text, HasSubstr("  yes\n\nnone?.geojson\n\ntwo.wkt\n"));
    EXPECT_THAT(text, EndsWith("  yes\n\n2 outlines, 8 vertices, 2 self-crossing\n"));
}

TEST(TableReport, OfNoOutlineIsItsSummary) {
    EXPECT_EQ(report(Format::eTable, {measured("a.geojson", {})}), "0 outlines, 0 vertices, 0 self-crossing\n");
}

TEST(TableReport, NumbersPartsOfAFeature) {
    const std::string text =
        report(Format::eTable, {measured("a.wkt", mokshape::readWkt("MULTILINESTRING((0 0,1 1),(2 2,3 4))"))});
    EXPECT_THAT(text, HasSubstr("\n1        0 line "));
    EXPECT_THAT(text, HasSubstr("\n1.2      0 line "));
}

TEST(CsvReport, WritesNumbersThatRoundTripAndNothingForMissingOnes) {
    EXPECT_EQ(report(Format::eCsv, {measured("a.geojson", mokshape::readGeoJson(rectangleWithHole)),
                                    measured("b.wkt", mokshape::readWkt("LINESTRING(0 0,0.3 0.4);POLYGON EMPTY"))}),
              "file,feature,part,ring,kind,label,closed,vertices,length,area,centre_x,centre_y,box_x,box_y,box_width,"
              "box_height,diameter,ellipse_x,ellipse_y,ellipse_major,ellipse_minor,ellipse_angle,ellipse_residual,"
              "self_crossing\n"
              "a.geojson,1,1,1,outer,1,true,4,14,12,3,2.5,1,1,4,3,5,3,2.5,5,5,0,0,false\n"
              "a.geojson,1,1,2,hole,1,true,3," +
                  formatted(rectangleWithHole, 1) +
                  "b.wkt,1,1,1,line,0,false,2,0.5,,0.15,0.2,0,0,0.3,0.4,0.5,,,,,,,false\n"
                  "b.wkt,2,1,1,outer,0,true,0,,,,,,,,,,,,,,,,false\n");
}

TEST(CsvReport, QuotesNamesAsSpreadsheetsExpect) {
    const auto line = mokshape::readWkt("LINESTRING(0 0,1 1)");
    EXPECT_THAT(report(Format::eCsv, {measured("a,\"b\".wkt", line)}), HasSubstr("\n\"a,\"\"b\"\".wkt\",1,"));
    EXPECT_THAT(report(Format::eCsv, {measured("a\nb", line)}), HasSubstr("\n\"a\nb\",1,"));
}

TEST(JsonReport, IsOneDocumentWithEveryMeasure) {
    const auto files = {measured("a.geojson", mokshape::readGeoJson(rectangleWithHole)),
                        measured("b.wkt", mokshape::readWkt("POLYGON EMPTY"))};
    const auto document = nlohmann::json::parse(report(Format::eJson, files));
    EXPECT_EQ(document["outlines"].size(), 3u);
    EXPECT_EQ(document["outlines"][0], nlohmann::json::parse(R"({
        "file":"a.geojson","feature":1,"part":1,"ring":1,"kind":"outer","label":1,"closed":true,"vertices":4,
        "length":14,"area":12,"centre":[3,2.5],"box":{"x":1,"y":1,"width":4,"height":3},"diameter":5,
        "ellipse":{"centre":[3,2.5],"major":5,"minor":5,"angle":0,"residual":0},"selfCrossing":false})"));
    EXPECT_EQ(document["outlines"][1]["kind"], "hole");
    EXPECT_EQ(document["outlines"][2], nlohmann::json::parse(R"({
        "file":"b.wkt","feature":1,"part":1,"ring":1,"kind":"outer","label":0,"closed":true,"vertices":0,
        "length":null,"area":null,"centre":null,"box":null,"diameter":null,"ellipse":null,"selfCrossing":false})"));
    EXPECT_EQ(document["summary"], nlohmann::json::parse(R"({"outlines":3,"vertices":7,"selfCrossing":0})"));
}

TEST(JsonReport, HoldsTheNumbersToTheBit) {
    const auto files = {measured("a.geojson", mokshape::readGeoJson(rectangleWithHole))};
    const auto hole = nlohmann::json::parse(report(Format::eJson, files))["outlines"][1];
    const mokshape::Measures& expected = files.begin()->measures[1];
    EXPECT_EQ(hole["length"].get<double>(), expected.length);
    EXPECT_EQ(hole["centre"][0].get<double>(), expected.centre->x());
    EXPECT_EQ(hole["ellipse"]["residual"].get<double>(), expected.ellipse->residual);
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
