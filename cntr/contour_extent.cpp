#include <algorithm>
#include <cmath>
#include <limits>

#include "cntr/contour.h"
#include "cntr/detail/cachedshape.h"
#include "cntr/detail/tolerances.h"
#include "cntr/inertia.h"
#include "cntr/region.h"
#include "foundation/fit/convexhull.h"
#include "foundation/math/realeq.h"

namespace {

gmRect boundingBox(const std::vector<gmVector<2>>& points, const gmXform<2>& xform) {
    const bool mapped = !gfRealEq(xform, gmXform<2>::I, detail::sameValue);
    gmRect box;
    for (const gmVector<2>& point : points)
        box.extend(mapped ? xform * point : point);
    return box;
}

/// Every pair once: the other order measures the same distance, later.
gmCircle circleOnFarthestPair(const std::vector<gmVector<2>>& points) {
    double best = 0.0;
    gmCircle circle;
    for (std::size_t i = 0; i < points.size(); ++i)
        for (std::size_t j = i + 1; j < points.size(); ++j) {
            const double distance = points[i].distance(points[j]);
            if (distance > best) {
                best = distance;
                circle = gmCircle(0.5 * (points[i] + points[j]), 0.5 * distance);
            }
        }
    return circle;
}

gmCircle circleAroundFirst(const std::vector<gmVector<2>>& points) {
    double radius = 0.0;
    for (const gmVector<2>& point : points)
        radius = std::max(radius, points.front().distance(point));
    return gmCircle(points.front(), radius);
}

template <class Score>
long bestVertex(const std::vector<gmVector<2>>& points, Score score) {
    double best = std::numeric_limits<double>::lowest();
    long index = -1;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double value = score(points[i]);
        if (value > best) {
            best = value;
            index = static_cast<long>(i);
        }
    }
    return index;
}

long extremalVertex(const std::vector<gmVector<2>>& points, const gmRadian& angle) {
    const gmVector<2> direction(1.0, angle);
    const auto along = [&](double x, double y) { return gfRealEq(direction, {x, y}, detail::sameValue); };
    // Along an axis the coordinate is compared as it is: the product with a cosine of 6e-17 would blur it.
    if (along(1.0, 0.0))
        return bestVertex(points, [](const gmVector<2>& v) { return v.x(); });
    if (along(-1.0, 0.0))
        return bestVertex(points, [](const gmVector<2>& v) { return -v.x(); });
    if (along(0.0, 1.0))
        return bestVertex(points, [](const gmVector<2>& v) { return v.y(); });
    if (along(0.0, -1.0))
        return bestVertex(points, [](const gmVector<2>& v) { return -v.y(); });
    return bestVertex(points, [&](const gmVector<2>& v) { return direction.dot(v); });
}

}  // namespace

gmRect gmContour::encloseRect(const gmXform<2>& xform) const {
    checkHasVertex();
    return caches_.encloseRect.get(xform, cachedVectorSize_, [&] { return boundingBox(points_, xform); });
}

gmCircle gmContour::encloseCircle(gmContourDefs::DiameterMode mode) const {
    const auto index = static_cast<unsigned>(mode);
    if (index >= caches_.encloseCircle.size())
        throw gmContourDefs::BadParams("diameterMode is not one of the valid enums");
    if (mode == gmContourDefs::eFromFirstVertex)
        checkHasVertex();
    return caches_.encloseCircle[index].get([&](gmCircle& circle) {
        circle = mode == gmContourDefs::eMaxVertexPair ? circleOnFarthestPair(points_) : circleAroundFirst(points_);
    });
}

double gmContour::diameter(gmContourDefs::DiameterMode mode) const {
    return 2.0 * encloseCircle(mode).radius();
}

long gmContour::extremalVertexIndex(const gmRadian& angle) const {
    checkHasVertex();
    if (std::isnan(angle.value()))
        return extremalVertex(points_, angle);
    if (const long* known = caches_.extremalVertexIndex.find(angle.value()))
        return *known;
    const long index = extremalVertex(points_, angle);
    caches_.extremalVertexIndex.insert(angle.value(), index, cachedVectorSize_);
    return index;
}

gmVector<2> gmContour::extremalVertexPosition(const gmRadian& angle) const {
    const long index = extremalVertexIndex(angle);
    if (index < 0)
        throw gmContourDefs::BadParams("no extremal vertex");
    return points_[static_cast<std::size_t>(index)];
}

void gmContour::convexHull(gmRegion& hull) const {
    checkHasVertex();
    hull.become(*detail::cachedShape(caches_.convexHull, [&](gmRegion& region) {
        std::vector<gmVector<2>> vertices;
        gfConvexHull(points_, vertices);
        region = gmRegion(vertices);
    }));
}

void gmContour::fitEllipse(gmEllipse& ellipse, double& residual) const {
    checkHasVertex();
    const detail::EllipseFit& fit =
        caches_.fitEllipse.get([&](detail::EllipseFit& slot) { gf_FitEllipse(points_, slot.ellipse, slot.residual); });
    ellipse = fit.ellipse;
    residual = fit.residual;
}
