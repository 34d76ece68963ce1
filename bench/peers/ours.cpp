// This library, asked through its public interface.
#include "bench/peers/ours.h"
#include "cntr/region.h"

namespace peers {
namespace {

gmContour closed(const Points& points) {
    return gmContour(points, true);
}

double sum(const Point& point) {
    return point.x() + point.y();
}

Contestant place(const Points& shape, const Points& questions, bool vertexOnly) {
    return repeatedPlace(questions, [contour = closed(shape), &questions, vertexOnly](std::size_t i) {
        return contour.closestPoint(pick(questions, i), vertexOnly);
    });
}

Contestant crossings(const Points& shape, const std::vector<Segment>& segments) {
    return repeated([contour = closed(shape), &segments](std::size_t i) {
        const Segment& segment = pick(segments, i);
        return contour.intersections(gmLineSeg(segment.from, segment.to), true).size();
    });
}

Contestant hull(const Inputs& inputs, const Points& shape) {
    const auto out = std::make_shared<gmRegion>();
    return coldShape(
        inputs, closed(shape),
        [out](const gmContour& contour, std::size_t) {
            contour.convexHull(*out);
            return out->points().size();
        },
        [out](const gmContour& contour, std::size_t) {
            contour.convexHull(*out);
            return out->area(false);
        });
}

Contestant selfIntersecting(const Inputs& inputs, const Points& shape) {
    return coldShape(inputs, closed(shape),
                     [](const gmContour& contour, std::size_t) { return contour.isSelfIntersecting(); });
}

const Entry entries[] = {
    {Row::closestPoint, ours, [](const Inputs& in) { return place(in.outline, in.questions, false); }},
    {Row::closestPointTraced, ours, [](const Inputs& in) { return place(in.traced, in.tracedQuestions, false); }},
    {Row::closestVertex, ours, [](const Inputs& in) { return place(in.outline, in.questions, true); }},
    {Row::closestPointCold, ours,
     [](const Inputs& in) {
         return coldShape(
             in, closed(in.outline),
             [&in](const gmContour& c, std::size_t i) { return sum(c.closestPoint(pick(in.questions, i), false)); },
             [&in](const gmContour& c, std::size_t i) {
                 return c.closestPoint(pick(in.questions, i), false).distance(pick(in.questions, i));
             });
     }},
    {Row::freshEight, ours,
     [](const Inputs& in) {
         return coldShape(in, closed(in.outline), [&in](const gmContour& c, std::size_t i) {
             double all = 0.0;
             for (std::size_t j = i; j < i + 8; ++j)
                 all += sum(c.closestPoint(pick(in.questions, j), false));
             return all;
         });
     }},
    {Row::verticesWithin, ours,
     [](const Inputs& in) {
         return repeated([contour = closed(in.outline), &in](std::size_t i) {
             return contour.vertexIndex(pick(in.nearVertices, i), in.tolerance).size();
         });
     }},
    {Row::longCrossings, ours, [](const Inputs& in) { return crossings(in.outline, in.longSegments); }},
    {Row::longCrossingsTraced, ours, [](const Inputs& in) { return crossings(in.traced, in.tracedSegments); }},
    {Row::shortCrossings, ours, [](const Inputs& in) { return crossings(in.outline, in.shortSegments); }},
    {Row::crossingsCold, ours,
     [](const Inputs& in) {
         return coldShape(in, closed(in.outline), [&in](const gmContour& c, std::size_t i) {
             const Segment& segment = pick(in.longSegments, i);
             return c.intersections(gmLineSeg(segment.from, segment.to), true).size();
         });
     }},
    {Row::contourCrossings, ours,
     [](const Inputs& in) {
         // Both are unasked; of a herd, each meets its own.
         const auto others = std::make_shared<Herd<gmContour>>(in, closed(in.other));
         const auto herd = std::make_shared<Herd<gmContour>>(in, closed(in.outline));
         return cold(
             in,
             [herd, others](std::size_t k) {
                 herd->reset(k);
                 others->reset(k);
             },
             [herd, others](std::size_t k, std::size_t) { return (*herd)[k].intersections((*others)[k]).size(); });
     }},
    {Row::selfIntersectingNo, ours, [](const Inputs& in) { return selfIntersecting(in, in.outline); }},
    {Row::selfIntersectingYes, ours, [](const Inputs& in) { return selfIntersecting(in, in.knotted); }},
    {Row::farthestPair, ours,
     [](const Inputs& in) {
         return coldShape(in, closed(in.outline),
                          [](const gmContour& c, std::size_t) { return c.diameter(gmContourDefs::eMaxVertexPair); });
     }},
    {Row::farthestVertex, ours,
     [](const Inputs& in) {
         return coldShape(in, closed(in.outline), [](const gmContour& c, std::size_t) {
             return 0.5 * c.diameter(gmContourDefs::eFromFirstVertex);
         });
     }},
    {Row::extremalVertex, ours,
     [](const Inputs& in) {
         return repeated([contour = closed(in.outline), &in](std::size_t i) {
             return contour.extremalVertexIndex(gmRadian(pick(in.angles, i)));
         });
     }},
    {Row::rectangle, ours,
     [](const Inputs& in) {
         return repeated([contour = closed(in.outline), &in](std::size_t i) {
             const gmRect box = contour.encloseRect(pick(in.transforms, i));
             return digest(box.lower(), box.upper());
         });
     }},
    {Row::hull, ours, [](const Inputs& in) { return hull(in, in.outline); }},
    {Row::hullTraced, ours, [](const Inputs& in) { return hull(in, in.traced); }},
    {Row::length, ours,
     [](const Inputs& in) {
         return coldShape(in, closed(in.outline), [](const gmContour& c, std::size_t) { return c.length(); });
     }},
    {Row::map, ours,
     [](const Inputs& in) {
         return keepsNothing(in, [contour = closed(in.outline), out = gmContour(), &in](std::size_t i) mutable {
             contour.map(pick(in.transforms, i), out);
             return sum(out.points().back());
         });
     }},
    {Row::ellipse, ours,
     [](const Inputs& in) {
         return coldShape(in, closed(in.ellipse), [](const gmContour& c, std::size_t) {
             gmEllipse ellipse;
             double residual = 0.0;
             c.fitEllipse(ellipse, residual);
             return sum(ellipse.center()) + ellipse.xRadius() + ellipse.yRadius();
         });
     }},
};

}  // namespace
}  // namespace peers
