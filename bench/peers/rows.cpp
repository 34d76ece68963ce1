#include "bench/peers/rows.h"

#include <limits>

namespace peers {

const std::vector<RowFacts>& rows() {
    constexpr std::size_t any = std::numeric_limits<std::size_t>::max();
    // A thousand shapes of n vertices each.
    constexpr std::size_t ofSets = 4096;
    // Single precision is all that some peers have.
    constexpr double single = 1e-5;
    static const std::vector<RowFacts> all{
        {Row::closestPoint, "closest point, repeated", 1e-9, any},
        {Row::closestPointTraced, "closest point, repeated, pixel outline", 1e-9, any},
        {Row::closestPointCold, "closest point, cold", 1e-9, any},
        {Row::freshEight, "structure and eight closest points", 1e-9, any},
        {Row::closestVertex, "closest vertex, repeated", 1e-9, any},
        {Row::verticesWithin, "vertices within a tolerance, repeated", 0.0, any},
        {Row::inside, "inside, repeated", 0.0, any},
        {Row::insideCold, "inside, cold", 0.0, any},
        {Row::insideHoles, "inside with holes, repeated", 0.0, any},
        {Row::insideHolesCold, "inside with holes, cold", 0.0, any},
        {Row::longCrossings, "crossings of a long segment, repeated", 0.0, any},
        {Row::longCrossingsTraced, "crossings of a long segment, repeated, pixel outline", 0.0, any},
        {Row::shortCrossings, "crossings of a short segment, repeated", 0.0, any},
        {Row::crossingsCold, "crossings of a segment, cold", 0.0, any},
        {Row::contourCrossings, "crossings of two contours, structures included", 0.0, any},
        {Row::selfIntersectingNo, "self-intersecting: no, structure included", 0.0, any},
        {Row::selfIntersectingYes, "self-intersecting: yes, structure included", 0.0, any},
        {Row::regularize, "regularise a self-crossing outline", 1e-6, any},
        {Row::farthestPair, "farthest pair of vertices", 1e-9, any},
        {Row::farthestVertex, "farthest vertex from the first", 1e-9, any},
        {Row::extremalVertex, "extremal vertex, repeated", 1e-9, any},
        {Row::rectangle, "bounding rectangle under a transform, repeated", 1e-9, any},
        {Row::hull, "convex hull", 1e-6, any},
        {Row::hullTraced, "convex hull, pixel outline", 1e-6, any},
        {Row::length, "length", single, any},
        {Row::area, "area", single, any},
        {Row::map, "map", 1e-9, any},
        {Row::centre, "centre of mass", single, any},
        {Row::moments, "second moments", 10 * single, any},
        {Row::ellipse, "ellipse fit", 1e-3, any},
        {Row::write, "writing an archive of one contour", 1e-12, any},
        {Row::read, "reading an archive of one contour", 1e-12, any},
        {Row::setInside, "1,000 regions: one holds this point", 0.0, ofSets},
        {Row::setInsideShuffled, "1,000 regions in random order: one holds this point", 0.0, ofSets},
        {Row::setDistance, "1,000 regions: nearest distance", 1e-9, ofSets},
        {Row::setDistanceShuffled, "1,000 regions in random order: nearest distance", 1e-9, ofSets},
        {Row::setRectangle, "1,000 regions: enclosing rectangle under a transform", 1e-9, ofSets},
        {Row::hardCentrePoint, "hard: closest point to the centre of a regular polygon", 1e-9, any},
        {Row::hardCentreVertex, "hard: closest vertex to the centre of a regular polygon", 1e-9, any},
        {Row::hardCentreInside, "hard: inside, the centre of a regular polygon", 0.0, any},
        {Row::hardPolygonPair, "hard: farthest pair of a regular polygon", 1e-9, 16384},
        {Row::hardTanglePoint, "hard: closest point, random vertices", 1e-9, any},
        {Row::hardTangleVertex, "hard: closest vertex, random vertices", 1e-9, any},
        {Row::hardTangleInside, "hard: inside, random vertices", 0.0, any},
        {Row::hardTangleCrossings, "hard: crossings of a long segment, random vertices", 0.0, any},
        {Row::hardSpiralPoint, "hard: closest point, spiral of 20 turns", 1e-9, any},
        {Row::hardSpiralVertex, "hard: closest vertex, spiral of 20 turns", 1e-9, any},
        {Row::hardSpiralInside, "hard: inside, spiral of 20 turns", 0.0, any},
        {Row::hardSpiralCrossings, "hard: crossings of a long segment, spiral of 20 turns", 0.0, any},
    };
    return all;
}

}  // namespace peers
