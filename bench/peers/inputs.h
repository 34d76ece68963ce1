#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

#include "foundation/math/vector.h"
#include "foundation/math/xform.h"

namespace peers {

using Point = gmVector<2>;
using Points = std::vector<Point>;

struct Segment {
    Point from;
    Point to;
};

/// How many questions there are of a kind: a power of two, and more than a processor remembers the branches of. With a
/// thousand, some contestants are three times as fast as they are with questions that were never asked.
constexpr std::size_t questionCount = 16384;

/// A thousand small regions that do not meet, side by side in rows, and the same in random order.
struct ManyRegions {
    explicit ManyRegions(std::size_t n);

    std::vector<Points> inOrder;
    std::vector<Points> shuffled;
    Points questions;
};

/// What everybody is asked, for shapes of n vertices: made once, so that all see the same numbers. Whoever wants them
/// in types of his own converts them before he is timed. No vertex, crossing or question is close to another, so that
/// nothing hangs on what a library makes of touching.
struct Inputs {
    explicit Inputs(std::size_t n);

    /// How many shapes take turns in cold rows: few enough to stay near the processor, as one shape would.
    std::size_t herd() const { return n >= 1024 ? 1 : std::min<std::size_t>(32, 2048 / n); }
    const ManyRegions& manyRegions() const;

    std::size_t n;
    /// Does not cross itself.
    Points outline;
    /// Runs from pixel to pixel, of about n vertices.
    Points traced;
    /// Crosses itself where a few vertices are in the wrong order.
    Points knotted;
    /// Four lobes in a row, which meet where the outline crosses itself.
    Points chained;
    /// Crosses the outline in a few places.
    Points other;
    /// Close to an ellipse.
    Points ellipse;
    /// Nine holes for the outline, of a sixteenth of the vertices each.
    std::vector<Points> holes;

    /// questionCount of each.
    Points questions;
    Points tracedQuestions;
    Points nearVertices;
    std::vector<Segment> longSegments;
    std::vector<Segment> tracedSegments;
    std::vector<Segment> shortSegments;
    std::vector<gmXform<2>> transforms;
    std::vector<double> angles;
    /// Finds a handful of vertices around each of nearVertices.
    double tolerance;

  private:
    mutable std::shared_ptr<const ManyRegions> manyRegions_;
};

/// Question i of a list that starts again when it ends.
template <class Question>
const Question& pick(const std::vector<Question>& questions, std::size_t i) {
    return questions[i & (questionCount - 1)];
}

/// A rectangle as a number to compare.
inline double digest(const Point& lower, const Point& upper) {
    return lower.x() + 3.0 * lower.y() + 5.0 * upper.x() + 7.0 * upper.y();
}

/// Twice the area inside closed vertices, in the type of whoever asks.
template <class Ring, class X, class Y>
double twiceArea(const Ring& ring, X x, Y y) {
    double sum = 0.0;
    const auto count = ring.size();
    for (decltype(ring.size()) i = 0, last = count - 1; i < count; last = i++)
        sum += x(ring[last]) * y(ring[i]) - x(ring[i]) * y(ring[last]);
    return sum < 0.0 ? -sum : sum;
}

}  // namespace peers
