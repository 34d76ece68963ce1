// Text as GeoJSON and as WKT: it is refused with an error for the user, or what it holds reads back from
// what is written.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tools/io/geojson.h"
#include "tools/io/wkt.h"

namespace {

using Read = std::vector<mokshape::Outline>(std::string_view);
using Write = void(std::ostream&, const std::vector<mokshape::Outline>&);

void roundTrip(std::string_view text, Read read, Write write) {
    std::vector<mokshape::Outline> outlines;
    try {
        outlines = read(text);
    } catch (const mokshape::FileError&) {
        return;
    }
    std::ostringstream once;
    write(once, outlines);
    std::ostringstream again;
    write(again, read(once.str()));
    if (again.str() != once.str())
        std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    roundTrip(text, mokshape::readGeoJson, mokshape::writeGeoJson);
    roundTrip(text, mokshape::readWkt, mokshape::writeWkt);
    return 0;
}
