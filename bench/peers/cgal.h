// What the entries of CGAL have in common. Its kernels are asked both: plain doubles, and predicates that are never
// wrong.
#pragma once

#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Simple_cartesian.h>

#include <string>
#include <vector>

#include "bench/peers/contest.h"

namespace peers::with_cgal {

using Inexact = CGAL::Simple_cartesian<double>;
using Exact = CGAL::Exact_predicates_inexact_constructions_kernel;

template <class Kernel>
std::string called(const char* what) {
    return std::string("CGAL ") + what + (std::is_same_v<Kernel, Inexact> ? "" : ", exact predicates");
}

template <class Kernel>
typename Kernel::Point_2 vertex(const Point& point) {
    return {point.x(), point.y()};
}

template <class Kernel>
std::vector<typename Kernel::Point_2> vertices(const Points& points) {
    std::vector<typename Kernel::Point_2> made;
    for (const Point& point : points)
        made.push_back(vertex<Kernel>(point));
    return made;
}

template <class Kernel>
std::vector<typename Kernel::Segment_2> edges(const Points& points) {
    std::vector<typename Kernel::Segment_2> made;
    for (std::size_t i = 0, last = points.size() - 1; i < points.size(); last = i++)
        made.emplace_back(vertex<Kernel>(points[last]), vertex<Kernel>(points[i]));
    return made;
}

template <class Kernel>
std::vector<typename Kernel::Segment_2> edges(const std::vector<Segment>& segments) {
    std::vector<typename Kernel::Segment_2> made;
    for (const Segment& segment : segments)
        made.emplace_back(vertex<Kernel>(segment.from), vertex<Kernel>(segment.to));
    return made;
}

}  // namespace peers::with_cgal
