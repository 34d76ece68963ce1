#include "cntr/contour.h"
#include "cntr/detail/edges.h"
#include "cntr/region.h"

void gmContour::draw(gmUITablet& tablet, gmContourDefs::DrawMode, const gmColor& color,
                     const gmUITablet::Layers& layers) const {
    // A copy: the application's tablet may change the contour while it draws.
    const std::vector<gmVector<2>> points = points_;
    detail::forEachEdge(points, isClosed(), [&](const gmVector<2>& from, const gmVector<2>& to) {
        tablet.drawLineSeg({from.x(), from.y()}, {to.x(), to.y()}, color, layers);
    });
}

void gmRegion::draw(gmUITablet&, const gmColor&, const gmUITablet::Layers&) const {}
