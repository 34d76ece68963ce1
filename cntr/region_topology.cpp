#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>

#include "cntr/detail/cachedshape.h"
#include "cntr/detail/crossings.h"
#include "cntr/detail/tolerances.h"
#include "cntr/detail/within.h"
#include "cntr/region.h"

namespace {

using Loop = std::vector<gmVector<2>>;
using RegionList = std::vector<gmPtrHandle<gmRegion>>;

// Of the median edge length: how far from an edge's middle its two sides are probed.
constexpr double probeStep = 0.01;

/// Where a trace stands: on the way from `position` to a vertex of the edge `index`.
struct Step {
    gmVector<2> position;
    std::size_t index;
    bool forward;

    /// To the bit: only then is everything that follows the same.
    bool isSame(const Step& other) const {
        return index == other.index && forward == other.forward && sameBits(position.x(), other.position.x()) &&
               sameBits(position.y(), other.position.y());
    }

  private:
    static bool sameBits(double a, double b) { return bitsOf(a) == bitsOf(b); }
    static std::uint64_t bitsOf(double value) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        return bits;
    }
};

/// Notices that a sequence, in which each step follows from the one before, has run into a cycle. Remembers one step
/// only. Method: R. P. Brent, An improved Monte Carlo factorization algorithm (1980).
class CycleWatch {
  public:
    explicit CycleWatch(const Step& first) : remembered_(first) {}

    /// Whether `step`, the next of the sequence, was met before. The answer may come some rounds late.
    bool cameBack(const Step& step) {
        if (step.isSame(remembered_))
            return true;
        if (++age_ == patience_) {
            remembered_ = step;
            patience_ *= 2;
            age_ = 0;
        }
        return false;
    }

  private:
    Step remembered_;
    std::size_t age_ = 0;
    std::size_t patience_ = 1;
};

/// The `count` vertices from `first` on, around the end of the loop.
Loop stretch(const Loop& loop, std::size_t first, std::size_t count) {
    Loop result;
    result.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        result.push_back(loop[(first + i) % loop.size()]);
    return result;
}

struct Touch {
    std::size_t first;
    std::size_t second;
};

/// The first vertex that another one touches, and the first of these.
std::optional<Touch> findTouch(const Loop& loop) {
    detail::EdgeIndex index;
    const detail::EdgeTree* const tree = index.forMany(loop, true);
    for (std::size_t k = 0; k < loop.size(); ++k)
        for (const int other : detail::verticesWithin(detail::touching, loop[k], loop, true, tree))
            if (static_cast<std::size_t>(other) != k)
                return Touch{k, static_cast<std::size_t>(other)};
    return std::nullopt;
}

/// Cuts loops apart where they touch themselves. The loops before the one that is looked at touch themselves nowhere,
/// and stay as they are: there is no need to look at them again.
std::vector<Loop> splitAtTouchingPoints(const Loop& whole) {
    std::vector<Loop> loops{whole};
    for (std::size_t i = 0; i < loops.size(); ++i)
        while (const std::optional<Touch> touch = findTouch(loops[i])) {
            const Loop loop = loops[i];
            const std::size_t count = (touch->second + loop.size() - touch->first) % loop.size();
            loops[i] = stretch(loop, touch->first, count);
            loops.push_back(stretch(loop, touch->second, loop.size() - count));
        }
    return loops;
}

/// The last region takes the place of the one at `index`.
void remove(RegionList& regions, std::size_t index) {
    regions[index] = regions.back();
    regions.pop_back();
}

/// Whether another region of the list holds the middle of the region's first edge.
bool isNested(const RegionList& regions, std::size_t index) {
    const Loop& loop = regions[index]->points();
    const gmVector<2> middle = (loop[0] + loop[1 % loop.size()]) * 0.5;
    for (std::size_t j = 0; j < regions.size(); ++j)
        if (j != index && regions[j]->inside(middle, true))
            return true;
    return false;
}

/// Removes regions that lie in others, from the first on. A region that lay in none lies in none of fewer.
void dropNested(RegionList& regions) {
    for (std::size_t i = 0; i < regions.size();)
        if (isNested(regions, i))
            remove(regions, i);
        else
            ++i;
}

/// Whether a vertex of one region touches one of the other.
bool areTouching(const gmRegion& a, const gmRegion& b) {
    const Loop& vertices = b.points();
    return std::any_of(vertices.begin(), vertices.end(),
                       [&](const gmVector<2>& v) { return !a.vertexIndex(v, detail::touching).empty(); });
}

/// The loop around `a` from its first vertex that touches one of `b`, and then around `b` from there.
Loop join(const gmRegion& a, const gmRegion& b) {
    const Loop& aLoop = a.points();
    const Loop& bLoop = b.points();
    std::size_t k = 0;
    while (b.vertexIndex(aLoop[k], detail::touching).empty())
        ++k;
    Loop joined = stretch(aLoop, k, aLoop.size());
    const auto first = static_cast<std::size_t>(b.vertexIndex(aLoop[k], detail::touching).front());
    const Loop rest = stretch(bLoop, first, bLoop.size());
    joined.insert(joined.end(), rest.begin(), rest.end());
    return joined;
}

