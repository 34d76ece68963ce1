#include "tools/mokshape/measures.h"

#include <cmath>
#include <utility>

#include "cntr/inertia.h"
#include "cntr/regionst.h"
#include "tools/mokshape/progress.h"

namespace mokshape {

namespace {

// At or below it the library takes an area as nothing and has no centre for it. In square coordinate units.
constexpr double vanishingArea = 1e-6;

std::optional<double> ifFinite(double value) {
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

bool isFinite(const gmVector<2>& v) {
    return std::isfinite(v.x()) && std::isfinite(v.y());
}

std::optional<gmVector<2>> centreOf(const gmContour& contour, double area) {
    if (contour.points().size() < 2)
        return std::nullopt;
    const gmVector<2> centre =
        area > vanishingArea ? gnContour::centerOfMass(contour.points()) : contour.meanPosition();
    return isFinite(centre) ? std::optional(centre) : std::nullopt;
}

std::optional<Measures::FittedEllipse> ellipseOf(const gmContour& contour) {
    Measures::FittedEllipse fit;
    contour.fitEllipse(fit.ellipse, fit.residual);
    const gmEllipse& ellipse = fit.ellipse;
    const bool fits = fit.residual >= 0.0 && std::isfinite(fit.residual) && isFinite(ellipse.center()) &&
                      std::isfinite(ellipse.xRadius()) && std::isfinite(ellipse.yRadius()) &&
                      std::isfinite(ellipse.rotation().value());
    return fits ? std::optional(fit) : std::nullopt;
}

std::optional<gmRect> ifFinite(const gmRect& box) {
    return isFinite(box.size()) ? std::optional(box) : std::nullopt;
}

/// What a line and the outline of a region have in common.
Measures measureOutline(const gmContour& contour, double area) {
    Measures measures;
    measures.vertices = contour.points().size();
    if (measures.vertices == 0)
        return measures;
    measures.length = ifFinite(contour.length());
    measures.centre = centreOf(contour, area);
    measures.box = ifFinite(contour.encloseRect(gmXform<2>::I));
    measures.diameter = ifFinite(contour.diameter(gmContourDefs::eMaxVertexPair));
    measures.ellipse = ellipseOf(contour);
    if (contour.isSelfIntersecting())
        measures.crossingRings.push_back(1);
    return measures;
}

/// One that was never asked: only the first centre with holes is one, and a copy of a region counts as asked when the
/// region was.
gmRegion fresh(const gmRegion& region) {
    gmRegion result(region.points());
    result.holes(region.holes());
    return result;
}

std::optional<gmVector<2>> centreWithHolesOf(const gmRegion& region, double areaWithHoles) {
    if (!(std::fabs(areaWithHoles) > vanishingArea))
        return std::nullopt;
    const gmVector<2> centre = fresh(region).centerOfMass(true);
    return isFinite(centre) ? std::optional(centre) : std::nullopt;
}

/// The library's moments of an outline that runs clockwise depend on where it starts.
RegionCPtr counterClockwise(const RegionCPtr& region) {
    const std::vector<gmVector<2>>& points = region->points();
    if (gf_InertiaDataPolygon(points).area() >= 0.0)
        return region;
    return RegionCPtr(new gmRegion(std::vector<gmVector<2>>(points.rbegin(), points.rend())));
}

/// Made of those that have a centre: the library takes (0, 0) for that of others.
template <class Make>
gmRegionSet setOfHeavy(const std::vector<RegionCPtr>& regions, bool considerHoles, Make make) {
    std::vector<RegionCPtr> heavy;
    for (const RegionCPtr& region : regions)
        if (std::fabs(region->area(considerHoles)) > vanishingArea)
            heavy.push_back(make(region));
    return gmRegionSet(heavy);
}

std::optional<gmVector<2>> centreOf(const gmRegionSet& heavy, bool considerHoles) {
    if (!(std::fabs(heavy.area(considerHoles)) > vanishingArea))
        return std::nullopt;
    const gmVector<2> centre = heavy.centerOfMass(considerHoles);
    return isFinite(centre) ? std::optional(centre) : std::nullopt;
}

std::optional<gmMatrix<2>> momentsOf(const gmRegionSet& heavy) {
    if (heavy.regions().empty())
        return std::nullopt;
    const gmMatrix<2> moments = heavy.inertiaMatrix(false);
    const bool areFinite = isFinite({moments(0, 0), moments(0, 1)}) && std::isfinite(moments(1, 1));
    return areFinite ? std::optional(moments) : std::nullopt;
}

}  // namespace

Measures measureLine(const gmContour& line) {
    return measureOutline(line, 0.0);
}

Measures measureRegion(const gmRegion& region) {
    const double area = region.area(false);
    Measures measures = measureOutline(region, area);
    measures.area = ifFinite(area);
    measures.holes = region.holes().size();
    const double areaWithHoles = region.area(true);
    measures.areaWithHoles = ifFinite(areaWithHoles);
    measures.centreWithHoles = measures.holes == 0 ? measures.centre : centreWithHolesOf(region, areaWithHoles);
    for (std::size_t i = 0; i < measures.holes; ++i)
        if (region.holes()[i]->isSelfIntersecting())
            measures.crossingRings.push_back(i + 2);
    return measures;
}

SetMeasures measureSet(const std::vector<RegionCPtr>& regions) {
    SetMeasures measures;
    const gmRegionSet all(regions);
    measures.polygons = regions.size();
    for (const RegionCPtr& region : regions) {
        measures.vertices += region->points().size();
        measures.holes += region->holes().size();
    }
    measures.area = ifFinite(all.area(false));
    measures.areaWithHoles = ifFinite(all.area(true));
    if (!regions.empty())
        measures.box = ifFinite(all.encloseRect(gmXform<2>::I));
    measures.isSelfCrossing = all.isSelfIntersecting();
    const gmRegionSet outlines = setOfHeavy(regions, false, counterClockwise);
    measures.centre = centreOf(outlines, false);
    measures.moments = momentsOf(outlines);
    const auto freshOf = [](const RegionCPtr& region) { return RegionCPtr(new gmRegion(fresh(*region))); };
    measures.centreWithHoles =
        measures.holes == 0 ? measures.centre : centreOf(setOfHeavy(regions, true, freshOf), true);
    return measures;
}

MeasuredFile measureSingly(RegionFile regions, Progress& progress) {
    MeasuredFile result;
    result.measures.reserve(regions.shapes.size());
    for (const Shape& shape : regions.shapes) {
        const std::vector<Outline>& outlines = regions.file.outlines;
        result.measures.push_back(shape.region.isNull() ? measureLine(contourOf(outlines[shape.part.first]))
                                                        : measureRegion(*shape.region));
        for (std::size_t i = shape.part.first; i < shape.part.last; ++i)
            progress.advance(workOf(outlines[i]));
    }
    result.regions = std::move(regions);
    return result;
}

MeasuredFile measure(RegionFile regions, Progress& progress) {
    MeasuredFile result = measureSingly(std::move(regions), progress);
    std::vector<RegionCPtr> polygons;
    for (const Shape& shape : result.regions.shapes)
        if (!shape.region.isNull())
            polygons.push_back(shape.region);
    if (!polygons.empty())
        result.all = measureSet(polygons);
    return result;
}

double angleInDegrees(const gmEllipse& ellipse) {
    return gmDegree(ellipse.rotation()).value();
}

}  // namespace mokshape
