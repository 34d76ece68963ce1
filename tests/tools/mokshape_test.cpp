#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/tools/archives.h"
#include "tests/tools/support.h"

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Json = nlohmann::json;

using Mokshape = support::InFolder;

const std::string samples = MOK_SAMPLES_DIR;

/// What a sample holds, counted without the reader under test.
struct SampleCount {
    std::size_t features = 0;
    std::size_t holes = 0;
    std::size_t vertices = 0;  // without those of holes
};

SampleCount countSample(const std::string& name) {
    SampleCount count;
    const Json document = Json::parse(support::readWhole(samples + '/' + name));
    for (const Json& feature : document["features"]) {
        ++count.features;
        const Json& rings = feature["geometry"]["coordinates"];
        count.holes += rings.size() - 1;
        count.vertices += rings[0].size() - 1;
    }
    return count;
}

TEST_F(Mokshape, MeasuresEveryOutlineOfTheSamples) {
    struct Sample {
        const char* name;
        std::size_t features;
        std::size_t holes;
        std::size_t vertices;
    };
    for (const Sample& sample : {Sample{"coins.geojson", 24, 15, 4460}, Sample{"letters.geojson", 272, 100, 18098},
                                 Sample{"horse.geojson", 1, 0, 2593}, Sample{"lasso.geojson", 1, 0, 168}}) {
        SCOPED_TRACE(sample.name);
        const SampleCount counted = countSample(sample.name);
        EXPECT_EQ(counted.features, sample.features);
        EXPECT_EQ(counted.holes, sample.holes);
        EXPECT_EQ(counted.vertices, sample.vertices);

        const Run json = run("measure --format json '" + samples + '/' + sample.name + '\'');
        ASSERT_EQ(json.status, 0) << json.err;
        EXPECT_EQ(json.err, "");
        SampleCount measured;
        const Json document = Json::parse(json.out);
        for (const Json& outline : document["outlines"]) {
            ++measured.features;
            measured.holes += outline["holes"].get<std::size_t>();
            measured.vertices += outline["vertices"].get<std::size_t>();
            EXPECT_EQ(outline["label"], outline["feature"]);
        }
        EXPECT_EQ(measured.features, counted.features);
        EXPECT_EQ(measured.holes, counted.holes);
        EXPECT_EQ(measured.vertices, counted.vertices);
    }
}

TEST_F(Mokshape, EndsTheTableOfAllSamplesWithTheirSum) {
    const Run run = this->run("measure '" + samples + "'/*.geojson");
    EXPECT_EQ(run.status, 0);
    const std::vector<std::string> lines = support::linesOf(run.out);
    EXPECT_EQ(lines.back(), "298 outlines, 25319 vertices, 115 holes, 1 self-crossing");
    for (const std::string& line : lines)
        EXPECT_LE(line.size(), line.find('/') == std::string::npos ? 155u : 4096u) << line;
}

TEST_F(Mokshape, WritesTheSameNumbersAsJsonAndCsv) {
    const std::string file = '\'' + samples + "/coins.geojson'";
    const Json document = Json::parse(run("measure --format json " + file).out);
    const Json& outlines = document["outlines"];
    const std::vector<std::string> rows = support::linesOf(run("measure --format csv " + file).out);
    ASSERT_EQ(rows.size(), outlines.size() + 2);
    const auto cellsOf = [](const std::string& line) {
        std::vector<std::string> cells(1);
        for (const char c : line)
            if (c == ',')
                cells.emplace_back();
            else
                cells.back() += c;
        return cells;
    };
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        const std::vector<std::string> cells = cellsOf(rows[i + 1]);
        ASSERT_EQ(cells.size(), 31u);
        EXPECT_EQ(std::stod(cells[7]), outlines[i]["length"].get<double>());
        EXPECT_EQ(std::stod(cells[8]), outlines[i]["area"].get<double>());
        EXPECT_EQ(cells[11], outlines[i]["holes"].dump());
        EXPECT_EQ(std::stod(cells[12]), outlines[i]["areaWithHoles"].get<double>());
        EXPECT_EQ(std::stod(cells[14]), outlines[i]["centreWithHoles"][1].get<double>());
        EXPECT_EQ(std::stod(cells[24]), outlines[i]["ellipse"]["angle"].get<double>());
        EXPECT_EQ(cells[28] + cells[29] + cells[30], "");
    }
    ASSERT_EQ(document["sets"].size(), 1u);
    const Json& all = document["sets"][0];
    const std::vector<std::string> cells = cellsOf(rows.back());
    ASSERT_EQ(cells.size(), 31u);
    EXPECT_EQ(cells[3], "set");
    EXPECT_EQ(cells[6], all["vertices"].dump());
    EXPECT_EQ(std::stod(cells[8]), all["area"].get<double>());
    EXPECT_EQ(std::stod(cells[9]), all["centre"][0].get<double>());
    EXPECT_EQ(cells[11], all["holes"].dump());
    EXPECT_EQ(std::stod(cells[12]), all["areaWithHoles"].get<double>());
    EXPECT_EQ(std::stod(cells[14]), all["centreWithHoles"][1].get<double>());
    EXPECT_EQ(std::stod(cells[17]), all["box"]["width"].get<double>());
    EXPECT_EQ(std::stod(cells[28]), all["moments"]["xx"].get<double>());
    EXPECT_EQ(std::stod(cells[29]), all["moments"]["xy"].get<double>());
    EXPECT_EQ(std::stod(cells[30]), all["moments"]["yy"].get<double>());
}

