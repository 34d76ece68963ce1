// Fixed inputs of everything that is measured: the same outlines on every machine and in every run.
#pragma once

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "foundation/math/vector.h"

namespace bench {

/// A closed, simple outline of n vertices around (500, 500), with a radius that wanders between 300 and 500: what
/// tracing a part in a picture yields.
inline std::vector<gmVector<2>> outline(std::size_t n) {
    std::mt19937 engine(12345);
    std::vector<gmVector<2>> points;
    for (std::size_t i = 0; i < n; ++i) {
        const double angle = 6.283185307179586 * static_cast<double>(i) / static_cast<double>(n);
        const double noise = static_cast<double>(engine() % 1000) / 1000.0 / static_cast<double>(n);
        const double radius = 400.0 + 60.0 * std::sin(3.0 * angle) + 40.0 * std::sin(11.0 * angle) + noise;
        points.emplace_back(500.0 + radius * std::cos(angle), 500.0 + radius * std::sin(angle));
    }
    return points;
}

/// Points in and around the outline, enough that no query finds the last one's answer in the caches of the processor.
inline std::vector<gmVector<2>> queries() {
    std::mt19937 engine(54321);
    std::vector<gmVector<2>> points;
    for (int i = 0; i < 1024; ++i) {
        const double x = static_cast<double>(engine() % 1000000) / 1000.0;
        const double y = static_cast<double>(engine() % 1000000) / 1000.0;
        points.emplace_back(x, y);
    }
    return points;
}

}  // namespace bench
