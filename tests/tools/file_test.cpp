#include "tools/io/file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/tools/support.h"
#include "tools/io/wkt.h"

namespace {

using mokshape::PendingFile;
using mokshape::readOutlines;
using support::fileErrorOf;
using testing::ElementsAre;
using testing::HasSubstr;

class ReadOutlines : public support::InFolder {
  protected:
    std::string errorOf(const std::string& name) const {
        return fileErrorOf([&] { readOutlines(path(name)); });
    }
};

const std::string json = R"({"type":"LineString","coordinates":[[0,0],[1,2]]})";
const std::string wkt = "LINESTRING(0 0,1 2)";
const std::string expected = "1.1.1 line label 0: 0 0, 1 2\n";

TEST_F(ReadOutlines, KeepsTheNameAsGiven) {
    EXPECT_EQ(readOutlines(write("a.wkt", wkt)).name, path("a.wkt"));
}

TEST_F(ReadOutlines, GoesByTheExtension) {
    EXPECT_EQ(support::text(readOutlines(write("a.geojson", json)).outlines), expected);
    EXPECT_EQ(support::text(readOutlines(write("a.json", json)).outlines), expected);
    EXPECT_EQ(support::text(readOutlines(write("a.wkt", wkt)).outlines), expected);
    write("wrong.geojson", wkt);
    EXPECT_THAT(errorOf("wrong.geojson"), HasSubstr("not valid JSON"));
    write("wrong.wkt", json);
    EXPECT_THAT(errorOf("wrong.wkt"), HasSubstr("outlines are read from POLYGON"));
}

TEST_F(ReadOutlines, GoesByTheFirstCharacterWithoutAKnownExtension) {
    EXPECT_EQ(support::text(readOutlines(write("shapes", "\n " + json)).outlines), expected);
    EXPECT_EQ(support::text(readOutlines(write("shapes.txt", "\n " + wkt)).outlines), expected);
}

TEST_F(ReadOutlines, SkipsAByteOrderMark) {
    EXPECT_EQ(support::text(readOutlines(write("a", "\xef\xbb\xbf" + json)).outlines), expected);
    EXPECT_EQ(support::text(readOutlines(write("b", "\xef\xbb\xbf" + wkt)).outlines), expected);
}

TEST_F(ReadOutlines, RefusesUtf16) {
    write("a.geojson", std::string("\xff\xfe{\0", 4));
    EXPECT_EQ(errorOf("a.geojson"), path("a.geojson") + ": the text is UTF-16; only UTF-8 can be read");
}

TEST_F(ReadOutlines, NamesTheFileInErrors) {
    write("a.wkt", "LINESTRING(0 0)");
    EXPECT_EQ(errorOf("a.wkt"), path("a.wkt") + ": feature 1, part 1: a line needs at least 2 positions");
}

TEST_F(ReadOutlines, RefusesWhatCannotBeRead) {
    EXPECT_EQ(errorOf("missing"), path("missing") + ": cannot be opened: No such file or directory");
    EXPECT_EQ(errorOf("."), path(".") + ": cannot be read: Is a directory");
    write("empty.wkt", "");
    EXPECT_EQ(errorOf("empty.wkt"), path("empty.wkt") + ": the file is empty");
}

using PendingFileTest = support::InFolder;

TEST_F(PendingFileTest, AppearsWithItsCommit) {
    PendingFile file(path("out"), "text");
    EXPECT_FALSE(std::filesystem::exists(path("out")));
    file.commit();
    EXPECT_EQ(support::readWhole(path("out")), "text");
    EXPECT_THAT(names(), ElementsAre("out"));
}

TEST_F(PendingFileTest, LeavesNothingBehindAndTheOldFileAsItWasWithoutCommit) {
    write("out", "old");
    {
        const PendingFile file(path("out"), "new");
        EXPECT_EQ(names().size(), 2u);
    }
    EXPECT_THAT(names(), ElementsAre("out"));
    EXPECT_EQ(support::readWhole(path("out")), "old");
}

TEST_F(PendingFileTest, ReplacesAnOlderFileAndKeepsItsPermissions) {
    write("out", "a longer old text");
    ASSERT_EQ(::chmod(path("out").c_str(), 0640), 0);
    PendingFile(path("out"), "new").commit();
    EXPECT_EQ(support::readWhole(path("out")), "new");
    struct stat status {};
    ASSERT_EQ(::stat(path("out").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777u, 0640u);
}

TEST_F(PendingFileTest, ReplacesWhatASymbolicLinkLeadsTo) {
    write("real", "old");
    std::filesystem::create_symlink("real", path("link"));
    PendingFile(path("link"), "new").commit();
    EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
    EXPECT_EQ(support::readWhole(path("real")), "new");
}

TEST_F(PendingFileTest, CreatesWhatADanglingSymbolicLinkLeadsTo) {
    std::filesystem::create_symlink("real", path("link"));
    PendingFile(path("link"), "new").commit();
    EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
    EXPECT_EQ(support::readWhole(path("real")), "new");
}

TEST_F(PendingFileTest, RefusesSymbolicLinksInACircle) {
    std::filesystem::create_symlink("b", path("a"));
    std::filesystem::create_symlink("a", path("b"));
    EXPECT_EQ(fileErrorOf([&] { PendingFile(path("a"), ""); }),
              path("a") + ": cannot be written: Too many levels of symbolic links");
    EXPECT_THAT(names(), ElementsAre("a", "b"));
}

TEST_F(PendingFileTest, RefusesAFolder) {
    EXPECT_EQ(fileErrorOf([&] { PendingFile(path("."), ""); }), path(".") + ": cannot be written: Is a directory");
    EXPECT_EQ(fileErrorOf([&] { PendingFile(path("no/out"), ""); }),
              path("no/out") + ": cannot be written: No such file or directory");
    EXPECT_TRUE(names().empty());
}

TEST_F(PendingFileTest, ReportsAFullDeviceAndLeavesItInPlace) {
    PendingFile file("/dev/full", "text");
    EXPECT_EQ(fileErrorOf([&] { file.commit(); }), "/dev/full: cannot be written: No space left on device");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(PendingFileTest, KnowsTheSameFileUnderTwoNames) {
    write("a", "");
    write("b", "");
    EXPECT_TRUE(mokshape::isSameFile(path("a"), path("./a")));
    EXPECT_FALSE(mokshape::isSameFile(path("a"), path("b")));
    EXPECT_FALSE(mokshape::isSameFile(path("a"), path("missing")));
}

TEST_F(PendingFileTest, KnowsTheSameFileBeforeItIsThere) {
    EXPECT_TRUE(mokshape::isSameFile(path("new"), path("./new")));
    EXPECT_FALSE(mokshape::isSameFile(path("new"), path("newer")));
    std::filesystem::create_symlink("new", path("link"));
    EXPECT_TRUE(mokshape::isSameFile(path("link"), path("new")));
    EXPECT_TRUE(mokshape::isSameFile("new-in-the-working-folder", "./new-in-the-working-folder"));
}

TEST(TextFor, IsOfTheFormThatTheExtensionAsksFor) {
    const std::vector<mokshape::Outline> outlines = mokshape::readWkt(wkt);
    EXPECT_EQ(mokshape::textFor("a.wkt", outlines), "LINESTRING (0 0, 1 2)\n");
    for (const char* name : {"a.geojson", "a.wkt.json"})
        EXPECT_THAT(mokshape::textFor(name, outlines), HasSubstr("FeatureCollection"));
    EXPECT_EQ(fileErrorOf([&] { mokshape::textFor("wkt", outlines); }),
              "wkt: the name must end in .geojson, .json, .wkt or .mok, so that it tells what to write");
}

}  // namespace
