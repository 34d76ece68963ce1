#pragma once

#include <cmath>
#include <limits>

#include "foundation/fit/circlefit.h"
#include "foundation/fit/ellipsefit.h"
#include "foundation/math/realeq.h"
#include "foundation/math/xform.h"
#include "foundation/object/exception.h"
#include "foundation/shapes/circle.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/rect.h"
#include "tests/reference/outline.h"

namespace reference {

/// The box of the mapped vertices. One vertex at least.
inline gmRect encloseRect(const Outline& outline, const gmXform<2>& xform) {
    const gmVector<2> zero(0.0, 0.0);
    if (gfRealEq(xform, gmXform<2>(), 1e-15)) {
        gmRect box(outline.points[0], zero);
        for (std::size_t i = 1; i < outline.points.size(); i++)
            box = box.enclose(gmRect(outline.points[i], zero));
        return box;
    }
    gmRect box(xform * outline.points[0], zero);
    for (std::size_t i = 1; i < outline.points.size(); i++)
        box = box.enclose(gmRect(xform * outline.points[i], zero));
    return box;
}

inline gmCircle circleOfFarthestPair(const Outline& outline) {
    gmCircle circle;
    double best = 0.0;
    for (std::size_t i = 0; i < outline.points.size(); i++)
        for (std::size_t j = 0; j < outline.points.size(); j++) {
            const double d = outline.points[i].distance(outline.points[j]);
            if (d > best) {
                best = d;
                circle = gmCircle(0.5 * (outline.points[i] + outline.points[j]), 0.5 * d);
            }
        }
    return circle;
}

/// One vertex at least.
inline gmCircle circleFromFirstVertex(const Outline& outline) {
    double r = 0.0;
    for (std::size_t i = 1; i < outline.points.size(); i++) {
        const double d = outline.points[0].distance(outline.points[i]);
        if (d > r)
            r = d;
    }
    return gmCircle(outline.points[0], r);
}

inline long extremalVertexIndex(const Outline& outline, const gmRadian& angle) {
    const double c = std::cos(angle.value());
    const double s = std::sin(angle.value());
    const gmVector<2> u(c, s);
    double best = -std::numeric_limits<double>::max();
    long index = -1;
    for (std::size_t i = 0; i < outline.points.size(); i++) {
        const double x = outline.points[i].x();
        const double y = outline.points[i].y();
        double score;
        if (gfRealEq(u, gmVector<2>(1.0, 0.0), 1e-15))
            score = x;
        else if (gfRealEq(u, gmVector<2>(-1.0, 0.0), 1e-15))
            score = -x;
        else if (gfRealEq(u, gmVector<2>(0.0, 1.0), 1e-15))
            score = y;
        else if (gfRealEq(u, gmVector<2>(0.0, -1.0), 1e-15))
            score = -y;
        else
            score = c * x + s * y;
        if (score > best) {
            best = score;
            index = static_cast<long>(i);
        }
    }
    return index;
}

struct FittedEllipse {
    gmEllipse ellipse;
    double residual = 0.0;
};

inline FittedEllipse fitEllipse(const Points& points) {
    const double infinity = std::numeric_limits<double>::infinity();
    try {
        gmEllipseFitResults results;
        gfEllipseFit(gmEllipseFitParams(gmEllipseFitDefs::fit_mode(0), gmRadian(0.0), 0, infinity), points, results);
        return {results.ellipse(), results.residual()};
    } catch (gmException&) {
        try {
            gmCircleFitResults results;
            gfCircleFit(gmCircleFitParams(gmCircleFitDefs::fit_mode(0), 1.0, 0, infinity), points, results);
            return {gmEllipse(results.circle()), results.residual()};
        } catch (gmException&) {
            return {gmEllipse(), -1.0};
        }
    }
}

}  // namespace reference
