#include "foundation/fit/convexhull.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>

#include "foundation/math/lanes.h"
#include "foundation/math/orientation.h"

namespace {

using Points = std::vector<gmVector<2>>;

// Below this filtering costs more than it saves.
constexpr std::size_t few = 64;

// One point out of so many tells where the hull of all of them runs, near enough.
constexpr std::size_t sampling = 16;
constexpr std::size_t leastSample = 32;

// Enough slabs to follow the hull, and few enough to stay in the nearest cache.
constexpr std::size_t mostSlabs = 512;

// Points that are filtered in one go.
constexpr std::size_t blockSize = 64;

bool before(const gmVector<2>& a, const gmVector<2>& b) {
    return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
}

/// Whether every coordinate is one for which orientations are exact.
bool areOrdinary(const Points& points) {
    const auto isOrdinary = [](double value) {
        const double size = std::fabs(value);
        return size < 1e140 && (size >= 1e-140 || size == 0.0);
    };
    std::size_t i = 0;
    for (; i + 8 <= points.size(); i += 8) {
        const auto place = detail::EightPlaces::load(&points[i]);
        const auto areFine = [](const detail::Eight& values) {
            const detail::Eight sizes = larger(-1.0 * values, values);
            return (sizes < 1e140) & ((sizes >= 1e-140) | (sizes <= 0.0));
        };
        if ((areFine(place.x) & areFine(place.y)).bits() != 0xff)
            return false;
    }
    return std::all_of(points.begin() + static_cast<std::ptrdiff_t>(i), points.end(),
                       [&](const gmVector<2>& point) { return isOrdinary(point.x()) && isOrdinary(point.y()); });
}

/// The hull of any points, in plain steps: the faster ones rely on it that all orientations agree with each other.
void plainHull(const Points& points, Points& hull) {
    Points sorted;
    std::copy_if(points.begin(), points.end(), std::back_inserter(sorted),
                 [](const gmVector<2>& point) { return std::isfinite(point.x()) && std::isfinite(point.y()); });
    std::sort(sorted.begin(), sorted.end(), before);
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    if (sorted.size() < 2) {
        hull.swap(sorted);
        return;
    }
    Points found;
    // One chain from the lowest point to the highest, one back; each starts on the last vertex of the one before.
    const auto addChain = [&found](auto first, auto last) {
        const std::size_t start = found.size();
        for (; first != last; ++first) {
            while (found.size() >= start + 2 && gfOrientation(found[found.size() - 2], found.back(), *first) <= 0)
                found.pop_back();
            found.push_back(*first);
        }
        found.pop_back();
    };
    addChain(sorted.begin(), sorted.end());
    addChain(sorted.rbegin(), sorted.rend());
    hull.swap(found);
}

/// Sorts points that are nearly in order; false, with some of them sorted, where that turns out to be much work.
bool sortByInsertion(gmVector<2>* first, gmVector<2>* last) {
    std::ptrdiff_t work = 64 + 4 * (last - first);
    for (gmVector<2>* next = first; next < last; ++next) {
        const gmVector<2> point = *next;
        gmVector<2>* place = next;
        for (; place > first && before(point, place[-1]); --place)
            *place = place[-1];
        *place = point;
        work -= next - place;
        if (work < 0)
            return false;
    }
    return true;
}

/// Sorts points by x, then y: by buckets along x, as many as there are points, and each bucket by itself.
void sortByBuckets(gmVector<2>* first, gmVector<2>* last) {
    const auto n = static_cast<std::size_t>(last - first);
    const auto [left, right] = std::minmax_element(first, last, before);
    const double start = left->x();
    const double width = right->x() - start;
    const double perUnit = static_cast<double>(n) / width;
    if (!std::isfinite(width) || !std::isfinite(perUnit)) {
        std::sort(first, last, before);
        return;
    }
    const auto bucketOf = [&](const gmVector<2>& point) {
        return static_cast<std::size_t>((point.x() - start) * perUnit);
    };
    // Rounding may take the last point one bucket further than the last.
    std::vector<std::size_t> ends(n + 3);
    for (const gmVector<2>* point = first; point < last; ++point)
        ++ends[bucketOf(*point) + 1];
    for (std::size_t i = 1; i < ends.size(); ++i)
        ends[i] += ends[i - 1];
    const Points unsorted(first, last);
    for (const gmVector<2>& point : unsorted)
        first[ends[bucketOf(point)]++] = point;
    std::size_t begin = 0;
    for (std::size_t bucket = 0; begin < n; ++bucket) {
        // By now each entry has moved from where its bucket begins to where it ends.
        const std::size_t end = ends[bucket];
        if (!sortByInsertion(first + begin, first + end))
            std::sort(first + begin, first + end, before);
        begin = end;
    }
}

/// The lower chain of the hull of the points, which lie right of the way from the first to the last one: its corners
/// come to the front. Where they end.
gmVector<2>* lowerChain(gmVector<2>* first, gmVector<2>* last) {
    // An outline brings them nearly in order, or in the opposite one.
    if (last - first > 3 && before(last[-2], first[1]))
        std::reverse(first + 1, last - 1);
    if (!sortByInsertion(first, last))
        sortByBuckets(first, last);
    gmVector<2>* kept = first + 1;
    for (const gmVector<2>* next = first + 1; next < last; ++next) {
        const gmVector<2> point = *next;
        while (kept - first >= 2 && gfOrientation(kept[-2], kept[-1], point) <= 0)
            --kept;
        *kept++ = point;
    }
    return kept;
}

/// The ends of a set of points along x, then y.
struct Ends {
    explicit Ends(const Points& points) {
        for (std::size_t i = 1; i < points.size(); ++i) {
            if (points[i].x() <= points[first].x() && before(points[i], points[first]))
                first = i;
            if (points[i].x() >= points[last].x() && before(points[last], points[i]))
                last = i;
        }
    }