TEST_F(Mokshape, ReadsGeoJsonAndWktTogether) {
    write("a.geojson", R"({"type":"LineString","coordinates":[[0,0],[3,4]]})");
    write("b.wkt", "POLYGON((0 0,4 4,4 0,0 4,0 0))");
    const Run run = this->run("measure a.geojson b.wkt");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(run.out, StartsWith("a.geojson\n"));
    EXPECT_THAT(run.out, EndsWith("\n2 outlines, 6 vertices, 0 holes, 1 self-crossing\n"));
}

TEST_F(Mokshape, NamesFileAndFeatureOfAnErrorAndPrintsNothingElse) {
    write("good.wkt", "LINESTRING(0 0,1 1)");
    write("bad.geojson", R"({"type":"FeatureCollection","features":[
        {"type":"Feature","properties":null,"geometry":null},
        {"type":"Feature","properties":{"label":-2},"geometry":null}]})");
    const Run run = this->run("measure good.wkt bad.geojson --svg out.svg");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "mokshape: bad.geojson: feature 2: the label is -2, a whole number from 0 to 4294967295 is expected\n");
    EXPECT_THAT(names(), ElementsAre("bad.geojson", "good.wkt"));
}

TEST_F(Mokshape, LeavesAnOlderPictureAloneWhenItFails) {
    write("old.svg", "old");
    write("bad.wkt", "POINT(0 0)");
    write("good.wkt", "LINESTRING(0 0,1 1)");
    EXPECT_EQ(run("measure bad.wkt --svg old.svg").status, 1);
    EXPECT_EQ(support::readWhole(path("old.svg")), "old");
    EXPECT_EQ(run("measure good.wkt --svg old.svg >/dev/full").status, 1);
    EXPECT_EQ(support::readWhole(path("old.svg")), "old");
    EXPECT_THAT(names(), ElementsAre("bad.wkt", "good.wkt", "old.svg"));
}

TEST_F(Mokshape, NoticesOutputThatCannotBeWritten) {
    write("a.wkt", "LINESTRING(0 0,1 1)");
    for (const char* format : {"table", "json", "csv"}) {
        const Run run = this->run(std::string("measure a.wkt >/dev/full --format ") + format);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.err, "mokshape: standard output cannot be written: No space left on device\n");
    }
    EXPECT_EQ(run("measure --help >/dev/full").status, 1);
    EXPECT_EQ(run("measure a.wkt >&-").status, 1);
    const Run picture = run("measure a.wkt --svg no/such/folder.svg");
    EXPECT_EQ(picture.status, 1);
    EXPECT_EQ(picture.out, "");
    EXPECT_EQ(picture.err, "mokshape: no/such/folder.svg: cannot be written: No such file or directory\n");
}

TEST_F(Mokshape, RefusesToReplaceAFileThatItMeasures) {
    write("a.wkt", "LINESTRING(0 0,1 1)");
    const Run run = this->run("measure a.wkt --svg ./a.wkt");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "mokshape: ./a.wkt: the picture would replace a file that is measured\n");
    EXPECT_EQ(support::readWhole(path("a.wkt")), "LINESTRING(0 0,1 1)");
}

TEST_F(Mokshape, ReadsFromAPipe) {
    const Run run =
        runShell(std::string("echo 'LINESTRING(0 0,3 4)' | '") + MOK_MOKSHAPE_PATH + "' measure /dev/stdin");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(run.out, EndsWith("1 outline, 2 vertices, 0 holes, 0 self-crossing\n"));
}

TEST_F(Mokshape, ShowsItsProgressOnATerminalAndNowhereElse) {
    if (runShell("script -qec 'tty' /dev/null").status != 0)
        GTEST_SKIP() << "this machine gives out no terminals";
    // A pipe that yields nothing for longer than the bar waits; script gives the program a terminal.
    const std::string slow = "mkfifo slow.wkt; (sleep 1.4; echo 'LINESTRING (0 0, 3 4)' > slow.wkt) & ";
    const Run onTerminal =
        runShell(slow + "script -qec \"'" MOK_MOKSHAPE_PATH "' measure slow.wkt >/dev/null\" /dev/null; rm slow.wkt");
    EXPECT_THAT(onTerminal.out, HasSubstr("reading slow.wkt ..."));
    const Run elsewhere = runShell(slow + "'" MOK_MOKSHAPE_PATH "' measure slow.wkt; rm slow.wkt");
    EXPECT_EQ(elsewhere.err, "");
    EXPECT_THAT(elsewhere.out, HasSubstr("1 outline"));
}

