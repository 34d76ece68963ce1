#pragma once

#include <random>

#include "foundation/export.h"

/// A uniform pseudo-random generator whose sequence depends on the seed alone, the same on every platform:
/// the 32-bit Mersenne Twister (Matsumoto and Nishimura, 1998), two draws a number, converted here because
/// the standard library leaves its own conversion open.
class MOKSTD_API gmRandomUniform {
  public:
    /// Seeds that agree in their low 32 bits give one sequence.
    explicit gmRandomUniform(long seed);

    /// The next number, uniform in [lo, hi): never hi, also where the product would round up to it.
    /// `lo` itself when the interval is empty or not a number.
    double next(double lo, double hi);

  private:
    std::mt19937 engine_;
};
