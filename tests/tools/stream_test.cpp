// measure and regularize where standard input stands for the file: a record at a time.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "tests/tools/archives.h"
#include "tests/tools/stream_child.h"
#include "tests/tools/support.h"

namespace {

using support::heldRegion;
using support::StreamChild;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;
using Json = nlohmann::json;

const std::string triangle = R"({"type":"Polygon","coordinates":[[[0,0],[4,0],[4,3],[0,0]]]})";
const std::string line = R"({"type":"LineString","coordinates":[[0,0],[3,4]]})";
const std::string bowTie = R"({"type":"Polygon","coordinates":[[[0,0],[2,2],[2,0],[0,2],[0,0]]]})";
const std::string cleanedBowTie = R"({"type":"Polygon","coordinates":[[[2,0],[1,1],[0,0],[0,2],[1,1],[2,2],[2,0]]]})";

std::string feature(const std::string& members, const std::string& geometry) {
    return R"({"type":"Feature",)" + members + R"(,"geometry":)" + geometry + '}';
}

const std::string plain = feature(R"("id":7,"properties":{"label":9})", triangle);

std::string length(const std::string& archive) {
    std::string text;
    for (int i = 0; i < 4; ++i)
        text += static_cast<char>(archive.size() >> (8 * i) & 0xff);
    return text;
}

class Stream : public support::InFolder {
  protected:
    /// Runs mokshape with this text as standard input.
    Run runOn(const std::string& input, const std::string& arguments) const {
        write("in", input);
        Run run = this->run(arguments + " < in");
        return run;
    }

    /// The lines of a run that goes on behind records that are refused.
    std::vector<std::string> answers(const std::string& input, const std::string& arguments) const {
        std::vector<std::string> lines;
        std::istringstream out(runOn(input, arguments + " --keep-going").out);
        for (std::string text; std::getline(out, text);)
            lines.push_back(text);
        return lines;
    }

    std::string answer(const std::string& input, const std::string& arguments = "measure -") const {
        const std::vector<std::string> lines = answers(input, arguments);
        EXPECT_THAT(lines, SizeIs(1));
        return lines.empty() ? "" : lines.front();
    }
};

using MeasureStream = Stream;
using RegularizeStream = Stream;

// ----- What is answered

TEST_F(MeasureStream, SaysOfEachFeatureWhatTheReportSays) {
    write("a.geojson", plain);
    Json expected = Json::parse(run("measure --format json a.geojson").out)["outlines"][0];
    expected["file"] = "-";
    expected["id"] = 7;
    const Run run = runOn(plain + '\n' + plain + '\n', "measure -");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    std::istringstream out(run.out);
    for (std::string text; std::getline(out, text);)
        EXPECT_EQ(Json::parse(text), expected);
    EXPECT_THAT(run.out, StartsWith(R"({"id":7,"file":"-","feature":1,"part":1,"kind":"polygon","label":9,)"));
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 2);
}

TEST_F(MeasureStream, TakesBareGeometriesAndGivesThemNoId) {
    EXPECT_THAT(answer(line), StartsWith(R"({"file":"-","feature":1,"part":1,"kind":"line","label":0,)"));
}

TEST_F(MeasureStream, ListsTheOutlinesOfAFeatureThatHasSeveralOrNone) {
    const std::string both = R"({"type":"GeometryCollection","geometries":[)" + triangle + ',' + line + "]}";
    const Json several = Json::parse(answer(feature(R"("id":"x")", both)));
    EXPECT_EQ(several["id"], "x");
    ASSERT_EQ(several["outlines"].size(), 2u);
    EXPECT_EQ(several["outlines"][0]["area"], 6.0);
    EXPECT_EQ(several["outlines"][1]["kind"], "line");
    EXPECT_EQ(several["outlines"][1]["part"], 2);
    EXPECT_EQ(answer(feature(R"("id":"x")", "null")), R"({"id":"x","outlines":[]})");
    EXPECT_EQ(answer(R"({"type":"MultiPolygon","coordinates":[]})"), R"({"outlines":[]})");
}

