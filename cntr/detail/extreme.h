#pragma once

#include <cstddef>

#include "cntr/detail/runs.h"

namespace detail {

/// The vertex v that is farthest along a direction, the first of equals, with the value c * v.x + s * v.y + t as it
/// rounds: a question to the runs of a contour. None of the four may be NaN.
class Extreme {
  public:
    Extreme(double c, double s, double t) : c_(c), s_(s), t_(t) {}

    double value() const { return value_; }
    std::size_t index() const { return index_; }

    /// Of the box's corners, the one that lies farthest. Walks look for the least: signs are turned.
    Eight bounds(const Boxes& boxes) const {
        const Eight x = Eight::load(c_ >= 0.0 ? boxes.highX : boxes.lowX);
        const Eight y = Eight::load(s_ >= 0.0 ? boxes.highY : boxes.lowY);
        return 0.0 - along({x, y});
    }
    double limit() const { return -value_; }

    void look(const Run& run) {
        const Eight values = along(EightPlaces::load(run.own));
        const double most = largest(values);
        if (most < value_ || (most == value_ && run.first > index_))
            return;
        value_ = most;
        index_ = run.first + lowestBit((values >= most).bits());
    }

  private:
    Eight along(const EightPlaces& v) const { return c_ * v.x + s_ * v.y + t_; }

    double c_;
    double s_;
    double t_;
    double value_ = -unlimited;
    std::size_t index_ = 0;
};

}  // namespace detail
