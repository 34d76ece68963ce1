#pragma once

#include <cstddef>
#include <vector>

#include "tools/io/outline.h"

namespace mokshape {

/// A polygon with its holes, or a line: outlines [first, last).
struct Part {
    std::size_t first = 0;
    std::size_t last = 0;
    bool isLine = false;
};

/// The parts of one feature.
struct Feature {
    std::vector<Part> parts;

    bool hasOnlyLines() const;
    bool hasOnlyPolygons() const;
    bool hasOneLabel(const std::vector<Outline>& outlines) const;
};

/// Puts the outlines together again by feature and part. An outer ring or a line always starts a part.
std::vector<Feature> groupByFeature(const std::vector<Outline>& outlines);

}  // namespace mokshape
