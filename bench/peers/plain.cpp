// The loops that anybody would write himself, where they are what a library has to beat.
#include <cmath>

#include "bench/peers/contest.h"

namespace peers {
namespace {

std::size_t extremal(const Points& points, double angle) {
    const Point direction(std::cos(angle), std::sin(angle));
    std::size_t best = 0;
    double farthest = direction.dot(points[0]);
    for (std::size_t i = 1; i < points.size(); ++i)
        if (const double along = direction.dot(points[i]); along > farthest) {
            farthest = along;
            best = i;
        }
    return best;
}

double box(const Points& points, const gmXform<2>& xform) {
    const Point first = xform * points[0];
    double left = first.x();
    double right = left;
    double low = first.y();
    double high = low;
    for (const Point& point : points) {
        const Point mapped = xform * point;
        left = std::min(left, mapped.x());
        right = std::max(right, mapped.x());
        low = std::min(low, mapped.y());
        high = std::max(high, mapped.y());
    }
    return digest({left, low}, {right, high});
}

const Entry entries[] = {
    {Row::farthestVertex, "plain loop",
     [](const Inputs& in) {
         return keepsNothing(in, [&in](std::size_t) {
             double square = 0.0;
             for (const Point& point : in.outline) {
                 const Point away = point - in.outline[0];
                 square = std::max(square, away.dot(away));
             }
             return std::sqrt(square);
         });
     }},
    {Row::extremalVertex, "plain loop",
     [](const Inputs& in) {
         return repeated([&in](std::size_t i) { return extremal(in.outline, pick(in.angles, i)); });
     }},
    {Row::rectangle, "plain loop",
     [](const Inputs& in) {
         return repeated([&in](std::size_t i) { return box(in.outline, pick(in.transforms, i)); });
     }},
};

}  // namespace
}  // namespace peers
