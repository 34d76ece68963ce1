#include <algorithm>
#include <cmath>
#include <limits>

#include "cntr/contour.h"
#include "cntr/detail/cachedshape.h"
#include "cntr/detail/extreme.h"
#include "cntr/detail/farthestpair.h"
#include "cntr/detail/tolerances.h"
#include "cntr/inertia.h"
#include "cntr/region.h"
#include "foundation/fit/convexhull.h"
#include "foundation/math/realeq.h"

namespace {

/// Vertex by vertex: what is not a number takes no part.
gmRect boxOfEach(const std::vector<gmVector<2>>& points, const gmXform<2>& xform, bool isIdentity) {
    gmRect box;
    for (const gmVector<2>& point : points)
        box.extend(isIdentity ? point : xform * point);
    return box;
}

/// Whether what the transform maps tame coordinates to is finite.
bool isTame(const gmXform<2>& xform) {
    const auto& values = xform.values();
    return std::all_of(values.begin(), values.end(), [](double value) { return detail::isTame(value); });
}

/// The box of the mapped vertices, from the four that lie farthest along the mapped axes.
gmRect boxOfExtremes(const gmXform<2>& xform, const detail::EdgeTree* tree, detail::Runs& runs) {
    const auto farthest = [&](double sign, std::size_t x, std::size_t translation) {
        const auto& values = xform.values();
        detail::Extreme question(sign * values[x], sign * values[x + 1], sign * values[translation]);
        askLeastFirst(tree, runs, question);
        return sign * question.value();
    };
    gmRect box;
    box.extend({farthest(-1.0, 2, 0), farthest(-1.0, 4, 1)});
    box.extend({farthest(1.0, 2, 0), farthest(1.0, 4, 1)});
    return box;
}

/// The direction that a vertex is scored along. Along an axis the coordinate is compared as it is: the product with a
/// cosine of 6e-17 would blur it.
gmVector<2> scoredDirection(const gmRadian& angle) {
    const gmVector<2> direction(1.0, angle);
    for (const gmVector<2>& axis :
         {gmVector<2>(1.0, 0.0), gmVector<2>(-1.0, 0.0), gmVector<2>(0.0, 1.0), gmVector<2>(0.0, -1.0)})
        if (gfRealEq(direction, axis, detail::sameValue))
            return axis;
    return direction;
}

/// Vertex by vertex: what is not a number takes no part.
long extremalOfEach(const std::vector<gmVector<2>>& points, const gmVector<2>& direction) {
    double best = std::numeric_limits<double>::lowest();
    long index = -1;
    for (std::size_t i = 0; i < points.size(); ++i) {
        // The other coordinate of an axis may be infinite, and its product with 0 no number.
        const double score = direction.x() == 0.0   ? direction.y() * points[i].y()
                             : direction.y() == 0.0 ? direction.x() * points[i].x()
                                                    : direction.dot(points[i]);
        if (score > best) {
            best = score;
            index = static_cast<long>(i);
        }
    }
    return index;
}

}  // namespace

gmRect gmContour::computeBox(const gmXform<2>& xform) const {
    const bool isIdentity = gfRealEq(xform, gmXform<2>::I, detail::sameValue);
    const detail::Extent& extent = caches_.edgeIndex.extent(points_);
    if (!extent.isTame || !isTame(xform))
        return boxOfEach(points_, xform, isIdentity);
    gmRect box;
    if (isIdentity) {
        box.extend(extent.low);
        box.extend(extent.high);
    } else {
        detail::Runs runs(points_, isClosed());
        box = boxOfExtremes(xform, treeForOne(), runs);
    }
    // Of zeros, the first has the sign that counts.
    const auto hasZero = [](const gmVector<2>& corner) { return corner.x() == 0.0 || corner.y() == 0.0; };
    return hasZero(box.lower()) || hasZero(box.upper()) ? boxOfEach(points_, xform, isIdentity) : box;
}

gmRect gmContour::encloseRect(const gmXform<2>& xform) const {
    checkHasVertex();
    detail::RectCache& cache = caches_.encloseRect;
    const bool knewIdentity = cache.identity() != nullptr;
    const gmRect box = cache.get(xform, cachedVectorSize_, [&] { return computeBox(xform); });
    const bool knowsIdentity = cache.identity() != nullptr;
    if (knewIdentity != knowsIdentity && (knewIdentity || xform != gmXform<2>::I))
        noteIfShared();
    return box;
}

const gmRect& gmContour::identityBox() const {
    if (!caches_.encloseRect.identity())
        encloseRect(gmXform<2>::I);
    return *caches_.encloseRect.identity();
}

gmCircle gmContour::encloseCircle(gmContourDefs::DiameterMode mode) const {
    const auto index = static_cast<unsigned>(mode);
    if (index >= caches_.encloseCircle.size())
        throw gmContourDefs::BadParams("diameterMode is not one of the valid enums");
    if (mode == gmContourDefs::eFromFirstVertex)
        checkHasVertex();
    return caches_.encloseCircle[index].get([&](gmCircle& circle) {
        if (mode == gmContourDefs::eFromFirstVertex) {
            circle = gmCircle(points_.front(), detail::largestDistanceFromFirst(points_));
            return;
        }
        const detail::EdgeTree* const tree = caches_.edgeIndex.forMany(points_, isClosed());
        const detail::VertexPair pair = detail::farthestPair(points_, isClosed(), tree);
        const bool isApart = pair.distance > 0.0;
        circle =
            isApart ? gmCircle(0.5 * (points_[pair.first] + points_[pair.second]), 0.5 * pair.distance) : gmCircle();
    });
}

double gmContour::diameter(gmContourDefs::DiameterMode mode) const {
    return 2.0 * encloseCircle(mode).radius();
}

long gmContour::computeExtremalVertex(const gmRadian& angle) const {
    const gmVector<2> direction = scoredDirection(angle);
    if (!std::isfinite(angle.value()) || !caches_.edgeIndex.extent(points_).isTame)
        return extremalOfEach(points_, direction);
    detail::Extreme question(direction.x(), direction.y(), 0.0);
    detail::Runs runs(points_, isClosed());
    askLeastFirst(treeForOne(), runs, question);
    return static_cast<long>(question.index());
}

long gmContour::extremalVertexIndex(const gmRadian& angle) const {
    checkHasVertex();
    if (std::isnan(angle.value()))
        return computeExtremalVertex(angle);
    if (const long* known = caches_.extremalVertexIndex.find(angle.value()))
        return *known;
    const long index = computeExtremalVertex(angle);
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
        region.setPoints(vertices);
    }));
}

void gmContour::fitEllipse(gmEllipse& ellipse, double& residual) const {
    checkHasVertex();
    const detail::EllipseFit& fit =
        caches_.fitEllipse.get([&](detail::EllipseFit& slot) { gf_FitEllipse(points_, slot.ellipse, slot.residual); });
    ellipse = fit.ellipse;
    residual = fit.residual;
}
