#include <algorithm>
#include <cmath>
#include <limits>

#include "cntr/contour.h"
#include "cntr/detail/edges.h"
#include "cntr/detail/nearest.h"
#include "cntr/detail/within.h"

namespace {

/// The point of the segment nearest to `point`, given that it is one of the contour's edges.
gmVector<2> nearestOnEdge(const gmVector<2>& p1, const gmVector<2>& p2, const gmVector<2>& point) {
    const double t = gfFootParameter(p1, p2 - p1, point);
    if (t > 0.0 && t < 1.0)
        return gfFoot(p1, p2 - p1, point);
    return t >= 1.0 ? p2 : p1;
}

double computeMedianFeatureSize(const std::vector<gmVector<2>>& points, bool closed) {
    std::vector<double> lengths;
    detail::forEachEdge(points, closed,
                        [&](const gmVector<2>& from, const gmVector<2>& to) { lengths.push_back(from.distance(to)); });
    if (lengths.empty())
        return 0.0;
    const auto median = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
    // NaN after all numbers, so that the order is one.
    std::nth_element(lengths.begin(), median, lengths.end(),
                     [](double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); });
    return *median;
}

}  // namespace

gmVector<2> gmContour::closestPoint(const gmVector<2>& point, bool vertexOnly) const {
    if (vertexOnly)
        return points_[static_cast<std::size_t>(closestVertexIndex(point))];
    checkHasVertex();
    return closestPointWithin(std::numeric_limits<double>::infinity(), point).value_or(gmVector<2>());
}

std::optional<gmVector<2>> gmContour::closestPointWithin(double distance, const gmVector<2>& point) const {
    detail::NearestEdge question(point, distance);
    detail::Runs runs(points_, isClosed());
    askLeastFirst(treeForOne(), runs, question);
    if (!question.isFound())
        return {};
    const auto [from, to] = detail::edgeEnds(points_.size(), isClosed(), question.index());
    return nearestOnEdge(points_[from], points_[to], point);
}

long gmContour::closestVertexIndex(const gmVector<2>& point) const {
    checkHasVertex();
    detail::NearestVertex question(point);
    detail::Runs runs(points_, isClosed());
    askLeastFirst(treeForOne(), runs, question);
    return static_cast<long>(question.index());
}

double gmContour::distToPoint(const gmVector<2>& point, bool vertexOnly) const {
    return closestPoint(point, vertexOnly).distance(point);
}

std::vector<int> gmContour::vertexIndex(const gmVector<2>& point, double tolerance) const {
    checkHasVertex();
    return detail::verticesWithin(tolerance, point, points_, isClosed(), treeForOne());
}

double gmContour::medianFeatureSize() const {
    checkHasVertex();
    return caches_.medianFeatureSize.get(
        [&](double& median) { median = computeMedianFeatureSize(points_, isClosed()); });
}