TEST_F(Mokshape, DrawsAPictureOfTheSamplesThatIsWellFormed) {
    const Run run = this->run("measure '" + samples + "'/*.geojson --svg out.svg");
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string svg = support::readWhole(path("out.svg"));
    EXPECT_THAT(svg, StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\""));
    // Every element is opened and closed in order, and every attribute is quoted.
    std::vector<std::string> open;
    std::size_t elements = 0;
    std::size_t at = 0;
    while ((at = svg.find('<', at)) != std::string::npos) {
        const std::size_t end = svg.find('>', at);
        ASSERT_NE(end, std::string::npos);
        const std::string tag = svg.substr(at + 1, end - at - 1);
        ASSERT_EQ(tag.find('<'), std::string::npos);
        const std::string name = tag.substr(0, tag.find_first_of(" /"));
        if (tag.front() == '/') {
            ASSERT_FALSE(open.empty());
            ASSERT_EQ(tag.substr(1), open.back());
            open.pop_back();
        } else {
            ++elements;
            ASSERT_EQ(std::count(tag.begin(), tag.end(), '"') % 2, 0) << tag;
            if (tag.back() != '/')
                open.push_back(name);
        }
        at = end;
    }
    EXPECT_TRUE(open.empty());
    // 298 outlines and 115 holes, and over the outlines a box, an ellipse and a cross of two strokes each.
    EXPECT_GE(elements, 298u + 115u + 298u * 4u);
    EXPECT_EQ(svg.find("nan"), std::string::npos);
    EXPECT_EQ(svg.find("inf"), std::string::npos);
}

TEST_F(Mokshape, ExplainsItselfWithExamplesThatRun) {
    std::filesystem::create_directory_symlink(samples, path("samples"));
    write("parts.geojson", R"({"type":"LineString","coordinates":[[0,0],[3,4]]})");
    write("parts.geojsonl", R"({"type":"LineString","coordinates":[[0,0],[3,4]]})");
    write("more.wkt", "LINESTRING(0 0,1 1)");
    write("points.txt", "1,2\n3 4\n");
    write("contour.mok",
          support::stored([](gmArchive& archive) { archive || *support::heldContour("0 0, 3 4", false); }));
    const std::string example = "  mokshape ";
    std::vector<std::size_t> examples;
    for (const char* command : {"", "measure ", "inside ", "regularize ", "merge ", "convert ", "dump "}) {
        const Run help = run(std::string(command) + "--help");
        EXPECT_EQ(help.status, 0);
        examples.push_back(0);
        for (const std::string& line : support::linesOf(help.out)) {
            EXPECT_LE(line.size(), 100u) << line;
            if (line.rfind(example + command, 0) != 0)
                continue;
            ++examples.back();
            const Run run = this->run(line.substr(example.size()));
            EXPECT_EQ(run.status, 0) << line << '\n' << run.err;
        }
    }
    EXPECT_THAT(examples, ElementsAre(6u, 4u, 2u, 3u, 2u, 2u, 2u));
    EXPECT_THAT(names(),
                ElementsAre("coins.mok", "coins.svg", "coins.wkt", "contour.mok", "hull.wkt", "hulls.wkt", "lasso.svg",
                            "merged.geojson", "merged.svg", "more.wkt", "parts.csv", "parts.geojson", "parts.geojsonl",
                            "parts.jsonl", "points.txt", "samples", "simple.geojson", "simple.geojsonl"));
}

TEST_F(Mokshape, TellsItsVersion) {
    const Run run = this->run("--version");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "mokshape " MOK_PROJECT_VERSION "\n");
}

TEST_F(Mokshape, RefusesWrongUsage) {
    for (const char* arguments : {"",
                                  "measure",
                                  "unknown",
                                  "measure --format xml a.wkt",
                                  "measure a.wkt --nonsense",
                                  "measure a.wkt --svg",
                                  "measure a.wkt --mode eKeep",
                                  "inside",
                                  "inside --point 1,2",
                                  "inside a.wkt --mode",
                                  "regularize a.wkt",
                                  "regularize -o b.wkt",
                                  "regularize a.wkt b.wkt -o c.wkt",
                                  "merge a.wkt",
                                  "merge -o b.wkt",
                                  "convert a.wkt",
                                  "convert",
                                  "convert a.wkt b.wkt c.wkt",
                                  "dump",
                                  "dump a.mok b.mok",
                                  "dump a.mok --part"}) {
        const Run run = this->run(arguments);
        EXPECT_EQ(run.status, 1) << arguments;
        EXPECT_EQ(run.out, "") << arguments;
        EXPECT_THAT(run.err, HasSubstr("Run with --help for more information.")) << arguments;
    }
}

}  // namespace
