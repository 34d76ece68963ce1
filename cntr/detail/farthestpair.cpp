#include "cntr/detail/farthestpair.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "cntr/detail/runs.h"

namespace {

using detail::Boxes;
using detail::Eight;
using detail::EightPlaces;
using detail::fanOut;
using detail::Run;

double squareOf(const gmVector<2>& v) {
    return v.x() * v.x() + v.y() * v.y();
}

/// The best pair so far. A pair is given with its indices in order.
class Best {
  public:
    explicit Best(const std::vector<gmVector<2>>& points) : points_(points) {}

    const detail::VertexPair& pair() const { return pair_; }
    /// Squares below cannot have a root that is as large as the distance found.
    double limit() const { return limit_; }

    void consider(std::size_t i, std::size_t j) {
        const double distance = points_[i].distance(points_[j]);
        if (distance < pair_.distance || !(distance > 0.0))
            return;
        if (distance == pair_.distance && !isBefore(i, j))
            return;
        pair_ = {i, j, distance};
        limit_ = distance * distance * (1.0 - 2e-15);
    }

    /// Whether a pair of distance at most sqrt(square), and not before (i, j), may be better.
    bool isWorth(double square, std::size_t i, std::size_t j) const {
        return square >= limit_ && (isBefore(i, j) || std::sqrt(square) > pair_.distance);
    }

  private:
    bool isBefore(std::size_t i, std::size_t j) const {
        return i < pair_.first || (i == pair_.first && j < pair_.second);
    }

    const std::vector<gmVector<2>>& points_;
    detail::VertexPair pair_;
    double limit_ = 0.0;
};

/// The squares of the largest distances from p to a place in each box.
Eight squaresAcross(const Boxes& boxes, const gmVector<2>& p) {
    const Eight x = larger(Eight::load(boxes.highX) - p.x(), p.x() - Eight::load(boxes.lowX));
    const Eight y = larger(Eight::load(boxes.highY) - p.y(), p.y() - Eight::load(boxes.lowY));
    return x * x + y * y;
}

/// The same from any place of one box of `from`.
Eight squaresAcross(const Boxes& boxes, const Boxes& from, std::size_t lane) {
    const Eight x = larger(Eight::load(boxes.highX) - from.lowX[lane], from.highX[lane] - Eight::load(boxes.lowX));
    const Eight y = larger(Eight::load(boxes.highY) - from.lowY[lane], from.highY[lane] - Eight::load(boxes.lowY));
    return x * x + y * y;
}

/// The farthest vertex from a place: a question to the runs.
class Farthest {
  public:
    explicit Farthest(const gmVector<2>& from) : from_(from) {}

    std::size_t index() const { return index_; }
    Eight bounds(const Boxes& boxes) const {
        // Of a box that encloses nothing the square is infinite as well, and would come first.
        const detail::EightBools some = Eight::load(boxes.lowX) <= Eight::load(boxes.highX);
        return choose(some, 0.0 - squaresAcross(boxes, from_), std::numeric_limits<double>::infinity());
    }
    double limit() const { return -most_; }
    void look(const Run& run) {
        for (std::size_t i = 0; i < fanOut; ++i)
            if ((run.vertices >> i & 1) != 0 && squareOf(run.own[i] - from_) > most_) {
                most_ = squareOf(run.own[i] - from_);
                index_ = run.first + i;
            }
    }

  private:
    gmVector<2> from_;
    double most_ = 0.0;
    std::size_t index_ = 0;
};

/// Tries the pairs of boxes that may hold a better pair, and in the end the pairs of their vertices.
class Search {
  public:
    Search(const std::vector<gmVector<2>>& points, bool closed, const detail::EdgeTree& tree)
        : tree_(tree), runs_(points, closed), otherRuns_(points, closed), best_(points) {
        // From one end to the other and back: a pair that leaves little to try.
        std::size_t at = 0;
        for (int turn = 0; turn < 4; ++turn) {
            Farthest question(points[at]);
            askLeastFirst(&tree, runs_, question);
            const std::size_t end = question.index();
            best_.consider(std::min(at, end), std::max(at, end));
            at = end;
        }
    }

    detail::VertexPair run() {
        within(tree_.levels() - 1, 0);
        return best_.pair();
    }

  private:
    /// Pairs within one group of boxes, those of a box with itself included.
    void within(std::size_t level, std::size_t group) { between(level, group, group); }

