#include "cntr/contour.h"

#include <cstddef>
#include <iterator>
#include <limits>
#include <utility>

#include "cntr/detail/cachelimit.h"
#include "cntr/detail/edgelanes.h"
#include "cntr/detail/edges.h"
#include "cntr/detail/sharedchanges.h"
#include "cntr/detail/tolerances.h"
#include "cntr/region.h"
#include "foundation/math/realeq.h"

namespace {

constexpr std::int32_t usualCachedVectorSize = 3;

std::uint32_t checkedLabel(unsigned long label) {
    if (label > std::numeric_limits<std::uint32_t>::max())
        throw gmContourDefs::BadParams("label does not fit in 32 bits");
    return static_cast<std::uint32_t>(label);
}

std::vector<gmVector<2>> verticesOf(const gmPolygon& polygon) {
    std::vector<gmVector<2>> points;
    points.reserve(static_cast<std::size_t>(polygon.size()));
    for (int i = 0; i < polygon.size(); ++i)
        points.push_back(polygon[i]);
    return points;
}

double computeLength(const std::vector<gmVector<2>>& points, bool closed) {
    double sum = 0.0;
    detail::forEachEdgePair(
        points, closed,
        [&](const detail::Two& a, const detail::Two& b, const detail::Two& c) {
            const detail::Two length = detail::lengths(b - a, c - b);
            sum += detail::first(length);
            sum += detail::second(length);
        },
        [&](const gmVector<2>& a, const gmVector<2>& b) { sum += a.distance(b); });
    return sum;
}

gmVector<2> computeMeanPosition(const std::vector<gmVector<2>>& points, bool closed) {
    detail::Two sum = detail::both(0.0);
    double total = 0.0;
    const auto add = [&](const detail::Two& a, const detail::Two& b, double length) {
        sum = sum + detail::both(length) * (a + b) / detail::both(2.0);
        total += length;
    };
    detail::forEachEdgePair(
        points, closed,
        [&](const detail::Two& a, const detail::Two& b, const detail::Two& c) {
            const detail::Two length = detail::lengths(b - a, c - b);
            add(a, b, detail::first(length));
            add(b, c, detail::second(length));
        },
        [&](const gmVector<2>& a, const gmVector<2>& b) {
            add(detail::loadTwo(a), detail::loadTwo(b), a.distance(b));
        });
    return gmVector<2>(detail::first(sum), detail::second(sum)) * (1.0 / total);
}

/// Walks through the vertices as mapped: a vector made of them is written once.
class Mapped {
  public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = gmVector<2>;
    using difference_type = std::ptrdiff_t;
    using pointer = const gmVector<2>*;
    using reference = gmVector<2>;

    Mapped(const gmXform<2>& xform, pointer vertex) : xform_(xform), vertex_(vertex) {}

    gmVector<2> operator*() const { return xform_ * *vertex_; }
    gmVector<2> operator[](difference_type i) const { return xform_ * vertex_[i]; }
    Mapped& operator+=(difference_type step) {
        vertex_ += step;
        return *this;
    }
    Mapped& operator++() { return *this += 1; }
    difference_type operator-(const Mapped& other) const { return vertex_ - other.vertex_; }
    bool operator==(const Mapped& other) const { return vertex_ == other.vertex_; }
    bool operator!=(const Mapped& other) const { return vertex_ != other.vertex_; }

  private:
    gmXform<2> xform_;
    pointer vertex_;
};

void computeEdges(const std::vector<gmVector<2>>& points, bool closed, detail::Edges& edges) {
    edges.lineSegs.clear();
    edges.valid.clear();
    detail::forEachEdge(points, closed, [&](const gmVector<2>& from, const gmVector<2>& to) {
        const bool valid = !gfRealEq(from, to, detail::sameValue);
        edges.lineSegs.push_back(valid ? gmLineSeg(from, to) : gmLineSeg());
        edges.valid.push_back(valid);
    });
}

}  // namespace

gmContour::gmContour() {
    gmContour::cleanCacheInfo();
}

gmContour::gmContour(const std::vector<gmVector<2>>& points, bool closed, unsigned long label)
    : label_(checkedLabel(label)), closed_(closed), points_(points) {
    gmContour::cleanCacheInfo();
}

gmContour::gmContour(const gmPolygon& polygon, unsigned long label)
    : label_(checkedLabel(label)), points_(verticesOf(polygon)) {
    closed_ = points_.empty() || gfRealEq(points_.front(), points_.back(), detail::sameValue);
    gmContour::cleanCacheInfo();
}

