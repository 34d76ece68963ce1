// Boost.Geometry on the nearest place and on containment: its R-tree, packed when it is made.
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/function_output_iterator.hpp>

#include "bench/peers/boost.h"

namespace peers::with_boost {
namespace {

namespace bgi = boost::geometry::index;

template <class Value>
using Tree = bgi::rtree<Value, bgi::quadratic<16>>;
using EdgeTree = Tree<Edge>;
using BoxTree = Tree<std::pair<Box, std::size_t>>;

template <class Value>
Value nearest(const Tree<Value>& tree, const Vertex& to) {
    Value found;
    tree.query(bgi::nearest(to, 1), &found);
    return found;
}

Contestant place(const Points& shape, const Points& questions) {
    return repeatedPlace(questions,
                         [tree = EdgeTree(edges(shape)), at = vertices(questions), &questions](std::size_t i) {
                             return nearestOn(nearest(tree, pick(at, i)), pick(questions, i));
                         });
}

/// One pass over the edges, as without a tree.
Contestant coldPlace(const Inputs& in) {
    const auto shape = std::make_shared<const std::vector<Edge>>(edges(in.outline));
    const auto find = [shape, at = vertices(in.questions), &in](std::size_t i) {
        const Edge* best = nullptr;
        double least = std::numeric_limits<double>::infinity();
        for (const Edge& edge : *shape)
            if (const double square = bg::comparable_distance(pick(at, i), edge); square < least) {
                least = square;
                best = &edge;
            }
        return nearestOn(*best, pick(in.questions, i));
    };
    return keepsNothing(
        in,
        [find](std::size_t i) {
            const Point found = find(i);
            return found.x() + found.y();
        },
        [find, &in](std::size_t i) { return find(i).distance(pick(in.questions, i)); });
}

Contestant freshEight(const Inputs& in) {
    return keepsNothing(in, [shape = edges(in.outline), at = vertices(in.questions), &in](std::size_t i) {
        const EdgeTree tree(shape);
        double all = 0.0;
        for (std::size_t j = i; j < i + 8; ++j) {
            const Point found = nearestOn(nearest(tree, pick(at, j)), pick(in.questions, j));
            all += found.x() + found.y();
        }
        return all;
    });
}

Contestant closestVertex(const Inputs& in) {
    return repeatedPlace(in.questions,
                         [tree = Tree<Vertex>(vertices(in.outline)), at = vertices(in.questions)](std::size_t i) {
                             const Vertex found = nearest(tree, pick(at, i));
                             return Point(found.x(), found.y());
                         });
}

Contestant within(const Inputs& in) {
    return repeated([tree = Tree<Vertex>(vertices(in.outline)), at = vertices(in.nearVertices), &in](std::size_t i) {
        const Vertex& centre = pick(at, i);
        const Box box(Vertex(centre.x() - in.tolerance, centre.y() - in.tolerance),
                      Vertex(centre.x() + in.tolerance, centre.y() + in.tolerance));
        std::vector<Vertex> found;
        const auto near = [&](const Vertex& vertex) {
            return bg::comparable_distance(vertex, centre) < in.tolerance * in.tolerance;
        };
        tree.query(bgi::intersects(box) && bgi::satisfies(near), std::back_inserter(found));
        return found.size();
    });
}

/// Where the edges are in a tree, those that a ray to the right meets tell. The tree has every edge of the outlines.
class Rays {
  public:
    explicit Rays(const std::vector<Points>& outlines) {
        std::vector<Edge> all;
        for (const Points& outline : outlines) {
            addEdges(outline, all);
            for (const Point& point : outline)
                right_ = std::max(right_, point.x() + 1.0);
        }
        tree_ = EdgeTree(all);
    }

    bool hold(const Vertex& point) const {
        bool odd = false;
        const auto cross = [&](const Edge& edge) {
            const bool above = edge.first.y() > point.y();
            if (above == (edge.second.y() > point.y()))
                return;
            const double side = (edge.second.x() - edge.first.x()) * (point.y() - edge.first.y()) -
                                (point.x() - edge.first.x()) * (edge.second.y() - edge.first.y());
            if ((side < 0.0) == above)
                odd = !odd;
        };
        const Box ray(point, Vertex(std::max(right_, point.x()), point.y()));
        tree_.query(bgi::intersects(ray), boost::make_function_output_iterator(cross));
        return odd;
    }

