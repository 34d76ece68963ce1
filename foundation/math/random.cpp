#include "foundation/math/random.h"

#include <cmath>
#include <cstdint>

gmRandomUniform::gmRandomUniform(long seed) : engine_(static_cast<std::uint32_t>(seed)) {}

double gmRandomUniform::next(double lo, double hi) {
    const std::uint32_t high = static_cast<std::uint32_t>(engine_()) >> 5;
    const std::uint32_t low = static_cast<std::uint32_t>(engine_()) >> 6;
    const double unit = (high * 67108864.0 + low) / 9007199254740992.0;  // 27 and 26 bits: 53 in all
    if (!(lo < hi))
        return lo;
    const double value = std::isfinite(hi - lo) ? lo + unit * (hi - lo) : lo * (1.0 - unit) + hi * unit;
    return value < hi ? value : std::nextafter(hi, lo);
}
