#include "tools/io/feature_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <nlohmann/json.hpp>
#include <random>
#include <string>

#include "tests/tools/support.h"
#include "tools/io/geojson.h"

namespace {

using mokshape::FeatureText;
using mokshape::takeApart;
using Json = nlohmann::json;

const std::string line = R"({"type":"LineString","coordinates":[[0,0],[1,2]]})";

std::string again(const std::string& text, bool isGeometry = false) {
    return textOf(takeApart(text, isGeometry));
}

TEST(FeatureText, KeepsEveryValueToTheByteButForBlanks) {
    EXPECT_EQ(again(" { \"id\" : 1.50 , \"type\" : \"Feature\" ,\r\n \"properties\" : { \"b\" : [ 1e2 , "
                    "123456789012345678901234567890 ] , \"a\" : \"x , } \\\" \\\\\" , \"b\" : { } } , \"geometry\" : " +
                    line + ", \"title\" : null } "),
              R"({"type":"Feature","id":1.50,"properties":{"b":[1e2,123456789012345678901234567890],)"
              R"("a":"x , } \" \\","b":{}},"title":null,"geometry":)" +
                  line + '}');
}

TEST(FeatureText, MakesAFeatureOfAGeometry) {
    EXPECT_EQ(again(line, true), R"({"type":"Feature","properties":null,"geometry":)" + line + '}');
}

TEST(FeatureText, AddsPropertiesAndGeometryThatAreNotThere) {
    EXPECT_EQ(again(R"({"type":"Feature","id":7})"), R"({"type":"Feature","id":7,"properties":null,"geometry":null})");
    EXPECT_EQ(again("{}"), R"({"type":"Feature","properties":null,"geometry":null})");
}

TEST(FeatureText, KnowsTheIdAsItIsWritten) {
    EXPECT_EQ(takeApart(R"({"id":"a\u0062"})", false).id(), R"("a\u0062")");
    EXPECT_EQ(takeApart(R"({"\u0069d":1.0})", false).id(), "1.0");
    EXPECT_EQ(takeApart(R"({"ID":1,"properties":{"id":2}})", false).id(), "");
    EXPECT_EQ(takeApart(R"({"id":1,"id":2})", false).id(), "2");
}

TEST(FeatureText, TakesTheLastOfSeveralGeometriesAsTheReaderDoes) {
    FeatureText text;
    const std::string feature = R"({"type":"Feature","geometry":null,"geometry":)" + line + '}';
    EXPECT_EQ(support::text(mokshape::readGeoJsonFeature(feature, text)), "1.1.1 line label 0: 0 0, 1 2\n");
    EXPECT_EQ(text.geometry, line);
}

TEST(FeatureText, TakesDeepNestingApart) {
    constexpr std::size_t deep = 200000;
    const std::string nested = std::string(deep, '[') + std::string(deep, ']');
    EXPECT_EQ(again(R"({"type":"Feature","properties":)" + nested + R"(,"geometry":null})"),
              R"({"type":"Feature","properties":)" + nested + R"(,"geometry":null})");
}

TEST(ReadGeoJsonFeature, RefusesWhatIsNotOneFeature) {
    const auto errorOf = [](const std::string& text) {
        return support::fileErrorOf([&] {
            FeatureText as;
            mokshape::readGeoJsonFeature(text, as);
        });
    };
    EXPECT_EQ(errorOf(R"({"type":"FeatureCollection","features":[]})"),
              "the type is \"FeatureCollection\"; a single Feature or geometry is expected");
    EXPECT_EQ(errorOf("[]"), "a GeoJSON object is expected, not an array");
    EXPECT_EQ(errorOf(line + line).substr(0, 15), "not valid JSON:");
    EXPECT_EQ(errorOf(line + std::string("\0,", 2)), "not valid JSON: byte 50 is zero");
}

TEST(ReadGeoJsonFeature, TellsTheIdOfAFeatureThatItRefuses) {
    FeatureText text;
    const std::string feature = R"({"type":"Feature","id":"a7","geometry":{"type":"Point","coordinates":[1,2]}})";
    support::fileErrorOf([&] { mokshape::readGeoJsonFeature(feature, text); });
    EXPECT_EQ(text.id(), "\"a7\"");
}

/// A value of any kind, with blanks and escapes where they may stand.
class RandomJson {
  public:
    explicit RandomJson(unsigned seed) : random_(seed) {}

    std::string object(int depth) {
        std::string text = blank() + '{' + blank();
        for (int i = 0, count = pick(4); i < count; ++i)
            text += (i > 0 ? "," : "") + blank() + name() + blank() + ':' + value(depth + 1);
        return text + '}' + blank();
    }

  private:
    int pick(int below) { return static_cast<int>(random_() % static_cast<std::uint32_t>(below)); }

    std::string blank() {
        static const char* const blanks[] = {"", "", "", " ", "\t", "\r", " \n "};
        return blanks[pick(7)];
    }

    std::string name() {
        static const char* const names[] = {R"("id")", R"("type")", R"("properties")", R"("geometry")",
                                            R"("\\")", R"("\"")",   R"(",}]")",        R"("")"};
        return names[pick(8)];
    }

    std::string value(int depth) {
        static const char* const plain[] = {"null", "true", "-0.0", "1E5", "12", R"("a b\n\u00e9\\")"};
        if (depth > 4 || pick(2) == 0)
            return blank() + plain[pick(6)] + blank();
        if (pick(2) == 0)
            return object(depth);
        std::string text = blank() + '[' + blank();
        for (int i = 0, count = pick(4); i < count; ++i)
            text += (i > 0 ? "," : "") + value(depth + 1);
        return text + ']' + blank();
    }

    std::mt19937 random_;
};

TEST(FeatureText, KeepsWhatAParserFindsInAnyObject) {
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        const std::string text = RandomJson(seed).object(0);
        SCOPED_TRACE(text);
        Json expected = Json::parse(text);
        const Json asGeometry = Json::parse(again(text, true));
        EXPECT_EQ(asGeometry["geometry"], expected);
        expected["type"] = "Feature";
        for (const char* const name : {"properties", "geometry"})
            expected.emplace(name, nullptr);
        EXPECT_EQ(Json::parse(again(text)), expected);
        EXPECT_EQ(again(again(text)), again(text));
    }
}

}  // namespace