  private:
    double right_ = 0.0;
    EdgeTree tree_;
};

Contestant rays(const Points& questions, std::vector<Points> outlines) {
    return repeated(
        [tree = Rays(outlines), at = vertices(questions)](std::size_t i) { return tree.hold(pick(at, i)); });
}

std::vector<Points> together(Points outline, const std::vector<Points>& holes) {
    std::vector<Points> all{std::move(outline)};
    all.insert(all.end(), holes.begin(), holes.end());
    return all;
}

Contestant coldInside(const Inputs& in, const std::vector<Points>& holes) {
    return keepsNothing(in, [shape = polygon(in.outline, holes), at = vertices(in.questions)](std::size_t i) {
        return bg::within(pick(at, i), shape);
    });
}

Contestant setInside(const Points& questions, const std::vector<Points>& shapes) {
    std::vector<Ring> rings;
    std::vector<std::pair<Box, std::size_t>> boxes;
    for (const Points& shape : shapes) {
        rings.push_back(ring(shape));
        boxes.emplace_back(bg::return_envelope<Box>(rings.back()), boxes.size());
    }
    return repeated([tree = BoxTree(boxes), rings = std::move(rings), at = vertices(questions)](std::size_t i) {
        const Vertex& point = pick(at, i);
        for (auto found = tree.qbegin(bgi::contains(point)); found != tree.qend(); ++found)
            if (bg::within(point, rings[found->second]))
                return true;
        return false;
    });
}

Contestant setDistance(const Points& questions, const std::vector<Points>& shapes) {
    std::vector<Edge> all;
    for (const Points& shape : shapes)
        addEdges(shape, all);
    return repeated([tree = EdgeTree(all), at = vertices(questions)](std::size_t i) {
        const Vertex& point = pick(at, i);
        return bg::distance(point, nearest(tree, point));
    });
}

const Entry entries[] = {
    {Row::closestPoint, "Boost R-tree of edges", [](const Inputs& in) { return place(in.outline, in.questions); }},
    {Row::closestPointTraced, "Boost R-tree of edges",
     [](const Inputs& in) { return place(in.traced, in.tracedQuestions); }},
    {Row::closestPointCold, "Boost comparable_distance", coldPlace},
    {Row::freshEight, "Boost R-tree of edges", freshEight},
    {Row::closestVertex, "Boost R-tree of vertices", closestVertex},
    {Row::verticesWithin, "Boost R-tree of vertices", within},
    {Row::inside, "Boost R-tree of edges", [](const Inputs& in) { return rays(in.questions, {in.outline}); }},
    {Row::inside, "Boost within",
     [](const Inputs& in) {
         return repeated([shape = ring(in.outline), at = vertices(in.questions)](std::size_t i) {
             return bg::within(pick(at, i), shape);
         });
     }},
    {Row::insideCold, "Boost within", [](const Inputs& in) { return coldInside(in, {}); }},
    {Row::insideHoles, "Boost R-tree of edges",
     [](const Inputs& in) { return rays(in.questions, together(in.outline, in.holes)); }},
    {Row::insideHolesCold, "Boost within", [](const Inputs& in) { return coldInside(in, in.holes); }},
    {Row::setInside, "Boost R-tree of boxes",
     [](const Inputs& in) { return setInside(in.manyRegions().questions, in.manyRegions().inOrder); }},
    {Row::setInsideShuffled, "Boost R-tree of boxes",
     [](const Inputs& in) { return setInside(in.manyRegions().questions, in.manyRegions().shuffled); }},
    {Row::setDistance, "Boost R-tree of edges",
     [](const Inputs& in) { return setDistance(in.manyRegions().questions, in.manyRegions().inOrder); }},
    {Row::setDistanceShuffled, "Boost R-tree of edges",
     [](const Inputs& in) { return setDistance(in.manyRegions().questions, in.manyRegions().shuffled); }},
};

}  // namespace
}  // namespace peers::with_boost
