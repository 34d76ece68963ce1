// Bytes as an archive of a contour and a transform: they are refused with an error of the archive's, or what they hold
// can be asked everything and comes back from an archive of its own with the same bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "cntr/cntr.h"

namespace {

std::string stored(gmContour& contour, gmPtrHandle<gm2XformBase>& xform) {
    std::ostringstream out;
    gmArchive archive(out);
    archive || contour || xform;
    return out.str();
}

void load(const std::string& bytes, gmContour& contour, gmPtrHandle<gm2XformBase>& xform) {
    std::istringstream in(bytes);
    gmArchive archive(in);
    archive || contour || xform;
}

void ask(const gmContour& contour, const gmXform<2>& xform) {
    const gmVector<2> point(1.0, 2.0);
    contour.isSelfIntersecting();
    contour.closestPoint(point, false);
    contour.vertexIndex(point, 0.5);
    contour.intersections(gmLineSeg(point, {-3.0, 5.0}), false);
    contour.encloseRect(xform);
    contour.diameter(gmContourDefs::eMaxVertexPair);
    contour.extremalVertexIndex(gmRadian(0.7));
    gmEllipse ellipse;
    double residual = 0.0;
    contour.fitEllipse(ellipse, residual);
    contour.meanPosition();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    gmContour contour;
    gmPtrHandle<gm2XformBase> xform;
    try {
        load(std::string(data, data + size), contour, xform);
    } catch (const gmArchive::Errors&) {
        return 0;
    }
    try {
        ask(contour, xform.isNull() ? gmXform<2>::I : xform->linearXform());
    } catch (const gmContourDefs::Errors&) {
        // A contour without vertices refuses its queries.
    }

    const std::string once = stored(contour, xform);
    gmContour again;
    gmPtrHandle<gm2XformBase> xformAgain;
    load(once, again, xformAgain);
    if (stored(again, xformAgain) != once)
        std::abort();
    return 0;
}
