#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/tools/archives.h"
#include "tests/tools/support.h"
#include "tools/io/archive_read.h"
#include "tools/io/archive_write.h"
#include "tools/io/file.h"
#include "tools/io/geojson.h"
#include "tools/io/wkt.h"

namespace {

using mokshape::Notes;
using mokshape::Outline;
using support::archived;
using support::heldContour;
using support::heldRegion;
using support::heldSet;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string samples = MOK_SAMPLES_DIR;
const char* const square = "0 0, 9 0, 9 9, 0 9";

std::string collection(const std::string& features) {
    return R"({"type":"FeatureCollection","features":[)" + features + "]}";
}
std::string feature(const std::string& label, const std::string& geometry) {
    return R"({"type":"Feature","properties":{"label":)" + label + R"(},"geometry":)" + geometry + '}';
}
const std::string polygon = R"({"type":"Polygon","coordinates":[[[0,0],[9,0],[9,9],[0,0]],[[6,2],[7,2],[7,3],[6,2]]]})";
const std::string line = R"({"type":"LineString","coordinates":[[0.1,1e-300],[-0.0,2]]})";
const std::string multi =
    R"({"type":"MultiPolygon","coordinates":[[[[0,0],[1,0],[1,1],[0,0]]],[],[[[5,0],[9,0],[9,9],[5,0]],[[7,1],[8,1],[8,2],[7,1]]]]})";

std::string archiveOf(const std::vector<Outline>& outlines, Notes* notes = nullptr) {
    std::ostringstream out;
    mokshape::writeArchive(out, outlines, notes);
    return out.str();
}

/// The archive that is written for these geometries.
std::string archiveOfWkt(const std::string& wkt, Notes* notes = nullptr) {
    return archiveOf(mokshape::readWkt(wkt), notes);
}

TEST(WriteArchive, MakesOfEachFeatureTheShapeThatItIs) {
    const std::string json = collection(feature("7", polygon) + ',' + feature("8", line));
    const auto plate = heldRegion("0 0, 9 0, 9 9", 7, {heldRegion("6 2, 7 2, 7 3")});
    const gmPtrHandle<gmContour> open(new gmContour({{0.1, 1e-300}, {-0.0, 2}}, false, 8));
    EXPECT_EQ(support::hex(archiveOf(mokshape::readGeoJson(json))), support::hex(archived(plate, open)));
}

TEST(WriteArchive, MakesASetOfSeveralPolygonsOfAFeature) {
    EXPECT_EQ(support::hex(archiveOf(mokshape::readGeoJson(feature("9", multi)))),
              support::hex(archived(heldSet({heldRegion("0 0, 1 0, 1 1", 9), heldRegion("", 9),
                                             heldRegion("5 0, 9 0, 9 9", 9, {heldRegion("7 1, 8 1, 8 2")})}))));
    EXPECT_EQ(support::hex(archiveOfWkt("MULTIPOLYGON(((0 0,1 0,1 1,0 0)))")),
              support::hex(archived(heldRegion("0 0, 1 0, 1 1"))));
}

TEST(WriteArchive, DividesFeaturesOfSeveralLinesOrOfLinesAndPolygons) {
    Notes notes;
    const std::string bytes = archiveOfWkt(
        "MULTILINESTRING((0 0,1 1),(2 2,3 3)) LINESTRING(7 7,8 8)"
        "GEOMETRYCOLLECTION(POLYGON((0 0,9 0,9 9,0 0),(6 2,7 2,7 3,6 2)),LINESTRING(0 0,1 1))",
        &notes);
    EXPECT_EQ(support::hex(bytes),
              support::hex(archived(
                  heldContour("0 0, 1 1", false), heldContour("2 2, 3 3", false), heldContour("7 7, 8 8", false),
                  heldRegion("0 0, 9 0, 9 9", 0, {heldRegion("6 2, 7 2, 7 3")}), heldContour("0 0, 1 1", false))));
    EXPECT_THAT(notes, ElementsAre("2 features of several lines, or of lines and polygons, become a feature for each "
                                   "of them"));
}

TEST(WriteArchive, HoldsHolesThatMeetTheirOutlineAndEmptyOutlines) {
    const std::string wkt =
        "POLYGON ((0 0, 9 0, 9 9, 0 9, 0 0), (0 0, 5 1, 1 5, 0 0), (-5 3, 20 3, 20 4, -5 3))\n"
        "POLYGON EMPTY\n"
        "LINESTRING EMPTY\n"
        "MULTIPOLYGON (EMPTY, ((0 0, 1 1, 0 1, 0 0)))\n";
    const std::string bytes = archiveOfWkt(wkt);
    Notes notes;
    EXPECT_EQ(mokshape::textFor("a.wkt", mokshape::readArchive(bytes, &notes)), wkt);
    EXPECT_THAT(notes, IsEmpty());
}

TEST(WriteArchive, WritesNothingButTheHeaderWithoutOutlines) {
    EXPECT_EQ(archiveOf({}), support::header);
}

class Convert : public support::InFolder {
  protected:
    /// What the conversion says on standard error.
    std::string convert(const std::string& in, const std::string& out) const {
        const Run run = this->run("convert '" + in + "' " + out);
        EXPECT_EQ(run.status, 0) << in;
        EXPECT_EQ(run.out, "");
        return run.err;
    }
    std::string bytes(const std::string& name) const { return support::readWhole(path(name)); }
    std::string errorOf(const std::string& arguments) const {
        const Run run = this->run("convert " + arguments);
        EXPECT_EQ(run.status, 1) << arguments;
        EXPECT_EQ(run.out, "");
        return run.err;
    }
};

TEST_F(Convert, GivesTheSameFileThroughAnArchiveAsDirectly) {
    write("all.json", collection(feature("7", polygon) + ',' + feature("4294967295", multi) + ',' + feature("0", line) +
                                 ',' + R"({"type":"Polygon","coordinates":[]})" + ',' + feature("2", polygon)));
    write("none.json", collection(""));
    for (const std::string& name : {samples + "/coins.geojson", samples + "/letters.geojson",
                                    samples + "/horse.geojson", path("all.json"), path("none.json")}) {
        SCOPED_TRACE(name);
        convert(name, "direct.json");
        convert("direct.json", "direct.wkt");
        EXPECT_EQ(convert("direct.json", "a.mok"), "");
        EXPECT_EQ(convert("a.mok", "through.json"), "");
        EXPECT_EQ(bytes("through.json"), bytes("direct.json"));
        EXPECT_EQ(convert("direct.wkt", "b.mok"), "");
        EXPECT_EQ(convert("b.mok", "through.wkt"), "");
        EXPECT_EQ(bytes("through.wkt"), bytes("direct.wkt"));
        convert("a.mok", "labelless.wkt");
        EXPECT_EQ(bytes("labelless.wkt"), bytes("direct.wkt"));
        EXPECT_EQ(convert("a.mok", "c.mok"), "");
        EXPECT_EQ(bytes("c.mok"), bytes("a.mok"));
    }
}

TEST_F(Convert, LosesOnlyLabelsOnTheWayToWkt) {
    write("a.json", collection(feature("7", polygon) + ',' + feature("0", line)));
    EXPECT_EQ(convert("a.json", "a.wkt"), "mokshape: note: a.wkt: 1 feature has a label, which WKT has no place for\n");
    EXPECT_EQ(bytes("a.wkt"), "POLYGON ((0 0, 9 0, 9 9, 0 0), (6 2, 7 2, 7 3, 6 2))\nLINESTRING (0.1 1e-300, -0 2)\n");
    EXPECT_EQ(convert("a.wkt", "b.geojson"), "");
    EXPECT_EQ(bytes("b.geojson"), "{\"type\":\"FeatureCollection\",\"features\":[\n" + feature("0", polygon) + ",\n" +
                                      feature("0", line) + "\n]}\n");
}

TEST_F(Convert, DividesASetOfRegionsWithDifferentLabelsForGeoJson) {
    write("a.mok", archived(heldSet({heldRegion(square, 8), heldRegion("1 1, 2 1, 2 2", 9)})));
    EXPECT_EQ(convert("a.mok", "a.json"),
              "mokshape: note: a.json: 1 set of polygons with different labels becomes a feature for each polygon\n");
    EXPECT_EQ(support::text(mokshape::readOutlines(path("a.json")).outlines),
              "1.1.1 outer label 8: 0 0, 9 0, 9 9, 0 9\n2.1.1 outer label 9: 1 1, 2 1, 2 2\n");
    EXPECT_EQ(convert("a.mok", "b.mok"), "");
    EXPECT_EQ(bytes("b.mok"), bytes("a.mok"));
}

TEST_F(Convert, NamesWhatItLeavesOutOfTextFiles) {
    write("a.json", R"({"type":"FeatureCollection","bbox":[0,0,1,1],"features":[
        {"type":"Feature","id":5,"properties":{"label":1,"name":"x","a\u0007":2},"geometry":null},
        {"type":"Feature","properties":{"b":1,"c":1,"d":1,"e":1,"f":1},"geometry":)" +
                        line + "}]}");
    EXPECT_EQ(convert("a.json", "a.mok"),
              "mokshape: note: a.json: properties besides \"label\" are left out: \"a\\u0007\", \"b\", \"c\", \"d\", "
              "\"e\" and 2 more\n"
              "mokshape: note: a.json: members that are no outlines are left out: \"bbox\", \"id\"\n"
              "mokshape: note: a.json: 1 feature without any polygon or line is left out\n");
    write("a.wkt", "MULTIPOLYGON EMPTY; LINESTRING(0 0,1 1)");
    EXPECT_EQ(convert("a.wkt", "b.mok"), "mokshape: note: a.wkt: 1 geometry without any polygon or line is left out\n");
    EXPECT_EQ(convert("b.mok", "b.json"), "");
}

TEST_F(Convert, NamesWhatItLeavesOutOfArchives) {
    const auto hole = heldRegion("2 2, 7 2, 7 7", 3);
    write("a.mok", archived(heldRegion(square, 7, {hole}), hole));
    EXPECT_EQ(convert("a.mok", "a.json"),
              "mokshape: note: a.mok: 1 time a shape stands in one more place and is repeated there\n"
              "mokshape: note: a.mok: 1 label of a hole, or of a region in one, is left out\n");
}

TEST_F(Convert, RefusesToReplaceTheFileThatItReads) {
    write("a.mok", archived(heldRegion(square)));
    const std::string before = bytes("a.mok");
    EXPECT_EQ(errorOf("a.mok ./a.mok"), "mokshape: ./a.mok: the output would replace the file that is read\n");
    std::filesystem::create_symlink("a.mok", path("link.wkt"));
    EXPECT_EQ(errorOf("a.mok link.wkt"), "mokshape: link.wkt: the output would replace the file that is read\n");
    EXPECT_EQ(bytes("a.mok"), before);
}

TEST_F(Convert, LeavesAnOlderFileAloneWhenItFails) {
    for (const char* old : {"old.mok", "old.json", "old.wkt"})
        write(old, "old");
    write("bad.wkt", "LINESTRING(0 0,1 x)");
    write("short.mok", archived(heldRegion("0 0, 1 1")));
    write("empty", "");
    write("cut.mok", archived(heldRegion(square)).substr(0, 50));
    const std::vector<std::string> before = names();
    for (const char* old : {"old.mok", "old.json", "old.wkt"}) {
        for (const char* in : {"bad.wkt ", "short.mok ", "empty ", "cut.mok ", "missing ", ". "})
            errorOf(in + std::string(old));
        EXPECT_EQ(bytes(old), "old");
    }
    EXPECT_EQ(errorOf("short.mok old.json"),
              "mokshape: short.mok: byte 5, object 1, feature 1, part 1, ring 1: an outline needs at least 3 vertices, "
              "and this one has 2\n");
    EXPECT_EQ(names(), before);
}

TEST_F(Convert, NoticesOutputThatCannotBeWritten) {
    write("a.wkt", "LINESTRING(0 0,1 1)");
    EXPECT_EQ(errorOf("a.wkt no/a.mok"), "mokshape: no/a.mok: cannot be written: No such file or directory\n");
    std::filesystem::create_symlink("/dev/full", path("full.mok"));
    EXPECT_EQ(errorOf("a.wkt full.mok"), "mokshape: full.mok: cannot be written: No space left on device\n");
    EXPECT_EQ(errorOf("a.wkt a.txt"),
              "mokshape: a.txt: the name must end in .geojson, .json, .wkt or .mok, so that it tells what to write\n");
    const Run closed = runShell("mkfifo pipe.mok && (exec 3<>pipe.mok; sleep 0.2) & sleep 0.1; '" MOK_MOKSHAPE_PATH
                                "' convert a.wkt pipe.mok < /dev/null; test -p pipe.mok");
    EXPECT_EQ(closed.status, 0) << closed.err;
    EXPECT_THAT(names(), ElementsAre("a.wkt", "full.mok", "pipe.mok"));
}

}  // namespace
