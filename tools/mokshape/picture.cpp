#include "tools/mokshape/picture.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <string>
#include <utility>

#include "cntr/contour.h"
#include "foundation/display/svgtablet.h"
#include "tools/io/text.h"
#include "tools/mokshape/panels.h"

namespace mokshape {

namespace {

constexpr gmColor paper(252, 251, 248);
constexpr gmColor frameColor(221, 217, 206);
constexpr gmColor outlineColor(31, 54, 84);
constexpr gmColor holeColor(122, 146, 173);
constexpr gmColor crossingColor(196, 48, 43);
constexpr gmColor boxColor(205, 190, 150);
constexpr gmColor ellipseColor(38, 150, 134);
constexpr gmColor centreColor(224, 108, 40);

// In the units of the panels, where contents are some hundred large.
constexpr double outlineWidth = 1.1;
constexpr double overlayWidth = 0.65;

constexpr double quarterTurn = 1.5707963267948966;

double rounded(double value) {
    return std::round(value * 100.0) / 100.0;
}

/// Draws shapes of one file into its panel.
class Pen {
  public:
    Pen(gmUITablet& tablet, const Panel& panel) : tablet_(tablet), panel_(panel) {}

    void draw(const gmContour& contour, const gmColor& color, gmUITablet::Layers layer) const {
        gmContour mapped;
        contour.map(panel_.xform, mapped);
        drawMapped(mapped.points(), mapped.isClosed(), color, layer);
    }

    void drawBox(const gmRect& box) const {
        const gmVector<2> a = box.lower();
        const gmVector<2> b = box.upper();
        draw(gmContour({a, {b.x(), a.y()}, b, {a.x(), b.y()}}, true), boxColor, gmUITablet::eOverlayLayer);
    }

    /// The parts of the ellipse that lie in the panel: one that fits badly may be many times as large.
    void drawEllipse(const gmEllipse& ellipse) const {
        const double size = std::max(ellipse.xRadius(), ellipse.yRadius()) * panel_.scale();
        const int count = std::clamp(static_cast<int>(std::min(size, 1e4)) * 2, 36, 720);
        const gmVector<2> xAxis(ellipse.xRadius(), ellipse.rotation());
        const gmVector<2> yAxis(ellipse.yRadius(), ellipse.rotation() + gmRadian(quarterTurn));
        std::vector<gmVector<2>> piece;
        const auto finishPiece = [&] {
            drawMapped(piece, false, ellipseColor, gmUITablet::eOverlayLayer);
            piece.clear();
        };
        for (int i = 0; i <= count; ++i) {
            const double t = 4.0 * quarterTurn * i / count;
            const gmVector<2> point = panel_.xform * (ellipse.center() + std::cos(t) * xAxis + std::sin(t) * yAxis);
            if (panel_.frame.within(point))
                piece.push_back(point);
            else
                finishPiece();
        }
        finishPiece();
    }

    void drawCentre(const gmVector<2>& centre, double diameter) const {
        const gmVector<2> at = panel_.xform * centre;
        const double arm = std::clamp(diameter * panel_.scale() / 12.0, 1.5, 6.0);
        for (const gmVector<2>& along : {gmVector<2>(arm, 0.0), gmVector<2>(0.0, arm)})
            drawMapped({at - along, at + along}, false, centreColor, gmUITablet::eOverlayLayer);
    }

    void drawFrame() const {
        const gmVector<2> a = panel_.frame.lower();
        const gmVector<2> b = panel_.frame.upper();
        drawMapped({a, {b.x(), a.y()}, b, {a.x(), b.y()}}, true, frameColor, gmUITablet::eImageLayer);
    }

  private:
    void drawMapped(std::vector<gmVector<2>> points, bool closed, const gmColor& color,
                    gmUITablet::Layers layer) const {
        // Nobody sees more decimals in a picture, and its file is a fraction as large without them.
        for (gmVector<2>& point : points)
            point = gmVector<2>(rounded(point.x()), rounded(point.y()));
        gmContour(points, closed).draw(tablet_, gmContourDefs::eOutline, color, layer);
    }

