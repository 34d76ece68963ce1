// What a contour is asked, with the answers of the plain procedures.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "cntr/region.h"
#include "tests/reference/extent.h"
#include "tests/reference/intersections.h"
#include "tests/reference/proximity.h"
#include "tests/support/hardprobes.h"
#include "tests/support/plainhull.h"
#include "tests/support/questions.h"
#include "tests/support/testcontour.h"

namespace support {

using ContourQuestions = Questions<TestContour>;

inline void addNearness(ContourQuestions& questions, const HardShape& shape, const gmVector<2>& p, double tolerance) {
    const Outline& outline = shape.outline;
    const std::string at = " " + text(p);
    questions.push_back(question<TestContour>("closest vertex to" + at, reference::closestVertexIndex(outline, p),
                                              [p](const TestContour& c) { return c.closestVertexIndex(p); }));
    for (const bool vertexOnly : {false, true}) {
        const gmVector<2> closest = reference::closestPoint(outline, p, vertexOnly);
        const std::string of = vertexOnly ? " of the vertices" : "";
        questions.push_back(question<TestContour>("closest point to" + at + of, closest,
                                                  [=](const TestContour& c) { return c.closestPoint(p, vertexOnly); }));
        questions.push_back(question<TestContour>("distance of" + at + of, closest.distance(p),
                                                  [=](const TestContour& c) { return c.distToPoint(p, vertexOnly); }));
    }
    questions.push_back(question<TestContour>("vertices within " + text(tolerance) + " of" + at,
                                              reference::vertexIndex(outline, p, tolerance),
                                              [=](const TestContour& c) { return c.vertexIndex(p, tolerance); }));
}

inline void addProximity(ContourQuestions& questions, const HardShape& shape, Random& random) {
    HardProbes probes(shape, random);
    for (const gmVector<2>& p : probes.places())
        addNearness(questions, shape, p, probes.tolerance(p));
}

/// The crossings of segments, with the numbers of the edges.
inline void addCrossings(ContourQuestions& questions, const HardShape& shape, Random& random) {
    HardProbes probes(shape, random);
    const reference::EdgeTable table = reference::edgeTable(shape.outline);
    const gmRect box = reference::encloseRect(shape.outline, gmXform<2>());
    for (const gmLineSeg& seg : probes.segments())
        for (const bool endpointEdges : {false, true}) {
            Points positions;
            std::vector<int> edges;
            for (const auto& crossing : reference::crossings(table, box, seg, endpointEdges)) {
                positions.push_back(crossing.position);
                edges.push_back(crossing.edge);
            }
            const std::string name =
                "crossings of " + text(seg) + (endpointEdges ? " with" : " without") + " end point edges";
            questions.push_back(question<TestContour>(
                name, positions, [=](const TestContour& c) { return c.intersections(seg, endpointEdges); }));
            questions.push_back(question<TestContour>("edges at " + name, edges, [=](const TestContour& c) {
                std::vector<int> found = {-7};
                c.intersections(seg, found, endpointEdges);
                return found;
            }));
        }
}

inline Points plainCrossings(const Outline& outline, const Outline& other) {
    const reference::EdgeTable table = reference::edgeTable(outline);
    const gmRect box = reference::encloseRect(outline, gmXform<2>());
    Points result;
    for (const reference::Edge& edge : reference::edges(other))
        for (const auto& crossing :
             reference::crossings(table, box, gmLineSeg(other.points[edge.from], other.points[edge.to]), true))
            result.push_back(crossing.position);
    return result;
}

inline void addCrossingsWith(ContourQuestions& questions, const HardShape& shape, const Outline& other,
                             const std::string& which) {
    questions.push_back(
        question<TestContour>("crossings with " + which, plainCrossings(shape.outline, other),
                              [other = TestContour(other)](const TestContour& c) { return c.intersections(other); }));
}

inline void addSelfCrossing(ContourQuestions& questions, const HardShape& shape) {
    questions.push_back(question<TestContour>("crosses itself", reference::isSelfIntersecting(shape.outline),
                                              [](const TestContour& c) { return c.isSelfIntersecting(); }));
}

/// Where the outline extends to; what is remembered of transforms and angles is more than fits.
inline void addExtent(ContourQuestions& questions, const HardShape& shape, Random& random) {
    HardProbes probes(shape, random);
    const Outline& outline = shape.outline;
    for (const gmXform<2>& xform : probes.xforms())
        questions.push_back(question<TestContour>("box under " + text(xform), reference::encloseRect(outline, xform),
                                                  [xform](const TestContour& c) { return c.encloseRect(xform); }));
    for (const gmRadian& angle : probes.angles())
        questions.push_back(question<TestContour>(
            "vertex farthest toward " + text(angle.value()), reference::extremalVertexIndex(outline, angle),
            [angle](const TestContour& c) { return c.extremalVertexIndex(angle); }));
}

/// What is asked once and remembered.
inline void addOnceAsked(ContourQuestions& questions, const HardShape& shape) {
    const Outline& outline = shape.outline;
    for (const auto mode : {gmContourDefs::eMaxVertexPair, gmContourDefs::eFromFirstVertex}) {
        const bool farthest = mode == gmContourDefs::eMaxVertexPair;
        const gmCircle circle =
            farthest ? reference::circleOfFarthestPair(outline) : reference::circleFromFirstVertex(outline);
        const std::string name = farthest ? " of the farthest pair" : " from the first vertex";
        questions.push_back(question<TestContour>("circle" + name, circle,
                                                  [mode](const TestContour& c) { return c.encloseCircle(mode); }));
        questions.push_back(question<TestContour>("diameter" + name, 2.0 * circle.radius(),
                                                  [mode](const TestContour& c) { return c.diameter(mode); }));
    }
    questions.push_back(question<TestContour>("convex hull", plainHull(outline.points), [](const TestContour& c) {
        gmRegion hull;
        c.convexHull(hull);
        return hull.points();
    }));
}

}  // namespace support
