#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include "tests/support/edgelets.h"
#include "tests/tools/archives.h"
#include "tests/tools/support.h"
#include "tools/io/archive_read.h"
#include "tools/io/file.h"

namespace {

using mokshape::Notes;
using support::archived;
using support::archivedContent;
using support::header;
using support::heldContour;
using support::heldRegion;
using support::RegionHandle;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string samples = MOK_SAMPLES_DIR;
const char* const square = "0 0, 9 0, 9 9, 0 9";
const char* const triangle = "2 2, 7 2, 7 7";

/// Two polygons that cross, one with a hole, in a feature; a line; and a polygon of its own.
const char* const crossing = R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"label":3},"geometry":{"type":"MultiPolygon","coordinates":[
    [[[0,0],[9,0],[9,9],[0,9],[0,0]],[[1,1],[2,1],[2,2],[1,1]]],[[[5,-5],[7,-5],[7,5],[5,5],[5,-5]]]]}},
{"type":"Feature","properties":{"label":4},"geometry":{"type":"LineString","coordinates":[[0,0],[1,2]]}},
{"type":"Feature","properties":{"label":5},"geometry":{"type":"Polygon","coordinates":[
    [[30,0],[39,0],[39,9],[30,9],[30,0]],[[31,1],[32,1],[32,2],[31,1]]]}}]})";

struct Read {
    std::string outlines;
    Notes notes;
};

Read read(const std::string& bytes) {
    Read result;
    result.outlines = support::text(mokshape::readArchive(bytes, &result.notes));
    return result;
}

std::string refusal(const std::string& bytes) {
    return support::fileErrorOf([&] { mokshape::readArchive(bytes); });
}

TEST(ReadArchive, TakesEachPointerAsAFeatureAndEachShapeAsWhatItIs) {
    const Read result = read(archived(heldContour("1 2, 3 4", false, 5), heldRegion(square, 7, {heldRegion(triangle)}),
                                      support::heldSet({heldRegion(square, 8), heldRegion(triangle, 9)})));
    EXPECT_EQ(result.outlines,
              "1.1.1 line label 5: 1 2, 3 4\n"
              "2.1.1 outer label 7: 0 0, 9 0, 9 9, 0 9\n"
              "2.1.2 hole label 7: 2 2, 7 2, 7 7\n"
              "3.1.1 outer label 8: 0 0, 9 0, 9 9, 0 9\n"
              "3.2.1 outer label 9: 2 2, 7 2, 7 7\n");
    EXPECT_THAT(result.notes, IsEmpty());
}

TEST(ReadArchive, TakesAClosedContourAsAPolygon) {
    const Read result = read(archived(heldContour(triangle, true, 4)));
    EXPECT_EQ(result.outlines, "1.1.1 outer label 4: 2 2, 7 2, 7 7\n");
    EXPECT_THAT(result.notes, ElementsAre("1 closed contour becomes a polygon, like a region"));
}

TEST(ReadArchive, TakesEmptyShapesAsEmptyOutlines) {
    const Read result = read(archived(heldRegion(""), heldContour("", false)));
    EXPECT_EQ(result.outlines, "1.1.1 outer label 0:\n2.1.1 line label 0:\n");
    EXPECT_EQ(read(header).outlines, "");
}

TEST(ReadArchive, TakesWhatLiesInAHoleOfAHoleAsAFurtherPolygon) {
    const RegionHandle innermost = heldRegion("5.4 4.2, 5.6 4.2, 5.6 4.4");
    const RegionHandle island = heldRegion("5 4, 6 4, 6 5", 0, {innermost});
    const Read result =
        read(archived(heldRegion(square, 7, {heldRegion(triangle, 0, {island}), heldRegion("1 7, 2 7, 2 8")})));
    EXPECT_EQ(result.outlines,
              "1.1.1 outer label 7: 0 0, 9 0, 9 9, 0 9\n"
              "1.1.2 hole label 7: 2 2, 7 2, 7 7\n"
              "1.1.3 hole label 7: 1 7, 2 7, 2 8\n"
              "1.2.1 outer label 7: 5 4, 6 4, 6 5\n"
              "1.2.2 hole label 7: 5.4 4.2, 5.6 4.2, 5.6 4.4\n");
    EXPECT_THAT(result.notes, ElementsAre("1 region in a hole of another becomes a polygon of its own"));
}