    std::size_t first = 0;
    std::size_t last = 0;
};

/// The hull of ordinary points; `hull` may be the same vector.
void hullOf(const Points& points, Points& hull) {
    const Ends ends(points);
    const gmVector<2> first = points[ends.first];
    const gmVector<2> last = points[ends.last];
    if (first == last) {
        hull.assign(1, first);
        return;
    }
    // Lower points gather from the front on, upper ones from the back. Those are turned by half a turn, which is exact:
    // so their chain is a lower one as well. From the leftmost point on, as an outline comes round to it from anywhere.
    Points parts(points.size() + 4);
    gmVector<2>* lower = parts.data();
    gmVector<2>* upper = parts.data() + parts.size();
    *lower++ = first;
    *--upper = -first;
    const auto divide = [&](const gmVector<2>* point, const gmVector<2>* end) {
        for (; point < end; ++point) {
            const int side = gfOrientation(first, last, *point);
            if (side < 0)
                *lower++ = *point;
            else if (side > 0)
                *--upper = -*point;
        }
    };
    divide(points.data() + ends.first + 1, points.data() + points.size());
    divide(points.data(), points.data() + ends.first);
    *lower++ = last;
    *--upper = -last;
    lower = lowerChain(parts.data(), lower);
    gmVector<2>* const upperEnd = lowerChain(upper, parts.data() + parts.size()) - 1;
    hull.reserve(static_cast<std::size_t>(lower - parts.data() + (upperEnd - upper)));
    hull.assign(parts.data(), lower);
    while (++upper < upperEnd)
        hull.push_back(-*upper);
}

/// What is certainly inside a hull of three corners or more: slabs along x, less a margin for the rounding.
class Inside {
  public:
    Inside(const Points& hull, std::size_t slabs) : end_(static_cast<double>(slabs + 1)), slabs_(slabs + 2) {
        const auto right = std::max_element(hull.begin(), hull.end(), before);
        const auto [low, high] = std::minmax_element(
            hull.begin(), hull.end(), [](const gmVector<2>& a, const gmVector<2>& b) { return a.y() < b.y(); });
        start_ = hull.front().x();
        const double width = right->x() - start_;
        const double height = high->y() - low->y();
        perUnit_ = static_cast<double>(slabs) / width;
        // A slope is no steeper than what its x were rounded to may matter.
        const double steepest = height * perUnit_;
        const double margin = 1e-14 * (std::fabs(low->y()) + std::fabs(high->y()) +
                                       steepest * (std::fabs(start_) + std::fabs(right->x())));
        if (!std::isfinite(perUnit_) || !std::isfinite(margin))
            return;  // nothing is certain

        const std::size_t n = hull.size();
        std::size_t below = 1;  // the corners that end the sides below and above
        std::size_t above = n - 1;
        double previousX = start_;
        double previousBelow = hull.front().y();
        double previousAbove = hull.front().y();
        for (std::size_t i = 1; i <= slabs; ++i) {
            const double x = start_ + width * (static_cast<double>(i) / static_cast<double>(slabs));
            while (hull[below].x() < x && hull.begin() + static_cast<std::ptrdiff_t>(below) != right)
                ++below;
            while (hull[above].x() < x && hull.begin() + static_cast<std::ptrdiff_t>(above) != right)
                --above;
            const double yBelow = heightAt(x, hull[below - 1], hull[below]);
            const double yAbove = heightAt(x, hull[(above + 1) % n], hull[above]);
            slabs_[i] = {previousX, previousBelow + margin, (yBelow - previousBelow) * perUnit_, previousAbove - margin,
                         (yAbove - previousAbove) * perUnit_};
            previousX = x;
            previousBelow = yBelow;
            previousAbove = yAbove;
        }
    }

