#include <cmath>
#include <limits>

#include "foundation/object/exception.h"
#include "foundation/shapes/circle.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/line.h"
#include "foundation/shapes/lineseg.h"
#include "foundation/shapes/point.h"
#include "foundation/shapes/polygon.h"
#include "foundation/shapes/rect.h"

gmShape::~gmShape() = default;

double gmPoint::distToPoint(const gmVector<2>& v) const {
    return exists_ ? position_.distance(v) : std::numeric_limits<double>::infinity();
}

double gmLine::distToPoint(const gmVector<2>& v) const {
    // From v's own position: far from the origin the foot itself would be rounded to the grid of its coordinates.
    const gmVector<2> toStart = through_ - v;
    return (hasDirection() ? toStart + direction_ * gfFootParameter(through_, direction_, v) : toStart).len();
}

gmPoint gmLine::intersect(const gmLine& other) const {
    if (isParallel(other))
        return gmPoint();
    return gmPoint(gfMeeting(through_, direction_, other.through_, other.direction_));
}

const gmVector<2>& gmPolygon::operator[](long index) const {
    if (index < 0 || index >= static_cast<long>(vertices_.size()))
        throw gmMathError::OutOfRange("polygon has no vertex " + std::to_string(index));
    return vertices_[static_cast<std::size_t>(index)];
}
