// OpenCV. Most of its functions of shapes take single precision at best; which is why some rows compare loosely.
#include <cmath>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "bench/peers/contest.h"

namespace peers {
namespace {

using Floats = std::vector<cv::Point2f>;

/// One thread, as everybody else has.
const bool alone = (cv::setNumThreads(1), true);

Floats floats(const Points& points) {
    Floats made;
    for (const Point& point : points)
        made.emplace_back(static_cast<float>(point.x()), static_cast<float>(point.y()));
    return made;
}

cv::Mat doubles(const Points& points) {
    cv::Mat made(static_cast<int>(points.size()), 1, CV_64FC2);
    for (int i = 0; i < made.rows; ++i)
        made.at<cv::Vec2d>(i) = {points[static_cast<std::size_t>(i)].x(), points[static_cast<std::size_t>(i)].y()};
    return made;
}

std::vector<cv::Matx23d> matrices(const std::vector<gmXform<2>>& xforms) {
    std::vector<cv::Matx23d> made;
    for (const gmXform<2>& xform : xforms) {
        const gmMatrix<2> m = xform.matrix();
        made.emplace_back(m(0, 0), m(0, 1), xform.translation().x(), m(1, 0), m(1, 1), xform.translation().y());
    }
    return made;
}

bool holds(const Floats& outline, const std::vector<Floats>& holes, const cv::Point2f& point) {
    if (cv::pointPolygonTest(outline, point, false) <= 0.0)
        return false;
    for (const Floats& hole : holes)
        if (cv::pointPolygonTest(hole, point, false) >= 0.0)
            return false;
    return true;
}

Contestant inside(const Inputs& in, const std::vector<Points>& holes, bool isCold) {
    std::vector<Floats> inner;
    for (const Points& hole : holes)
        inner.push_back(floats(hole));
    const auto ask = [outline = floats(in.outline), inner, points = floats(in.questions)](std::size_t i) {
        return holds(outline, inner, pick(points, i));
    };
    return isCold ? keepsNothing(in, ask) : repeated(ask);
}

Contestant hull(const Inputs& in, const Points& shape) {
    const auto vertices = std::make_shared<const Floats>(floats(shape));
    const auto out = std::make_shared<Floats>();
    return keepsNothing(
        in,
        [vertices, out](std::size_t) {
            cv::convexHull(*vertices, *out);
            return out->size();
        },
        [vertices, out](std::size_t) {
            cv::convexHull(*vertices, *out);
            return 0.5 * twiceArea(
                             *out, [](const cv::Point2f& p) { return static_cast<double>(p.x); },
                             [](const cv::Point2f& p) { return static_cast<double>(p.y); });
        });
}

/// boundingRect answers in whole pixels, so that the least and greatest are taken in double precision instead.
Contestant rectangle(const Inputs& in, const Points& points) {
    return repeated([points = doubles(points), matrices = matrices(in.transforms), mapped = cv::Mat(),
                     least = cv::Mat(), greatest = cv::Mat()](std::size_t i) mutable {
        cv::transform(points, mapped, pick(matrices, i));
        cv::reduce(mapped, least, 0, cv::REDUCE_MIN);
        cv::reduce(mapped, greatest, 0, cv::REDUCE_MAX);
        const auto& low = least.at<cv::Vec2d>(0);
        const auto& high = greatest.at<cv::Vec2d>(0);
        return digest({low[0], low[1]}, {high[0], high[1]});
    });
}

Points hullOf(const Points& points) {
    std::vector<int> indices;
    cv::convexHull(floats(points), indices);
    Points made;
    for (const int i : indices)
        made.push_back(points[static_cast<std::size_t>(i)]);
    return made;
}

double sizes(const cv::RotatedRect& ellipse) {
    return static_cast<double>(ellipse.center.x) + static_cast<double>(ellipse.center.y) +
           0.5 * static_cast<double>(ellipse.size.width) + 0.5 * static_cast<double>(ellipse.size.height);
}

const Entry entries[] = {
    {Row::inside, "OpenCV pointPolygonTest", [](const Inputs& in) { return inside(in, {}, false); }},
    {Row::insideCold, "OpenCV pointPolygonTest", [](const Inputs& in) { return inside(in, {}, true); }},
    {Row::insideHoles, "OpenCV pointPolygonTest", [](const Inputs& in) { return inside(in, in.holes, false); }},
    {Row::insideHolesCold, "OpenCV pointPolygonTest", [](const Inputs& in) { return inside(in, in.holes, true); }},
    {Row::rectangle, "OpenCV transform and reduce", [](const Inputs& in) { return rectangle(in, in.outline); }},
    {Row::rectangle, "OpenCV transform and reduce of the hull",
     [](const Inputs& in) { return rectangle(in, hullOf(in.outline)); }},
    {Row::hull, "OpenCV convexHull", [](const Inputs& in) { return hull(in, in.outline); }},
    {Row::hullTraced, "OpenCV convexHull", [](const Inputs& in) { return hull(in, in.traced); }},
    {Row::length, "OpenCV arcLength",
     [](const Inputs& in) {
         return keepsNothing(in, [outline = floats(in.outline)](std::size_t) { return cv::arcLength(outline, true); });
     }},
    {Row::area, "OpenCV contourArea",
     [](const Inputs& in) {
         return keepsNothing(in, [outline = floats(in.outline)](std::size_t) { return cv::contourArea(outline); });
     }},
    {Row::map, "OpenCV transform",
     [](const Inputs& in) {
         return keepsNothing(in, [points = doubles(in.outline), matrices = matrices(in.transforms),
                                  mapped = cv::Mat()](std::size_t i) mutable {
             cv::transform(points, mapped, pick(matrices, i));
             const auto& last = mapped.at<cv::Vec2d>(mapped.rows - 1);
             return last[0] + last[1];
         });
     }},
    {Row::centre, "OpenCV moments",
     [](const Inputs& in) {
         return keepsNothing(in, [outline = floats(in.outline)](std::size_t) {
             const cv::Moments moments = cv::moments(outline);
             return (moments.m10 + moments.m01) / moments.m00;
         });
     }},
    {Row::moments, "OpenCV moments",
     [](const Inputs& in) {
         return keepsNothing(in, [outline = floats(in.outline)](std::size_t) {
             const cv::Moments moments = cv::moments(outline);
             return moments.mu20 + moments.mu11 + moments.mu02;
         });
     }},
    {Row::ellipse, "OpenCV fitEllipse",
     [](const Inputs& in) {
         return keepsNothing(in, [points = floats(in.ellipse)](std::size_t) { return sizes(cv::fitEllipse(points)); });
     }},
    {Row::ellipse, "OpenCV fitEllipseDirect",
     [](const Inputs& in) {
         return keepsNothing(
             in, [points = floats(in.ellipse)](std::size_t) { return sizes(cv::fitEllipseDirect(points)); });
     }},
    {Row::ellipse, "OpenCV fitEllipseAMS",
     [](const Inputs& in) {
         return keepsNothing(in,
                             [points = floats(in.ellipse)](std::size_t) { return sizes(cv::fitEllipseAMS(points)); });
     }},
    {Row::setRectangle, "OpenCV transform and reduce",
     [](const Inputs& in) {
         Points all;
         for (const Points& shape : in.manyRegions().inOrder)
             all.insert(all.end(), shape.begin(), shape.end());
         return rectangle(in, all);
     }},
    {Row::setRectangle, "OpenCV transform and reduce of the hull",
     [](const Inputs& in) {
         Points all;
         for (const Points& shape : in.manyRegions().inOrder)
             all.insert(all.end(), shape.begin(), shape.end());
         return rectangle(in, hullOf(all));
     }},
};

}  // namespace
}  // namespace peers
