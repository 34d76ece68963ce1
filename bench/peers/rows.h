#pragma once

#include <cstddef>
#include <vector>

namespace peers {

/// The questions. "Repeated" asks one shape again and again, each time something new; whoever keeps a structure has it
/// by then. "Cold" asks a shape that was never asked before.
enum class Row {
    closestPoint,
    closestPointTraced,
    closestPointCold,
    freshEight,
    closestVertex,
    verticesWithin,
    inside,
    insideCold,
    insideHoles,
    insideHolesCold,
    longCrossings,
    longCrossingsTraced,
    shortCrossings,
    crossingsCold,
    contourCrossings,
    selfIntersectingNo,
    selfIntersectingYes,
    regularize,
    farthestPair,
    farthestVertex,
    extremalVertex,
    rectangle,
    hull,
    hullTraced,
    length,
    area,
    map,
    centre,
    moments,
    ellipse,
    write,
    read,
    setInside,
    setInsideShuffled,
    setDistance,
    setDistanceShuffled,
    setRectangle,
    hardCentrePoint,
    hardCentreVertex,
    hardCentreInside,
    hardPolygonPair,
    hardTanglePoint,
    hardTangleVertex,
    hardTangleInside,
    hardTangleCrossings,
    hardSpiralPoint,
    hardSpiralVertex,
    hardSpiralInside,
    hardSpiralCrossings,
};

struct RowFacts {
    Row row;
    const char* name;
    /// How far answers may be apart, relative to their size. Counts and yes or no have to be the same.
    double tolerance;
    /// The largest n that is asked.
    std::size_t largest;
};

/// All rows, in the order of the table.
const std::vector<RowFacts>& rows();

}  // namespace peers
