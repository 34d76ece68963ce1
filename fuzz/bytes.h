// An input read as a script: numbers, choices and places, one after the other.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "foundation/math/vector.h"

namespace fuzz {

/// What is left of an input. It goes on with zeros where it ends, so that every script comes to its end.
class Bytes {
  public:
    Bytes(const std::uint8_t* data, std::size_t size) : next_(data), left_(size) {}

    bool empty() const { return left_ == 0; }

    std::uint8_t byte() {
        if (empty())
            return 0;
        --left_;
        return *next_++;
    }

    /// A number below `count`, which is 1 to 256.
    std::size_t below(std::size_t count) { return byte() % count; }

    /// False where the input has ended.
    bool oneIn(std::size_t count) { return below(count) == count - 1; }

    template <class Vector>
    auto& oneOf(Vector& choices) {
        return choices[below(choices.size())];
    }

    std::uint64_t word() {
        std::uint64_t bits = 0;
        for (int i = 0; i < 8; ++i)
            bits = bits << 8 | byte();
        return bits;
    }

  private:
    const std::uint8_t* next_;
    std::size_t left_;
};

/// Numbers that computations stumble over, or any at all.
inline double specialNumber(Bytes& in) {
    using Limits = std::numeric_limits<double>;
    static const std::vector<double> numbers = {
        0.0,
        -0.0,
        1e-6,
        0.5,
        1e-15,
        2147.48,
        -2147.48,
        1e7,
        -1e7,
        65536.0,
        4294967296.0,
        1e16,
        1e150,
        1e155,
        1e300,
        Limits::infinity(),
        Limits::max(),
        Limits::lowest(),
        1e-300,
        -1e-150,
        1e-7,
        2e-6,
        1e-16,
        1.0,
        -Limits::infinity(),
        Limits::min(),
        Limits::denorm_min(),
    };
    const std::size_t choice = in.below(numbers.size() + 2);
    if (choice < numbers.size())
        return numbers[choice];
    if (choice == numbers.size())
        return Limits::quiet_NaN();
    const std::uint64_t bits = in.word();
    double any = 0.0;
    std::memcpy(&any, &bits, sizeof any);
    return any;
}

/// One of 64 places whose coordinates are small integers.
inline gmVector<2> gridPlace(Bytes& in) {
    const unsigned cell = in.byte();
    return {static_cast<double>(cell % 8), static_cast<double>(cell / 8 % 8)};
}

/// A place on the grid, one of the earlier places or close to it, amid two of them, or one of special numbers.
inline gmVector<2> anyPlace(Bytes& in, const std::vector<gmVector<2>>& earlier) {
    const std::size_t kind = in.below(8);
    if (kind < 3 || (kind < 7 && earlier.empty()))
        return gridPlace(in);
    if (kind == 3)
        return in.oneOf(earlier);
    if (kind == 4) {
        const gmVector<2> from = in.oneOf(earlier);
        const double towards = in.oneIn(2) ? 1e301 : -1e301;
        return {in.oneIn(2) ? std::nextafter(from.x(), towards) : from.x(), std::nextafter(from.y(), towards)};
    }
    if (kind == 5) {
        const gmVector<2> a = in.oneOf(earlier);
        return (a + in.oneOf(earlier)) * 0.5;
    }
    if (kind == 6)
        return in.oneOf(earlier) + gridPlace(in) * 3e-7;
    const double x = specialNumber(in);
    return {x, specialNumber(in)};
}

inline std::vector<gmVector<2>> anyPlaces(Bytes& in, std::size_t count) {
    std::vector<gmVector<2>> places;
    while (places.size() < count)
        places.push_back(anyPlace(in, places));
    return places;
}

}  // namespace fuzz
