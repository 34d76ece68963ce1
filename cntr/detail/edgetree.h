#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

#include "foundation/math/vector.h"

namespace detail {

/// How many consecutive edges share a box, and how many boxes a larger one.
constexpr std::size_t fanOut = 8;

/// Eight boxes side by side. One that encloses nothing is inside out: its low corner is at +infinity.
struct alignas(64) Boxes {
    double lowX[fanOut];
    double lowY[fanOut];
    double highX[fanOut];
    double highY[fanOut];
};

/// Coordinates up to this, in magnitude, are tame: differences of them have finite squares, and sums of those are
/// finite.
constexpr double tameLimit = 1e150;

inline bool isTame(double coordinate) {
    return std::fabs(coordinate) <= tameLimit;
}
inline bool isTame(const gmVector<2>& v) {
    return isTame(v.x()) && isTame(v.y());
}

/// The two corners of what encloses all vertices.
struct Extent {
    gmVector<2> low;
    gmVector<2> high;
    /// Whether all coordinates are. Where not, the corners mean nothing.
    bool isTame = false;

    /// Tame if both are.
    Extent enclosing(const Extent& other) const;
};

/// The one search structure of the library: which edges of a contour may matter to a question, and which cannot.
///
/// **What it is.** Outlines run on: eight consecutive edges lie close together. So each run of eight has a box, each
/// eight consecutive boxes have one, and so on up to a single group of at most eight. Nothing is sorted, nothing points
/// anywhere: box i of a level encloses the boxes 8i to 8i + 7 of the level below, and box i of level 0 the run of the
/// edges 8i to 8i + 7. Vertices belong to the run of their own number: in a closed contour edge k ends at vertex k, in
/// an open one it starts there, so a run's box holds both. The vertices themselves stay in the contour. It takes 4.6
/// bytes and about 3 ns an edge, and depth first it meets the edges in their order.
///
/// **Why what it rules out cannot matter.** Subtracting, multiplying by a constant, adding and square roots round
/// monotonically: if a <= b then round(a - p) <= round(b - p), and so on through a formula. The formula that a plain
/// loop evaluates at a vertex, evaluated at the right corner of a box instead, thus bounds what the loop computes (not
/// only what would be exact) for every vertex in the box: no tolerance is involved, and rounding cannot break it. The
/// questions keep to such formulas: a distance is sqrt(dx * dx + dy * dy); the nearest point of an edge is kept in the
/// edge's box. What is not ruled out is decided by the arithmetic of the plain loop. Answers are those of the loop to
/// the bit.
///
/// **Ties.** Boxes whose bound is as good as the best answer so far are opened, and of equal answers the one with the
/// lower number is kept. Two different squares may have one root: where roots are compared, squares are bounded with a
/// little to spare (see sameRoot).
///
/// **When it is not asked.** Up to scanAtMost vertices, for the first question of a contour, and for contours with
/// coordinates that are not finite or so large that their squares are not: the questions then look at every run.
class EdgeTree {
  public:
    /// Makes it the tree of these vertices.
    void build(const std::vector<gmVector<2>>& points, bool closed);
    /// Makes it a tree of boxes of anything, which take the place of those of runs.
    void build(const std::vector<Extent>& boxes);

    std::size_t levels() const { return levelStart_.size(); }
    /// Group `index` of eight boxes. Those of level 0 are the boxes of runs; the last level has one group.
    const Boxes& boxes(std::size_t level, std::size_t index) const { return boxes_[levelStart_[level] + index]; }

  private:
    template <class CornersOf>
    void fill(std::size_t count, CornersOf cornersOfLowest);

    std::vector<Boxes> boxes_;  // level by level, from the runs up
    std::vector<std::size_t> levelStart_;
};

/// What a contour knows of where its edges are.
class EdgeIndex {
  public:
    /// Up to this many vertices looking at all takes less time than asking a tree.
    static constexpr std::size_t scanAtMost = 32;

    bool hasExtent() const { return hasExtent_; }
    const Extent& extent(const std::vector<gmVector<2>>& points) {
        if (!hasExtent_)
            computeExtent(points);
        return extent_;
    }
    /// For who has gone through all vertices.
    void learnExtent(const Extent& extent) {
        extent_ = extent;
        hasExtent_ = true;
    }

    /// The tree, or null when looking at all edges is better. A first question does not pay for a tree.
    const EdgeTree* forOne(const std::vector<gmVector<2>>& points, bool closed) {
        if (state_ == State::eBuilt)
            return &tree_;
        const bool isFirst = state_ == State::eNotAsked;
        state_ = State::eAsked;
        return isFirst || points.size() <= scanAtMost ? nullptr : forMany(points, closed);
    }
    /// The same for whoever has as many questions as the contour has edges.
    const EdgeTree* forMany(const std::vector<gmVector<2>>& points, bool closed);

    void invalidate() {
        state_ = State::eNotAsked;
        hasExtent_ = false;
    }

  private:
    enum class State : unsigned char { eNotAsked, eAsked, eBuilt };

    void computeExtent(const std::vector<gmVector<2>>& points);

    State state_ = State::eNotAsked;
    bool hasExtent_ = false;
    Extent extent_;
    EdgeTree tree_;
};

}  // namespace detail
