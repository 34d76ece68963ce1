#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/support/testcontour.h"
#include "tests/support/text.h"

namespace support {

/// A query whose answer a contour remembers, as text. Each notices when the square "0 0, 4 0, 4 4, 0 4" has its third
/// vertex at (2, -5).
struct RememberedQuery {
    const char* name;
    std::string (*ask)(const TestContour&);

    friend void PrintTo(const RememberedQuery& query, std::ostream* out) { *out << query.name; }
};

inline std::string askFitEllipse(const TestContour& contour) {
    gmEllipse ellipse;
    double residual = 0;
    contour.fitEllipse(ellipse, residual);
    return text(ellipse) + text(residual);
}

inline std::vector<RememberedQuery> rememberedQueries() {
    return {
        {"Length", [](const TestContour& c) { return text(c.length()); }},
        {"MeanPosition", [](const TestContour& c) { return text(c.meanPosition()); }},
        {"LineSegs", [](const TestContour& c) { return text(c.lineSegs()); }},
        {"Intersections",
         [](const TestContour& c) {
             return text(c.intersections(gmLineSeg({-1, 1}, {9, 1.5}), true));
         }},
        {"IsSelfIntersecting", [](const TestContour& c) { return text(c.isSelfIntersecting()); }},
        {"MedianFeatureSize", [](const TestContour& c) { return text(c.medianFeatureSize()); }},
        {"VertexIndex",
         [](const TestContour& c) {
             return text(c.vertexIndex({2, -5}, 1.0));
         }},
        {"EncloseRect", [](const TestContour& c) { return text(c.encloseRect(gmXform<2>::I)); }},
        {"EncloseCircleOfTheFarthestPair",
         [](const TestContour& c) { return text(c.encloseCircle(gmContourDefs::eMaxVertexPair)); }},
        {"EncloseCircleFromTheFirstVertex",
         [](const TestContour& c) { return text(c.encloseCircle(gmContourDefs::eFromFirstVertex)); }},
        {"DiameterOfTheFarthestPair",
         [](const TestContour& c) { return text(c.diameter(gmContourDefs::eMaxVertexPair)); }},
        {"ExtremalVertexIndex", [](const TestContour& c) { return text(c.extremalVertexIndex(gmRadian(0.5))); }},
        {"FitEllipse", askFitEllipse},
    };
}

/// A mode by its number, whether there is one or not.
inline gmContourDefs::DiameterMode diameterMode(int number) {
    return static_cast<gmContourDefs::DiameterMode>(number);
}

}  // namespace support