// What a region remembers of an open outline knows of its closing edge, and does not fit an open contour.
gmContour::gmContour(const gmContour& other)
    : gmPersistent(other),
      gmRepBase(other),
      label_(other.label_),
      closed_(other.closed_),
      points_(other.points_),
      cachedVectorSize_(other.cachedVectorSize_),
      caches_(other.caches_) {
    if (closed_ != other.isClosed())
        caches_.invalidate();
}

// Written out, so that the virtual bases are left alone: nothing of theirs is part of a contour's value.
gmContour& gmContour::operator=(const gmContour& other) {
    if (this == &other)
        return *this;
    // Memory may run out here, and not below: no old answer may meet the new vertices.
    std::vector<gmVector<2>> points = other.points_;
    detail::ContourCaches caches = other.caches_;
    points_ = std::move(points);
    label_ = other.label_;
    closed_ = other.closed_;
    cachedVectorSize_ = other.cachedVectorSize_;
    std::swap(caches_, caches);
    if (isClosed() != other.isClosed())
        caches_.invalidate();
    noteIfShared();
    return *this;
}

gmContour::~gmContour() = default;

bool gmContour::operator==(const gmContour& other) const {
    return isClosed() == other.isClosed() && points_ == other.points_ && cachedVectorSize_ == other.cachedVectorSize_;
}

void gmContour::points(const std::vector<gmVector<2>>& points) {
    setPoints(points);
    makeDataConsistentWithPoints();
}

void gmContour::setPoints(const std::vector<gmVector<2>>& points) {
    cleanCacheInfo();
    points_ = points;
    caches_.invalidate();  // whoever asked something meanwhile asked of the old vertices
    noteIfShared();
}

void gmContour::isClosed(bool closed) {
    closed_ = closed;
    caches_.edgeIndex.invalidate();  // an observer that asks something sees the new edges
    cleanCacheInfo();
}

void gmContour::label(unsigned long label) {
    const std::uint32_t checked = checkedLabel(label);
    reportChange();
    label_ = checked;
}

void gmContour::cachedVectorSize(long size) {
    const std::int32_t checked = detail::checkedCacheLimit(size);
    reportChange();
    cachedVectorSize_ = checked;
}

double gmContour::length() const {
    return caches_.length.get([&](double& length) { length = computeLength(points_, isClosed()); });
}

gmVector<2> gmContour::meanPosition() const {
    checkEmptyContour();
    return caches_.meanPosition.get([&](gmVector<2>& mean) { mean = computeMeanPosition(points_, isClosed()); });
}

gmPolygon gmContour::polygon() const {
    std::vector<gmVector<2>> vertices = points_;
    if (isClosed() && !points_.empty())
        vertices.push_back(points_.front());
    return gmPolygon(vertices, gmPolygon::eEvenOdd);
}

void gmContour::map(const gmXform<2>& xform, gmContour& out) const {
    std::vector<gmVector<2>> mapped(Mapped{xform, points_.data()}, Mapped{xform, points_.data() + points_.size()});
    const bool closed = isClosed();
    const std::uint32_t label = label_;
    out.cleanCacheInfo();  // also what a class derived from gmContour keeps
    out.points_ = std::move(mapped);
    out.closed_ = closed;
    out.label_ = label;
    out.cachedVectorSize_ = usualCachedVectorSize;
    out.caches_.invalidate();
    out.noteIfShared();
    out.makeDataConsistentWithPoints();
}

const detail::Edges& gmContour::edges() const {
    return caches_.edges.get([&](detail::Edges& edges) { computeEdges(points_, isClosed(), edges); });
}

const detail::EdgeTree* gmContour::treeForOne() const {
    return caches_.edgeIndex.forOne(points_, isClosed());
}

const detail::EdgeTree* gmContour::treeForMany() const {
    return caches_.edgeIndex.forMany(points_, isClosed());
}

std::size_t gmContour::edgeCount() const {
    return isClosed() || points_.empty() ? points_.size() : points_.size() - 1;
}

const std::vector<gmLineSeg>& gmContour::lineSegs() const {
    return edges().lineSegs;
}

const std::vector<bool>& gmContour::validLine() const {
    return edges().valid;
}

void gmContour::computeLineSegs() const {
    edges();
}

void gmContour::checkEmptyContour() const {
    if (points_.size() < 2)
        throw gmContourDefs::EmptyContour();
}

void gmContour::checkHasVertex() const {
    if (points_.empty())
        throw gmContourDefs::EmptyContour();
}

void gmContour::cleanCacheInfo() {
    reportChange();
    caches_.invalidate();
    noteIfShared();
}

void gmContour::noteIfShared() const {
    if (referenceCount() > 0)
        detail::noteSharedChange();
}

void gmContour::makeDataConsistentWithPoints() {}

void gmContour::makePointsConsistentWithData() {}