    gmUITablet& tablet_;
    const Panel& panel_;
};

bool showsMeasures(const Outline& outline) {
    return outline.kind != Outline::Kind::eHole;
}

void drawFile(gmUITablet& tablet, const MeasuredFile& measured, const Panel& panel) {
    const Pen pen(tablet, panel);
    pen.drawFrame();
    for (std::size_t i = 0; i < measured.measures.size(); ++i) {
        const Outline& outline = measured.file.outlines[i];
        const Measures& measures = measured.measures[i];
        if (showsMeasures(outline) && measures.box)
            pen.drawBox(*measures.box);
        if (showsMeasures(outline) && measures.ellipse)
            pen.drawEllipse(measures.ellipse->ellipse);
        if (showsMeasures(outline) && measures.centre)
            pen.drawCentre(*measures.centre, measures.diameter.value_or(0.0));
        pen.draw(contourOf(outline),
                 measures.isSelfCrossing                ? crossingColor
                 : outline.kind == Outline::Kind::eHole ? holeColor
                                                        : outlineColor,
                 gmUITablet::eImageLayer);
    }
}

/// The box around an ellipse, or what of it lies near the box around its outline: a bad fit must not make the
/// outlines small.
gmRect boxOf(const gmEllipse& ellipse, const gmRect& outline) {
    const gmVector<2> xAxis(ellipse.xRadius(), ellipse.rotation());
    const gmVector<2> yAxis(ellipse.yRadius(), ellipse.rotation() + gmRadian(quarterTurn));
    const gmVector<2> half(gmVector<2>(xAxis.x(), yAxis.x()).len(), gmVector<2>(xAxis.y(), yAxis.y()).len());
    const gmVector<2> low = ellipse.center() - half;
    const gmVector<2> high = ellipse.center() + half;
    const double reach = std::max(outline.size().x(), outline.size().y()) / 4.0;
    const gmVector<2> origin(std::max(low.x(), outline.lower().x() - reach),
                             std::max(low.y(), outline.lower().y() - reach));
    const gmVector<2> end(std::min(high.x(), outline.upper().x() + reach),
                          std::min(high.y(), outline.upper().y() + reach));
    return gmRect(origin, end - origin);
}

/// The box around everything that is drawn; empty when there is nothing.
gmRect extentOf(const MeasuredFile& measured) {
    gmRect extent;
    bool fits = true;
    for (std::size_t i = 0; i < measured.measures.size(); ++i) {
        const Measures& measures = measured.measures[i];
        fits = fits && (measures.box || measures.vertices == 0);
        if (!measures.box)
            continue;
        extent = extent.enclose(*measures.box);
        if (measures.ellipse && showsMeasures(measured.file.outlines[i]))
            extent = extent.enclose(boxOf(measures.ellipse->ellipse, *measures.box));
    }
    // Far enough below the largest double that mapping and margins stay finite.
    constexpr double largest = 1e300;
    const gmVector<2> low = extent.lower();
    const gmVector<2> high = extent.upper();
    fits = fits &&
           (extent.isEmpty() || (low.x() > -largest && low.y() > -largest && high.x() < largest && high.y() < largest));
    if (!fits)
        throw FileError(printable(measured.file.name) + ": the outlines are too large to draw");
    return extent;
}

}  // namespace

void writePicture(std::ostream& out, const std::vector<MeasuredFile>& files) {
    std::vector<gmRect> extents;
    std::vector<const MeasuredFile*> drawn;
    for (const MeasuredFile& file : files)
        if (const gmRect extent = extentOf(file); !extent.isEmpty()) {
            extents.push_back(extent);
            drawn.push_back(&file);
        }
    gmSvgTablet tablet;
    tablet.title("Outlines with their centres, bounding boxes and fitted ellipses");
    tablet.background(paper);
    const std::vector<Panel> panels = layOut(extents);
    gmRect all;
    for (const Panel& panel : panels)
        all = all.enclose(panel.frame);
    const double thousandth = std::max(all.size().x(), all.size().y()) / 1000.0;
    if (thousandth > 0.0) {
        tablet.strokeWidth(gmUITablet::eImageLayer, outlineWidth / thousandth);
        tablet.strokeWidth(gmUITablet::eOverlayLayer, overlayWidth / thousandth);
    }
    for (std::size_t i = 0; i < panels.size(); ++i)
        drawFile(tablet, *drawn[i], panels[i]);
    tablet.write(out);
}

}  // namespace mokshape
