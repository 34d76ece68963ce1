#pragma once

#include <string>
#include <vector>

#include "cntr/contour.h"
#include "tests/reference/outline.h"
#include "tests/support/text.h"

namespace support {

/// A contour that lets tests at what only derived classes see.
class TestContour : public gmContour {
  public:
    TestContour() = default;
    TestContour(const std::vector<gmVector<2>>& points, bool closed, unsigned long label = 0)
        : gmContour(points, closed, label) {}
    explicit TestContour(const reference::Outline& outline) : gmContour(outline.points, outline.closed) {}
    explicit TestContour(const gmContour& other) : gmContour(other) {}

    using gmContour::intersections;
    using gmContour::medianFeatureSize;
    using gmContour::setPoints;

    /// Moves a vertex without a word to anyone: answers that do not follow are remembered ones.
    void moveSecretly(std::size_t vertex, const gmVector<2>& position) {
        const_cast<std::vector<gmVector<2>>&>(points())[vertex] = position;
    }
};

/// contour("0 0, 4 0, 4 3") is the closed triangle.
inline TestContour contour(const std::string& vertices, unsigned long label = 0) {
    return TestContour(points(vertices), true, label);
}
inline TestContour openContour(const std::string& vertices, unsigned long label = 0) {
    return TestContour(points(vertices), false, label);
}

inline reference::Outline outlineOf(const gmContour& contour) {
    return {contour.points(), contour.isClosed()};
}

}  // namespace support