    bool operator()(const gmVector<2>& point) const {
        // The slabs before the first and after the last hold nothing: what is out of reach goes there.
        double place = (point.x() - start_) * perUnit_ + 1.0;
        place = place > 0.0 ? place : 0.0;
        place = place < end_ ? place : end_;
        // By way of a signed number, which is one step for the processor.
        const Slab& slab = slabs_[static_cast<std::size_t>(static_cast<std::ptrdiff_t>(place))];
        const double along = point.x() - slab.x;
        return static_cast<int>(point.y() > slab.below + slab.slopeBelow * along) &
               static_cast<int>(point.y() < slab.above + slab.slopeAbove * along);
    }

  private:
    struct Slab {
        double x = 0.0;
        double below = std::numeric_limits<double>::infinity();
        double slopeBelow = 0.0;
        double above = -std::numeric_limits<double>::infinity();
        double slopeAbove = 0.0;
    };

    static double heightAt(double x, const gmVector<2>& from, const gmVector<2>& to) {
        const double width = to.x() - from.x();
        return x < to.x() ? from.y() + (to.y() - from.y()) * ((x - from.x()) / width) : to.y();
    }

    double start_ = 0.0;
    double perUnit_ = 0.0;
    double end_;
    std::vector<Slab> slabs_;
};

void hullOfMany(const Points& points, Points& hull);

/// Whether most points could be left out: then `kept` are the others.
bool filter(const Points& points, Points& kept) {
    const std::size_t step = std::min(sampling, points.size() / leastSample);
    Points sample;
    sample.reserve(points.size() / step + 1);
    for (std::size_t i = 0; i < points.size(); i += step)
        sample.push_back(points[i]);
    Points hull;
    hullOfMany(sample, hull);
    if (hull.size() < 3 || hull.size() > sample.size() - sample.size() / 8)
        return false;
    const Inside inside(hull, std::min(sample.size() / 2, mostSlabs));
    std::array<gmVector<2>, blockSize> block;
    for (auto next = points.begin(); next != points.end();) {
        const auto end = next + std::min<std::ptrdiff_t>(blockSize, points.end() - next);
        std::size_t count = 0;
        for (; next != end; ++next) {
            block[count] = *next;
            count += inside(*next) ? 0U : 1U;
        }
        kept.insert(kept.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(count));
    }
    return true;
}

void hullOfMany(const Points& points, Points& hull) {
    Points kept;
    hullOf(points.size() > few && filter(points, kept) ? kept : points, hull);
}

}  // namespace

void gfConvexHull(const std::vector<gmVector<2>>& in, std::vector<gmVector<2>>& out) {
    if (!in.empty() && areOrdinary(in))
        hullOfMany(in, out);
    else
        plainHull(in, out);
}