TEST_F(MeasureStream, MeasuresAnEmptyOutlineLikeTheReport) {
    const Json empty = Json::parse(answer(R"({"type":"Polygon","coordinates":[]})"));
    EXPECT_EQ(empty["vertices"], 0);
    EXPECT_EQ(empty["area"], nullptr);
}

TEST_F(MeasureStream, CleansWhenToldTo) {
    const Json cleaned = Json::parse(answer(bowTie, "measure - --mode regularize"));
    EXPECT_EQ(cleaned["cleaned"], true);
    EXPECT_EQ(cleaned["vertices"], 6);
}

TEST_F(RegularizeStream, ReplacesOutlinesThatCrossThemselvesAndKeepsAllElse) {
    const std::string members =
        R"("id":"a7","properties":{"z":1.50,"label":3,"a":{"deep":[123456789012345678901]}},"title":"b\u0061d")";
    EXPECT_EQ(answer(feature(members, bowTie), "regularize -"), feature(members, cleanedBowTie));
    EXPECT_EQ(answer(feature(members, triangle), "regularize -"), feature(members, triangle));
    EXPECT_EQ(answer(bowTie, "regularize -"), feature(R"("properties":null)", cleanedBowTie));
}

TEST_F(RegularizeStream, LeavesOutABoxAroundWhatItReplaces) {
    const std::string box = R"("properties":null,"bbox":[0,0,2,2])";
    EXPECT_EQ(answer(feature(box, bowTie), "regularize -"), feature(R"("properties":null)", cleanedBowTie));
    EXPECT_EQ(answer(feature(box, triangle), "regularize -"), feature(box, triangle));
}

TEST_F(RegularizeStream, KeepsTheDigitsOfWhatItDoesNotReplace) {
    const std::string digits = R"({"type":"LineString","coordinates":[[-0,1.0],[1e2,0.1000]]})";
    EXPECT_EQ(answer(digits, "regularize -"), feature(R"("properties":null)", digits));
}

TEST_F(RegularizeStream, TakesFeaturesOfSeveralPartsAndOfNone) {
    const auto multi = [](const std::string& polygon) {
        const std::string rings = polygon.substr(polygon.find("[["));
        return R"({"type":"MultiPolygon","coordinates":[[[[5,5],[6,5],[6,6],[5,5]]],)" +
               rings.substr(0, rings.size() - 1) + "]}";
    };
    EXPECT_EQ(answer(multi(bowTie), "regularize -"), feature(R"("properties":null)", multi(cleanedBowTie)));
    const std::string none = feature(R"("properties":{})", "null");
    EXPECT_EQ(answer(none, "regularize -"), none);
}

TEST_F(RegularizeStream, WritesWhatItReadsAsItIsAgain) {
    const std::string once = answer(feature(R"("id":1,"properties":{})", bowTie), "regularize - --outer-hull");
    EXPECT_EQ(answer(once, "regularize - --outer-hull"), once);
}

// ----- Archives

TEST_F(MeasureStream, TakesArchivesWithTheirLengths) {
    const std::string plate =
        support::archived(heldRegion("0 0, 10 0, 10 10, 0 10", 5, {heldRegion("4 4, 6 4, 6 6, 4 6")}));
    const std::string set =
        support::archived(support::heldSet({heldRegion("0 0, 4 0, 4 3", 1), heldRegion("9 0, 9 1, 8 0", 2)}));
    const std::string empty = support::archived(support::RegionHandle());
    const std::vector<std::string> lines =
        answers(length(plate) + plate + length(set) + set + length(empty) + empty, "measure - --input mok");
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_EQ(Json::parse(lines[0])["areaWithHoles"], 96.0);
    EXPECT_EQ(Json::parse(lines[0])["label"], 5);
    EXPECT_EQ(Json::parse(lines[1])["outlines"][1]["label"], 2);
    EXPECT_EQ(lines[2], R"({"outlines":[]})");
}

