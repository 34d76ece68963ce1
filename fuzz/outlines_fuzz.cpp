// Text as GeoJSON and as WKT: it is refused with an error for the user, or the outlines that it holds come back from
// what is written of them, with every number to the bit, and are written the same again. Only the numbers of features
// and parts may change, where empty ones are left out or labels differ; and labels, which WKT knows nothing of. What is
// kept of the text of one feature is a feature with the same outlines.
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/answers.h"
#include "tools/io/feature_text.h"
#include "tools/io/geojson.h"
#include "tools/io/wkt.h"

namespace {

using Outlines = std::vector<mokshape::Outline>;

fuzz::Answers contentOf(const Outlines& outlines) {
    fuzz::Answers content;
    for (const mokshape::Outline& outline : outlines) {
        content.add(outline.points);
        content.add(static_cast<int>(outline.kind));
        content.add(outline.ring);
        content.add(static_cast<std::size_t>(outline.label));
    }
    return content;
}

template <class Read, class Write>
void roundTrip(std::string_view text, Read read, Write write) {
    Outlines outlines;
    try {
        outlines = read(text);
    } catch (const mokshape::FileError&) {
        return;
    }
    std::ostringstream once;
    write(once, outlines);
    const Outlines again = read(once.str());
    fuzz::require(contentOf(again) == contentOf(outlines), "outlines are read as they were written");
    std::ostringstream twice;
    write(twice, again);
    fuzz::require(twice.str() == once.str(), "outlines that were read are written the same again");
}

void takeApartAndJoin(std::string_view text) {
    mokshape::FeatureText feature;
    Outlines outlines;
    try {
        outlines = mokshape::readGeoJsonFeature(text, feature);
    } catch (const mokshape::FileError&) {
        return;
    }
    const std::string joined = mokshape::textOf(feature);
    fuzz::require(joined.find('\n') == std::string::npos, "a feature is one line");
    fuzz::require(contentOf(mokshape::readGeoJson(joined)) == contentOf(outlines),
                  "a feature holds what its text held");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    roundTrip(
        text, [](std::string_view from) { return mokshape::readGeoJson(from); },
        [](std::ostream& out, const Outlines& outlines) { mokshape::writeGeoJson(out, outlines); });
    roundTrip(
        text, [](std::string_view from) { return mokshape::readWkt(from); },
        [](std::ostream& out, const Outlines& outlines) { mokshape::writeWkt(out, outlines); });
    takeApartAndJoin(text);
    return 0;
}
