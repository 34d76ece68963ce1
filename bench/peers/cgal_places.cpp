// CGAL's AABB tree, which knows space only: the plane is where z is 0. And its tree of points.
#include <CGAL/AABB_segment_primitive.h>
#include <CGAL/AABB_traits.h>
#include <CGAL/AABB_tree.h>
#include <CGAL/Fuzzy_sphere.h>
#include <CGAL/Orthogonal_k_neighbor_search.h>
#include <CGAL/Search_traits_2.h>
#include <CGAL/intersections.h>

#include "bench/peers/cgal.h"

namespace peers::with_cgal {
namespace {

template <class Kernel>
class EdgeTree {
  public:
    using Spot = typename Kernel::Point_3;
    using Edge = typename Kernel::Segment_3;
    using Flat = typename Kernel::Segment_2;

    explicit EdgeTree(const std::vector<Points>& outlines) {
        for (const Points& outline : outlines)
            for (const Flat& edge : edges<Kernel>(outline)) {
                edges_.push_back(flat(edge));
                right_ = std::max(right_, edge.source().x() + 1.0);
            }
        build();
    }
    explicit EdgeTree(std::vector<Edge> of) : edges_(std::move(of)) { build(); }
    EdgeTree(const EdgeTree&) = delete;
    EdgeTree& operator=(const EdgeTree&) = delete;

    static Spot spot(const Point& point) { return {point.x(), point.y(), 0.0}; }
    static Edge flat(const Flat& edge) {
        return {Spot(edge.source().x(), edge.source().y(), 0.0), Spot(edge.target().x(), edge.target().y(), 0.0)};
    }
    static std::vector<Spot> spots(const Points& points) {
        std::vector<Spot> made;
        for (const Point& point : points)
            made.push_back(spot(point));
        return made;
    }

    Point nearest(const Spot& to) const {
        const Spot found = tree_.closest_point(to);
        return {found.x(), found.y()};
    }
    /// Where the segment crosses.
    std::vector<typename Kernel::Point_2> crossings(const Flat& segment) {
        found_.clear();
        tree_.all_intersected_primitives(flat(segment), std::back_inserter(found_));
        std::vector<typename Kernel::Point_2> places;
        for (const auto& edge : found_) {
            const Flat other({edge->source().x(), edge->source().y()}, {edge->target().x(), edge->target().y()});
            if (const auto met = CGAL::intersection(segment, other))
                if (const auto* place = boost::get<typename Kernel::Point_2>(&*met))
                    places.push_back(*place);
        }
        return places;
    }
    /// By the parity of what a ray to the right crosses: a little askew, so that it passes between the vertices.
    bool holds(const Spot& point) const {
        const Edge ray(point, Spot(right_ + 1.0, point.y() + 0.123456789, 0.0));
        return tree_.number_of_intersected_primitives(ray) % 2 == 1;
    }

  private:
    using Iterator = typename std::vector<Edge>::const_iterator;
    using Tree = CGAL::AABB_tree<CGAL::AABB_traits<Kernel, CGAL::AABB_segment_primitive<Kernel, Iterator>>>;

    void build() {
        tree_.insert(edges_.cbegin(), edges_.cend());
        tree_.build();
    }

    double right_ = 0.0;
    std::vector<Edge> edges_;
    Tree tree_;
    std::vector<Iterator> found_;
};

template <class Kernel>
auto keep(const std::vector<Points>& outlines) {
    return std::make_shared<EdgeTree<Kernel>>(outlines);
}

template <class Kernel>
Contestant place(const Points& shape, const Points& questions) {
    return repeatedPlace(questions, [tree = keep<Kernel>({shape}), at = EdgeTree<Kernel>::spots(questions)](
                                        std::size_t i) { return tree->nearest(pick(at, i)); });
}

template <class Kernel>
Contestant freshEight(const Inputs& in) {
    using Tree = EdgeTree<Kernel>;
    std::vector<typename Tree::Edge> all;
    for (const auto& edge : edges<Kernel>(in.outline))
        all.push_back(Tree::flat(edge));
    return keepsNothing(in, [all, at = Tree::spots(in.questions)](std::size_t i) {
        const Tree tree(all);
        double sum = 0.0;
        for (std::size_t j = i; j < i + 8; ++j) {
            const Point found = tree.nearest(pick(at, j));
            sum += found.x() + found.y();
        }
        return sum;
    });
}

template <class Kernel>
Contestant inside(const Points& questions, const std::vector<Points>& outlines) {
    return repeated([tree = keep<Kernel>(outlines), at = EdgeTree<Kernel>::spots(questions)](std::size_t i) {
        return tree->holds(pick(at, i));
    });
}

template <class Kernel>
Contestant crossings(const Points& shape, const std::vector<Segment>& segments) {
    return repeated([tree = keep<Kernel>({shape}), queries = edges<Kernel>(segments)](std::size_t i) {
        return tree->crossings(pick(queries, i)).size();
    });
}

template <class Kernel>
Contestant contours(const Inputs& in) {
    return keepsNothing(in, [others = edges<Kernel>(in.other), &in](std::size_t) {
        EdgeTree<Kernel> tree(std::vector<Points>{in.outline});
        std::size_t count = 0;
        for (const auto& edge : others)
            count += tree.crossings(edge).size();
        return count;
    });
}

template <class Kernel>
Contestant distance(const Points& questions, const std::vector<Points>& outlines) {
    return repeated([tree = keep<Kernel>(outlines), at = EdgeTree<Kernel>::spots(questions),
                     &questions](std::size_t i) { return tree->nearest(pick(at, i)).distance(pick(questions, i)); });
}

template <class Kernel>
struct VertexTree {
    using Traits = CGAL::Search_traits_2<Kernel>;
    using Nearest = CGAL::Orthogonal_k_neighbor_search<Traits>;
    using Circle = CGAL::Fuzzy_sphere<Traits>;