TEST_F(RegularizeStream, MakesFeaturesOfArchives) {
    const std::string tie = support::archived(heldRegion("0 0, 2 2, 2 0, 0 2", 5));
    const std::string set =
        support::archived(support::heldSet({heldRegion("0 0, 4 0, 4 3", 1), heldRegion("9 0, 9 1, 8 0", 2)}));
    const std::string empty = support::archived(support::RegionHandle());
    EXPECT_THAT(answers(length(tie) + tie + length(set) + set + length(empty) + empty, "regularize - --input mok"),
                ElementsAre(feature(R"("properties":{"label":5})", cleanedBowTie),
                            R"({"error":"the regions have different labels, and a Feature has one"})",
                            feature(R"("properties":null)", "null")));
}

TEST_F(MeasureStream, RefusesArchivesThatAreNotOneShape) {
    const std::string two = support::archived(heldRegion("0 0, 4 0, 4 3"), heldRegion("0 0, 4 0, 4 3"));
    const std::string none = support::archived();
    const std::string other = support::archived(gmPtrHandle<gm2Rigid>(new gm2Rigid));
    EXPECT_THAT(answers(length(two) + two + length(none) + none + length(other) + other + length("") + "" +
                            length("oops") + "oops",
                        "measure - --input mok"),
                ElementsAre(R"({"error":"the archive holds 2 shapes; a single one is expected"})",
                            R"({"error":"the archive holds 0 shapes; a single one is expected"})",
                            R"({"error":"the archive holds no shape: gm2Rigid"})", HasSubstr("the archive ends here"),
                            HasSubstr("not an archive")));
}

TEST_F(MeasureStream, SaysWhichOutlineOfAnArchiveIsRefused) {
    const std::string point = support::archived(support::heldContour("1 2", false));
    EXPECT_EQ(answer(length(point) + point, "measure - --input mok"),
              R"({"error":"byte 5, object 1, part 1: a line needs at least 2 vertices, and this one has 1"})");
}

TEST_F(MeasureStream, RefusesLengthsThatCannotBe) {
    EXPECT_EQ(runOn("\xff\xff\xff\xff", "measure - --input mok").err,
              "mokshape: standard input, archive 1: the length is 4294967295 bytes, and an archive of the stream may "
              "have 16777216\n");
    EXPECT_EQ(answer(std::string("\x09\0\0\0abc", 7), "measure - --input mok"),
              R"({"error":"the stream ends after 3 of the 9 bytes of an archive"})");
    // Lines where lengths are expected: "{"typ" says what it is.
    EXPECT_EQ(runOn(plain, "measure - --input mok").status, 1);
}

// ----- Records that are refused

TEST_F(MeasureStream, StopsAtTheFirstRecordThatIsRefusedWithEverythingBeforeAnswered) {
    const Run run = runOn(plain + "\n\n" + line + "\noops\n" + line + '\n', "measure -");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 2);
    EXPECT_THAT(run.err,
                StartsWith("mokshape: standard input, line 4: not valid JSON: parse error at line 1, column 1"));
}

TEST_F(MeasureStream, AnswersEachRecordThatIsRefusedAndCountsThemAtTheEnd) {
    const std::string point = feature(R"("id":"p")", R"({"type":"Point","coordinates":[1,2]})");
    const Run run = runOn(line + '\n' + point + "\n\n" + line, "measure - --keep-going");
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.out, HasSubstr("}\n{\"id\":\"p\",\"error\":\"the type is \\\"Point\\\"; "));
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 3);
    EXPECT_EQ(run.err, "mokshape: standard input: 1 of 3 records was refused\n");
}

