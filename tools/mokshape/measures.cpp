#include "tools/mokshape/measures.h"

#include <cmath>
#include <utility>

#include "cntr/inertia.h"
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

/// What a line and the outline of a region have in common.
Measures measureOutline(const gmContour& contour, double area) {
    Measures measures;
    measures.vertices = contour.points().size();
    if (measures.vertices == 0)
        return measures;
    measures.length = ifFinite(contour.length());
    measures.centre = centreOf(contour, area);
    const gmRect box = contour.encloseRect(gmXform<2>::I);
    if (isFinite(box.size()))
        measures.box = box;
    measures.diameter = ifFinite(contour.diameter(gmContourDefs::eMaxVertexPair));
    measures.ellipse = ellipseOf(contour);
    if (contour.isSelfIntersecting())
        measures.crossingRings.push_back(1);
    return measures;
}

std::optional<gmVector<2>> centreWithHolesOf(const gmRegion& region, double areaWithHoles) {
    if (!(std::fabs(areaWithHoles) > vanishingArea))
        return std::nullopt;
    // Only the first answer with holes is one, and a copy of a region counts as asked when the region was.
    gmRegion fresh(region.points());
    fresh.holes(region.holes());
    const gmVector<2> centre = fresh.centerOfMass(true);
    return isFinite(centre) ? std::optional(centre) : std::nullopt;
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

MeasuredFile measure(RegionFile regions, Progress& progress) {
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

double angleInDegrees(const gmEllipse& ellipse) {
    return gmDegree(ellipse.rotation()).value();
}

}  // namespace mokshape
