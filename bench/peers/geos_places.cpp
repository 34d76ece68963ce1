// GEOS on the nearest place and on containment.
#include <geos/algorithm/PointLocation.h>
#include <geos/algorithm/locate/IndexedPointInAreaLocator.h>
#include <geos/algorithm/locate/SimplePointInAreaLocator.h>
#include <geos/geom/LineSegment.h>
#include <geos/geom/Location.h>
#include <geos/geom/prep/PreparedGeometry.h>
#include <geos/geom/prep/PreparedGeometryFactory.h>
#include <geos/index/kdtree/KdTree.h>
#include <geos/index/strtree/TemplateSTRtree.h>
#include <geos/operation/distance/DistanceOp.h>
#include <geos/operation/distance/IndexedFacetDistance.h>

#include "bench/peers/geos.h"

namespace peers::with_geos {
namespace {

using geos::algorithm::locate::IndexedPointInAreaLocator;
using geos::algorithm::locate::SimplePointInAreaLocator;
using geos::geom::LineSegment;
using geos::geom::prep::PreparedGeometry;
using geos::geom::prep::PreparedGeometryFactory;
using geos::operation::distance::DistanceOp;
using geos::operation::distance::IndexedFacetDistance;

Point point(const Coordinate& coordinate) {
    return {coordinate.x, coordinate.y};
}

/// A shape in one of GEOS's structures, which all refer to it.
template <class Structure>
struct Kept {
    explicit Kept(Shape of) : shape(std::move(of)), structure(make()) {}
    std::unique_ptr<Structure> make() const {
        if constexpr (std::is_same_v<Structure, IndexedFacetDistance>)
            return std::make_unique<Structure>(shape.get());
        else
            return std::make_unique<Structure>(*shape);
    }

    Shape shape;
    std::unique_ptr<Structure> structure;
};

struct Prepared {
    explicit Prepared(Shape of) : shape(std::move(of)), structure(PreparedGeometryFactory::prepare(shape.get())) {}

    Shape shape;
    std::unique_ptr<PreparedGeometry> structure;
};

/// Edges in a tree, asked for the one nearest to a point.
class EdgeTree {
  public:
    explicit EdgeTree(const Points& points) : points_(coordinates(points)), tree_(10, points.size()) {
        for (std::size_t i = 0, last = points_.size() - 1; i < points_.size(); last = i++)
            edges_.emplace_back(points_[last], points_[i]);
        for (const LineSegment& edge : edges_)
            tree_.insert(geos::geom::Envelope(edge.p0, edge.p1), &edge);
    }

    Coordinate nearest(const Coordinate& to) {
        const LineSegment query(to, to);
        const LineSegment* edge = tree_.nearestNeighbour(geos::geom::Envelope(to), &query, distance_);
        Coordinate place;
        edge->closestPoint(to, place);
        return place;
    }

  private:
    struct Distance {
        // A point comes as an edge of length 0.
        double operator()(const LineSegment* a, const LineSegment* b) const {
            return a->p0 == a->p1 ? b->distance(a->p0) : a->distance(b->p0);
        }
    };

    std::vector<Coordinate> points_;
    std::vector<LineSegment> edges_;
    geos::index::strtree::TemplateSTRtree<const LineSegment*> tree_;
    Distance distance_;
};

class VertexTree {
  public:
    explicit VertexTree(const Points& points) : points_(coordinates(points)), tree_(10, points.size()) {
        for (const Coordinate& vertex : points_)
            tree_.insert(geos::geom::Envelope(vertex), &vertex);
    }
    Coordinate nearest(const Coordinate& to) {
        return *tree_.nearestNeighbour(geos::geom::Envelope(to), &to, distance_);
    }

  private:
    struct Distance {
        double operator()(const Coordinate* a, const Coordinate* b) const { return a->distance(*b); }
    };

