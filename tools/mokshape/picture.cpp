#include "tools/mokshape/picture.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <set>
#include <string>
#include <tuple>
#include <utility>

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
constexpr gmColor replacedColor(240, 186, 180);
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

gmColor colorOf(const Outline& outline, bool crosses) {
    if (crosses)
        return crossingColor;
    return outline.kind == Outline::Kind::eHole ? holeColor : outlineColor;
}

bool isIn(const std::vector<std::size_t>& rings, const Outline& outline) {
    return std::find(rings.begin(), rings.end(), outline.ring) != rings.end();
}

void drawFile(gmUITablet& tablet, const MeasuredFile& measured, const Panel& panel) {
    const Pen pen(tablet, panel);
    pen.drawFrame();
    for (const Outline& outline : measured.regions.replaced)
        pen.draw(contourOf(outline), replacedColor, gmUITablet::eImageLayer);
    for (std::size_t i = 0; i < measured.measures.size(); ++i) {
        const Measures& measures = measured.measures[i];
        if (measures.box)
            pen.drawBox(*measures.box);
        if (measures.ellipse)
            pen.drawEllipse(measures.ellipse->ellipse);
        if (measures.centre)
            pen.drawCentre(*measures.centre, measures.diameter.value_or(0.0));
        const Part& part = measured.regions.shapes[i].part;
        for (std::size_t k = part.first; k < part.last; ++k) {
            const Outline& outline = measured.regions.file.outlines[k];
            pen.draw(contourOf(outline), colorOf(outline, isIn(measures.crossingRings, outline)),
                     gmUITablet::eImageLayer);
        }
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

/// Collects the box around everything that is drawn of a file.
class Extent {
  public:
    void add(const gmRect& box) { extent_ = extent_.enclose(box); }

    void add(const std::vector<Outline>& outlines) {
        for (const Outline& outline : outlines)
            if (!outline.points.empty()) {
                const gmRect box = contourOf(outline).encloseRect(gmXform<2>::I);
                fits_ = fits_ && std::isfinite(box.size().x()) && std::isfinite(box.size().y());
                add(box);
            }
    }

    /// Empty when there is nothing. Throws: FileError when it is too large.
    const gmRect& of(const std::string& file) const {
        // Far enough below the largest double that mapping and margins stay finite.
        constexpr double largest = 1e300;
        const gmVector<2> low = extent_.lower();
        const gmVector<2> high = extent_.upper();
        const bool isNear = low.x() > -largest && low.y() > -largest && high.x() < largest && high.y() < largest;
        if (!fits_ || !(extent_.isEmpty() || isNear))
            throw FileError(printable(file) + ": the outlines are too large to draw");
        return extent_;
    }

  private:
    gmRect extent_;
    bool fits_ = true;
};

gmRect extentOf(const MeasuredFile& measured) {
    Extent extent;
    extent.add(measured.regions.file.outlines);
    extent.add(measured.regions.replaced);
    for (const Measures& measures : measured.measures)
        if (measures.ellipse && measures.box)
            extent.add(boxOf(measures.ellipse->ellipse, *measures.box));
    return extent.of(measured.regions.file.name);
}

void startPicture(gmSvgTablet& tablet, const std::vector<Panel>& panels, const std::string& title) {
    tablet.title(title);
    tablet.background(paper);
    gmRect all;
    for (const Panel& panel : panels)
        all = all.enclose(panel.frame);
    const double thousandth = std::max(all.size().x(), all.size().y()) / 1000.0;
    if (thousandth > 0.0) {
        tablet.strokeWidth(gmUITablet::eImageLayer, outlineWidth / thousandth);
        tablet.strokeWidth(gmUITablet::eOverlayLayer, overlayWidth / thousandth);
    }
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
    const std::vector<Panel> panels = layOut(extents);
    gmSvgTablet tablet;
    startPicture(tablet, panels, "Outlines with their centres, bounding boxes and fitted ellipses");
    for (std::size_t i = 0; i < panels.size(); ++i)
        drawFile(tablet, *drawn[i], panels[i]);
    tablet.write(out);
}

void writeBeforeAndAfter(std::ostream& out, const OutlineFile& before, const std::vector<Outline>& after,
                         const std::vector<Outline>& replaced) {
    // The same for both, so that they lie alike in their panels.
    Extent extent;
    extent.add(before.outlines);
    extent.add(after);
    const gmRect& both = extent.of(before.name);
    const std::vector<Panel> panels = both.isEmpty() ? std::vector<Panel>() : layOutInRow({both, both});
    gmSvgTablet tablet;
    startPicture(tablet, panels, "Outlines before and after they were cleaned");
    const auto place = [](const Outline& outline) { return std::tuple(outline.feature, outline.part, outline.ring); };
    std::set<std::tuple<std::size_t, std::size_t, std::size_t>> replacedPlaces;
    for (const Outline& outline : replaced)
        replacedPlaces.insert(place(outline));
    const auto draw = [&](const std::vector<Outline>& outlines, const Panel& panel, bool marks) {
        const Pen pen(tablet, panel);
        pen.drawFrame();
        for (const Outline& outline : outlines)
            pen.draw(contourOf(outline), colorOf(outline, marks && replacedPlaces.count(place(outline)) > 0),
                     gmUITablet::eImageLayer);
    };
    if (!panels.empty()) {
        draw(before.outlines, panels[0], true);
        draw(after, panels[1], false);
    }
    tablet.write(out);
}

}  // namespace mokshape
