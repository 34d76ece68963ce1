// Whether every query of a contour answers as the plain procedures do.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "cntr/inertia.h"
#include "tests/reference/extent.h"
#include "tests/reference/inertia.h"
#include "tests/reference/intersections.h"
#include "tests/reference/measures.h"
#include "tests/reference/proximity.h"
#include "tests/support/bits.h"
#include "tests/support/random.h"
#include "tests/support/testcontour.h"

namespace support {

/// Places worth asking about: on, beside, amid and far from the outline, and nowhere.
inline std::vector<gmVector<2>> probePoints(const reference::Outline& outline, Random& random) {
    const auto vertex = [&] { return random.oneOf(outline.points); };
    std::vector<gmVector<2>> probes = {vertex(), random.point(-5, 5), random.gridPoint(0, 4)};
    const gmVector<2> a = vertex();
    const gmVector<2> b = vertex();
    probes.push_back((a + b) * 0.5);
    probes.push_back(a + (b - a) * random.real(-0.5, 1.5) + random.gridPoint(-1, 1) * 1e-6);
    if (random.chance(0.1))
        probes.push_back(random.point(-1e300, 1e300));
    if (random.chance(0.1))
        probes.emplace_back(std::nan(""), 1.0);
    if (random.chance(0.1))
        probes.emplace_back(1.0, std::numeric_limits<double>::infinity());
    return probes;
}

inline std::vector<gmLineSeg> probeSegments(const reference::Outline& outline, Random& random) {
    const auto vertex = [&] { return random.oneOf(outline.points); };
    const auto end = [&] { return random.chance(0.5) ? vertex() : random.gridPoint(-1, 5); };
    std::vector<gmLineSeg> probes;
    const gmVector<2> a = end();
    probes.emplace_back(a, end());
    const gmVector<2> b = vertex();
    const gmVector<2> along = vertex() - b;
    probes.emplace_back(b - along * 0.5, b + along * 1.5);  // through two vertices
    probes.emplace_back(b, b + along * 0.5);
    probes.emplace_back(b, b);
    const gmVector<2> far = random.point(-10, 10);
    probes.emplace_back(far, random.point(-10, 10));
    return probes;
}

inline gmXform<2> probeXform(Random& random) {
    const gmVector<2> shift = random.gridPoint(-2, 2);
    switch (random.integer(0, 4)) {
        case 0:
            return gmXform<2>();
        case 1:
            return gmXform<2>(gmMatrix<2>(0, -1, 1, 0), shift);
        case 2:
            return gmXform<2>(gmMatrix<2>(1, 0, 0, 1), shift * 5e-16);
        case 3:
            return gmXform<2>(gmMatrix<2>(1e200, 3, -2, 1e-200), shift);
        default: {
            const gmRadian angle(random.real(-4, 4));
            return gmXform<2>(gmMatrix<2>(angle, angle, 1.0, 1.0), shift);
        }
    }
}

inline gmRadian probeAngle(Random& random) {
    const double halfPi = 1.5707963267948966;
    if (random.chance(0.5))
        return gmRadian(random.integer(-4, 4) * halfPi);
    return random.chance(0.1) ? gmRadian(std::numeric_limits<double>::infinity()) : gmRadian(random.real(-7, 7));
}

inline void expectConsistentProximity(const TestContour& contour, Random& random) {
    const reference::Outline outline = outlineOf(contour);
    const double infinity = std::numeric_limits<double>::infinity();
    const std::vector<double> tolerances = {0.5,    1.0,  1.0000001, 1.5, 2.0,      1e-6, 1e-9,   3e-16,       1e9,
                                            1e-300, 5e17, 1e300,     0.0, infinity, -1.0, 1e-309, std::nan("")};
    for (const gmVector<2>& p : probePoints(outline, random)) {
        SCOPED_TRACE("point " + text(p));
        EXPECT_EQ(contour.closestVertexIndex(p), reference::closestVertexIndex(outline, p));
        for (const bool vertexOnly : {false, true}) {
            EXPECT_TRUE(same(contour.closestPoint(p, vertexOnly), reference::closestPoint(outline, p, vertexOnly)));
            EXPECT_TRUE(same(contour.distToPoint(p, vertexOnly), reference::distToPoint(outline, p, vertexOnly)));
        }
        const double tolerance = random.oneOf(tolerances);
        EXPECT_TRUE(same(contour.vertexIndex(p, tolerance), reference::vertexIndex(outline, p, tolerance)))
            << "tolerance " << text(tolerance);
    }
    EXPECT_TRUE(same(contour.medianFeatureSize(), reference::medianFeatureSize(outline)));
}

inline void expectConsistentIntersections(const TestContour& contour, Random& random) {
    const reference::Outline outline = outlineOf(contour);
    const reference::EdgeTable table = reference::edgeTable(outline);
    EXPECT_TRUE(same(contour.lineSegs(), table.lineSegs));
    EXPECT_TRUE(same(contour.validLine(), table.valid));
    for (const gmLineSeg& seg : probeSegments(outline, random))
        for (const bool includeEndpointEdges : {false, true}) {
            reference::Points positions;
            std::vector<int> edges;
            for (const auto& crossing : reference::crossings(outline, seg, includeEndpointEdges)) {
                positions.push_back(crossing.position);
                edges.push_back(crossing.edge);
            }
            std::vector<int> edgeIndex = {-7};
            const auto answer = contour.intersections(seg, edgeIndex, includeEndpointEdges);
            EXPECT_TRUE(same(answer, positions) && same(edgeIndex, edges))
                << text(seg) << (includeEndpointEdges ? " with" : " without") << " end point edges:\n"
                << text(answer) << " at " << text(edgeIndex) << "\ninstead of\n"
                << text(positions) << " at " << text(edges);
            EXPECT_TRUE(same(contour.intersections(seg, includeEndpointEdges), positions)) << text(seg);
        }
    reference::Outline other;
    other.closed = random.chance(0.5);
    for (int n = random.integer(0, 4); n > 0; n--)
        other.points.push_back(random.chance(0.3) ? random.oneOf(outline.points) : random.gridPoint(-1, 5));
    EXPECT_TRUE(same(contour.intersections(TestContour(other)), reference::intersections(outline, other)))
        << "with " << text(other);
    EXPECT_EQ(contour.isSelfIntersecting(), reference::isSelfIntersecting(outline));
}

inline void expectConsistentExtent(const TestContour& contour, Random& random) {
    const reference::Outline outline = outlineOf(contour);
    const gmXform<2> xform = probeXform(random);
    EXPECT_TRUE(same(contour.encloseRect(xform), reference::encloseRect(outline, xform))) << text(xform);
    EXPECT_TRUE(same(contour.encloseRect(gmXform<2>::I), reference::encloseRect(outline, gmXform<2>::I)));
    for (int i = 0; i < 3; i++) {
        const gmRadian angle = probeAngle(random);
        const long index = reference::extremalVertexIndex(outline, angle);
        EXPECT_EQ(contour.extremalVertexIndex(angle), index) << "angle " << text(angle.value());
        if (index >= 0)
            EXPECT_TRUE(same(contour.extremalVertexPosition(angle), outline.points[static_cast<std::size_t>(index)]));
        else
            EXPECT_THROW(contour.extremalVertexPosition(angle), gmContourDefs::BadParams);
    }
    EXPECT_TRUE(same(contour.encloseCircle(gmContourDefs::eMaxVertexPair), reference::circleOfFarthestPair(outline)));
    const gmCircle fromFirst = reference::circleFromFirstVertex(outline);
    EXPECT_TRUE(same(contour.encloseCircle(gmContourDefs::eFromFirstVertex), fromFirst));
    EXPECT_TRUE(same(contour.diameter(gmContourDefs::eFromFirstVertex), 2.0 * fromFirst.radius()));

    const reference::FittedEllipse fitted = reference::fitEllipse(outline.points);
    gmEllipse ellipse;
    double residual = 0.0;
    contour.fitEllipse(ellipse, residual);
    EXPECT_TRUE(same(ellipse, fitted.ellipse));
    EXPECT_TRUE(same(residual, fitted.residual));
}

inline void expectConsistentMoments(const reference::Points& points) {
    EXPECT_TRUE(same(gf_Area(points), reference::area(points)));
    EXPECT_TRUE(same(gnContour::centerOfMass(points), reference::centerOfMass(points)));
    EXPECT_TRUE(same(gf_CenterOfMass(points), reference::centerOfMass(points)));
    EXPECT_TRUE(same(gf_InertiaDataPolygon(points), inertiaData(reference::inertiaDataPolygon(points))));
}

inline void expectEveryQueryRefuses(const TestContour& empty) {
    using Empty = gmContourDefs::EmptyContour;
    std::vector<int> edges;
    gmEllipse ellipse;
    double residual = 0.0;
    EXPECT_THROW(empty.closestPoint({}, false), Empty);
    EXPECT_THROW(empty.closestPoint({}, true), Empty);
    EXPECT_THROW(empty.closestVertexIndex({}), Empty);
    EXPECT_THROW(empty.distToPoint({}, false), Empty);
    EXPECT_THROW(empty.vertexIndex({}, 1.0), Empty);
    EXPECT_THROW(empty.vertexIndex({}, -1.0), Empty);
    EXPECT_THROW(empty.medianFeatureSize(), Empty);
    EXPECT_THROW(empty.intersections(gmLineSeg(), edges, true), Empty);
    EXPECT_THROW(empty.intersections(gmLineSeg(), false), Empty);
    EXPECT_THROW(empty.intersections(TestContour()), Empty);
    EXPECT_THROW(empty.intersections(contour("0 0, 1 0")), Empty);
    EXPECT_FALSE(empty.isSelfIntersecting());
    EXPECT_THROW(empty.encloseRect(gmXform<2>::I), Empty);
    EXPECT_THROW(empty.extremalVertexIndex(gmRadian(0.0)), Empty);
    EXPECT_THROW(empty.extremalVertexIndex(gmRadian(std::nan(""))), Empty);
    EXPECT_THROW(empty.extremalVertexPosition(gmRadian(0.0)), Empty);
    EXPECT_THROW(empty.fitEllipse(ellipse, residual), Empty);
    EXPECT_THROW(empty.encloseCircle(gmContourDefs::eFromFirstVertex), Empty);
    EXPECT_THROW(empty.diameter(gmContourDefs::eFromFirstVertex), Empty);
    EXPECT_TRUE(same(empty.encloseCircle(gmContourDefs::eMaxVertexPair), gmCircle()));
}

/// Asks a copy of the contour everything, with what the contour remembers; places and directions are drawn from `seed`.
/// Remembered rectangles must be those of the transforms they were asked for: no two that differ in the last value
/// only.
inline void expectConsistent(const gmContour& contour, std::uint32_t seed = 1) {
    SCOPED_TRACE("seed " + std::to_string(seed) + ": " + text(outlineOf(contour)));
    Random random(seed);
    const TestContour copy(contour);
    const reference::Outline outline = outlineOf(contour);
    EXPECT_TRUE(same(copy.length(), reference::length(outline)));
    if (outline.points.size() < 2)
        EXPECT_THROW(copy.meanPosition(), gmContourDefs::EmptyContour);
    else
        EXPECT_TRUE(same(copy.meanPosition(), reference::meanPosition(outline)));
    expectConsistentMoments(outline.points);
    if (outline.points.empty()) {
        expectEveryQueryRefuses(copy);
        return;
    }
    expectConsistentProximity(copy, random);
    expectConsistentIntersections(copy, random);
    expectConsistentExtent(copy, random);
}

}  // namespace support
