// What is read and written is the same where people write decimal commas.
#include <gtest/gtest.h>

#include <clocale>
#include <sstream>
#include <string>
#include <utility>

#include "tests/tools/support.h"
#include "tools/io/geojson.h"
#include "tools/io/wkt.h"
#include "tools/mokshape/report.h"

namespace {

using mokshape::Format;

/// Reads an outline, measures and writes it, all in one.
std::string roundTrip(bool asWkt, Format format) {
    auto outlines =
        asWkt ? mokshape::readWkt("LINESTRING (0.5 -1.25, 1e-3 12345.678)")
              : mokshape::readGeoJson(R"({"type":"LineString","coordinates":[[0.5,-1.25],[1e-3,12345.678]]})");
    std::ostringstream out;
    mokshape::writeGeoJson(out, outlines);
    mokshape::writeWkt(out, outlines);
    mokshape::writeReport(out, format, {support::measured(support::taken("a", std::move(outlines)))});
    return out.str();
}

TEST(DecimalCommas, ChangeNothingThatIsReadOrWritten) {
    for (const bool asWkt : {false, true})
        for (const Format format : {Format::eTable, Format::eJson, Format::eCsv}) {
            const std::string expected = roundTrip(asWkt, format);
            EXPECT_NE(expected.find("0.5 -1.25"), std::string::npos) << expected;
            if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
                GTEST_SKIP() << "no locale with decimal commas is installed";
            const std::string there = roundTrip(asWkt, format);
            std::setlocale(LC_ALL, "C");
            EXPECT_EQ(there, expected);
        }
}

}  // namespace
