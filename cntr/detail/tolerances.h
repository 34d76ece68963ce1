// Every tolerance of the library, in one place. All are absolute: they suit coordinates in pixels or millimetres.
#pragma once

namespace detail {

/// Coordinate units, per component: vertices, transforms and axis directions this close are the same.
constexpr double sameValue = 1e-15;

/// Coordinate units: how close a crossing must lie to both segments, how close to an end point an edge touches it, and
/// how close to a vertex a point or another vertex is at the same place.
constexpr double touching = 1e-6;

/// Coordinate units: how much farther than the base line itself the base segment may lie from a triangle's corner
/// before another side has to be the base.
constexpr double beyondBase = 1e-10;

/// Twice a triangle's area, square coordinate units: edges that see the origin under less take no part in a centroid.
constexpr double sliver = 1e-15;

/// Twice a polygon's area, square coordinate units: below this it has no centroid.
constexpr double noArea = 1e-6;

/// Square coordinate units: sums of two areas that cancel to this have no centre.
constexpr double cancelled = 1e-16;

/// Square coordinate units: regions whose areas sum up to no more have their common centre at the origin.
constexpr double noMass = 1e-15;

/// Square coordinate units: triangles of less area are added last.
constexpr double smallTriangle = 1e-6;

/// Coordinate units to the fourth power: principal moments of no more than this belong to a segment or a point.
constexpr double noMoment = 1e-12;

}  // namespace detail
