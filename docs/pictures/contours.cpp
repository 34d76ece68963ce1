#include "docs/pictures/pictures.h"
#include "docs/pictures/sheet.h"

namespace pictures {

namespace {

const Points corners = {{0, 0}, {11, 0}, {11, 6}, {6, 4}, {4, 10}, {0, 8}};

/// Every edge with its number, as the library counts them; the closing edge apart.
void drawNumberedEdges(Sheet& sheet, const gmContour& contour) {
    const gmVector<2> middle = contour.meanPosition();
    const std::vector<gmLineSeg>& edges = contour.lineSegs();
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const gmVector<2> along = edges[i].p2() - edges[i].p1();
        const gmVector<2> half = (edges[i].p1() + edges[i].p2()) * 0.5;
        const gmVector<2> across = gmVector<2>(along.y(), -along.x()).unit();
        const gmColor color = contour.isClosed() && i == 0 ? red : ink;
        sheet.line(edges[i].p1(), edges[i].p2(), color);
        const gmVector<2> tip = half + along.unit() * 0.35;
        sheet.arrow(tip - along.unit() * 0.1, tip, color);
        sheet.number(static_cast<int>(i), half + across * ((half - middle).dot(across) > 0.0 ? 1.0 : -1.0), color);
    }
    for (const gmVector<2>& vertex : contour.points())
        sheet.dot(vertex, vertex == contour.points().front() ? red : ink);
}

void drawEdges(const std::string& folder) {
    Sheet sheet("The edges of a closed contour, whose edge 0 is the closing one, and of an open one", 760, 340);
    sheet.panel({60, 290}, 24);
    drawNumberedEdges(sheet, gmContour(corners, true));
    sheet.panel({440, 290}, 24);
    drawNumberedEdges(sheet, gmContour(corners, false));
    sheet.write(folder + "/contour-edges.svg");
}

void drawQuestions(const std::string& folder) {
    const gmContour contour(corners, true);
    Sheet sheet(
        "Questions to a contour: the nearest points, the crossings with a segment, the box and the convex hull, the "
        "circles",
        880, 820);

    sheet.panel({60, 350}, 28);
    sheet.outline(contour, ink);
    for (const gmVector<2>& point : Points{{8, 8}, {2, 3.5}, {9, 3.5}, {5.5, -1.5}, {1, 10.5}, {12.5, 7}}) {
        sheet.dot(point, red);
        sheet.arrow(point, contour.closestPoint(point, false), red);
    }

    sheet.panel({500, 350}, 28);
    sheet.outline(contour, ink);
    const gmLineSeg segment({-1, 4}, {12, 5.3});
    sheet.arrow(segment.p1(), segment.p2(), red);
    int count = 0;
    for (const gmVector<2>& crossing : contour.intersections(segment, true)) {
        sheet.dot(crossing, red);
        sheet.number(++count, crossing - gmVector<2>(0.6, 0.9), red);
    }

    sheet.panel({60, 750}, 28);
    sheet.rectangle(contour.encloseRect(gmXform<2>::I), faint);
    gmRegion hull;
    contour.convexHull(hull);
    sheet.hatch(hull, false, filling);
    sheet.outline(hull, green);
    sheet.outline(contour, ink);
    for (const double degrees : {0.0, 60.0, 180.0}) {
        const gmVector<2> farthest = contour.extremalVertexPosition(gmRadian(gmDegree(degrees)));
        sheet.dot(farthest, red);
        sheet.arrow(farthest, farthest + gmVector<2>(1.5, gmRadian(gmDegree(degrees))), red);
    }

    sheet.panel({520, 740}, 20);
    const gmCircle widest = contour.encloseCircle(gmContourDefs::eMaxVertexPair);
    const gmCircle around = contour.encloseCircle(gmContourDefs::eFromFirstVertex);
    sheet.ellipse(gmEllipse(widest), red);
    sheet.outline(contour, ink);
    sheet.cross(widest.center(), red);
    const gmVector<2> first = around.center();
    sheet.dot(first, green);
    // The circle around the first vertex does not fit on the sheet: the quarter that shows it.
    for (int i = -10; i < 100; i += 2)
        sheet.line(first + gmVector<2>(around.radius(), gmRadian(gmDegree(i))),
                   first + gmVector<2>(around.radius(), gmRadian(gmDegree(i + 2))), green);
    sheet.write(folder + "/contour-questions.svg");
}

}  // namespace

void drawContours(const std::string& folder) {
    drawEdges(folder);
    drawQuestions(folder);
}

}  // namespace pictures
