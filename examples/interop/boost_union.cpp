// Two regions that Boost unites, measured here.
#include "interop/boost_geometry.h"

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <iostream>
#include <vector>

#include "cntr/cntr.h"

namespace {

namespace bg = boost::geometry;

void run() {
    gmRegion plate({{0, 0}, {60, 0}, {60, 30}, {0, 30}});
    plate.holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{10, 10}, {20, 10}, {20, 20}, {10, 20}}))});
    const gmRegion tab({{50, 10}, {80, 10}, {80, 20}, {50, 20}});

    bg::model::multi_polygon<bg::model::polygon<gmVector<2>>> joined;
    bg::union_(gnBoostGeometry::PolygonView(plate), gnBoostGeometry::PolygonView(tab), joined);
    std::cout << bg::wkt(joined) << '\n';

    const gmRegionSet parts(gnBoostGeometry::regionsFrom(joined));
    std::cout << "pieces " << parts.regions().size() << '\n';
    std::cout << "area   " << parts.area(true) << '\n';
    std::cout << "height " << parts.encloseRect(gmXform<2>::I).size().y() << '\n';

    using Pixels = bg::model::polygon<bg::model::d2::point_xy<int>>;
    const Pixels pixels = gnBoostGeometry::modelFrom<Pixels>(plate);
    std::cout << "pixels " << bg::area(pixels) << '\n';
}

}  // namespace

int main() {
    try {
        run();
    } catch (const std::exception& error) {
        std::cerr << "example_boost_union: " << error.what() << '\n';
        return 1;
    }
}
