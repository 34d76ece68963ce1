#include <algorithm>
#include <cmath>
#include <limits>

#include "cntr/contour.h"
#include "cntr/detail/edges.h"

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

std::size_t nearestVertex(const std::vector<gmVector<2>>& points, const gmVector<2>& point) {
    double best = infinity;
    std::size_t nearest = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double distance = point.distance(points[i]);
        if (distance < best) {
            best = distance;
            nearest = i;
        }
    }
    return nearest;
}

/// The point of the segment nearest to `point`, given that it is one of the contour's edges.
gmVector<2> nearestOnEdge(const gmVector<2>& p1, const gmVector<2>& p2, const gmVector<2>& point) {
    const double t = gfFootParameter(p1, p2 - p1, point);
    if (t > 0.0 && t < 1.0)
        return gmLineSeg(p1, p2).line().proj(point).position();
    return t >= 1.0 ? p2 : p1;
}

gmVector<2> nearestPoint(const std::vector<gmVector<2>>& points, bool closed, const gmVector<2>& point) {
    double best = infinity;
    const gmVector<2>* from = nullptr;
    const gmVector<2>* to = nullptr;
    detail::forEachEdge(points, closed, [&](const gmVector<2>& p1, const gmVector<2>& p2) {
        const double distance = gfDistToSeg(p1, p2, point);
        if (distance < best) {
            best = distance;
            from = &p1;
            to = &p2;
        }
    });
    return from ? nearestOnEdge(*from, *to, point) : gmVector<2>();
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
    checkHasVertex();
    return vertexOnly ? points_[nearestVertex(points_, point)] : nearestPoint(points_, isClosed(), point);
}

long gmContour::closestVertexIndex(const gmVector<2>& point) const {
    checkHasVertex();
    return static_cast<long>(nearestVertex(points_, point));
}

double gmContour::distToPoint(const gmVector<2>& point, bool vertexOnly) const {
    return closestPoint(point, vertexOnly).distance(point);
}

std::vector<int> gmContour::vertexIndex(const gmVector<2>& point, double tolerance) const {
    checkHasVertex();
    if (!detail::VertexGrid::hasCells(tolerance)) {
        std::vector<int> found;
        for (std::size_t i = 0; i < points_.size(); ++i)
            if (points_[i].distance(point) < tolerance)
                found.push_back(static_cast<int>(i));
        return found;
    }
    auto& grids = caches_.vertexGrids;
    auto grid = std::find_if(grids.begin(), grids.end(), [&](const auto& g) { return g.tolerance() == tolerance; });
    if (grid == grids.end())
        grid = grids.insert(grids.end(), detail::VertexGrid(points_, tolerance));
    return grid->near(points_, point);
}

double gmContour::medianFeatureSize() const {
    checkHasVertex();
    return caches_.medianFeatureSize.get(
        [&](double& median) { median = computeMedianFeatureSize(points_, isClosed()); });
}
