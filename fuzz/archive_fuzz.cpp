// Bytes as an archive of a contour, a transform, a region and a set: they are refused with an error of the archive's,
// or what they hold can be asked everything and comes back from an archive of its own with the same bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "cntr/cntr.h"

namespace {

struct Shapes {
    gmContour contour;
    gmPtrHandle<gm2XformBase> xform;
    gmRegion region;
    gmRegionSet set;
};

std::string stored(Shapes& shapes) {
    std::ostringstream out;
    gmArchive archive(out);
    archive || shapes.contour || shapes.xform || shapes.region || shapes.set;
    return out.str();
}

void load(const std::string& bytes, Shapes& shapes) {
    std::istringstream in(bytes);
    gmArchive archive(in);
    archive || shapes.contour || shapes.xform || shapes.region || shapes.set;
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

/// Runs the question; that the library refuses it is an answer.
template <class Question>
void attempt(Question question) {
    try {
        question();
    } catch (const gmContourDefs::Errors&) {
        // Too few vertices, say, or an outline that cannot be cleaned up.
    } catch (const gmBadPointer&) {
        // A hole that was no region.
    }
}

void ask(const gmRegion& region) {
    const gmVector<2> point(1.0, 2.0);
    gmRegion result;
    attempt([&] { region.inside(point, true); });
    attempt([&] { region.distToPoint(point, false, true, true); });
    attempt([&] { region.intersections(gmLineSeg(point, {-3.0, 5.0}), false, true); });
    attempt([&] { region.area(true); });
    attempt([&] { region.centerOfMass(true); });
    attempt([&] { region.inertiaMatrix(false); });
    attempt([&] { region.regularize(result); });
    attempt([&] { region.outerHull(result); });
    attempt([&] { region.convexHull(result); });
    attempt([&] { result = region; });
    attempt([&] { result.holes(region.holes()); });
    attempt([&] { result.regularize(result); });
}

void ask(const gmRegionSet& set) {
    const gmVector<2> point(1.0, 2.0);
    gmRegionSet result;
    attempt([&] { set.area(true); });
    attempt([&] { set.centerOfMass(false); });
    attempt([&] { set.inertiaMatrix(true); });
    attempt([&] { set.inside(point, true); });
    attempt([&] { set.distToPoint(point, false, true, true); });
    attempt([&] { set.encloseRect(gmXform<2>::I); });
    attempt([&] { set.regularize(result); });
    attempt([&] { set.outerHull(result); });
    attempt([&] { result.regularize(result); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Shapes shapes;
    try {
        load(std::string(data, data + size), shapes);
    } catch (const gmArchive::Errors&) {
        return 0;
    }
    attempt([&] { ask(shapes.contour, shapes.xform.isNull() ? gmXform<2>::I : shapes.xform->linearXform()); });
    ask(shapes.region);
    ask(shapes.set);

    const std::string once = stored(shapes);
    Shapes again;
    load(once, again);
    if (stored(again) != once)
        std::abort();
    return 0;
}
