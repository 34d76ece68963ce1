// Draws what counts as inside, and what clean-up makes of outlines that cross themselves: the pictures of
// docs/containment-and-clean-up.md.
// usage: example_clean_up FOLDER
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "cntr/cntr.h"
#include "foundation/display/svgtablet.h"

namespace {

using Points = std::vector<gmVector<2>>;

constexpr gmColor ink(31, 54, 84);
constexpr gmColor crossed(196, 48, 43);
constexpr gmColor filling(150, 205, 196);
constexpr gmColor paper(252, 251, 248);

constexpr double cell = 16.0;  // from one drawing to the next

void drawOutline(gmUITablet& tablet, const gmContour& outline, const gmVector<2>& place) {
    gmContour moved;
    outline.map(gmXform<2>(gmMatrix<2>(1.0, 0.0, 0.0, 1.0), place), moved);
    moved.draw(tablet, gmContourDefs::eOutline, outline.isSelfIntersecting() ? crossed : ink,
               gmUITablet::eOverlayLayer);
}

/// The outlines of a region and its holes, hatched where points are inside.
void drawRegion(gmUITablet& tablet, const gmRegion& region, const gmVector<2>& place, bool considerHoles) {
    // The points lie off all lines of the outlines, so that none of them is on an edge.
    for (int row = 0; row < 26; ++row)
        for (int column = 0; column < 26; ++column) {
            const gmVector<2> point(0.3125 + 0.5 * column, 0.28125 + 0.5 * row);
            if (!region.inside(point, considerHoles))
                continue;
            const gmVector<2> at = point + place;
            tablet.drawLineSeg({at.x() - 0.25, at.y()}, {at.x() + 0.25, at.y()}, filling, gmUITablet::eImageLayer);
        }
    drawOutline(tablet, region, place);
    for (const RegionCPtr& hole : region.holes()) {
        drawOutline(tablet, *hole, place);
        for (const RegionCPtr& island : hole->holes())
            drawOutline(tablet, *island, place);
    }
}

gmSvgTablet newTablet(const std::string& title) {
    gmSvgTablet tablet;
    tablet.title(title);
    tablet.background(paper);
    return tablet;
}

gmSvgTablet drawContainment() {
    const gmPtrHandle<gmRegion> hole(new gmRegion({{3, 3}, {10, 3}, {10, 10}, {3, 10}}));
    hole->holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{5, 5}, {8, 5}, {8, 8}, {5, 8}}))});
    gmRegion plate({{0, 0}, {13, 0}, {13, 13}, {0, 13}});
    plate.holes(std::vector<RegionCPtr>{hole});
    const gmRegion star({{6, 0}, {10, 13}, {0, 5}, {13, 5}, {3, 13}});

    gmSvgTablet tablet =
        newTablet("What counts as inside: with holes, without them, and in a star that crosses itself");
    drawRegion(tablet, plate, {0.0, 0.0}, true);
    drawRegion(tablet, plate, {cell, 0.0}, false);
    drawRegion(tablet, star, {2.0 * cell, 0.0}, false);
    return tablet;
}

gmSvgTablet drawCleanUp() {
    const std::vector<Points> outlines = {
        {{1, 2}, {12, 11}, {12, 2}, {1, 11}},                                  // a bow-tie
        {{0, 1}, {13, 1}, {13, 12}, {3, 12}, {3, 4}, {9, 4}, {9, 8}, {0, 8}},  // a loop inside
        {{0, 4},
         {4, 0},
         {9, 0},
         {13, 4},
         {13, 9},
         {9, 13},
         {4, 13},
         {1, 9},  // drawn twice
         {2, 5},
         {5, 2},
         {8, 2},
         {11, 5},
         {11, 8},
         {8, 11},
         {5, 11},
         {0, 8}},
        {{6, 6}, {8, 6}, {8, 8}, {4, 8}, {4, 4}, {10, 4}, {10, 10}, {2, 10}, {2, 2}, {12, 2}, {12, 11}},  // a spiral
    };
    gmSvgTablet tablet = newTablet("Outlines that cross themselves, regularised, and their outer hulls");
    double y = 0.0;
    for (const Points& points : outlines) {
        const gmRegion drawn(points);
        drawRegion(tablet, drawn, {0.0, y}, false);
        drawRegion(tablet, gmRegion(points, gmContourDefs::eRegularize), {cell, y}, false);
        drawRegion(tablet, gmRegion(points, gmContourDefs::eOuterHull), {2.0 * cell, y}, false);
        y += cell;
    }
    return tablet;
}

void write(const gmSvgTablet& tablet, const std::string& name) {
    std::ofstream file(name);
    tablet.write(file);
    file.close();
    if (!file)
        throw std::runtime_error(name + ": cannot be written");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: example_clean_up FOLDER\n";
        return 1;
    }
    try {
        write(drawContainment(), std::string(argv[1]) + "/containment.svg");
        write(drawCleanUp(), std::string(argv[1]) + "/clean-up.svg");
    } catch (const std::exception& error) {
        std::cerr << "example_clean_up: " << error.what() << '\n';
        return 1;
    }
}
