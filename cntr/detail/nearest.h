#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "cntr/detail/runs.h"

namespace detail {

/// Which item (edge or vertex) is nearest to a point: a question to the runs of a contour. `squares` gives the squared
/// distances of a run's items, to the bit those that a plain loop computes; `bounds` something no larger for a box.
class Nearest {
  public:
    /// One that is farther than `within` may be passed over.
    explicit Nearest(const gmVector<2>& point, double within = std::numeric_limits<double>::infinity())
        : point_(point), limit_(std::min(sameRoot(within), unlimited)) {}

    bool isFound() const { return root_ < std::numeric_limits<double>::infinity(); }
    double distance() const { return root_; }
    /// The lowest of those at the least distance.
    std::size_t index() const { return index_; }

    Eight bounds(const Boxes& boxes) const { return squaresTo(boxes, point_); }
    double limit() const { return limit_; }

  protected:
    void consider(const Eight& squares, unsigned items, std::size_t first) {
        const EightBools near = squares <= limit_;
        items &= near.bits();
        if (items == 0)
            return;
        const double root = std::sqrt(leastOf(choose(near, squares, unlimited), items));
        if (root > root_ || (root == root_ && first > index_))
            return;
        root_ = root;
        limit_ = std::min(sameRoot(root), unlimited);
        // Of the few whose roots may be the same, the first whose root is.
        items &= (squares <= limit_).bits();
        double square[fanOut];
        squares.store(square);
        while (std::sqrt(square[lowestBit(items)]) != root)
            items &= items - 1;
        index_ = first + lowestBit(items);
    }

    gmVector<2> point_;

  private:
    static double leastOf(const Eight& squares, unsigned items) {
        if (items == (1U << fanOut) - 1)
            return smallest(squares);
        double square[fanOut];
        squares.store(square);
        double least = unlimited;
        for (; items != 0; items &= items - 1)
            least = std::min(least, square[lowestBit(items)]);
        return least;
    }

    double limit_;
    double root_ = std::numeric_limits<double>::infinity();
    std::size_t index_ = 0;
};

class NearestVertex : public Nearest {
  public:
    using Nearest::Nearest;

    void look(const Run& run) {
        const EightPlaces places = EightPlaces::load(run.own);
        const Eight x = point_.x() - places.x;
        const Eight y = point_.y() - places.y;
        consider(x * x + y * y, run.vertices, run.first);
    }
};

/// By the distance that gfDistToSeg gives.
class NearestEdge : public Nearest {
  public:
    using Nearest::Nearest;

    void look(const Run& run) {
        if (!mayBeNear(run))
            return;
        const EightPlaces from = EightPlaces::load(run.from);
        const EightPlaces to = EightPlaces::load(run.from + 1);
        const EightPlaces toStart{from.x - point_.x(), from.y - point_.y()};
        const EightPlaces toEnd{to.x - point_.x(), to.y - point_.y()};
        const EightPlaces low{smaller(toEnd.x, toStart.x), smaller(toEnd.y, toStart.y)};
        const EightPlaces high{larger(toEnd.x, toStart.x), larger(toEnd.y, toStart.y)};
        const EightPlaces along{to.x - from.x, to.y - from.y};
        // The foot of the perpendicular, counted backwards: so the signs are those of what is at hand.
        const Eight back = (toStart.x * along.x + toStart.y * along.y) / (along.x * along.x + along.y * along.y);
        const EightBools isBeyond = back <= -1.0;
        const EightBools isBetween = back < 0.0;
        const auto nearest = [&](const Eight& start, const Eight& end, const Eight& step, const Eight& least,
                                 const Eight& most) {
            const Eight between = larger(smaller(most, start - step * back), least);
            return choose(isBeyond, end, choose(isBetween, between, start));
        };
        const Eight x = nearest(toStart.x, toEnd.x, along.x, low.x, high.x);
        const Eight y = nearest(toStart.y, toEnd.y, along.y, low.y, high.y);
        consider(x * x + y * y, run.edges, run.first);
    }

  private:
    /// Most runs of a scan end here: their box is not near enough.
    bool mayBeNear(const Run& run) const {
        const Corners box = Corners::of(run);
        const Two p = loadTwo(point_);
        const Two away = larger(both(0.0), larger(box.low - p, p - box.high));
        double x[2];
        storeTwo(away, x);
        return !(x[0] * x[0] + x[1] * x[1] > limit());  // with a NaN they are looked at
    }
};

}  // namespace detail
