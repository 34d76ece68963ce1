#include "cntrtmpl/cntrtmpl.h"
#include "docs/pictures/pictures.h"
#include "docs/pictures/sheet.h"

namespace pictures {

namespace {

/// An outline in the image layer and edge points in the overlay, as they come out of the box.
void drawLayers(gmSvgTablet& tablet) {
    tablet.background(gmColor(252, 251, 248));
    tablet.strokeWidth(gmUITablet::eImageLayer, 4);
    tablet.strokeWidth(gmUITablet::eOverlayLayer, 12);
    const Points flag = {{0, 0}, {12, 0}, {9, 3}, {12, 6}, {2, 6}, {2, 14}, {0, 14}};
    gmContour(flag, true).draw(tablet, gmContourDefs::eOutline, ink, gmUITablet::eImageLayer);
    const auto edgePoint = [](double x, double y, unsigned char angle) {
        return gmEdgelet({x, y}, static_cast<unsigned short>(200), gmAngle8(angle));
    };
    const std::vector<gmEdgelet> found = {edgePoint(6, 0, 192),    edgePoint(10.5, 1.5, 32), edgePoint(10.5, 4.5, 224),
                                          edgePoint(7, 6, 64),     edgePoint(2, 10, 0),      edgePoint(1, 14, 64),
                                          edgePoint(0, 10.5, 128), edgePoint(0, 3.5, 128)};
    gmRegionT<gmEdgelet>(found).draw(tablet, red, gmUITablet::eOverlayLayer);
}

}  // namespace

void drawDrawing(const std::string& folder) {
    gmSvgTablet down;
    down.title("A flag, y growing down");
    down.size(251.2, 291.2);
    drawLayers(down);
    Sheet::write(down, folder + "/drawing-down.svg");

    gmSvgTablet up(gmSvgTablet::eYUp);
    up.title("The same flag, y growing up");
    up.size(251.2, 291.2);
    drawLayers(up);
    Sheet::write(up, folder + "/drawing-up.svg");

    gmSvgTablet part(gmSvgTablet::eYUp);
    part.title("A part of the flag");
    part.size(252, 288);
    part.viewBox(gmRect({6, -1}, {7, 8}));
    drawLayers(part);
    Sheet::write(part, folder + "/drawing-part.svg");
}

}  // namespace pictures