    std::vector<Coordinate> points_;
    geos::index::strtree::TemplateSTRtree<const Coordinate*> tree_;
    Distance distance_;
};

Contestant facetPlace(const Points& shape, const Points& questions) {
    return repeatedPlace(questions, [kept = std::make_shared<Kept<IndexedFacetDistance>>(ring(shape)),
                                     points = pointGeometries(questions)](std::size_t i) {
        return point(kept->structure->nearestPoints(pick(points, i).get()).front());
    });
}

template <class Tree>
Contestant treePlace(const Points& shape, const Points& questions) {
    return repeatedPlace(questions, [tree = std::make_shared<Tree>(shape), at = coordinates(questions)](std::size_t i) {
        return point(tree->nearest(pick(at, i)));
    });
}

/// IndexedFacetDistance would be built for one question only.
Contestant coldPlace(const Inputs& in) {
    const auto shape = std::shared_ptr<const Geometry>(ring(in.outline));
    const auto points =
        std::make_shared<std::vector<std::shared_ptr<const geos::geom::Point>>>(pointGeometries(in.questions));
    const auto find = [shape, points](std::size_t i) {
        DistanceOp op(shape.get(), pick(*points, i).get());
        return point(op.nearestPoints()->getAt(0));
    };
    return keepsNothing(
        in,
        [find](std::size_t i) {
            const Point place = find(i);
            return place.x() + place.y();
        },
        [find, &in](std::size_t i) { return find(i).distance(pick(in.questions, i)); });
}

Contestant freshEight(const Inputs& in) {
    return keepsNothing(in, [shape = Shape(ring(in.outline)), points = pointGeometries(in.questions)](std::size_t i) {
        const IndexedFacetDistance structure(shape.get());
        double all = 0.0;
        for (std::size_t j = i; j < i + 8; ++j) {
            const Point place = point(structure.nearestPoints(pick(points, j).get()).front());
            all += place.x() + place.y();
        }
        return all;
    });
}

Contestant within(const Inputs& in) {
    const auto tree = std::make_shared<geos::index::kdtree::KdTree>();
    for (const Point& vertex : in.outline)
        tree->insert(coordinate(vertex));
    std::vector<geos::index::kdtree::KdNode*> found;
    return repeated([tree, found, &in](std::size_t i) mutable {
        const Coordinate at = coordinate(pick(in.nearVertices, i));
        geos::geom::Envelope box(at);
        box.expandBy(in.tolerance);
        found.clear();
        tree->query(box, found);
        std::size_t count = 0;
        for (geos::index::kdtree::KdNode* node : found)
            if (node->getCoordinate().distance(at) < in.tolerance)
                ++count;
        return count;
    });
}

Contestant indexedInside(Shape shape, const Points& questions) {
    return repeated([kept = std::make_shared<Kept<IndexedPointInAreaLocator>>(std::move(shape)),
                     at = coordinates(questions)](std::size_t i) {
        return kept->structure->locate(&pick(at, i)) == geos::geom::Location::INTERIOR;
    });
}

Contestant preparedInside(Shape shape, const Points& questions) {
    return repeated([kept = std::make_shared<Prepared>(std::move(shape)), points = pointGeometries(questions)](
                        std::size_t i) { return kept->structure->contains(pick(points, i).get()); });
}

Contestant coldInside(const Inputs& in, Shape shape) {
    return keepsNothing(in, [shape = std::move(shape), at = coordinates(in.questions)](std::size_t i) {
        return SimplePointInAreaLocator::locate(pick(at, i), shape.get()) == geos::geom::Location::INTERIOR;
    });
}

/// The boxes of prepared polygons in a tree.
class PolygonTree {
  public:
    explicit PolygonTree(const std::vector<Points>& shapes) : tree_(10, shapes.size()) {
        for (const Points& shape : shapes)
            polygons_.emplace_back(polygon(shape));
        for (const Prepared& prepared : polygons_) {
            tree_.insert(*prepared.shape->getEnvelopeInternal(), &prepared);
            // It is prepared when it is first asked.
            prepared.structure->contains(prepared.shape->getInteriorPoint().get());
        }
    }

    bool holds(const geos::geom::Point& point) {
        bool held = false;
        tree_.query(*point.getEnvelopeInternal(), [&](const Prepared* polygon) {
            held = polygon->structure->contains(&point);
            return !held;
        });
        return held;
    }

