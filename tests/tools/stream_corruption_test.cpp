// Streams that were damaged at random: a line for each record, whatever it is, and never a crash.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

#include "tests/tools/archives.h"
#include "tests/tools/support.h"

namespace {

using Json = nlohmann::json;
using StreamCorruption = support::InFolder;

std::vector<std::string> goodRecords() {
    std::vector<std::string> records{
        R"({"type":"Polygon","coordinates":[[[0,0],[2,2],[2,0],[0,2],[0,0]]]})",
        R"({"type":"Feature","id":"a","properties":null,"geometry":{"type":"GeometryCollection","geometries":[]}})",
        R"({"type":"Feature","id":5,"properties":{"label":3,"x":[{},"\u00e9\\"]},"geometry":{"type":"MultiPolygon",)"
        R"("coordinates":[[[[0,0],[9,0],[9,9],[0,0]],[[5,1],[6,1],[6,2],[5,1]]],[[[20,0],[29,0],[29,9],[20,0]]]]}})"};
    for (std::string line : support::linesOf(support::readWhole(std::string(MOK_SAMPLES_DIR) + "/letters.geojson"))) {
        if (line.find("\"Feature\"") == std::string::npos || line.size() > 1500)
            continue;
        line.erase(line.find_last_of('}') + 1);
        records.push_back(line);
    }
    return records;
}

class Damage {
  public:
    std::string operator()(std::string record) {
        for (std::size_t times = pick(3) + 1; times > 0; --times)
            damage(record);
        return record;
    }

    std::size_t pick(std::size_t below) { return random_() % below; }

  private:
    void damage(std::string& record) {
        static const std::string bytes("{}[],:\"\\-+.eE019 tn\x1e\r\n\xff\xc3\x7f\0", 24);
        const std::size_t at = pick(record.size() + 1);
        const std::size_t count = std::min(pick(9), record.size() - at);
        switch (pick(5)) {
            case 0:
                record.insert(at, 1, bytes[pick(bytes.size())]);
                break;
            case 1:
                record.erase(at, count);
                break;
            case 2:
                record.erase(at);
                break;
            case 3:
                record.insert(at, record.substr(pick(record.size() + 1), pick(40)));
                break;
            default:
                if (at < record.size())
                    record[at] = static_cast<char>(random_());
        }
    }

    std::mt19937 random_{20261121};
};

/// Counted as the page on streams says, and not with the reader under test.
std::size_t recordsIn(const std::string& stream) {
    std::size_t count = 0;
    for (std::string line : support::linesOf(stream)) {
        if (!line.empty() && line[0] == '\x1e')
            line.erase(0, 1);
        if (line.compare(0, 3, "\xef\xbb\xbf") == 0)
            line.erase(0, 3);
        count += line.find_first_not_of(" \t\r") != std::string::npos;
    }
    return count;
}

TEST_F(StreamCorruption, EveryLineThatIsNotBlankHasOneAnswer) {
    const std::vector<std::string> good = goodRecords();
    ASSERT_GT(good.size(), 100u);
    Damage damage;
    std::string stream;
    for (int i = 0; i < 4000; ++i)
        stream += damage(good[damage.pick(good.size())]) + '\n';
    write("in", stream);
    for (const std::string command : {"measure -", "measure - --mode outer-hull", "regularize -"}) {
        SCOPED_TRACE(command);
        const Run run = this->run(command + " --keep-going < in");
        EXPECT_EQ(run.status, 1);
        const std::vector<std::string> answers = support::linesOf(run.out);
        EXPECT_EQ(answers.size(), recordsIn(stream));
        std::size_t refused = 0;
        for (const std::string& answer : answers) {
            const Json json = Json::parse(answer, nullptr, false);
            ASSERT_TRUE(json.is_object()) << answer;
            const bool isError = json.contains("error");
            EXPECT_NE(isError, json.contains("type") || json.contains("kind") || json.contains("outlines")) << answer;
            refused += isError;
        }
        EXPECT_GT(refused, answers.size() / 4);
        EXPECT_LT(refused, answers.size());
        EXPECT_EQ(run.err, "mokshape: standard input: " + std::to_string(refused) + " of " +
                               std::to_string(answers.size()) + " records were refused\n");
    }
}

TEST_F(StreamCorruption, EveryDamagedArchiveHasOneAnswer) {
    const std::string whole = support::archived(
        support::heldSet({support::heldRegion("0 0, 10 0, 10 10, 0 10", 5, {support::heldRegion("4 4, 6 4, 6 6, 4 6")}),
                          support::heldRegion("20 0, 22 2, 22 0, 20 2", 6)}));
    Damage damage;
    std::string stream;
    constexpr std::size_t archives = 3000;
    for (std::size_t i = 0; i < archives; ++i) {
        const std::string archive = i % 10 == 0 ? whole : damage(whole);
        for (int byte = 0; byte < 4; ++byte)
            stream += static_cast<char>(archive.size() >> (8 * byte) & 0xff);
        stream += archive;
    }
    write("in", stream);
    const Run run = this->run("measure - --input mok --keep-going < in");
    EXPECT_EQ(run.status, 1);
    const std::vector<std::string> answers = support::linesOf(run.out);
    ASSERT_EQ(answers.size(), archives);
    for (std::size_t i = 0; i < archives; ++i) {
        const Json json = Json::parse(answers[i], nullptr, false);
        ASSERT_TRUE(json.is_object()) << answers[i];
        if (i % 10 == 0) {
            EXPECT_EQ(json["outlines"].size(), 2u);
        }
    }
}

TEST_F(StreamCorruption, LengthsThatAreNoneEndTheRunWithAnError) {
    const std::string whole = support::archived(support::heldRegion("0 0, 10 0, 10 10, 0 10", 5));
    Damage damage;
    for (int i = 0; i < 60; ++i) {
        std::string stream;
        for (int j = 0; j < 5; ++j)
            stream += std::string{static_cast<char>(whole.size()), '\0', '\0', '\0'} + whole;
        write("in", damage(stream));
        const Run run = this->run("measure - --input mok --keep-going < in");
        EXPECT_TRUE(run.status == 0 || run.status == 1) << run.status << run.err;
        for (const std::string& answer : support::linesOf(run.out))
            EXPECT_TRUE(Json::parse(answer, nullptr, false).is_object()) << answer;
    }
}

}  // namespace