    explicit VertexTree(const Points& points) {
        for (const Point& point : points)
            tree.insert(vertex<Kernel>(point));
        tree.build();
    }

    typename Nearest::Tree tree;
};

template <class Kernel>
Contestant closestVertex(const Inputs& in) {
    return repeatedPlace(in.questions, [kept = std::make_shared<VertexTree<Kernel>>(in.outline),
                                        at = vertices<Kernel>(in.questions)](std::size_t i) {
        const typename VertexTree<Kernel>::Nearest search(kept->tree, pick(at, i), 1);
        const typename Kernel::Point_2 found = search.begin()->first;
        return Point(found.x(), found.y());
    });
}

template <class Kernel>
Contestant within(const Inputs& in) {
    return repeated([kept = std::make_shared<VertexTree<Kernel>>(in.outline), at = vertices<Kernel>(in.nearVertices),
                     found = std::vector<typename Kernel::Point_2>(), &in](std::size_t i) mutable {
        found.clear();
        kept->tree.search(std::back_inserter(found), typename VertexTree<Kernel>::Circle(pick(at, i), in.tolerance));
        return found.size();
    });
}

std::vector<Points> withHoles(const Inputs& in) {
    std::vector<Points> all{in.outline};
    all.insert(all.end(), in.holes.begin(), in.holes.end());
    return all;
}

template <class Kernel>
std::vector<Entry> entries() {
    const std::string aabb = called<Kernel>("AABB tree");
    const std::string points = called<Kernel>("Kd_tree");
    return {
        {Row::closestPoint, aabb, [](const Inputs& in) { return place<Kernel>(in.outline, in.questions); }},
        {Row::closestPointTraced, aabb, [](const Inputs& in) { return place<Kernel>(in.traced, in.tracedQuestions); }},
        {Row::freshEight, aabb, freshEight<Kernel>},
        {Row::closestVertex, points, closestVertex<Kernel>},
        {Row::verticesWithin, points, within<Kernel>},
        {Row::inside, aabb, [](const Inputs& in) { return inside<Kernel>(in.questions, {in.outline}); }},
        {Row::insideHoles, aabb, [](const Inputs& in) { return inside<Kernel>(in.questions, withHoles(in)); }},
        {Row::longCrossings, aabb, [](const Inputs& in) { return crossings<Kernel>(in.outline, in.longSegments); }},
        {Row::longCrossingsTraced, aabb,
         [](const Inputs& in) { return crossings<Kernel>(in.traced, in.tracedSegments); }},
        {Row::shortCrossings, aabb, [](const Inputs& in) { return crossings<Kernel>(in.outline, in.shortSegments); }},
        {Row::contourCrossings, aabb, contours<Kernel>},
        {Row::setInside, aabb,
         [](const Inputs& in) { return inside<Kernel>(in.manyRegions().questions, in.manyRegions().inOrder); }},
        {Row::setInsideShuffled, aabb,
         [](const Inputs& in) { return inside<Kernel>(in.manyRegions().questions, in.manyRegions().shuffled); }},
        {Row::setDistance, aabb,
         [](const Inputs& in) { return distance<Kernel>(in.manyRegions().questions, in.manyRegions().inOrder); }},
        {Row::setDistanceShuffled, aabb,
         [](const Inputs& in) { return distance<Kernel>(in.manyRegions().questions, in.manyRegions().shuffled); }},
    };
}

const std::vector<Entry> inexact = entries<Inexact>();
const std::vector<Entry> exact = entries<Exact>();

}  // namespace
}  // namespace peers::with_cgal
