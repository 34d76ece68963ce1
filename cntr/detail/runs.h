#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

#include "cntr/detail/edgetree.h"
#include "foundation/math/lanes.h"
#include "foundation/math/vector.h"

namespace detail {

/// Eight consecutive edges: edge first + i joins from[i] to from[i + 1]. Where the contour ends within a run, its last
/// vertex is repeated: the bits say what there is.
struct Run {
    const gmVector<2>* from;
    const gmVector<2>* own;  // the vertices first to first + 7
    std::size_t first;
    unsigned edges;     // bit i: there is an edge first + i
    unsigned vertices;  // bit i: there is a vertex first + i
};

/// The runs of a contour.
class Runs {
  public:
    Runs(const std::vector<gmVector<2>>& points, bool closed) : points_(points), closed_(closed) {}

    std::size_t count() const { return (points_.size() + fanOut - 1) / fanOut; }

    /// Valid until the next call.
    Run at(std::size_t index) {
        const std::size_t n = points_.size();
        const std::size_t first = index * fanOut;
        const std::size_t lead = closed_ ? 1 : 0;  // where the vertices of the run's own numbers stand in it
        const std::size_t left = n - first;
        const unsigned vertices = left >= fanOut ? all : all >> (fanOut - left);
        const unsigned edges = closed_ || left > fanOut ? vertices : vertices >> 1;
        if (first >= lead && left >= fanOut + 1 - lead)
            return {&points_[first - lead], &points_[first], first, edges, vertices};
        // On the way into the contour its last vertex comes first, behind its end it is repeated.
        if (patched_ != index)
            for (std::size_t i = 0; i <= fanOut; ++i)
                patch_.place[i] = points_[first + i < lead ? n - 1 : std::min(first + i - lead, n - 1)];
        patched_ = index;
        return {patch_.place, patch_.place + lead, first, edges, vertices};
    }

    template <class Look>
    void each(Look look) {
        for (std::size_t i = 0; i < count(); ++i)
            look(at(i));
    }

  private:
    static constexpr unsigned all = (1U << fanOut) - 1;

    const std::vector<gmVector<2>>& points_;
    bool closed_;
    std::size_t patched_ = std::numeric_limits<std::size_t>::max();  // the run that stands in the patch
    // A union is not set to anything before it is needed.
    union Patch {
        Patch() {}  // NOLINT(modernize-use-equals-default): there is none by default
        gmVector<2> place[fanOut + 1];
    } patch_;
};

/// The corners of a box that grows, x and y side by side.
struct Corners {
    Two low = both(std::numeric_limits<double>::infinity());
    Two high = both(-std::numeric_limits<double>::infinity());

    void extend(const Two& place) {
        low = smaller(place, low);
        high = larger(place, high);
    }
    void extend(const Corners& other) {
        low = smaller(other.low, low);
        high = larger(other.high, high);
    }

    /// Of places none of which is NaN.
    static Corners of(const Run& run) {
        Corners corners{loadTwo(run.from[0]), loadTwo(run.from[0])};
        for (std::size_t i = 1; i <= fanOut; ++i)
            corners.extend(loadTwo(run.from[i]));
        return corners;
    }
};

/// What encloses places that may be anything, while they are gone through.
struct GrowingExtent {
    Corners corners;
    Two sum = both(0.0);  // a number as long as the places are

    void extend(const Two& place) {
        corners.extend(place);
        sum = sum + place;
    }
    void extend(const GrowingExtent& other) {
        corners.extend(other.corners);
        sum = sum + other.sum;
    }
    Extent extent() const;
};

/// The number of the lowest bit that is set.
inline unsigned lowestBit(unsigned bits) {
    return static_cast<unsigned>(__builtin_ctz(bits));
}

/// What no bound may exceed at first: those of boxes that enclose nothing do.
constexpr double unlimited = std::numeric_limits<double>::max();

/// Squares up to this may have `root` as their root after rounding.
inline double sameRoot(double root) {
    return root * root * (1.0 + 2e-15);
}

/// The squares of the distances from p to the boxes; NaN where p is no number.
inline Eight squaresTo(const Boxes& boxes, const gmVector<2>& p) {
    const Eight x = larger(0.0, larger(Eight::load(boxes.lowX) - p.x(), p.x() - Eight::load(boxes.highX)));
    const Eight y = larger(0.0, larger(Eight::load(boxes.lowY) - p.y(), p.y() - Eight::load(boxes.highY)));
    return x * x + y * y;
}

/// Calls look(i), in order, for the lowest boxes i of those that the question opens: question.opens(boxes) has their
/// bits.
template <class Question, class Look>
void walkInOrder(const EdgeTree& tree, std::size_t level, std::size_t group, const Question& question, Look& look) {
    for (unsigned open = question.opens(tree.boxes(level, group)); open != 0; open &= open - 1) {
        const std::size_t box = group * fanOut + lowestBit(open);
        if (level == 0)
            look(box);
        else
            walkInOrder(tree, level - 1, box, question, look);
    }
}

/// The same for the boxes whose bound, of question.bounds(boxes), is at most question.limit(), which falls as better
/// answers are found; the most promising first.
template <class Question, class Look>
void walkLeastFirst(const EdgeTree& tree, std::size_t level, std::size_t group, const Question& question, Look& look) {
    const Eight bounds = question.bounds(tree.boxes(level, group));
    double bound[fanOut];
    bounds.store(bound);
    for (unsigned open = (bounds <= question.limit()).bits(); open != 0;) {
        unsigned least = lowestBit(open);
        for (unsigned others = open & (open - 1); others != 0; others &= others - 1)
            if (bound[lowestBit(others)] < bound[least])
                least = lowestBit(others);
        if (!(bound[least] <= question.limit()))
            return;
        open &= ~(1U << least);
        const std::size_t box = group * fanOut + least;
        if (level == 0)
            look(box);
        else
            walkLeastFirst(tree, level - 1, box, question, look);
    }
}

/// Puts the question to the runs that the tree does not rule out, or to every run where there is no tree.
template <class Question>
void askInOrder(const EdgeTree* tree, Runs& runs, Question& question) {
    const auto look = [&](std::size_t run) { question.look(runs.at(run)); };
    if (tree)
        walkInOrder(*tree, tree->levels() - 1, 0, question, look);
    else
        runs.each([&](const Run& run) { question.look(run); });
}
template <class Question>
void askLeastFirst(const EdgeTree* tree, Runs& runs, Question& question) {
    const auto look = [&](std::size_t run) { question.look(runs.at(run)); };
    if (tree)
        walkLeastFirst(*tree, tree->levels() - 1, 0, question, look);
    else
        runs.each([&](const Run& run) { question.look(run); });
}

}  // namespace detail