    /// Pairs with one vertex in each group, a <= b.
    void between(std::size_t level, std::size_t a, std::size_t b) {
        const Boxes& first = tree_.boxes(level, a);
        const Boxes& second = tree_.boxes(level, b);
        for (std::size_t lane = 0; lane < fanOut; ++lane) {
            if (!(first.lowX[lane] <= first.highX[lane]))
                return;
            const unsigned from = a == b ? static_cast<unsigned>(lane) : 0;
            const detail::EightBools some = Eight::load(second.lowX) <= Eight::load(second.highX);
            const Eight squares = squaresAcross(second, first, lane);
            double square[fanOut];
            squares.store(square);
            unsigned open = (some & (squares >= best_.limit())).bits() >> from << from;
            for (; open != 0; open &= open - 1) {
                const std::size_t other = detail::lowestBit(open);
                const std::size_t i = a * fanOut + lane;
                const std::size_t j = b * fanOut + other;
                if (!best_.isWorth(square[other], firstVertex(level, i), firstVertex(level, j)))
                    continue;
                if (level == 0)
                    betweenRuns(i, j, second, other);
                else
                    between(level - 1, i, j);
            }
        }
    }

    void betweenRuns(std::size_t a, std::size_t b, const Boxes& boxes, std::size_t lane) {
        const Run first = runs_.at(a);
        const Run second = otherRuns_.at(b);
        const EightPlaces places = EightPlaces::load(first.own);
        const Eight x = larger(boxes.highX[lane] - places.x, places.x - boxes.lowX[lane]);
        const Eight y = larger(boxes.highY[lane] - places.y, places.y - boxes.lowY[lane]);
        const EightPlaces others = EightPlaces::load(second.own);
        for (unsigned far = (x * x + y * y >= best_.limit()).bits() & first.vertices; far != 0; far &= far - 1) {
            const std::size_t i = detail::lowestBit(far);
            const Eight dx = first.own[i].x() - others.x;
            const Eight dy = first.own[i].y() - others.y;
            unsigned open = (dx * dx + dy * dy >= best_.limit()).bits() & second.vertices;
            for (; open != 0; open &= open - 1) {
                const std::size_t j = second.first + detail::lowestBit(open);
                if (first.first + i < j)
                    best_.consider(first.first + i, j);
            }
        }
    }

    static std::size_t firstVertex(std::size_t level, std::size_t box) { return box << (3 * (level + 1)); }

    const detail::EdgeTree& tree_;
    detail::Runs runs_;
    detail::Runs otherRuns_;
    Best best_;
};

/// Every pair once: the other order measures the same distance, later.
detail::VertexPair tryAllPairs(const std::vector<gmVector<2>>& points, bool closed) {
    Best best(points);
    detail::Runs runs(points, closed);
    for (std::size_t i = 0; i < points.size(); ++i)
        for (std::size_t r = (i + 1) / fanOut; r < runs.count(); ++r) {
            const Run run = runs.at(r);
            const EightPlaces places = EightPlaces::load(run.own);
            const Eight x = points[i].x() - places.x;
            const Eight y = points[i].y() - places.y;
            unsigned far = (x * x + y * y >= best.limit()).bits() & run.vertices;
            for (; far != 0; far &= far - 1)
                if (const std::size_t j = run.first + detail::lowestBit(far); i < j)
                    best.consider(i, j);
        }
    return best.pair();
}

}  // namespace

detail::VertexPair detail::farthestPair(const std::vector<gmVector<2>>& points, bool closed, const EdgeTree* tree) {
    return tree ? Search(points, closed, *tree).run() : tryAllPairs(points, closed);
}

double detail::largestDistanceFromFirst(const std::vector<gmVector<2>>& points) {
    // The root of the largest square is the largest root. A NaN is passed over.
    Eight most = 0.0;
    const gmVector<2>& from = points.front();
    std::size_t i = 0;
    for (; i + fanOut <= points.size(); i += fanOut) {
        const EightPlaces places = EightPlaces::load(&points[i]);
        const Eight x = from.x() - places.x;
        const Eight y = from.y() - places.y;
        most = larger(x * x + y * y, most);
    }
    double square = largest(most);
    for (; i < points.size(); ++i)
        square = std::max(square, squareOf(from - points[i]));
    return std::sqrt(square);
}
