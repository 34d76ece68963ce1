#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "bench/peers/contest.h"
#include "cntr/contour.h"

namespace peers {

inline const char* const ours = "ours";

/// As many unasked contours or regions as cold rows need.
template <class Shape>
class Herd {
  public:
    Herd(const Inputs& inputs, const Shape& shape) : shapes_(inputs.herd(), shape) {}

    /// Setting closedness anew drops all that the shape remembers; of a region, that of its contour is the one to set.
    void reset(std::size_t k) { shapes_[k].gmContour::isClosed(true); }
    const Shape& operator[](std::size_t k) const { return shapes_[k]; }

  private:
    std::vector<Shape> shapes_;
};

template <class Shape, class Ask, class Check>
Contestant coldShape(const Inputs& inputs, const Shape& shape, Ask ask, Check check) {
    const auto herd = std::make_shared<Herd<Shape>>(inputs, shape);
    return cold(
        inputs, [herd](std::size_t k) { herd->reset(k); },
        [herd, ask](std::size_t k, std::size_t i) { return ask((*herd)[k], i); },
        [herd, check](auto&, std::size_t i) { return check((*herd)[0], i); });
}

template <class Shape, class Ask>
Contestant coldShape(const Inputs& inputs, const Shape& shape, Ask ask) {
    return coldShape(inputs, shape, ask, ask);
}

}  // namespace peers
