#pragma once

#include <climits>
#include <cstddef>
#include <opencv2/core.hpp>
#include <string>
#include <type_traits>
#include <vector>

#include "cntr/contour.h"
#include "cntr/region.h"
#include "cntr/regionptr.h"
#include "interop/common.h"

/// Points, contours and hierarchies of OpenCV, and the shapes of this library.
///
/// Header-only: what includes it links with the contour library and with opencv_core. It is tested with OpenCV 4.6.
///
/// **Points** are `cv::Point_<T>` of any number type, or a `cv::Mat` of points: N x 1 or 1 x N with two channels, or
/// N x 2 with one, of any depth. Points with three coordinates are none.
///
/// **Units.** Coordinates go over as they are: whole numbers are the centres of pixels. So an outline that
/// `cv::findContours` traced runs through the outermost pixels, and encloses half a pixel less on each side than these
/// cover; a hole encloses half a pixel more, since its outline runs through the pixels around it.
///
/// **Direction.** A contour keeps the order of the points. The outline of a region is made to run counter-clockwise
/// with y up (clockwise on a screen, where y grows down); its first point stays the first. `cv::findContours` traces
/// outer outlines the other way, and the second moments of such outlines are not to be relied on (see
/// gf_InertiaDataPolygon). Which way an outline runs is told by the sign of its area, see gnInterop.
///
/// **Errors.** What one side does not hold is refused with gmContourDefs::BadParams, see gnInterop; arguments are as
/// they were then.
///
///     std::vector<std::vector<cv::Point>> contours;
///     std::vector<cv::Vec4i> hierarchy;
///     cv::findContours(picture, contours, hierarchy, cv::RETR_TREE, cv::CHAIN_APPROX_NONE);
///     const gmRegionSet parts(gnOpenCv::regionsFrom(contours, hierarchy));
///     double material = parts.area(true);
namespace gnOpenCv {

namespace detail {

namespace common = gnInterop::detail;
using Vertices = std::vector<gmVector<2>>;

/// Throws: gmContourDefs::BadParams where OpenCV's indices end.
inline int indexFrom(std::size_t index) {
    if (index > static_cast<std::size_t>(INT_MAX))
        common::refuse("", "more than OpenCV counts: " + std::to_string(index));
    return static_cast<int>(index);
}

template <class T>
Vertices verticesFrom(const std::vector<cv::Point_<T>>& points, const std::string& outline) {
    Vertices vertices;
    vertices.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto element = [&] { return common::within(outline, common::numbered("point", i)); };
        vertices.emplace_back(common::coordinateFrom(points[i].x, "x", element),
                              common::coordinateFrom(points[i].y, "y", element));
    }
    return vertices;
}

/// `T` is a number that a double holds.
template <class T>
Vertices verticesOfDepth(const cv::Mat& points) {
    const bool isRow = points.channels() == 2 && points.cols != 1;
    const int count = points.empty() ? 0 : isRow ? points.cols : points.rows;
    Vertices vertices;
    vertices.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const T* const at = isRow ? points.ptr<T>(0) + 2 * static_cast<std::ptrdiff_t>(i) : points.ptr<T>(i);
        vertices.emplace_back(static_cast<double>(at[0]), static_cast<double>(at[1]));
    }
    return vertices;
}

inline Vertices verticesFrom(const cv::Mat& points, const std::string& outline) {
    const bool isList =
        points.dims <= 2 && ((points.channels() == 2 && (points.empty() || points.rows == 1 || points.cols == 1)) ||
                             (points.channels() == 1 && (points.empty() || points.cols == 2)));
    if (!isList) {
        const std::string size = points.dims <= 2
                                     ? std::to_string(points.rows) + " x " + std::to_string(points.cols) + " elements"
                                     : std::to_string(points.dims) + " dimensions";
        common::refuse(outline, "a matrix of " + size + " with " + std::to_string(points.channels()) +
                                    " channels is no list of points in the plane");
    }
    switch (points.depth()) {
        case CV_8U:
            return verticesOfDepth<unsigned char>(points);
        case CV_8S:
            return verticesOfDepth<signed char>(points);
        case CV_16U:
            return verticesOfDepth<unsigned short>(points);
        case CV_16S:
            return verticesOfDepth<short>(points);
        case CV_32S:
            return verticesOfDepth<int>(points);
        case CV_32F:
            return verticesOfDepth<float>(points);
        case CV_64F:
            return verticesOfDepth<double>(points);
        case CV_16F:
            return verticesOfDepth<cv::float16_t>(points);
        default:
            common::refuse(outline, "a matrix of an unknown depth");
    }
}

