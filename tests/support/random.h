#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "foundation/math/vector.h"

namespace support {

/// Random choices for tests: the same on every platform for one seed.
class Random {
  public:
    explicit Random(std::uint32_t seed) : engine_(seed) {}

    double real(double lo, double hi) { return lo + (hi - lo) * (static_cast<double>(engine_()) / 4294967296.0); }
    /// Both ends included.
    int integer(int lo, int hi) { return lo + static_cast<int>(engine_() % static_cast<std::uint32_t>(hi - lo + 1)); }
    /// A point of a square, and one of its integer points.
    gmVector<2> point(double lo, double hi) {
        const double x = real(lo, hi);
        return {x, real(lo, hi)};
    }
    gmVector<2> gridPoint(int lo, int hi) {
        const int x = integer(lo, hi);
        return gmVector<2>(x, integer(lo, hi));
    }
    bool chance(double probability) { return real(0.0, 1.0) < probability; }
    template <class T>
    T oneOf(const std::vector<T>& values) {
        return values[static_cast<std::size_t>(integer(0, static_cast<int>(values.size()) - 1))];
    }

  private:
    std::mt19937 engine_;
};

}  // namespace support
