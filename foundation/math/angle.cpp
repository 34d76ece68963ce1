#include "foundation/math/angle.h"

#include <cmath>

gmRadian gmRadian::norm() const {
    constexpr double turn = 6.283185307179586;
    double angle = std::fmod(value_, turn);
    if (angle < 0.0)
        angle += turn;
    // A tiny negative angle rounds up to a whole turn, which is the direction 0; + 0.0 rids -0.0 of its sign.
    return gmRadian(angle >= turn ? 0.0 : angle + 0.0);
}