template <class Point>
std::vector<Point> pointsFrom(const gmContour& contour, gnInterop::Rounding rounding, const std::string& region,
                              const common::Path& path) {
    using Number = typename Point::value_type;
    static_assert(std::is_same_v<Point, cv::Point_<Number>>, "points of the plane: cv::Point, cv::Point2f, ...");
    const Vertices& vertices = contour.points();
    std::vector<Point> points;
    points.reserve(vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const auto element = [&] { return common::within(common::named(region, path), common::numbered("point", i)); };
        points.emplace_back(common::coordinateTo<Number>(vertices[i].x(), "x", rounding, element),
                            common::coordinateTo<Number>(vertices[i].y(), "y", rounding, element));
    }
    return points;
}

template <class Number>
cv::Mat matOfDepth(const gmContour& contour, gnInterop::Rounding rounding) {
    const std::vector<cv::Point_<Number>> points = pointsFrom<cv::Point_<Number>>(contour, rounding, "", {});
    cv::Mat mat(indexFrom(points.size()), 1, CV_MAKETYPE(cv::DataType<Number>::depth, 2));
    for (int i = 0; i < mat.rows; ++i) {
        const cv::Point_<Number>& point = points[static_cast<std::size_t>(i)];
        mat.ptr<Number>(i)[0] = point.x;
        mat.ptr<Number>(i)[1] = point.y;
    }
    return mat;
}

/// The places in an entry of a hierarchy.
enum Link : int { eNext = 0, ePrevious = 1, eFirstChild = 2, eParent = 3 };

/// How many outlines lie around each contour.
/// Throws: gmContourDefs::BadParams for a hierarchy that is not one of that many contours.
inline std::vector<int> levels(std::size_t count, const std::vector<cv::Vec4i>& hierarchy) {
    if (hierarchy.size() != count)
        common::refuse("hierarchy",
                       std::to_string(hierarchy.size()) + " entries for " + std::to_string(count) + " contours");
    static constexpr const char* names[] = {"next", "previous", "first child", "parent"};
    const auto entry = [&](int i) -> const cv::Vec4i& { return hierarchy[static_cast<std::size_t>(i)]; };
    const int end = indexFrom(count);
    for (int i = 0; i < end; ++i)
        for (const Link link : {eNext, ePrevious, eFirstChild, eParent}) {
            const int other = entry(i)[link];
            const auto complain = [&](const std::string& why) {
                common::refuse(common::numbered("contour", static_cast<std::size_t>(i)),
                               std::string(names[link]) + " is " + std::to_string(other) + ", " + why);
            };
            if (other < -1 || other >= end)
                complain("which is none of " + std::to_string(count) + " contours");
            if (other == -1)
                continue;
            const cv::Vec4i& there = entry(other);
            if ((link == eNext && (there[ePrevious] != i || there[eParent] != entry(i)[eParent])) ||
                (link == ePrevious && there[eNext] != i) ||
                (link == eFirstChild && (there[eParent] != i || there[ePrevious] != -1)))
                complain("which does not lead back");
        }

    std::vector<int> level(count, -1);
    std::vector<int> chains;
    for (int i = 0; i < end; ++i)
        if (entry(i)[eParent] == -1 && entry(i)[ePrevious] == -1)
            chains.push_back(i);
    while (!chains.empty()) {
        int i = chains.back();
        chains.pop_back();
        const int parent = entry(i)[eParent];
        for (; i != -1; i = entry(i)[eNext]) {
            level[static_cast<std::size_t>(i)] = parent == -1 ? 0 : level[static_cast<std::size_t>(parent)] + 1;
            if (entry(i)[eFirstChild] != -1)
                chains.push_back(entry(i)[eFirstChild]);
        }
    }
    for (std::size_t i = 0; i < count; ++i)
        if (level[i] == -1)
            common::refuse(common::numbered("contour", i), "the hierarchy runs in a circle or does not lead to it");
    return level;
}

}  // namespace detail