TEST(ReadArchive, SaysWhatOutlinesDoNotHold) {
    const RegionHandle hole = heldRegion(triangle, 3);
    const RegionHandle plate = heldRegion(square, 7, {hole});
    plate->cachedVectorSize(5);
    const std::string bytes = support::stored([&](gmArchive& archive) {
        gmContourDefs::BadParams error("wrong");
        gm2XformLinear xform;
        gmRegionSet empty;
        gmRegionSet ofNothing(std::vector<RegionHandle>(1));
        for (gmPersistent* object : std::initializer_list<gmPersistent*>{plate.get(), plate.get(), nullptr, &error,
                                                                         &xform, &empty, &ofNothing})
            support::store(archive, object);
    });
    EXPECT_THAT(read(bytes).notes,
                ElementsAre("2 objects are no shapes and are left out: gm2XformLinear, gmContourDefs::BadParams",
                            "2 empty handles are left out", "1 empty region set is left out",
                            "1 region set of one region becomes a single polygon",
                            "2 times a shape stands in one more place and is repeated there",
                            "2 labels of holes, or of regions in them, are left out",
                            "2 cachedVectorSizes other than 3 are left out"));
}

TEST(ReadArchive, ReadsShapesWithEdgePointsAsPlainOnes) {
    const support::RegionTHandle plate(new support::RegionT(support::edgePlate()));
    const gmPtrHandle<support::ContourT> line(new support::ContourT(support::edgelets("1 1, 2 2")));
    line->isClosed(false);
    const gmPtrHandle<support::RegionSetT> set(
        new support::RegionSetT(std::vector<support::RegionTHandle>{support::sharedT(triangle)}));
    const Read result = read(archived(line, plate, set));
    EXPECT_EQ(result.outlines,
              "1.1.1 line label 0: 1 1, 2 2\n"
              "2.1.1 outer label 5: 0 0, 10 0, 10 10, 0 10\n"
              "2.1.2 hole label 5: 4 4, 6 4, 6 6, 4 6\n"
              "3.1.1 outer label 0: 2 2, 7 2, 7 7\n");
    EXPECT_THAT(result.notes, ElementsAre("1 region set of one region becomes a single polygon",
                                          "4 shapes with edge points become plain ones"));
    set->gmRegionSet::operator=(gmRegionSet());
    EXPECT_THAT(read(archived(set)).notes,
                testing::Contains("1 region set has other regions with edge points, which are left out"));
}

TEST(ReadArchive, ReadsOldVersions) {
    const std::string vertices = support::hex(support::contentOf(*heldContour(triangle, true)).substr(7, 53));
    const Read result = read(archivedContent("gmRegion", "00 00 00 " + vertices + " 63 03 00 00 00"));
    EXPECT_EQ(result.outlines, "1.1.1 outer label 0: 2 2, 7 2, 7 7\n");
}

TEST(ReadArchive, NamesTheObjectThatCannotBeAnOutline) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const RegionHandle good = heldRegion(square);
    EXPECT_EQ(refusal(archived(heldRegion("0 0, 1 1"))),
              "byte 5, object 1, feature 1, part 1, ring 1: an outline needs at least 3 vertices, and this one has 2");
    EXPECT_EQ(refusal(archived(heldContour("0 0", true))),
              "byte 5, object 1, feature 1, part 1, ring 1: an outline needs at least 3 vertices, and this one has 1");
    EXPECT_EQ(refusal(archived(heldContour("0 0", false))),
              "byte 5, object 1, feature 1, part 1: a line needs at least 2 vertices, and this one has 1");
    for (const char* hole : {"", "3 1", "3 1, 4 1"})
        EXPECT_THAT(refusal(archived(good, heldRegion(square, 0, {heldRegion(triangle), heldRegion(hole)}))),
                    HasSubstr(", object 2, feature 2, part 1, ring 3: an outline needs"))
            << hole;
    const gmPtrHandle<gmContour> line(new gmContour({{0, 0}, {1, nan}}, false));
    EXPECT_THAT(refusal(archived(good, RegionHandle(), line)),
                HasSubstr(", object 2, feature 3, part 1: vertex 2 is (1, nan), which is not finite"));
    const RegionHandle far(new gmRegion(std::vector<gmVector<2>>{{-infinity, 0}, {1, 0}, {1, 1}}));
    EXPECT_EQ(refusal(archived(far)),
              "byte 5, object 1, feature 1, part 1, ring 1: vertex 1 is (-inf, 0), which is not finite");
    const RegionHandle hollow = heldRegion("0 0", 0, {heldRegion(triangle)});
    hollow->points({});
    EXPECT_EQ(refusal(archived(hollow)),
              "byte 5, object 1, feature 1, part 1, ring 1: the region has holes and no vertex");
}

