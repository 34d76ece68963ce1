#pragma once

#include <cmath>
#include <cstddef>
#include <type_traits>

#include "foundation/math/vector.h"

#if defined(__SSE2__) && !defined(MOK_PLAIN_LANES)
#include <emmintrin.h>
#endif

namespace detail {

// Numbers that are computed with side by side. Each lane rounds as a double does: what comes out is to the bit what a
// plain loop over the lanes would give. Two lanes are a register that every x86-64 processor has; elsewhere, a pair.

#if defined(__SSE2__) && !defined(MOK_PLAIN_LANES)

struct TwoBools {
    __m128d all;
};
struct Two {
    __m128d all;
};

inline Two both(double value) {
    return {_mm_set1_pd(value)};
}
inline Two loadTwo(const double* from) {
    return {_mm_loadu_pd(from)};
}
inline void storeTwo(const Two& a, double* to) {
    _mm_storeu_pd(to, a.all);
}
inline Two operator+(const Two& a, const Two& b) {
    return {_mm_add_pd(a.all, b.all)};
}
inline Two operator-(const Two& a, const Two& b) {
    return {_mm_sub_pd(a.all, b.all)};
}
inline Two operator*(const Two& a, const Two& b) {
    return {_mm_mul_pd(a.all, b.all)};
}
inline Two operator/(const Two& a, const Two& b) {
    return {_mm_div_pd(a.all, b.all)};
}
inline Two larger(const Two& a, const Two& b) {
    return {_mm_max_pd(a.all, b.all)};
}
inline Two smaller(const Two& a, const Two& b) {
    return {_mm_min_pd(a.all, b.all)};
}
inline Two squareRoot(const Two& a) {
    return {_mm_sqrt_pd(a.all)};
}
inline TwoBools operator<(const Two& a, const Two& b) {
    return {_mm_cmplt_pd(a.all, b.all)};
}
inline TwoBools operator<=(const Two& a, const Two& b) {
    return {_mm_cmple_pd(a.all, b.all)};
}
inline TwoBools operator&(const TwoBools& a, const TwoBools& b) {
    return {_mm_and_pd(a.all, b.all)};
}
inline TwoBools operator|(const TwoBools& a, const TwoBools& b) {
    return {_mm_or_pd(a.all, b.all)};
}
inline unsigned bits(const TwoBools& a) {
    return static_cast<unsigned>(_mm_movemask_pd(a.all));
}
inline Two choose(const TwoBools& holds, const Two& a, const Two& b) {
    return {_mm_or_pd(_mm_and_pd(holds.all, a.all), _mm_andnot_pd(holds.all, b.all))};
}
/// The first lanes of both, and the second.
inline Two firsts(const Two& a, const Two& b) {
    return {_mm_unpacklo_pd(a.all, b.all)};
}
inline Two seconds(const Two& a, const Two& b) {
    return {_mm_unpackhi_pd(a.all, b.all)};
}
inline double first(const Two& a) {
    return _mm_cvtsd_f64(a.all);
}
inline double second(const Two& a) {
    return _mm_cvtsd_f64(_mm_unpackhi_pd(a.all, a.all));
}

#else

struct TwoBools {
    bool first;
    bool second;
};
struct Two {
    double first;
    double second;
};

inline Two both(double value) {
    return {value, value};
}
inline Two loadTwo(const double* from) {
    return {from[0], from[1]};
}
inline void storeTwo(const Two& a, double* to) {
    to[0] = a.first;
    to[1] = a.second;
}
inline Two operator+(const Two& a, const Two& b) {
    return {a.first + b.first, a.second + b.second};
}
inline Two operator-(const Two& a, const Two& b) {
    return {a.first - b.first, a.second - b.second};
}
inline Two operator*(const Two& a, const Two& b) {
    return {a.first * b.first, a.second * b.second};
}
inline Two operator/(const Two& a, const Two& b) {
    return {a.first / b.first, a.second / b.second};
}
inline Two larger(const Two& a, const Two& b) {
    return {a.first > b.first ? a.first : b.first, a.second > b.second ? a.second : b.second};
}
inline Two smaller(const Two& a, const Two& b) {
    return {a.first < b.first ? a.first : b.first, a.second < b.second ? a.second : b.second};
}
inline Two squareRoot(const Two& a) {
    return {std::sqrt(a.first), std::sqrt(a.second)};
}
inline TwoBools operator<(const Two& a, const Two& b) {
    return {a.first < b.first, a.second < b.second};
}
inline TwoBools operator<=(const Two& a, const Two& b) {
    return {a.first <= b.first, a.second <= b.second};
}
inline TwoBools operator&(const TwoBools& a, const TwoBools& b) {
    return {a.first && b.first, a.second && b.second};
}
inline TwoBools operator|(const TwoBools& a, const TwoBools& b) {
    return {a.first || b.first, a.second || b.second};
}
inline unsigned bits(const TwoBools& a) {
    return (a.first ? 1U : 0U) | (a.second ? 2U : 0U);
}
inline Two choose(const TwoBools& holds, const Two& a, const Two& b) {
    return {holds.first ? a.first : b.first, holds.second ? a.second : b.second};
}
inline Two firsts(const Two& a, const Two& b) {
    return {a.first, b.first};
}
inline Two seconds(const Two& a, const Two& b) {
    return {a.second, b.second};
}
inline double first(const Two& a) {
    return a.first;
}
inline double second(const Two& a) {
    return a.second;
}

#endif

inline Two loadTwo(const gmVector<2>& v) {
    const double xy[] = {v.x(), v.y()};
    return loadTwo(xy);
}

/// The lanes of eight where something holds.
struct EightBools {
    TwoBools two[4];

