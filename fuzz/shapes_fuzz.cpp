// Contours, regions and sets of numbers that computations stumble over: not a number, infinite, denormal, huge, next to
// each other, repeated, on a small grid. Every question is answered or refused with an error that is documented, in
// time; the same again when it is asked again, of a copy, of a shape made anew, and after the vertices were set to what
// they are; and the answers fit together where that is promised: indices are in range, boxes hold their vertices,
// distances lead to the points they belong to.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "fuzz/answers.h"
#include "fuzz/bytes.h"

namespace {

using fuzz::answersOf;
using fuzz::Probes;
using fuzz::require;

bool finite(const gmVector<2>& v) {
    return std::isfinite(v.x()) && std::isfinite(v.y());
}

bool same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

Probes anyProbes(fuzz::Bytes& in, const std::vector<gmVector<2>>& outline) {
    Probes probes;
    for (std::size_t count = 1 + in.below(3); count > 0; --count)
        probes.points.push_back(fuzz::anyPlace(in, outline));
    const gmVector<2> start = fuzz::anyPlace(in, outline);
    probes.segment = gmLineSeg(start, fuzz::anyPlace(in, outline));
    probes.angle =
        gmRadian(in.oneIn(2) ? fuzz::specialNumber(in) : static_cast<double>(in.below(8)) * 0.25 * 3.1415926);
    probes.tolerance = fuzz::specialNumber(in);
    return probes;
}

void checkNearest(const gmContour& contour, const Probes& probes) {
    const auto size = static_cast<long>(contour.points().size());
    for (const gmVector<2>& point : probes.points) {
        const long nearest = contour.closestVertexIndex(point);
        require(nearest >= 0 && nearest < size, "the nearest vertex is one");
        const double distance = contour.distToPoint(point, true);
        require(same(distance, point.distance(contour.closestPoint(point, true))), "the distance is that of the point");
        for (const gmVector<2>& vertex : contour.points())
            require(!(point.distance(vertex) < distance), "no vertex is nearer than the nearest");
        for (const int index : contour.vertexIndex(point, probes.tolerance)) {
            require(index >= 0 && index < size, "a near vertex is one");
            const gmVector<2>& vertex = contour.points()[static_cast<std::size_t>(index)];
            require(point.distance(vertex) < probes.tolerance, "a near vertex is nearer than the tolerance");
        }
    }
}

void checkExtent(const gmContour& contour, const Probes& probes) {
    const gmRect box = contour.encloseRect(gmXform<2>::I);
    const long extremal = contour.extremalVertexIndex(probes.angle);
    require(extremal >= -1 && extremal < static_cast<long>(contour.points().size()), "the extremal vertex is one");
    for (const gmVector<2>& vertex : contour.points())
        require(!finite(vertex) || box.within(vertex), "the box holds every vertex");
    for (const auto mode : {gmContourDefs::eMaxVertexPair, gmContourDefs::eFromFirstVertex})
        require(same(contour.diameter(mode), 2.0 * contour.encloseCircle(mode).radius()), "diameters are two radii");
    require(contour.lineSegs().size() == contour.validLine().size(), "every edge is valid or not");
}

void checkContour(gmContour contour, const Probes& probes) {
    const fuzz::Answers answers = answersOf(contour, probes);
    require(answersOf(contour, probes) == answers, "the same question has the same answer");
    require(answersOf(gmContour(contour), probes) == answers, "a copy answers the same");
    gmContour fresh(contour.points(), contour.isClosed(), contour.label());
    require(answersOf(fresh, probes) == answers, "a contour made of the same vertices answers the same");
    contour.points(contour.points());
    require(answersOf(contour, probes) == answers, "setting the vertices to what they are changes no answer");
    contour.isClosed(!contour.isClosed());
    answersOf(contour, probes);
    contour.isClosed(!contour.isClosed());
    require(answersOf(contour, probes) == answers, "opening and closing again changes no answer");
    if (!contour.points().empty()) {
        checkNearest(contour, probes);
        checkExtent(contour, probes);
    }
    const std::vector<gmVector<2>> other = {{1, 1}, {2, 9}, {-3, 4}};
    contour.points(other);
    require(answersOf(contour, probes) == answersOf(gmContour(other, fresh.isClosed(), fresh.label()), probes),
            "nothing is left of the vertices before");
}

void checkRegion(gmRegion region, const Probes& probes) {
    const fuzz::Answers answers = answersOf(region, probes);
    require(answersOf(region, probes) == answers, "the same question has the same answer");
    require(answersOf(gmRegion(region), probes) == answers, "a copy answers the same");
    region.points(region.points());
    require(answersOf(region, probes) == answers, "setting the vertices to what they are changes no answer");

    gmRegion fresh(region.points());
    fresh.label(region.label());
    try {
        fresh.holes(region.holes());
    } catch (const gmContourDefs::Errors&) {
        fuzz::require(false, "holes that were accepted are accepted again");
    }
    require(answersOf(fresh, probes) == answers, "a region made of the same outline and holes answers the same");

    for (const gmVector<2>& point : probes.points)
        if (!region.points().empty() && region.inside(point, false))
            require(region.encloseRect(gmXform<2>::I).within(point), "nothing outside the box is inside");
    if (region.points().size() > 2)
        require(!(region.area(false) < 0.0), "no area is negative");
}

void checkCleanUp(const gmRegion& region, void (gmRegion::*cleanUp)(gmRegion&) const) {
    gmRegion result;
    gmRegion itself(region);
    try {
        (region.*cleanUp)(result);
        (itself.*cleanUp)(itself);
    } catch (const gmContourDefs::Errors&) {
        require(answersOf(itself) == answersOf(region), "a refused clean-up changes nothing");
        return;
    }
    require(answersOf(itself) == answersOf(result), "a region cleaned up into itself is the same");
}

void checkSet(gmRegionSet set, const Probes& probes) {
    const fuzz::Answers answers = answersOf(set, probes);
    require(answersOf(set, probes) == answers, "the same question has the same answer");
    require(answersOf(gmRegionSet(set), probes) == answers, "a copy answers the same");
    require(answersOf(gmRegionSet(set.regions()), probes) == answers, "a set of the same regions answers the same");
    set.regions(set.regions());
    require(answersOf(set, probes) == answers, "setting the regions to what they are changes no answer");
    for (const auto mode : {gmContourDefs::eRegularize, gmContourDefs::eOuterHull})
        fuzz::Answers().ask([&] { return gmRegionSet(set.regions(), mode); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes in(data, size);
    const std::vector<gmVector<2>> outline = fuzz::anyPlaces(in, in.below(40));
    const Probes probes = anyProbes(in, outline);
    checkContour(gmContour(outline, in.oneIn(2), in.byte()), probes);

    // Holes are made before what they are holes of, so that no region comes to hold itself.
    std::vector<RegionCPtr> regions;
    for (std::size_t count = in.below(4); count > 0; --count) {
        const gmPtrHandle<gmRegion> region(new gmRegion(fuzz::anyPlaces(in, in.below(12))));
        fuzz::Answers().ask([&] {
            if (!regions.empty())
                region->holes(std::vector<RegionCPtr>{in.oneOf(regions)});
            return true;
        });
        regions.push_back(region);
    }
    gmRegion region(outline);
    fuzz::Answers().ask([&] {
        region.holes(regions);
        return true;
    });
    checkRegion(region, probes);
    checkCleanUp(region, &gmRegion::regularize);
    checkCleanUp(region, &gmRegion::outerHull);
    for (const RegionCPtr& each : regions)
        checkRegion(*each, probes);
    regions.insert(regions.begin(), RegionCPtr(new gmRegion(region)));
    checkSet(gmRegionSet(regions), probes);
    return 0;
}
