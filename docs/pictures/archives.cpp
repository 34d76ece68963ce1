#include "docs/pictures/pictures.h"
#include "docs/pictures/sheet.h"

namespace pictures {

/// What the archive of the tour holds: each object once, and pointers between them.
void drawArchives(const std::string& folder) {
    const RegionCPtr punched(new gmRegion({{4, 4}, {6, 4}, {6, 6}, {4, 6}}));
    gmRegion plate({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    plate.holes(std::vector<RegionCPtr>{punched});

    Sheet sheet(
        "Three objects of an archive: a set, its first region, and that one's hole, to which the set refers too", 760,
        300);
    sheet.panel({0, 300}, 10);
    const gmRect set({4, 8}, {18, 14});
    const gmRect first({31, 8}, {14, 14});
    const gmRect second({56, 8}, {14, 14});
    int number = 0;
    for (const gmRect& box : {set, first, second}) {
        sheet.rectangle(box, faint);
        sheet.number(++number, {box.lower().x() + 0.5 * box.size().x(), 24.5}, ink);
    }
    sheet.arrow({22.5, 15}, {30.5, 15}, ink);
    sheet.arrow({45.5, 15}, {55.5, 15}, ink);
    sheet.line({13, 7.5}, {13, 4}, ink);
    sheet.dashed({13, 4}, {63, 4}, ink);
    sheet.arrow({63, 4}, {63, 7.5}, ink);
    sheet.number(3, {38, 2}, ink);

    sheet.panel({70, 180}, 7);
    sheet.region(plate, ink);
    gmContour aside;
    punched->map(gmXform<2>(gmMatrix<2>(1, 0, 0, 1), {9, 0}), aside);
    sheet.outline(aside, ink);
    sheet.panel({345, 185}, 7);
    sheet.region(plate, ink);
    sheet.panel({595, 185}, 7);
    sheet.outline(*punched, ink);
    sheet.write(folder + "/archives.svg");
}

}  // namespace pictures
