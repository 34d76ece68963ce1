#include "tools/mokshape/measures.h"

#include <cmath>
#include <utility>

#include "cntr/contour.h"
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

}  // namespace

gmContour contourOf(const Outline& outline) {
    return gmContour(outline.points, outline.isClosed(), outline.label);
}

Measures measure(const Outline& outline) {
    Measures measures;
    measures.vertices = outline.points.size();
    if (outline.points.empty())
        return measures;
    const gmContour contour = contourOf(outline);
    const double area = outline.isClosed() ? gf_Area(outline.points) : 0.0;
    if (outline.isClosed())
        measures.area = ifFinite(area);
    measures.length = ifFinite(contour.length());
    measures.centre = centreOf(contour, area);
    const gmRect box = contour.encloseRect(gmXform<2>::I);
    if (isFinite(box.size()))
        measures.box = box;
    measures.diameter = ifFinite(contour.diameter(gmContourDefs::eMaxVertexPair));
    measures.ellipse = ellipseOf(contour);
    measures.isSelfCrossing = contour.isSelfIntersecting();
    return measures;
}

MeasuredFile measure(OutlineFile file, Progress& progress) {
    MeasuredFile result;
    result.measures.reserve(file.outlines.size());
    for (const Outline& outline : file.outlines) {
        result.measures.push_back(measure(outline));
        progress.advance(workOf(outline));
    }
    result.file = std::move(file);
    return result;
}

double workOf(const Outline& outline) {
    const auto vertices = static_cast<double>(outline.points.size());
    return 1.0 + vertices * vertices;
}

double angleInDegrees(const gmEllipse& ellipse) {
    return gmDegree(ellipse.rotation()).value();
}

}  // namespace mokshape