TEST_F(MeasureStream, SaysOfEachRecordWhyItIsRefused) {
    const auto errorOf = [this](const std::string& text) {
        return Json::parse(answer(text)).at("error").get<std::string>();
    };
    const auto ofLine = [](const std::string& coordinates) {
        return R"({"type":"LineString","coordinates":)" + coordinates + '}';
    };
    EXPECT_EQ(errorOf(ofLine("[[0,0],[1,2,3]]")),
              "part 1: position 2 has 3 coordinates; only positions in the plane (x, y) can be read");
    EXPECT_THAT(errorOf(ofLine("[[NaN,0],[1,1]]")), StartsWith("not valid JSON: "));
    EXPECT_THAT(errorOf(ofLine("[[Infinity,0],[1,1]]")), StartsWith("not valid JSON: "));
    EXPECT_THAT(errorOf(ofLine("[[1e999,0],[1,1]]")), StartsWith("not valid JSON: number overflow"));
    EXPECT_THAT(errorOf(R"({"type":"LineString","na)"
                        "\xff"
                        R"(me":1})"),
                HasSubstr("ill-formed UTF-8"));
    EXPECT_EQ(errorOf(line + std::string("\0", 1)), "not valid JSON: byte 50 is zero");
    EXPECT_THAT(errorOf(line + line), StartsWith("not valid JSON: "));
    EXPECT_THAT(errorOf(std::string(300000, '[')), StartsWith("not valid JSON: "));
    EXPECT_THAT(errorOf(std::string(300000, '[') + std::string(300000, ']')),
                StartsWith("a GeoJSON object is expected"));
    EXPECT_EQ(errorOf(R"({"type":"FeatureCollection","features":[]})"),
              "the type is \"FeatureCollection\"; a single Feature or geometry is expected");
    EXPECT_THAT(errorOf(R"({"type":"Polygon","coordinates":[[[0,0],[1,0],[1,1]]]})"),
                HasSubstr("a ring needs at least 4"));
    EXPECT_THAT(errorOf(R"({"type":"Polygon","coordinates":[[[0,0],[4,0],[4,3],[0,0]],[[1,0],[3,0],[3,1],[1,0]]]})"),
                StartsWith("part 1, ring 2: "));
}

TEST_F(RegularizeStream, SaysWhichOutlineCannotBeCleaned) {
    const std::string noStart = R"({"type":"Polygon","coordinates":[[[0,0],[0,2],[2,1],[0,1],[1,1],[0,0]]]})";
    EXPECT_EQ(answer(feature(R"("id":3)", noStart), "regularize -"),
              R"({"id":3,"error":"part 1, ring 1: the outline crosses itself and cannot be cleaned: )"
              R"(invalid contour"})");
}

TEST_F(MeasureStream, RefusesALineOfTooManyBytes) {
    const std::string most = " --max-record " + std::to_string(line.size());
    EXPECT_EQ(runOn(line, "measure -" + most).status, 0);
    EXPECT_THAT(answers(line + " \n" + line + '\n', "measure -" + most),
                ElementsAre(R"({"error":"the line has more than 49 bytes"})", StartsWith(R"({"file":"-",)")));
    EXPECT_EQ(run("measure - --max-record 0 </dev/null").status, 1);
}

TEST_F(MeasureStream, EndsWithoutAnAnswerWhereThereIsNoRecord) {
    for (const char* const input : {"", "\n \r\n\t\n"}) {
        const Run run = runOn(input, "measure -");
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out + run.err, "");
    }
}

// ----- Pipes

TEST(StreamPipe, AnswersARecordBeforeTheNextOneIsSent) {
    for (const std::string command : {"measure", "regularize"}) {
        StreamChild child({command, "-", "--keep-going"});
        for (int i = 0; i < 3; ++i) {
            child.write(plain + '\n');
            const std::optional<std::string> answer = child.readLine();
            ASSERT_TRUE(answer);
            EXPECT_EQ(Json::parse(*answer)["id"], 7);
            child.write("oops\n");
            EXPECT_THAT(child.readLine().value_or(""), StartsWith(R"({"error":)"));
        }
        EXPECT_EQ(child.finish(), 1);
    }
}