/// The contour of these points, in their order. OpenCV does not say whether a list of points is closed: the caller
/// does. NaN and infinities go over as they are.
/// Throws: gmContourDefs::BadParams for a 64-bit coordinate with more digits than a double, and "label does not fit in
/// 32 bits".
/// Cost: O(n).
template <class T>
gmContour contourFrom(const std::vector<cv::Point_<T>>& points, bool closed, unsigned long label = 0) {
    return gmContour(detail::verticesFrom(points, ""), closed, label);
}

/// The same for a matrix of points; one without elements gives no vertices.
/// Throws: gmContourDefs::BadParams also for a matrix that is no list of points, of 3-D points for example.
inline gmContour contourFrom(const cv::Mat& points, bool closed, unsigned long label = 0) {
    return gmContour(detail::verticesFrom(points, ""), closed, label);
}

/// The region inside these points, a list or a matrix of them.
/// Throws: what contourFrom() does.
/// Cost: O(n).
template <class Points>
gmRegion regionFrom(const Points& points) {
    detail::Vertices vertices = detail::verticesFrom(points, "");
    gnInterop::detail::turn(vertices);
    return gmRegion(vertices);
}

/// The regions in the result of `cv::findContours`: one for every outline at an even level of the hierarchy, with the
/// outlines directly in it as its holes. What lies in a hole is a region of its own. `contours` holds lists or matrices
/// of points.
///
/// Order: that of the contours. A region's or a hole's label is the index of its contour.
///
/// The hierarchy is that of RETR_TREE or RETR_CCOMP, which give the same regions in another order; of RETR_EXTERNAL,
/// which has no holes; or of RETR_LIST, which does not tell what is a hole: every outline becomes a region.
///
/// **Holes that touch.** Where the material around a hole is one pixel wide, or hangs together by a corner, the
/// outlines of hole and region have points in common, and a region cannot hold such a hole. It is refused; or with
/// `leftOut` it is left out, and the index of its contour added there.
///
/// Outlines of one or two points, as of single pixels, are kept: most queries take them, the measures do not.
///
/// Throws: gmContourDefs::BadParams for a hierarchy of another size, with an index that is out of range, with links
/// that do not lead back, or that runs in a circle; for a hole that has a point in common with its region's outline;
/// for a hole in a contour without points; and what contourFrom() does.
/// Cost: O(n) in points, and that of gmRegion::holes.
template <class Points>
std::vector<RegionCPtr> regionsFrom(const std::vector<Points>& contours, const std::vector<cv::Vec4i>& hierarchy,
                                    std::vector<int>* leftOut = nullptr) {
    namespace common = gnInterop::detail;
    const std::vector<int> level = detail::levels(contours.size(), hierarchy);
    const auto outline = [&](std::size_t i) {
        detail::Vertices vertices = detail::verticesFrom(contours[i], common::numbered("contour", i));
        common::turn(vertices);
        gmPtrHandle<gmRegion> region(new gmRegion(vertices));
        region->label(i);
        return region;
    };
    std::vector<RegionCPtr> regions;
    std::vector<int> touching;
    for (std::size_t i = 0; i < contours.size(); ++i) {
        if (level[i] % 2 != 0)
            continue;
        const gmPtrHandle<gmRegion> region = outline(i);
        std::vector<RegionCPtr> holes;
        std::vector<int> indices;
        for (int hole = hierarchy[i][detail::eFirstChild]; hole != -1;
             hole = hierarchy[static_cast<std::size_t>(hole)][detail::eNext]) {
            holes.push_back(outline(static_cast<std::size_t>(hole)));
            indices.push_back(hole);
        }
        if (!holes.empty() && region->points().empty())
            common::refuse(common::numbered("contour", i), "has a hole and no points");
        common::setHoles(*region, holes, [&](std::size_t hole) {
            if (!leftOut)
                common::refuse(
                    common::numbered("contour", static_cast<std::size_t>(indices[hole])),
                    "a hole that has a point in common with the outline around it, " + common::numbered("contour", i));
            touching.push_back(indices[hole]);
        });
        regions.push_back(region);
    }
    if (leftOut)
        leftOut->insert(leftOut->end(), touching.begin(), touching.end());
    return regions;
}