/// Joins regions that share a vertex, from the first on. Those before `a` touch none of the others, nor therefore what
/// is joined of the others.
void joinTouching(RegionList& regions) {
    for (std::size_t a = 0; a < regions.size(); ++a)
        for (std::size_t b = a + 1; b < regions.size();) {
            if (areTouching(*regions[a], *regions[b])) {
                regions[a] = gmPtrHandle<gmRegion>(new gmRegion(join(*regions[a], *regions[b])));
                remove(regions, b);
                b = a + 1;
            } else {
                ++b;
            }
        }
}

/// The one loop that is kept of a boundary that touches itself.
gmPtrHandle<gmRegion> outerLoop(const Loop& boundary) {
    RegionList regions;
    for (const Loop& loop : splitAtTouchingPoints(boundary))
        regions.push_back(gmPtrHandle<gmRegion>(new gmRegion(loop)));
    dropNested(regions);
    joinTouching(regions);
    return regions.front();
}

}  // namespace

void gmRegion::regularize(gmRegion& out) const {
    cleanUp(caches_.regularized, false, out);
}

void gmRegion::outerHull(gmRegion& out) const {
    cleanUp(caches_.outerHull, true, out);
}

void gmRegion::cleanUp(detail::Cached<RegionCPtr>& cache, bool outerHullOnly, gmRegion& out) const {
    if (isSelfIntersecting())
        out.become(*detail::cachedShape(cache, [&](gmRegion& result) { outerHullRegularize(result, outerHullOnly); }));
    else if (&out != this)
        out.become(*this);
}

void gmRegion::outerHullRegularize(gmRegion& out, bool outerHullOnly) const {
    const Loop boundary = traceBoundary(boundaryStart());
    if (outerHullOnly)
        out = *outerLoop(boundary);
    else
        out = gmRegion(boundary);
}

/// The first vertex whose edge to the next one is on the outer boundary: nothing but its neighbours meets it, and one
/// side of it is outside.
std::size_t gmRegion::boundaryStart() const {
    checkEmptyContour();
    const double step = probeStep * medianFeatureSize();
    const auto crossings = [&](const gmVector<2>& from, const gmVector<2>& to) {
        return intersections(gmLineSeg(from, to), true, false).size();
    };
    for (std::size_t i = 0; i + 1 < points().size(); ++i) {
        const gmVector<2>& from = points()[i];
        const gmVector<2>& to = points()[i + 1];
        const gmVector<2> middle = (from + to) * 0.5;
        const gmVector<2> u = (from - to).unit();
        const gmVector<2> aside(-u.y() * step, u.x() * step);
        const gmVector<2> a = middle + aside;
        const gmVector<2> b = middle - aside;
        if (crossings(a, b) == 1 && crossings(from, to) == 2 &&
            (insideCount(a, true) == 0 || insideCount(b, true) == 0))
            return i;
    }
    throw gmContourDefs::BadParams("invalid contour");
}

/// The vertices of the outer boundary, once around to the start vertex.
std::vector<gmVector<2>> gmRegion::traceBoundary(std::size_t start) const {
    const std::size_t n = points().size();
    const gmVector<2> home = points()[start];
    Loop traced;
    Step step{home, (start + 1) % n, true};
    CycleWatch watch(step);
    // A look at all edges at once tells of most that nothing crosses them: they are walked without asking.
    const bool isTame = gmContour::caches_.edgeIndex.extent(points()).isTame;
    const std::vector<bool> crossable = isTame ? detail::crossableEdges(crossed(nullptr)) : std::vector<bool>(n, true);
    std::vector<int> edges;
    do {
        const std::size_t before = (step.index + n - 1) % n;
        const gmVector<2>& target = points()[step.forward ? step.index : before];
        const bool isWhole = step.position == points()[step.forward ? before : step.index];
        std::vector<gmVector<2>> crossings;
        if (crossable[step.index] || !isWhole)
            crossings = gmContour::intersections(gmLineSeg(step.position, target), edges, false);
        if (crossings.empty()) {
            step.position = target;
            step.index = step.forward ? (step.index + 1) % n : before;
        } else {
            step.position = crossings.front();
            step.forward = !step.forward;
            step.index = static_cast<std::size_t>(edges.front());
        }
        traced.push_back(step.position);
        if (watch.cameBack(step))
            throw gmContourDefs::BadParams("invalid contour");
    } while (step.position != home);
    return traced;
}

void gmRegion::splice(const gmRegion& other, gmRegion& out) const {
    for (std::size_t i = 0; i < points().size(); ++i) {
        if (!validLine()[i])
            continue;
        std::vector<int> edges;
        const std::vector<gmVector<2>> crossings = other.gmContour::intersections(lineSegs()[i], edges, true);
        if (crossings.empty())
            continue;
        Loop spliced{crossings.front()};
        const Loop around = stretch(points(), i, points().size());
        spliced.insert(spliced.end(), around.begin(), around.end());
        spliced.push_back(crossings.front());
        const Loop otherAround =
            stretch(other.points(), static_cast<std::size_t>(edges.front()), other.points().size());
        spliced.insert(spliced.end(), otherAround.begin(), otherAround.end());
        out = gmRegion(spliced);
        return;
    }
    throw gmContourDefs::BadParams("spliced regions do not intersect");
}
