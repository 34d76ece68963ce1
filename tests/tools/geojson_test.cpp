#include "tools/io/geojson.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/tools/support.h"

namespace {

using mokshape::readGeoJson;
using support::fileErrorOf;
using testing::HasSubstr;
using testing::StartsWith;

std::string read(const std::string& json) {
    return support::text(readGeoJson(json));
}

std::string errorOf(const std::string& json) {
    return fileErrorOf([&] { readGeoJson(json); });
}

std::string geometry(const std::string& type, const std::string& coordinates) {
    return R"({"type":")" + type + R"(","coordinates":)" + coordinates + '}';
}

std::string feature(const std::string& properties, const std::string& inner) {
    return R"({"type":"Feature","properties":)" + properties + R"(,"geometry":)" + inner + '}';
}

std::string collection(const std::string& features) {
    return R"({"type":"FeatureCollection","features":[)" + features + "]}";
}

const std::string triangle = geometry("Polygon", "[[[0,0],[4,0],[4,3],[0,0]]]");
const std::string line = geometry("LineString", "[[0,0],[1,2]]");

TEST(GeoJsonReader, DropsTheRepeatedPositionOfARing) {
    EXPECT_EQ(read(triangle), "1.1.1 outer label 0: 0 0, 4 0, 4 3\n");
}

TEST(GeoJsonReader, ReadsAPolygonWithHoles) {
    EXPECT_EQ(
        read(geometry("Polygon", "[[[0,0],[9,0],[9,9],[0,0]],[[5,1],[6,1],[6,2],[5,1]],[[7,1],[8,1],[8,2],[7,1]]]")),
        "1.1.1 outer label 0: 0 0, 9 0, 9 9\n"
        "1.1.2 hole label 0: 5 1, 6 1, 6 2\n"
        "1.1.3 hole label 0: 7 1, 8 1, 8 2\n");
}

TEST(GeoJsonReader, ReadsAMultiPolygon) {
    EXPECT_EQ(read(geometry("MultiPolygon",
                            "[[[[0,0],[1,0],[1,1],[0,0]]],[[[5,0],[9,0],[9,9],[5,0]],[[6,1],[7,1],[7,2],[6,1]]]]")),
              "1.1.1 outer label 0: 0 0, 1 0, 1 1\n"
              "1.2.1 outer label 0: 5 0, 9 0, 9 9\n"
              "1.2.2 hole label 0: 6 1, 7 1, 7 2\n");
}

TEST(GeoJsonReader, ReadsLineStringsAndKeepsTheirRepeatedEnd) {
    EXPECT_EQ(read(line), "1.1.1 line label 0: 0 0, 1 2\n");
    EXPECT_EQ(read(geometry("LineString", "[[0,0],[1,2],[0,0]]")), "1.1.1 line label 0: 0 0, 1 2, 0 0\n");
}

TEST(GeoJsonReader, ReadsAMultiLineString) {
    EXPECT_EQ(read(geometry("MultiLineString", "[[[0,0],[1,2]],[[3,3],[4,4]]]")),
              "1.1.1 line label 0: 0 0, 1 2\n1.2.1 line label 0: 3 3, 4 4\n");
}

TEST(GeoJsonReader, ReadsAGeometryCollectionAsPartsOfOneFeature) {
    const std::string inner = R"({"type":"GeometryCollection","geometries":[)" + line + ']' + '}';
    EXPECT_EQ(read(feature(R"({"label":5})",
                           R"({"type":"GeometryCollection","geometries":[)" + triangle + ',' + inner + "]}")),
              "1.1.1 outer label 5: 0 0, 4 0, 4 3\n1.2.1 line label 5: 0 0, 1 2\n");
}

TEST(GeoJsonReader, NumbersTheFeaturesAndTakesTheirLabels) {
    EXPECT_EQ(read(collection(feature(R"({"label":7})", line) + ',' + feature("null", "null") + ',' + line + ',' +
                              collection(feature(R"({"label":4294967295,"name":"x"})", line)))),
              "1.1.1 line label 7: 0 0, 1 2\n"
              "3.1.1 line label 0: 0 0, 1 2\n"
              "4.1.1 line label 4294967295: 0 0, 1 2\n");
}

TEST(GeoJsonReader, ReadsAFeatureByItselfWithoutPropertiesOrLabel) {
    EXPECT_EQ(read(R"({"geometry":)" + line + R"(,"type":"Feature"})"), "1.1.1 line label 0: 0 0, 1 2\n");
    EXPECT_EQ(read(feature(R"({"label":null})", line)), "1.1.1 line label 0: 0 0, 1 2\n");
}

TEST(GeoJsonReader, TakesEmptyCoordinatesForAnEmptyOutline) {
    EXPECT_EQ(read(geometry("Polygon", "[]")), "1.1.1 outer label 0:\n");
    EXPECT_EQ(read(geometry("LineString", "[]")), "1.1.1 line label 0:\n");
    EXPECT_EQ(read(geometry("MultiPolygon", "[]")), "");
    EXPECT_EQ(read(collection("")), "");
}

TEST(GeoJsonReader, ReadsCoordinatesInEveryNumberForm) {
    EXPECT_EQ(read(geometry("LineString", "[[-1,2.5],[1e3,-0.1E-1]]")), "1.1.1 line label 0: -1 2.5, 1000 -0.01\n");
}

TEST(GeoJsonReader, AcceptsALabelThatIsWholeInAnyForm) {
    EXPECT_EQ(read(feature(R"({"label":7.0})", line)), "1.1.1 line label 7: 0 0, 1 2\n");
}

TEST(GeoJsonReader, RefusesOtherLabels) {
    const auto errorOfLabel = [](const std::string& label) {
        return errorOf(collection(feature("null", line) + ',' + feature(R"({"label":)" + label + '}', line)));
    };
    const std::string expected = ", a whole number from 0 to 4294967295 is expected";
    EXPECT_EQ(errorOfLabel("-1"), "feature 2: the label is -1" + expected);
    EXPECT_EQ(errorOfLabel("4294967296"), "feature 2: the label is 4294967296" + expected);
    EXPECT_EQ(errorOfLabel("1.5"), "feature 2: the label is 1.5" + expected);
    EXPECT_EQ(errorOfLabel("18446744073709551616"), "feature 2: the label is 1.8446744073709552e+19" + expected);
    EXPECT_EQ(errorOfLabel("\"7\""), "feature 2: the label is \"7\"" + expected);
    EXPECT_EQ(errorOfLabel("true"), "feature 2: the label is true" + expected);
    EXPECT_EQ(errorOfLabel("[7]"), "feature 2: the label is an array" + expected);
}

TEST(GeoJsonReader, RefusesARingThatIsNotClosed) {
    EXPECT_EQ(errorOf(geometry("Polygon", "[[[0,0],[4,0],[4,3],[0,0]],[[1,1],[2,1],[2,2],[1,1.5]]]")),
              "feature 1, part 1, ring 2: the ring is not closed: it starts at (1, 1) and ends at (1, 1.5)");
}

TEST(GeoJsonReader, RefusesARingOfTooFewPositions) {
    EXPECT_EQ(errorOf(geometry("Polygon", "[[[0,0],[4,0],[0,0]]]")),
              "feature 1, part 1, ring 1: a ring needs at least 4 positions, the last repeating the first, and this "
              "one has 3");
    EXPECT_THAT(errorOf(geometry("Polygon", "[[]]")), HasSubstr("and this one has 0"));
}

TEST(GeoJsonReader, RefusesALineOfOnePosition) {
    EXPECT_EQ(errorOf(geometry("MultiLineString", "[[[0,0],[1,1]],[[0,0]]]")),
              "feature 1, part 2: a line needs at least 2 positions");
}

TEST(GeoJsonReader, RefusesPositionsOutsideThePlane) {
    EXPECT_EQ(errorOf(geometry("LineString", "[[0,0],[1,2,3]]")),
              "feature 1, part 1: position 2 has 3 coordinates; only positions in the plane (x, y) can be read");
    EXPECT_EQ(errorOf(geometry("LineString", "[[0]]")),
              "feature 1, part 1: position 1 has 1 coordinate; only positions in the plane (x, y) can be read");
}

TEST(GeoJsonReader, RefusesCoordinatesThatAreNotNumbers) {
    EXPECT_EQ(errorOf(geometry("Polygon", R"([[[0,0],[1,"2"]]])")),
              "feature 1, part 1, ring 1: position 2 has the coordinate \"2\", which is not a number");
    EXPECT_EQ(errorOf(geometry("LineString", "[[0,null]]")),
              "feature 1, part 1: position 1 has the coordinate null, which is not a number");
    EXPECT_EQ(errorOf(geometry("LineString", "[0,1]")),
              "feature 1, part 1: position 1 is 0, not an array of two numbers");
    EXPECT_EQ(errorOf(geometry("LineString", R"([{"x":0}])")),
              "feature 1, part 1: position 1 is an object, not an array of two numbers");
}

TEST(GeoJsonReader, RefusesCoordinatesOfTheWrongDepth) {
    EXPECT_EQ(errorOf(geometry("MultiPolygon", "[5]")),
              "feature 1, part 1, ring 1: a polygon is an array of rings, not 5");
    EXPECT_EQ(errorOf(geometry("Polygon", "[5]")),
              "feature 1, part 1, ring 1: an array of positions is expected, not 5");
    EXPECT_EQ(errorOf(geometry("Polygon", "{}")),
              "feature 1: the member \"coordinates\" is an object, an array is expected");
    EXPECT_EQ(errorOf(R"({"type":"Polygon"})"),
              "feature 1: the member \"coordinates\" is missing, an array is expected");
}

TEST(GeoJsonReader, RefusesNumbersThatJsonCannotHold) {
    EXPECT_THAT(errorOf(geometry("LineString", "[[NaN,0],[1,1]]")), StartsWith("not valid JSON: "));
    EXPECT_THAT(errorOf(geometry("LineString", "[[1e999,0],[1,1]]")), StartsWith("not valid JSON: number overflow"));
}

TEST(GeoJsonReader, RefusesOtherGeometries) {
    EXPECT_EQ(errorOf(collection(line + ',' + geometry("Point", "[1,2]"))),
              "feature 2: the type is \"Point\"; outlines are read from Polygon, MultiPolygon, LineString, "
              "MultiLineString and GeometryCollection");
    EXPECT_THAT(errorOf(feature("{}", feature("{}", line))), StartsWith("feature 1: the type is \"Feature\"; "));
}

TEST(GeoJsonReader, RefusesJsonOfAnotherShape) {
    EXPECT_EQ(errorOf("[1]"), "a GeoJSON object is expected, not an array");
    EXPECT_EQ(errorOf("null"), "a GeoJSON object is expected, not null");
    EXPECT_EQ(errorOf("{}"), "the member \"type\" is missing");
    EXPECT_EQ(errorOf(R"({"type":3})"), "the member \"type\" is 3, not a string");
    EXPECT_EQ(errorOf(R"({"type":"FeatureCollection"})"), "the member \"features\" is missing, an array is expected");
    EXPECT_EQ(errorOf(R"({"type":"FeatureCollection","features":{"a":1}})"),
              "the member \"features\" is an object, an array is expected");
    EXPECT_EQ(errorOf(collection(line + ",5")), "feature 2: a GeoJSON object is expected, not 5");
    EXPECT_EQ(errorOf(R"({"type":"Feature"})"), "feature 1: the member \"geometry\" is missing");
    EXPECT_EQ(errorOf(feature("[]", line)), "feature 1: the member \"properties\" is an array, not an object");
}

TEST(GeoJsonReader, RefusesWhatIsNotJson) {
    EXPECT_THAT(errorOf("{\"type\": \n oops}"), StartsWith("not valid JSON: parse error at line 2, column"));
    EXPECT_THAT(errorOf(""), StartsWith("not valid JSON: "));
    EXPECT_THAT(errorOf("{} {}"), StartsWith("not valid JSON: "));
    EXPECT_EQ(errorOf(line + std::string("\0{}", 3)), "not valid JSON: byte 50 is zero");
    EXPECT_THAT(errorOf("\"\xff\""), StartsWith("not valid JSON: "));
}

TEST(GeoJsonReader, ShowsNoControlCharactersAndNoEndlessTextsOfTheFile) {
    const std::string message = errorOf(geometry("\\u001b[31m" + std::string(100000, 'x'), "[]"));
    EXPECT_EQ(message.find('\x1b'), std::string::npos);
    EXPECT_LT(message.size(), 300u);
    EXPECT_LT(errorOf("{\"" + std::string(100000, 'x')).size(), 400u);
}

TEST(GeoJsonReader, EndsOnDeepNesting) {
    const auto nested = [](int depth, const std::string& open, const std::string& close) {
        std::string json;
        for (int i = 0; i < depth; ++i)
            json += open;
        for (int i = 0; i < depth; ++i)
            json += close;
        return json;
    };
    constexpr int deep = 200000;
    EXPECT_EQ(errorOf(nested(deep, R"({"type":"FeatureCollection","features":[)", "]}")), "nested more than 64 deep");
    EXPECT_EQ(errorOf(nested(deep, R"({"type":"GeometryCollection","geometries":[)", "]}")),
              "feature 1: nested more than 64 deep");
    EXPECT_EQ(errorOf(nested(deep, "[", "]")), "a GeoJSON object is expected, not an array");
    EXPECT_EQ(errorOf(geometry("LineString", nested(deep, "[", "]"))),
              "feature 1, part 1: position 1 has 1 coordinate; only positions in the plane (x, y) can be read");
    EXPECT_EQ(read(nested(60, R"({"type":"FeatureCollection","features":[)", "]}")), "");
}

TEST(GeoJsonReader, EndsInOutlinesOrAnErrorWhateverByteIsCutOrChanged) {
    const std::string whole = collection(feature(R"({"label":7})", triangle) + ',' +
                                         feature("{}", geometry("MultiPolygon", "[[[[0,0],[1,0],[1,1],[0,0]]]]")));
    int refused = 0;
    const auto tryToRead = [&refused](const std::string& json) {
        try {
            readGeoJson(json);
        } catch (const mokshape::FileError&) {
            ++refused;
        }
    };
    for (std::size_t i = 0; i < whole.size(); ++i) {
        tryToRead(whole.substr(0, i));
        for (const char c : "{}[],:\"-19e.n\\ \xff") {  // and the zero byte at its end
            std::string changed = whole;
            changed[i] = c;
            tryToRead(changed);
        }
    }
    EXPECT_GT(refused, static_cast<int>(whole.size()) * 10);
}

TEST(GeoJsonWriter, WritesAFeatureALine) {
    std::ostringstream out;
    mokshape::writeGeoJson(out, readGeoJson(collection(feature(R"({"label":7})", triangle) + ',' + line)));
    EXPECT_EQ(
        out.str(),
        "{\"type\":\"FeatureCollection\",\"features\":[\n"
        R"({"type":"Feature","properties":{"label":7},"geometry":{"type":"Polygon","coordinates":[[[0,0],[4,0],[4,3],[0,0]]]}},)"
        "\n"
        R"({"type":"Feature","properties":{"label":0},"geometry":{"type":"LineString","coordinates":[[0,0],[1,2]]}})"
        "\n]}\n");
}

TEST(GeoJsonWriter, WritesNoFeatureForNoOutline) {
    std::ostringstream out;
    mokshape::writeGeoJson(out, {});
    EXPECT_EQ(out.str(), "{\"type\":\"FeatureCollection\",\"features\":[\n]}\n");
}

TEST(GeoJsonWriter, WritesWhatTheReaderGivesBack) {
    const std::string holes = "[[[0.1,0],[9,0],[9,1e300],[0.1,0]],[[5,1],[6,1],[6,2],[5,1]]]";
    const auto outlines = readGeoJson(collection(
        feature(R"({"label":3})", geometry("Polygon", holes)) + ',' +
        feature(R"({"label":4})", geometry("MultiPolygon", '[' + holes + ',' + holes + ",[]]")) + ',' +
        feature(R"({"label":5})", geometry("MultiLineString", "[[[0,0],[1,1]],[],[[2,2],[3,4.000000000000001]]]")) +
        ',' +
        feature(R"({"label":6})", R"({"type":"GeometryCollection","geometries":[)" + line + ',' + triangle + "]}") +
        ',' + geometry("Polygon", "[]") + ',' + geometry("LineString", "[]")));
    std::ostringstream out;
    mokshape::writeGeoJson(out, outlines);
    EXPECT_EQ(read(out.str()), support::text(outlines));
}

}  // namespace
