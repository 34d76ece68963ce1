// Edge points that were found in a picture, as a region in millimetres: its measures, and the picture of
// docs/edge-points.md.
// usage: example_edgelets FOLDER
#include <cmath>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include "cntrtmpl/cntrtmpl.h"
#include "foundation/display/svgtablet.h"

namespace {

constexpr gmColor ink(31, 54, 84);
constexpr gmColor found(196, 48, 43);
constexpr gmColor paper(252, 251, 248);

/// What an edge finder reports of a dark cam on a bright ground: places to a sixteenth of a pixel, how strong the edge
/// is there, and the direction in which it gets brighter, in 256ths of a turn.
std::vector<gmEdgelet> edgePointsOfACam() {
    constexpr int count = 60;
    std::vector<gmEdgelet> points;
    for (int i = 0; i < count; ++i) {
        const double t = 6.283185307179586 * i / count;
        const double radius = 18.0 + 6.0 * std::cos(t) + 2.0 * std::cos(2.0 * t);
        const double slope = -6.0 * std::sin(t) - 4.0 * std::sin(2.0 * t);
        const double x = std::round(16.0 * (40.0 + radius * std::cos(t))) / 16.0;
        const double y = std::round(16.0 * (36.0 + radius * std::sin(t))) / 16.0;
        const double outwards = t - std::atan(slope / radius);
        const auto angle = static_cast<unsigned char>(std::lround(outwards / 6.283185307179586 * 256.0));
        points.emplace_back(gmVector<2>(x, y), static_cast<unsigned short>(900 + i), gmAngle8(angle));
    }
    return points;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: example_edgelets FOLDER\n";
        return 1;
    }
    try {
        // 8 pixels a millimetre.
        const gmPtrHandle<gm2XformBase> pixelsFromMillimetres(
            new gm2XformLinear(gmXform<2>(gmMatrix<2>(8, 0, 0, 8), gmVector<2>())));
        const gmContourT<gmEdgelet> edge(edgePointsOfACam(), pixelsFromMillimetres);

        const gmRegionT<gmEdgelet> cam(edge);
        const gmVector<2> centre = cam.centerOfMass(false);
        std::cout << std::fixed << std::setprecision(3) << "edge points " << cam.data().size() << '\n'
                  << "area        " << cam.area(false) << " square millimetres\n"
                  << "centre      " << centre.x() << ' ' << centre.y() << " millimetres\n";

        // Edge points are drawn where they were found, in pixels. So are the outline and the centre, mapped there.
        gmContour outline;
        cam.map(pixelsFromMillimetres->linearXform(), outline);
        gmSvgTablet tablet;
        tablet.title("The outline of a cam, the edge points that it goes through, and its centre of mass");
        tablet.background(paper);
        tablet.size(480, 400);
        tablet.strokeWidth(gmUITablet::eOverlayLayer, 8.0);
        outline.draw(tablet, gmContourDefs::eOutline, ink, gmUITablet::eImageLayer);
        const gmEdgelet mark = cam.datum(centre);
        for (const gmVector<2>& arm : {gmVector<2>(2, 0), gmVector<2>(0, 2)})
            gmContour({mark.position() - arm, mark.position() + arm}, false)
                .draw(tablet, gmContourDefs::eHighlighted, ink, gmUITablet::eImageLayer);
        cam.draw(tablet, found, gmUITablet::eOverlayLayer);

        const std::string name = std::string(argv[1]) + "/edge-points.svg";
        std::ofstream file(name);
        tablet.write(file);
        file.close();
        if (!file) {
            std::cerr << "example_edgelets: " << name << " cannot be written\n";
            return 1;
        }
    } catch (const std::exception& error) {
        std::cerr << "example_edgelets: " << error.what() << '\n';
        return 1;
    }
}
