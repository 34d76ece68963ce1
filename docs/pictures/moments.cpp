#include "docs/pictures/pictures.h"
#include "docs/pictures/sheet.h"

namespace pictures {

namespace {

void drawEllipses(Sheet& sheet, const Points& points) {
    const gmRegion region(points);
    sheet.hatch(region, false, filling);
    const gmEllipse equal = gf_EllipseFromInertiaData(gf_InertiaDataPolygon(points));
    gmEllipse fitted;
    double residual = 0.0;
    gf_FitEllipse(points, fitted, residual);
    sheet.ellipse(fitted, red);
    sheet.ellipse(equal, green);
    const gmVector<2> axis(equal.xRadius(), equal.rotation());
    sheet.dashed(equal.center() - axis, equal.center() + axis, green);
    sheet.outline(region, ink);
    for (const gmVector<2>& point : points)
        sheet.dot(point, ink);
    sheet.cross(region.centerOfMass(false), green);
    sheet.cross(fitted.center(), red);
}

}  // namespace

/// The same figure twice, the second time with vertices crowded on two edges: the moments stay, the fit does not.
void drawMoments(const std::string& folder) {
    const Points figure = {{0, 3}, {2, 0}, {8, 0}, {14, 4}, {16, 9}, {13, 11}, {8, 8}, {2, 7}};
    Points crowded;
    for (std::size_t i = 0; i < figure.size(); ++i) {
        crowded.push_back(figure[i]);
        if (i == 5 || i == 6)
            for (int k = 1; k < 10; ++k)
                crowded.push_back(figure[i] + (figure[i + 1] - figure[i]) * (k / 10.0));
    }
    Sheet sheet(
        "A figure with its centre, the ellipse of the same moments and the ellipse fitted to its vertices; and the "
        "same "
        "figure with more vertices along two of its edges",
        900, 310);
    sheet.panel({60, 285}, 22);
    drawEllipses(sheet, figure);
    sheet.panel({500, 285}, 22);
    drawEllipses(sheet, crowded);
    sheet.write(folder + "/moments.svg");
}

}  // namespace pictures
