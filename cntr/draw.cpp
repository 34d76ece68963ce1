#include "cntr/contour.h"
#include "cntr/detail/edges.h"
#include "cntr/region.h"
#include "cntr/regionst.h"
#include "cntrtmpl/regiont.h"

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

template <class Datum>
void gmRegionT<Datum>::draw(gmUITablet& tablet, const gmColor& color, const gmUITablet::Layers& layers) const {
    // The angle of an edge point is the direction in which the grey value rises: the edge runs a quarter of a turn
    // back.
    constexpr unsigned quarterTurn = 64;
    constexpr double degreesEach = 360.0 / 256.0;
    constexpr double halfLength = 0.5;
    constexpr gmRadian halfTurn(3.141592653589793);
    // A copy: the application's tablet may change the region while it draws.
    const std::vector<Datum> data = this->data();
    for (const Datum& datum : data) {
        const unsigned along = (datum.angle().value() - quarterTurn) % 256U;
        const gmRadian direction = gm2Rigid(gmDegree(along * degreesEach), datum.position()).angle();
        const gmVector<2> from = gmXform<2>::I * (datum.position() + gmVector<2>(halfLength, direction));
        const gmVector<2> to = gmXform<2>::I * (datum.position() + gmVector<2>(halfLength, direction + halfTurn));
        tablet.drawLineSeg({from.x(), from.y()}, {to.x(), to.y()}, color, layers);
    }
}

template void gmRegionT<gmEdgelet>::draw(gmUITablet&, const gmColor&, const gmUITablet::Layers&) const;