TEST(ReadArchive, NamesTheByteWhereItIsDamaged) {
    const std::string bytes = archived(heldRegion(square), heldRegion(triangle));
    EXPECT_EQ(refusal(bytes.substr(0, 100)),
              "byte 100, object 1, gmRegion, gmContour, cachedVectorSize: the archive ends here, 2 bytes are missing");
    EXPECT_EQ(refusal("MOKAx"), "byte 4: unknown format 120 of archives");
    EXPECT_EQ(refusal("hello"), "byte 0: not an archive: it begins with \"hell\", and archives with \"MOKA\"");
}

TEST(ReadArchive, RefusesSmallArchivesOfShapesThatStandInTooManyPlaces) {
    const std::string why = ": the shapes that stand in several places come to more than can be repeated";
    const RegionHandle large(new gmRegion(std::vector<gmVector<2>>(20000, gmVector<2>(1, 1))));
    EXPECT_THAT(refusal(support::stored([&](gmArchive& archive) {
                    for (int i = 0; i < 1000; ++i)
                        support::store(archive, large.get());
                })),
                HasSubstr(why));
    // Each holds the next twice: 2 to the 60 of the innermost.
    RegionHandle outermost = heldRegion(triangle);
    for (int i = 0; i < 60; ++i) {
        const RegionHandle next = heldRegion("0 0", 0, {outermost, outermost});
        next->points(support::points(triangle));
        outermost = next;
    }
    EXPECT_THAT(refusal(archived(outermost)), HasSubstr(why));
    const gmPtrHandle<gmRegionSet> nothing = support::heldSet(std::vector<RegionHandle>(100000));
    EXPECT_THAT(refusal(support::stored([&](gmArchive& archive) {
                    for (int i = 0; i < 100; ++i)
                        support::store(archive, nothing.get());
                })),
                HasSubstr(why));
    EXPECT_EQ(refusal(support::stored([&](gmArchive& archive) {
                  for (int i = 0; i < 100; ++i)
                      support::store(archive, large.get());
              })),
              "no error");
}

// ----- The program

class ArchiveInput : public support::InFolder {
  protected:
    std::string convert(const std::string& in, const std::string& out) const {
        const Run run = this->run("convert '" + in + "' " + out);
        EXPECT_EQ(run.status, 0) << run.err;
        return out;
    }
    /// The same command on both files, without their names.
    void expectSame(const std::string& before, const std::string& a, const std::string& b, const std::string& after) {
        SCOPED_TRACE(before);
        const Run first = run(before + ' ' + a + ' ' + after);
        const Run second = run(before + ' ' + b + ' ' + after);
        EXPECT_EQ(first.status, 0) << first.err;
        EXPECT_EQ(second.status, 0) << second.err;
        const auto nameless = [](std::string text, const std::string& name) {
            for (std::size_t at = 0; (at = text.find(name)) != std::string::npos;)
                text.replace(at, name.size(), "FILE");
            return text;
        };
        EXPECT_EQ(nameless(first.out, a), nameless(second.out, b));
        EXPECT_EQ(nameless(first.err, a), nameless(second.err, b));
    }
};