/// The vertices of a contour, or of the outline of a region, as `Point`: cv::Point, cv::Point2f, cv::Point2d or any
/// other cv::Point_. Whether the contour is closed is not in them: OpenCV's functions ask for it.
/// Throws: gmContourDefs::BadParams for a coordinate that is not exactly one of `Point`, unless `rounding` says so; and
/// for one that is out of range, or NaN where there is none.
/// Cost: O(n).
template <class Point = cv::Point>
std::vector<Point> pointsFrom(const gmContour& contour, gnInterop::Rounding rounding = gnInterop::eExact) {
    return detail::pointsFrom<Point>(contour, rounding, "", {});
}

/// The same as a matrix, N x 1 with two channels of the depth: CV_8U, CV_8S, CV_16U, CV_16S, CV_32S, CV_32F or CV_64F.
/// Throws: gmContourDefs::BadParams also for another depth.
inline cv::Mat matFrom(const gmContour& contour, int depth, gnInterop::Rounding rounding = gnInterop::eExact) {
    switch (depth) {
        case CV_8U:
            return detail::matOfDepth<unsigned char>(contour, rounding);
        case CV_8S:
            return detail::matOfDepth<signed char>(contour, rounding);
        case CV_16U:
            return detail::matOfDepth<unsigned short>(contour, rounding);
        case CV_16S:
            return detail::matOfDepth<short>(contour, rounding);
        case CV_32S:
            return detail::matOfDepth<int>(contour, rounding);
        case CV_32F:
            return detail::matOfDepth<float>(contour, rounding);
        case CV_64F:
            return detail::matOfDepth<double>(contour, rounding);
        default:
            gnInterop::detail::refuse("depth " + std::to_string(depth), "no matrix of points is made of it");
    }
}

/// The outlines of the regions and of their holes, of the holes of these and so on, with the hierarchy that
/// `cv::findContours` has for RETR_TREE: `cv::drawContours` with both, filled, draws the regions with their holes.
///
/// Order: the regions', each outline before what is in it. One that is in the list or among the holes more than once
/// comes as often. Of a gmRegionSet give `set.regions()`.
///
/// Throws: gmContourDefs::BadParams as pointsFrom() does, naming "region 2, hole 0, point 17", for holes that hold each
/// other in a circle, and for more than gnInterop::mostRepeats outlines that come again; gmBadPointer for an empty
/// handle. `hierarchy` is as it was then.
/// Cost: O(n) in points, with outlines that come again counted as often as they come.
template <class Point = cv::Point>
std::vector<std::vector<Point>> contoursFrom(const std::vector<RegionCPtr>& regions, std::vector<cv::Vec4i>& hierarchy,
                                             gnInterop::Rounding rounding = gnInterop::eExact) {
    namespace common = gnInterop::detail;
    std::vector<std::vector<Point>> contours;
    std::vector<cv::Vec4i> links;
    std::vector<int> last{-1};  // the contour made last, a level
    common::Nesting nesting;
    for (std::size_t i = 0; i < regions.size(); ++i) {
        const std::string name = common::numbered("region", i);
        nesting.visit(*regions[i], name, [&](const gmRegion& outline, const common::Path& path) {
            const int index = detail::indexFrom(contours.size());
            contours.push_back(detail::pointsFrom<Point>(outline, rounding, name, path));
            const std::size_t level = path.size();
            const int previous = last[level];
            const int parent = level == 0 ? -1 : last[level - 1];
            links.emplace_back(-1, previous, -1, parent);
            if (previous != -1)
                links[static_cast<std::size_t>(previous)][detail::eNext] = index;
            else if (parent != -1)
                links[static_cast<std::size_t>(parent)][detail::eFirstChild] = index;
            last[level] = index;
            last.resize(level + 1);
            last.push_back(-1);
        });
    }
    hierarchy.swap(links);
    return contours;
}

}  // namespace gnOpenCv
