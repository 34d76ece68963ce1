#include "tools/io/wkt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/tools/support.h"

namespace {

using mokshape::readWkt;
using testing::HasSubstr;

std::string read(const std::string& wkt) {
    return support::text(readWkt(wkt));
}

std::string errorOf(const std::string& wkt) {
    return support::fileErrorOf([&] { readWkt(wkt); });
}

TEST(WktReader, ReadsAPolygonWithHoles) {
    EXPECT_EQ(read("POLYGON ((0 0, 9 0, 9 9, 0 0), (5 1, 6 1, 6 2, 5 1))"),
              "1.1.1 outer label 0: 0 0, 9 0, 9 9\n1.1.2 hole label 0: 5 1, 6 1, 6 2\n");
}

TEST(WktReader, ReadsAMultiPolygon) {
    EXPECT_EQ(read("MULTIPOLYGON(((0 0,1 0,1 1,0 0)),EMPTY,((5 0,9 0,9 9,5 0),(6 1,7 1,7 2,6 1)))"),
              "1.1.1 outer label 0: 0 0, 1 0, 1 1\n"
              "1.2.1 outer label 0:\n"
              "1.3.1 outer label 0: 5 0, 9 0, 9 9\n"
              "1.3.2 hole label 0: 6 1, 7 1, 7 2\n");
}

TEST(WktReader, ReadsLineStringsAndKeepsTheirRepeatedEnd) {
    EXPECT_EQ(read("LINESTRING (0 0, 1 2, 0 0)"), "1.1.1 line label 0: 0 0, 1 2, 0 0\n");
    EXPECT_EQ(read("MULTILINESTRING ((0 0, 1 2), (3 3, 4 4))"),
              "1.1.1 line label 0: 0 0, 1 2\n1.2.1 line label 0: 3 3, 4 4\n");
}

TEST(WktReader, ReadsAGeometryCollectionAsPartsOfOneFeature) {
    EXPECT_EQ(read("GEOMETRYCOLLECTION (POLYGON ((0 0, 4 0, 4 3, 0 0)), GEOMETRYCOLLECTION (LINESTRING (0 0, 1 2)))"),
              "1.1.1 outer label 0: 0 0, 4 0, 4 3\n1.2.1 line label 0: 0 0, 1 2\n");
}

TEST(WktReader, ReadsGeometriesSeparatedByLinesOrSemicolons) {
    EXPECT_EQ(read("\n LineString(0 0,1 1)\r\nlinestring\t(2 2,\n3 3);LINESTRING(4 4,5 5);;\n"),
              "1.1.1 line label 0: 0 0, 1 1\n2.1.1 line label 0: 2 2, 3 3\n3.1.1 line label 0: 4 4, 5 5\n");
}

TEST(WktReader, ReadsEmptyGeometries) {
    EXPECT_EQ(
        read("POLYGON EMPTY\nlinestring empty\nMULTIPOLYGON EMPTY\nGEOMETRYCOLLECTION EMPTY\nLINESTRING(0 0,1 1)"),
        "1.1.1 outer label 0:\n2.1.1 line label 0:\n5.1.1 line label 0: 0 0, 1 1\n");
}

TEST(WktReader, ReadsCoordinatesInEveryNumberForm) {
    EXPECT_EQ(read("LINESTRING (+1 -.5, 1e3 2.50)"), "1.1.1 line label 0: 1 -0.5, 1000 2.5\n");
}

TEST(WktReader, RefusesARingThatIsNotClosedOrTooShort) {
    EXPECT_EQ(errorOf("LINESTRING(0 0,1 1)\nPOLYGON((0 0,4 0,4 3,0 1))"),
              "feature 2, part 1, ring 1: the ring is not closed: it starts at (0, 0) and ends at (0, 1)");
    EXPECT_THAT(errorOf("POLYGON((0 0,4 0,0 0))"), HasSubstr("and this one has 3"));
    EXPECT_EQ(errorOf("LINESTRING(0 0)"), "feature 1, part 1: a line needs at least 2 positions");
}

TEST(WktReader, RefusesCoordinatesOutsideThePlane) {
    EXPECT_EQ(errorOf("LINESTRING Z (0 0 0, 1 1 1)"),
              "feature 1, line 1: it has Z coordinates; only positions in the plane (x y) can be read");
    EXPECT_EQ(errorOf("polygon zm ((0 0 0 0))"),
              "feature 1, line 1: it has ZM coordinates; only positions in the plane (x y) can be read");
    EXPECT_EQ(errorOf("LINESTRING (0 0, 1 1 1)"),
              "feature 1, line 1: ',' or ')' is expected after position 2, not '1'; only positions in the plane (x y) "
              "can be read");
}

TEST(WktReader, RefusesWhatIsNotAFiniteNumber) {
    EXPECT_EQ(errorOf("LINESTRING (0 0,\n nan 1)"), "feature 1, line 2: a finite number is expected, not 'nan'");
    EXPECT_EQ(errorOf("LINESTRING (0 1e999)"), "feature 1, line 1: a finite number is expected, not '1e999'");
    EXPECT_EQ(errorOf("LINESTRING (0, 1)"), "feature 1, line 1: a finite number is expected, not ','");
    EXPECT_EQ(errorOf("LINESTRING (0 1,"), "feature 1, line 1: a finite number is expected, not the end of the file");
}

TEST(WktReader, RefusesOtherGeometries) {
    EXPECT_EQ(errorOf("LINESTRING (0 0, 1 1)\nPOINT (1 2)"),
              "feature 2, line 2: outlines are read from POLYGON, MULTIPOLYGON, LINESTRING, MULTILINESTRING and "
              "GEOMETRYCOLLECTION, not from 'POINT'");
    EXPECT_THAT(errorOf("SRID=4326;POLYGON EMPTY"), HasSubstr("not from 'SRID=4326'"));
    EXPECT_THAT(errorOf("POLYGON EMPTYLINESTRING"), HasSubstr("'(' or EMPTY is expected, not 'EMPTYLINESTRING'"));
}

TEST(WktReader, RefusesMissingAndSurplusParentheses) {
    EXPECT_EQ(errorOf("POLYGON (0 0, 1 1)"), "feature 1, line 1: '(' or EMPTY is expected, not '0'");
    EXPECT_EQ(errorOf("LINESTRING (0 0, 1 1"), "feature 1, line 1: ',' or ')' is expected, not the end of the file");
    EXPECT_THAT(errorOf("LINESTRING (0 0, 1 1))"), HasSubstr("feature 2, line 1: outlines are read from"));
    EXPECT_EQ(errorOf("POLYGON"), "feature 1, line 1: '(' or EMPTY is expected, not the end of the file");
}

TEST(WktReader, RefusesATextWithoutGeometry) {
    EXPECT_EQ(errorOf(""), "no geometry in it");
    EXPECT_EQ(errorOf(" ;\n"), "no geometry in it");
}

TEST(WktReader, ShowsNoControlCharactersAndNoEndlessTextsOfTheFile) {
    const std::string message = errorOf("\x1b[31m" + std::string(100000, 'x'));
    EXPECT_EQ(message.find('\x1b'), std::string::npos);
    EXPECT_LT(message.size(), 300u);
}

TEST(WktReader, EndsOnDeepNesting) {
    std::string wkt;
    for (int i = 0; i < 200000; ++i)
        wkt += "GEOMETRYCOLLECTION(";
    EXPECT_EQ(errorOf(wkt), "feature 1, line 1: nested more than 64 deep");
}

TEST(WktReader, EndsInOutlinesOrAnErrorWhateverByteIsCutOrChanged) {
    const std::string whole =
        "MULTIPOLYGON(((0 0,1 0,1 1,0 0)),EMPTY)\nGEOMETRYCOLLECTION(LINESTRING(0 -1.5e3,1 1),POLYGON EMPTY)";
    int refused = 0;
    const auto tryToRead = [&refused](const std::string& wkt) {
        try {
            readWkt(wkt);
        } catch (const mokshape::FileError&) {
            ++refused;
        }
    };
    for (std::size_t i = 0; i < whole.size(); ++i) {
        tryToRead(whole.substr(0, i));
        for (const char c : "(),;-19e.Zn \n\xff") {  // and the zero byte at its end
            std::string changed = whole;
            changed[i] = c;
            tryToRead(changed);
        }
    }
    EXPECT_GT(refused, static_cast<int>(whole.size()) * 5);
}

TEST(WktWriter, WritesAGeometryALine) {
    std::ostringstream out;
    mokshape::writeWkt(out, readWkt("polygon((0 0,9 0,9 9,0 0),(5 1,6 1,6 2,5 1));linestring(0 0,.1 2)"));
    EXPECT_EQ(out.str(), "POLYGON ((0 0, 9 0, 9 9, 0 0), (5 1, 6 1, 6 2, 5 1))\nLINESTRING (0 0, 0.1 2)\n");
}

TEST(WktWriter, WritesNoOutlineAsAGeometryThatReadsBack) {
    std::ostringstream out;
    mokshape::writeWkt(out, readWkt("MULTIPOLYGON EMPTY"));
    EXPECT_EQ(out.str(), "GEOMETRYCOLLECTION EMPTY\n");
    EXPECT_EQ(read(out.str()), "");
}

TEST(WktWriter, WritesWhatTheReaderGivesBack) {
    const auto outlines = readWkt(
        "MULTIPOLYGON(((0 0,1 0,1 1e-300,0 0)),EMPTY,((5 0,9 0,9 9,5 0),(6 1,7 1,7 2,6 1)))\n"
        "MULTILINESTRING((0 0,1 1),EMPTY,(2 2,3 4.000000000000001))\n"
        "GEOMETRYCOLLECTION(LINESTRING(0 0,1 1),POLYGON((0 0,4 0,4 3,0 0)))\n"
        "POLYGON EMPTY;LINESTRING EMPTY");
    std::ostringstream out;
    mokshape::writeWkt(out, outlines);
    EXPECT_EQ(read(out.str()), support::text(outlines));
}

}  // namespace