TEST_F(ArchiveInput, IsMeasuredAndAskedLikeTheFileThatItCameFrom) {
    for (const char* name : {"coins", "letters", "lasso"}) {
        convert(samples + '/' + name + ".geojson", "json.geojson");
        convert("json.geojson", "arch.mok");
        ASSERT_EQ(::rename(path("json.geojson").c_str(), path("json.json").c_str()), 0);
        ASSERT_EQ(::rename(path("arch.mok").c_str(), path("arch.bits").c_str()), 0);
        for (const char* format : {"table", "json", "csv"}) {
            const std::string option = std::string(" --format ") + format;
            expectSame("measure", "json.json", "arch.bits", option);
            expectSame("inside --point 45,70 --point 0,0 --point 300,100", "json.json", "arch.bits", option);
        }
        expectSame("measure --mode regularize --svg picture.svg", "json.json", "arch.bits", "");
    }
}

TEST_F(ArchiveInput, IsRewrittenLikeTheFileThatItCameFrom) {
    for (const std::string& name : {samples + "/lasso.geojson", write("cross.geojson", crossing)}) {
        convert(name, "a.json");
        convert("a.json", "a.mok");
        for (const char* command : {"regularize", "merge"})
            for (const char* extension : {".json", ".wkt", ".mok"}) {
                expectSame(command, "a.json", "a.mok", std::string("-o out") + extension);
                ASSERT_EQ(run(std::string(command) + " a.json -o 1" + extension).status, 0);
                ASSERT_EQ(run(std::string(command) + " a.mok -o 2" + extension).status, 0);
                EXPECT_EQ(support::readWhole(path(std::string("1") + extension)),
                          support::readWhole(path(std::string("2") + extension)));
            }
        ASSERT_EQ(run("merge a.mok -o merged.mok").status, 0);
        convert("merged.mok", "merged.wkt");
        ASSERT_EQ(run("merge a.json -o direct.wkt").status, 0);
        EXPECT_EQ(support::readWhole(path("merged.wkt")), support::readWhole(path("direct.wkt")));
    }
}

TEST_F(ArchiveInput, IsKnownByItsExtensionOrByHowItBegins) {
    const std::string bytes = archived(heldContour("0 0, 3 4", false));
    for (const char* name : {"a.mok", "a", "a.dat"}) {
        write(name, bytes);
        EXPECT_THAT(run(std::string("measure ") + name).out, HasSubstr("1 outline, 2 vertices")) << name;
    }
    write("a.wkt", bytes);
    EXPECT_THAT(run("measure a.wkt").err, HasSubstr("outlines are read from POLYGON"));
    write("b.mok", "LINESTRING(0 0,3 4)");
    EXPECT_EQ(run("measure b.mok").err,
              "mokshape: b.mok: byte 0: not an archive: it begins with \"LINE\", and archives with \"MOKA\"\n");
    write("bom", "\xef\xbb\xbf" + bytes);
    EXPECT_EQ(run("measure bom").status, 1);
    write("empty.mok", "");
    EXPECT_EQ(run("measure empty.mok").err, "mokshape: empty.mok: the file is empty\n");
    EXPECT_THAT(runShell("'" MOK_MOKSHAPE_PATH "' measure /dev/stdin < a.mok").out, HasSubstr("1 outline"));
}

TEST_F(ArchiveInput, RefusesHolesThatMeetTheirOutlineLikeTheOtherForms) {
    write("a.wkt", "POLYGON((0 0,9 0,9 9,0 9,0 0),(0 0,2 1,1 2,0 0))");
    convert("a.wkt", "a.mok");
    EXPECT_EQ(run("measure a.mok").err, "mokshape: a.mok: feature 1, part 1, ring 2: holes cannot intersect region\n");
}

TEST_F(ArchiveInput, SaysWhatARewriteOfItLoses) {
    write("a.mok", archived(heldContour(triangle, true, 5)));
    const Run run = this->run("regularize a.mok -o b.wkt");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err,
              "mokshape: note: a.mok: 1 closed contour becomes a polygon, like a region\n"
              "mokshape: note: b.wkt: 1 feature has a label, which WKT has no place for\n");
}

}  // namespace
