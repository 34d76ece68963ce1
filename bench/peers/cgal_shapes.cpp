// CGAL on polygons, hulls and pairs of edges.
#include <CGAL/Aff_transformation_2.h>
#include <CGAL/Polygon_2.h>
#include <CGAL/all_furthest_neighbors_2.h>
#include <CGAL/box_intersection_d.h>
#include <CGAL/ch_akl_toussaint.h>
#include <CGAL/ch_graham_andrew.h>
#include <CGAL/ch_melkman.h>
#include <CGAL/convex_hull_2.h>
#include <CGAL/intersections.h>

#include "bench/peers/cgal.h"

namespace peers::with_cgal {
namespace {

template <class Kernel>
using Vertices = std::vector<typename Kernel::Point_2>;
template <class Kernel>
using Polygon = CGAL::Polygon_2<Kernel>;

template <class Kernel>
Polygon<Kernel> polygon(const Points& points) {
    const Vertices<Kernel> made = vertices<Kernel>(points);
    return Polygon<Kernel>(made.begin(), made.end());
}

template <class Kernel>
Contestant inside(const Inputs& in, const std::vector<Points>& holes, bool isCold) {
    std::vector<Polygon<Kernel>> inner;
    for (const Points& hole : holes)
        inner.push_back(polygon<Kernel>(hole));
    const auto ask = [outline = polygon<Kernel>(in.outline), inner,
                      at = vertices<Kernel>(in.questions)](std::size_t i) {
        const auto& point = pick(at, i);
        if (!outline.has_on_bounded_side(point))
            return false;
        return std::none_of(inner.begin(), inner.end(),
                            [&](const Polygon<Kernel>& hole) { return hole.has_on_bounded_side(point); });
    };
    return isCold ? keepsNothing(in, ask) : repeated(ask);
}

template <class Kernel>
std::size_t meet(const typename Kernel::Segment_2& a, const typename Kernel::Segment_2& b, Vertices<Kernel>& places) {
    if (const auto met = CGAL::intersection(a, b))
        if (const auto* place = boost::get<typename Kernel::Point_2>(&*met))
            places.push_back(*place);
    return places.size();
}

template <class Kernel>
Contestant crossings(const Inputs& in) {
    return keepsNothing(in, [all = edges<Kernel>(in.outline), queries = edges<Kernel>(in.longSegments)](std::size_t i) {
        Vertices<Kernel> places;
        for (const auto& edge : all)
            meet<Kernel>(pick(queries, i), edge, places);
        return places.size();
    });
}

template <class Kernel>
Contestant contours(const Inputs& in) {
    using Edge = typename Kernel::Segment_2;
    using Box = CGAL::Box_intersection_d::Box_with_info_d<double, 2, const Edge*>;
    return keepsNothing(in, [a = edges<Kernel>(in.outline), b = edges<Kernel>(in.other)](std::size_t) {
        const auto boxes = [](const std::vector<Edge>& of) {
            std::vector<Box> made;
            made.reserve(of.size());
            for (const Edge& edge : of)
                made.emplace_back(edge.bbox(), &edge);
            return made;
        };
        std::vector<Box> first = boxes(a);
        std::vector<Box> second = boxes(b);
        Vertices<Kernel> places;
        CGAL::box_intersection_d(first.begin(), first.end(), second.begin(), second.end(),
                                 [&](const Box& x, const Box& y) { meet<Kernel>(*x.info(), *y.info(), places); });
        return places.size();
    });
}

template <class Kernel>
Contestant selfIntersecting(const Inputs& in, const Points& shape) {
    return keepsNothing(in, [shape = polygon<Kernel>(shape)](std::size_t) { return !shape.is_simple(); });
}

/// How one of CGAL's hulls is asked.
template <class Kernel, class Make>
Contestant hull(const Inputs& in, const Points& shape, Make make) {
    const auto made = std::make_shared<const Vertices<Kernel>>(vertices<Kernel>(shape));
    return keepsNothing(
        in,
        [made, make](std::size_t) {
            Vertices<Kernel> out;
            make(*made, std::back_inserter(out));
            return out.size();
        },
        [made, make](std::size_t) {
            Vertices<Kernel> out;
            make(*made, std::back_inserter(out));
            return 0.5 * twiceArea(
                             out, [](const auto& p) { return p.x(); }, [](const auto& p) { return p.y(); });
        });
}

/// Among the vertices of a convex polygon each has its farthest; which all_furthest_neighbors_2 finds.
template <class Kernel, bool simple>
Contestant farthestPair(const Inputs& in) {
    return keepsNothing(in, [all = vertices<Kernel>(in.outline)](std::size_t) {
        Vertices<Kernel> hull;
        if constexpr (simple)
            CGAL::ch_melkman(all.begin(), all.end(), std::back_inserter(hull));
        else
            CGAL::ch_akl_toussaint(all.begin(), all.end(), std::back_inserter(hull));
        std::vector<std::size_t> farthest;
        CGAL::all_furthest_neighbors_2(hull.begin(), hull.end(), std::back_inserter(farthest));
        double square = 0.0;
        for (std::size_t i = 0; i < hull.size(); ++i)
            square = std::max(square, CGAL::squared_distance(hull[i], hull[farthest[i]]));
        return std::sqrt(square);
    });
}

template <class Kernel>
Contestant map(const Inputs& in) {
    using Xform = CGAL::Aff_transformation_2<Kernel>;
    std::vector<Xform> xforms;
    for (const gmXform<2>& xform : in.transforms) {
        const gmMatrix<2> m = xform.matrix();
        xforms.emplace_back(m(0, 0), m(0, 1), xform.translation().x(), m(1, 0), m(1, 1), xform.translation().y());
    }
    return keepsNothing(in,
                        [all = vertices<Kernel>(in.outline), xforms, out = Vertices<Kernel>()](std::size_t i) mutable {
                            out.clear();
                            std::transform(all.begin(), all.end(), std::back_inserter(out), pick(xforms, i));
                            return out.back().x() + out.back().y();
                        });
}

template <class Kernel>
std::vector<Entry> entries() {
    const std::string side = called<Kernel>("Polygon_2");
    const auto akl = [](const auto& from, auto out) { CGAL::ch_akl_toussaint(from.begin(), from.end(), out); };
    const auto graham = [](const auto& from, auto out) { CGAL::ch_graham_andrew(from.begin(), from.end(), out); };
    const auto melkman = [](const auto& from, auto out) { CGAL::ch_melkman(from.begin(), from.end(), out); };
    std::vector<Entry> all{
        {Row::inside, side, [](const Inputs& in) { return inside<Kernel>(in, {}, false); }},
        {Row::insideCold, side, [](const Inputs& in) { return inside<Kernel>(in, {}, true); }},
        {Row::insideHoles, side, [](const Inputs& in) { return inside<Kernel>(in, in.holes, false); }},
        {Row::insideHolesCold, side, [](const Inputs& in) { return inside<Kernel>(in, in.holes, true); }},
        {Row::crossingsCold, called<Kernel>("intersection"), crossings<Kernel>},
        {Row::contourCrossings, called<Kernel>("box_intersection_d"), contours<Kernel>},
        {Row::selfIntersectingNo, side, [](const Inputs& in) { return selfIntersecting<Kernel>(in, in.outline); }},
        {Row::selfIntersectingYes, side, [](const Inputs& in) { return selfIntersecting<Kernel>(in, in.knotted); }},
        {Row::farthestPair, called<Kernel>("ch_akl_toussaint and all_furthest_neighbors_2"),
         farthestPair<Kernel, false>},
        {Row::farthestPair, called<Kernel>("ch_melkman and all_furthest_neighbors_2"), farthestPair<Kernel, true>},
        {Row::area, side,
         [](const Inputs& in) {
             return keepsNothing(in, [shape = polygon<Kernel>(in.outline)](std::size_t) {
                 return std::abs(CGAL::to_double(shape.area()));
             });
         }},
        {Row::map, called<Kernel>("Aff_transformation_2"), map<Kernel>},
    };
    const auto enterHulls = [&](Row row, Points Inputs::*shape) {
        const auto enter = [&](const char* name, auto make) {
            all.emplace_back(row, called<Kernel>(name),
                             [shape, make](const Inputs& in) { return hull<Kernel>(in, in.*shape, make); });
        };
        enter("ch_akl_toussaint", akl);
        enter("ch_graham_andrew", graham);
        enter("ch_melkman", melkman);
    };
    enterHulls(Row::hull, &Inputs::outline);
    enterHulls(Row::hullTraced, &Inputs::traced);
    return all;
}

const std::vector<Entry> inexact = entries<Inexact>();
const std::vector<Entry> exact = entries<Exact>();

}  // namespace
}  // namespace peers::with_cgal
