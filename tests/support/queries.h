#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/support/testcontour.h"
#include "tests/support/text.h"

namespace support {

/// A query, its answer as text. Each notices when the square "0 0, 4 0, 4 4, 0 4" has its third
/// vertex at (2, -5).
struct Query {
    const char* name;
    std::string (*ask)(const TestContour&);

    friend void PrintTo(const Query& query, std::ostream* out) { *out << query.name; }
};

inline std::string askFitEllipse(const TestContour& contour) {
    gmEllipse ellipse;
    double residual = 0;
    contour.fitEllipse(ellipse, residual);
    return text(ellipse) + text(residual);
}

/// Those whose answers a contour remembers.
inline std::vector<Query> rememberedQueries() {
    return {
        {"Length", [](const TestContour& c) { return text(c.length()); }},
        {"MeanPosition", [](const TestContour& c) { return text(c.meanPosition()); }},
        {"LineSegs", [](const TestContour& c) { return text(c.lineSegs()); }},
        {"IsSelfIntersecting", [](const TestContour& c) { return text(c.isSelfIntersecting()); }},
        {"MedianFeatureSize", [](const TestContour& c) { return text(c.medianFeatureSize()); }},
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

/// Those that are searched for each time as well.
inline std::vector<Query> allQueries() {
    std::vector<Query> queries = rememberedQueries();
    queries.push_back({"Intersections", [](const TestContour& c) {
                           return text(c.intersections(gmLineSeg({-1, 1}, {9, 1.5}), true));
                       }});
    queries.push_back({"VertexIndex", [](const TestContour& c) { return text(c.vertexIndex({2, -5}, 1.0)); }});
    queries.push_back({"ClosestPoint", [](const TestContour& c) { return text(c.closestPoint({2, -5}, false)); }});
    return queries;
}

/// A mode by its number, whether there is one or not.
inline gmContourDefs::DiameterMode diameterMode(int number) {
    return static_cast<gmContourDefs::DiameterMode>(number);
}

}  // namespace support