TEST(StreamPipe, AnswersAnArchiveBeforeTheNextOneIsSent) {
    const std::string archive = support::archived(heldRegion("0 0, 4 0, 4 3", 7));
    StreamChild child({"measure", "-", "--input", "mok"});
    for (int i = 0; i < 3; ++i) {
        child.write(length(archive) + archive);
        const std::optional<std::string> answer = child.readLine();
        ASSERT_TRUE(answer);
        EXPECT_EQ(Json::parse(*answer)["area"], 6.0);
    }
    EXPECT_EQ(child.finish(), 0);
}

TEST(StreamPipe, AnswersALengthThatIsTooLargeAtOnce) {
    StreamChild child({"measure", "-", "--input", "mok", "--keep-going"});
    child.write("\xff\xff\xff\xff");
    EXPECT_THAT(child.readLine().value_or(""), HasSubstr("the length is 4294967295 bytes"));
    EXPECT_EQ(child.finish(), 1);
}

TEST(StreamPipe, AnswersARecordThatComesByteByByte) {
    StreamChild child({"regularize", "-"});
    for (const char c : plain + '\n')
        child.write(std::string(1, c));
    EXPECT_EQ(child.readLine(), plain);
    EXPECT_EQ(child.finish(), 0);
}

TEST(StreamPipe, EndsWhenNobodyReadsTheAnswers) {
    StreamChild child({"measure", "-"});
    child.closeOutput();
    child.write(plain + '\n');
    EXPECT_EQ(child.finish(), 1);
}

TEST_F(Stream, NamesWhatHappenedToStandardInputOrOutput) {
    write("in", plain + '\n' + plain + '\n');
    const Run full = run("measure - < in > /dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.err, "mokshape: standard output cannot be written: No space left on device\n");
    EXPECT_EQ(run("measure - --keep-going < in > /dev/full").err, full.err);
    EXPECT_EQ(run("measure - < .").err, "mokshape: standard input: cannot be read: Is a directory\n");
    EXPECT_EQ(run("measure - < in >&-").err, "mokshape: standard output cannot be written: Bad file descriptor\n");
    const Run closed = runShell(std::string("yes '") + plain + "' | { '" + MOK_MOKSHAPE_PATH +
                                "' regularize - ; echo $? >&2; } | head -n 1");
    EXPECT_EQ(closed.out, plain + '\n');
    EXPECT_EQ(closed.err, "mokshape: standard output cannot be written: Broken pipe\n1\n");
}

// ----- Options

TEST_F(Stream, RefusesOptionsThatDoNotGoWithIt) {
    write("in", plain + '\n');
    const std::string answered = ": standard input (-) is answered on standard output, a line each record\n";
    EXPECT_EQ(run("measure - --svg a.svg < in").err, "mokshape: --svg" + answered);
    EXPECT_EQ(run("measure - --format csv < in").err, "mokshape: --format: standard input (-) is answered in json\n");
    EXPECT_EQ(run("measure - --format json < in").status, 0);
    EXPECT_EQ(run("regularize - -o a.wkt < in").err, "mokshape: --output" + answered);
    EXPECT_EQ(run("regularize - --svg a.svg < in").err, "mokshape: --svg" + answered);
    EXPECT_EQ(run("measure in - < in").err, "mokshape: -: standard input is measured by itself, without files\n");
    EXPECT_EQ(run("measure - --input wkt < in").status, 1);
    EXPECT_THAT(names(), ElementsAre("in"));
}

TEST_F(Stream, HasOptionsThatFilesDoNotHave) {
    write("a.geojson", plain);
    const std::string file = ": this is for standard input (-), and a file is read\n";
    EXPECT_EQ(run("measure a.geojson --keep-going").err, "mokshape: --keep-going" + file);
    EXPECT_EQ(run("measure a.geojson --input mok").err, "mokshape: --input" + file);
    EXPECT_EQ(run("regularize a.geojson -o b.wkt --max-record 9").err, "mokshape: --max-record" + file);
    EXPECT_THAT(run("regularize a.geojson").err, HasSubstr("--output is required"));
    EXPECT_EQ(run("merge - -o b.wkt").status, 1);
    EXPECT_THAT(names(), ElementsAre("a.geojson"));
}

}  // namespace
