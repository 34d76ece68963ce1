// What the tests of the foundation share: streams that misbehave, seeded numbers.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <random>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include "foundation/math/vector.h"
#include "foundation/object/archive.h"
#include "foundation/object/exception.h"
#include "foundation/object/persistent.h"
#include "tests/support/archives.h"

inline void PrintTo(const gmVector<2>& v, std::ostream* out) {
    const auto precision = out->precision(17);
    *out << '(' << v.x() << ", " << v.y() << ')';
    out->precision(precision);
}

namespace support {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double pi = 3.14159265358979323846;

/// A sink that takes `room` bytes and no more, like a full disk.
class FullDisk : public std::streambuf {
  public:
    explicit FullDisk(std::size_t room) : room_(room) {}
    std::size_t taken() const { return taken_; }
    void enlarge(std::size_t room) { room_ = room; }

  protected:
    int_type overflow(int_type c) override {
        if (taken_ == room_ || traits_type::eq_int_type(c, traits_type::eof()))
            return traits_type::eof();
        ++taken_;
        return c;
    }

  private:
    std::size_t room_;
    std::size_t taken_ = 0;
};

/// Random numbers of a seed that failures name.
class Random {
  public:
    explicit Random(unsigned seed) : engine_(seed) {}
    double uniform(double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(engine_); }
    int integer(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(engine_); }
    gmVector<2> vector(double size) {
        const double x = uniform(-size, size);
        return {x, uniform(-size, size)};
    }
    gmVector<2> gridVector(int size) {
        const int x = integer(-size, size);
        return {static_cast<double>(x), static_cast<double>(integer(-size, size))};
    }

  private:
    std::mt19937 engine_;
};

}  // namespace support