    /// Bit i stands for lane i.
    unsigned bits() const {
        return detail::bits(two[0]) | detail::bits(two[1]) << 2 | detail::bits(two[2]) << 4 | detail::bits(two[3]) << 6;
    }
};

/// Eight doubles.
struct Eight {
    Two two[4];

    Eight() = default;
    // A number stands for all lanes, so that formulas look as they do elsewhere.
    Eight(double all) : two{both(all), both(all), both(all), both(all)} {}
    Eight(const Two& a, const Two& b, const Two& c, const Two& d) : two{a, b, c, d} {}

    static Eight load(const double* from) {
        return {loadTwo(from), loadTwo(from + 2), loadTwo(from + 4), loadTwo(from + 6)};
    }
    void store(double* to) const {
        for (std::size_t i = 0; i < 4; ++i)
            storeTwo(two[i], to + 2 * i);
    }
};

inline Eight operator+(const Eight& a, const Eight& b) {
    return {a.two[0] + b.two[0], a.two[1] + b.two[1], a.two[2] + b.two[2], a.two[3] + b.two[3]};
}
inline Eight operator-(const Eight& a, const Eight& b) {
    return {a.two[0] - b.two[0], a.two[1] - b.two[1], a.two[2] - b.two[2], a.two[3] - b.two[3]};
}
inline Eight operator*(const Eight& a, const Eight& b) {
    return {a.two[0] * b.two[0], a.two[1] * b.two[1], a.two[2] * b.two[2], a.two[3] * b.two[3]};
}
inline Eight operator/(const Eight& a, const Eight& b) {
    return {a.two[0] / b.two[0], a.two[1] / b.two[1], a.two[2] / b.two[2], a.two[3] / b.two[3]};
}
/// Where either is NaN, b.
inline Eight larger(const Eight& a, const Eight& b) {
    return {larger(a.two[0], b.two[0]), larger(a.two[1], b.two[1]), larger(a.two[2], b.two[2]),
            larger(a.two[3], b.two[3])};
}
inline Eight smaller(const Eight& a, const Eight& b) {
    return {smaller(a.two[0], b.two[0]), smaller(a.two[1], b.two[1]), smaller(a.two[2], b.two[2]),
            smaller(a.two[3], b.two[3])};
}
inline Eight squareRoot(const Eight& a) {
    return {squareRoot(a.two[0]), squareRoot(a.two[1]), squareRoot(a.two[2]), squareRoot(a.two[3])};
}
inline EightBools operator<(const Eight& a, const Eight& b) {
    return {{a.two[0] < b.two[0], a.two[1] < b.two[1], a.two[2] < b.two[2], a.two[3] < b.two[3]}};
}
inline EightBools operator<=(const Eight& a, const Eight& b) {
    return {{a.two[0] <= b.two[0], a.two[1] <= b.two[1], a.two[2] <= b.two[2], a.two[3] <= b.two[3]}};
}
inline EightBools operator>(const Eight& a, const Eight& b) {
    return b < a;
}
inline EightBools operator>=(const Eight& a, const Eight& b) {
    return b <= a;
}
inline EightBools operator&(const EightBools& a, const EightBools& b) {
    return {{a.two[0] & b.two[0], a.two[1] & b.two[1], a.two[2] & b.two[2], a.two[3] & b.two[3]}};
}
inline EightBools operator|(const EightBools& a, const EightBools& b) {
    return {{a.two[0] | b.two[0], a.two[1] | b.two[1], a.two[2] | b.two[2], a.two[3] | b.two[3]}};
}
/// a where it holds, b elsewhere.
inline Eight choose(const EightBools& holds, const Eight& a, const Eight& b) {
    return {choose(holds.two[0], a.two[0], b.two[0]), choose(holds.two[1], a.two[1], b.two[1]),
            choose(holds.two[2], a.two[2], b.two[2]), choose(holds.two[3], a.two[3], b.two[3])};
}
/// Of numbers, none NaN.
inline double largest(const Eight& a) {
    double lane[2];
    storeTwo(larger(larger(a.two[0], a.two[1]), larger(a.two[2], a.two[3])), lane);
    return lane[0] > lane[1] ? lane[0] : lane[1];
}
inline double smallest(const Eight& a) {
    double lane[2];
    storeTwo(smaller(smaller(a.two[0], a.two[1]), smaller(a.two[2], a.two[3])), lane);
    return lane[0] < lane[1] ? lane[0] : lane[1];
}

/// Eight places.
struct EightPlaces {
    Eight x;
    Eight y;

    /// Eight that follow each other in memory.
    static EightPlaces load(const gmVector<2>* from) {
        static_assert(std::is_standard_layout_v<gmVector<2>> && sizeof(gmVector<2>) == 2 * sizeof(double));
        const double* const place = reinterpret_cast<const double*>(from);
        EightPlaces result;
        for (std::size_t i = 0; i < 4; ++i) {
            const Two even = loadTwo(place + 4 * i);
            const Two odd = loadTwo(place + 4 * i + 2);
            result.x.two[i] = firsts(even, odd);
            result.y.two[i] = seconds(even, odd);
        }
        return result;
    }
};

}  // namespace detail