  private:
    std::vector<Prepared> polygons_;
    geos::index::strtree::TemplateSTRtree<const Prepared*> tree_;
};

Contestant setInside(const Points& questions, const std::vector<Points>& shapes) {
    return repeated([tree = std::make_shared<PolygonTree>(shapes), points = pointGeometries(questions)](std::size_t i) {
        return tree->holds(*pick(points, i));
    });
}

Contestant setDistance(const Points& questions, const std::vector<Points>& shapes) {
    return repeated([kept = std::make_shared<Kept<IndexedFacetDistance>>(multiPolygon(shapes)->getBoundary()),
                     points = pointGeometries(questions)](std::size_t i) {
        return kept->structure->distance(pick(points, i).get());
    });
}

const Entry entries[] = {
    {Row::closestPoint, "GEOS IndexedFacetDistance",
     [](const Inputs& in) { return facetPlace(in.outline, in.questions); }},
    {Row::closestPoint, "GEOS TemplateSTRtree of edges",
     [](const Inputs& in) { return treePlace<EdgeTree>(in.outline, in.questions); }},
    {Row::closestPointTraced, "GEOS IndexedFacetDistance",
     [](const Inputs& in) { return facetPlace(in.traced, in.tracedQuestions); }},
    {Row::closestPointTraced, "GEOS TemplateSTRtree of edges",
     [](const Inputs& in) { return treePlace<EdgeTree>(in.traced, in.tracedQuestions); }},
    {Row::closestPointCold, "GEOS DistanceOp", coldPlace},
    {Row::freshEight, "GEOS IndexedFacetDistance", freshEight},
    {Row::closestVertex, "GEOS TemplateSTRtree of vertices",
     [](const Inputs& in) { return treePlace<VertexTree>(in.outline, in.questions); }},
    {Row::verticesWithin, "GEOS KdTree", within},
    {Row::inside, "GEOS IndexedPointInAreaLocator",
     [](const Inputs& in) { return indexedInside(polygon(in.outline), in.questions); }},
    {Row::inside, "GEOS prepared polygon",
     [](const Inputs& in) { return preparedInside(polygon(in.outline), in.questions); }},
    {Row::insideCold, "GEOS SimplePointInAreaLocator",
     [](const Inputs& in) { return coldInside(in, polygon(in.outline)); }},
    {Row::insideHoles, "GEOS IndexedPointInAreaLocator",
     [](const Inputs& in) { return indexedInside(polygon(in.outline, in.holes), in.questions); }},
    {Row::insideHoles, "GEOS prepared polygon",
     [](const Inputs& in) { return preparedInside(polygon(in.outline, in.holes), in.questions); }},
    {Row::insideHolesCold, "GEOS SimplePointInAreaLocator",
     [](const Inputs& in) { return coldInside(in, polygon(in.outline, in.holes)); }},
    {Row::setInside, "GEOS TemplateSTRtree of prepared polygons",
     [](const Inputs& in) { return setInside(in.manyRegions().questions, in.manyRegions().inOrder); }},
    {Row::setInside, "GEOS IndexedPointInAreaLocator of all",
     [](const Inputs& in) {
         return indexedInside(multiPolygon(in.manyRegions().inOrder), in.manyRegions().questions);
     }},
    {Row::setInsideShuffled, "GEOS TemplateSTRtree of prepared polygons",
     [](const Inputs& in) { return setInside(in.manyRegions().questions, in.manyRegions().shuffled); }},
    {Row::setInsideShuffled, "GEOS IndexedPointInAreaLocator of all",
     [](const Inputs& in) {
         return indexedInside(multiPolygon(in.manyRegions().shuffled), in.manyRegions().questions);
     }},
    {Row::setDistance, "GEOS IndexedFacetDistance of all",
     [](const Inputs& in) { return setDistance(in.manyRegions().questions, in.manyRegions().inOrder); }},
    {Row::setDistanceShuffled, "GEOS IndexedFacetDistance of all",
     [](const Inputs& in) { return setDistance(in.manyRegions().questions, in.manyRegions().shuffled); }},
};

}  // namespace
}  // namespace peers::with_geos
