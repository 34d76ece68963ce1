#include "cntr/contour.h"
#include "cntr/detail/edges.h"
#include "cntr/region.h"
#include "cntr/regionst.h"

void gmContour::draw(gmUITablet& tablet, gmContourDefs::DrawMode, const gmColor& color,
                     const gmUITablet::Layers& layers) const {
    // A copy: the application's tablet may change the contour while it draws.
    const std::vector<gmVector<2>> points = points_;
    detail::forEachEdge(points, isClosed(), [&](const gmVector<2>& from, const gmVector<2>& to) {
        tablet.drawLineSeg({from.x(), from.y()}, {to.x(), to.y()}, color, layers);
    });
}

void gmRegion::draw(gmUITablet&, const gmColor&, const gmUITablet::Layers&) const {}

void gmRegionSet::draw(gmUITablet& tablet, const gmColor& color, const gmUITablet::Layers& layers) const {
    // The list is looked at anew each time: the application's tablet may change it.
    for (std::size_t i = 0; i < regions_.size(); ++i) {
        const RegionCPtr region = regions_[i];
        region->draw(tablet, color, layers);
    }
}
