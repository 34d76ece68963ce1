// GEOS on crossings, measures and files.
#include <geos/algorithm/LineIntersector.h>
#include <geos/io/WKBReader.h>
#include <geos/io/WKBWriter.h>
#include <geos/noding/BasicSegmentString.h>
#include <geos/noding/FastNodingValidator.h>
#include <geos/noding/MCIndexNoder.h>
#include <geos/noding/MCIndexSegmentSetMutualIntersector.h>
#include <geos/noding/SegmentIntersector.h>
#include <geos/operation/polygonize/BuildArea.h>
#include <geos/operation/valid/IsSimpleOp.h>
#include <geos/operation/valid/MakeValid.h>

#include <sstream>

#include "bench/peers/geos.h"

namespace peers::with_geos {
namespace {

using geos::geom::CoordinateArraySequence;
using geos::noding::BasicSegmentString;
using geos::noding::MCIndexSegmentSetMutualIntersector;
using geos::noding::SegmentString;

/// A line with the vertices that it refers to.
struct Line {
    explicit Line(std::unique_ptr<CoordinateArraySequence> of)
        : vertices(std::move(of)), string(vertices.get(), nullptr), list{&string} {}
    Line(const Segment& segment) : Line(sequence(segment)) {}
    static std::unique_ptr<CoordinateArraySequence> sequence(const Segment& segment) {
        return std::make_unique<CoordinateArraySequence>(
            std::vector<Coordinate>{coordinate(segment.from), coordinate(segment.to)}, 2);
    }

    std::unique_ptr<CoordinateArraySequence> vertices;
    BasicSegmentString string;
    SegmentString::ConstVect list;
};

class Collector : public geos::noding::SegmentIntersector {
  public:
    void processIntersections(SegmentString* a, std::size_t i, SegmentString* b, std::size_t j) override {
        intersector_.computeIntersection(a->getCoordinate(i), a->getCoordinate(i + 1), b->getCoordinate(j),
                                         b->getCoordinate(j + 1));
        if (intersector_.hasIntersection())
            places.push_back(intersector_.getIntersection(0));
    }

    std::vector<Coordinate> places;

  private:
    geos::algorithm::LineIntersector intersector_;
};

/// The shape's chains in a tree, and what crosses them.
struct Crossed {
    explicit Crossed(const Points& shape) : outline(closedSequence(shape)) {
        tree.setBaseSegments(&outline.list);
        tree.setSegmentIntersector(&collector);
    }
    std::size_t by(Line& line) {
        collector.places.clear();
        tree.process(&line.list);
        return collector.places.size();
    }

    Line outline;
    MCIndexSegmentSetMutualIntersector tree;
    Collector collector;
};

std::shared_ptr<std::vector<std::unique_ptr<Line>>> lines(const std::vector<Segment>& segments) {
    auto made = std::make_shared<std::vector<std::unique_ptr<Line>>>();
    for (const Segment& segment : segments)
        made->push_back(std::make_unique<Line>(segment));
    return made;
}

Contestant crossings(const Points& shape, const std::vector<Segment>& segments) {
    return repeated([crossed = std::make_shared<Crossed>(shape), queries = lines(segments)](std::size_t i) {
        return crossed->by(*pick(*queries, i));
    });
}

/// One segment against all edges.
Contestant coldCrossings(const Inputs& in) {
    return keepsNothing(in, [outline = std::make_shared<Line>(closedSequence(in.outline)),
                             queries = lines(in.longSegments)](std::size_t i) {
        Collector collector;
        SegmentString* const segment = &pick(*queries, i)->string;
        const geos::geom::Envelope box(segment->getCoordinate(0), segment->getCoordinate(1));
        for (std::size_t k = 0; k + 1 < outline->vertices->size(); ++k)
            if (box.intersects(outline->string.getCoordinate(k), outline->string.getCoordinate(k + 1)))
                collector.processIntersections(&outline->string, k, segment, 0);
        return collector.places.size();
    });
}

Contestant contourCrossings(const Inputs& in) {
    return keepsNothing(in, [outline = std::make_shared<Line>(closedSequence(in.outline)),
                             other = std::make_shared<Line>(closedSequence(in.other))](std::size_t) {
        MCIndexSegmentSetMutualIntersector tree;
        Collector collector;
        tree.setBaseSegments(&outline->list);
        tree.setSegmentIntersector(&collector);
        tree.process(&other->list);
        return collector.places.size();
    });
}

Contestant simpleOp(const Inputs& in, const Points& shape) {
    return keepsNothing(in, [shape = Shape(ring(shape))](std::size_t) {
        return !geos::operation::valid::IsSimpleOp(*shape).isSimple();
    });
}

Contestant nodingValidator(const Inputs& in, const Points& shape) {
    return keepsNothing(in, [outline = std::make_shared<Line>(closedSequence(shape))](std::size_t) {
        std::vector<SegmentString*> strings{&outline->string};
        return !geos::noding::FastNodingValidator(strings).isValid();
    });
}

/// What `make` makes of the chain; compared is the area that is left.
template <class Make>
Contestant regularize(const Inputs& in, Make make) {
    const auto chain = Shape(polygon(in.chained));
    return keepsNothing(
        in, [chain, make](std::size_t) { return make(*chain)->getNumPoints(); },
        [chain, make](std::size_t) { return make(*chain)->getArea(); });
}

double total(const Geometry& geometry) {
    const auto sequence = geometry.getCoordinates();
    double sum = 0.0;
    // The repeated first vertex at the end is GEOS's own.
    for (std::size_t i = 0; i + 1 < sequence->size(); ++i)
        sum += sequence->getX(i) + sequence->getY(i);
    return sum;
}

Contestant write(const Inputs& in) {
    const auto stream = std::make_shared<std::stringstream>();
    const auto writer = std::make_shared<geos::io::WKBWriter>();
    const auto store = [stream, writer, shape = Shape(ring(in.outline))] {
        stream->seekp(0);
        writer->write(*shape, *stream);
    };
    return keepsNothing(
        in,
        [store, stream](std::size_t) {
            store();
            return static_cast<double>(stream->tellp());
        },
        [store, stream](std::size_t) {
            store();
            stream->seekg(0);
            return total(*geos::io::WKBReader().read(*stream));
        });
}

Contestant read(const Inputs& in) {
    std::ostringstream stream;
    geos::io::WKBWriter().write(*ring(in.outline), stream);
    const auto bytes = std::make_shared<const std::string>(stream.str());
    const auto reader = std::make_shared<geos::io::WKBReader>();
    const auto load = [bytes, reader] {
        return reader->read(reinterpret_cast<const unsigned char*>(bytes->data()), bytes->size());
    };
    return keepsNothing(
        in, [load](std::size_t) { return load()->getNumPoints(); }, [load](std::size_t) { return total(*load()); });
}

Contestant hull(const Inputs& in, const Points& shape) {
    const auto made = Shape(ring(shape));
    return keepsNothing(
        in, [made](std::size_t) { return made->convexHull()->getNumPoints(); },
        [made](std::size_t) { return made->convexHull()->getArea(); });
}

const Entry entries[] = {
    {Row::longCrossings, "GEOS MCIndexSegmentSetMutualIntersector",
     [](const Inputs& in) { return crossings(in.outline, in.longSegments); }},
    {Row::longCrossingsTraced, "GEOS MCIndexSegmentSetMutualIntersector",
     [](const Inputs& in) { return crossings(in.traced, in.tracedSegments); }},
    {Row::shortCrossings, "GEOS MCIndexSegmentSetMutualIntersector",
     [](const Inputs& in) { return crossings(in.outline, in.shortSegments); }},
    {Row::crossingsCold, "GEOS LineIntersector", coldCrossings},
    {Row::contourCrossings, "GEOS MCIndexSegmentSetMutualIntersector", contourCrossings},
    {Row::selfIntersectingNo, "GEOS IsSimpleOp", [](const Inputs& in) { return simpleOp(in, in.outline); }},
    {Row::selfIntersectingYes, "GEOS IsSimpleOp", [](const Inputs& in) { return simpleOp(in, in.knotted); }},
    {Row::selfIntersectingNo, "GEOS FastNodingValidator",
     [](const Inputs& in) { return nodingValidator(in, in.outline); }},
    {Row::selfIntersectingYes, "GEOS FastNodingValidator",
     [](const Inputs& in) { return nodingValidator(in, in.knotted); }},
    {Row::regularize, "GEOS buffer(0)",
     [](const Inputs& in) { return regularize(in, [](const Geometry& chain) { return chain.buffer(0.0); }); }},
    {Row::regularize, "GEOS MakeValid",
     [](const Inputs& in) {
         return regularize(in, [](const Geometry& chain) { return geos::operation::valid::MakeValid().build(&chain); });
     }},
    {Row::regularize, "GEOS Union and BuildArea",
     [](const Inputs& in) {
         return regularize(in, [](const Geometry& chain) {
             return geos::operation::polygonize::BuildArea().build(chain.getBoundary()->Union().get());
         });
     }},
    {Row::hull, "GEOS ConvexHull", [](const Inputs& in) { return hull(in, in.outline); }},
    {Row::hullTraced, "GEOS ConvexHull", [](const Inputs& in) { return hull(in, in.traced); }},
    {Row::length, "GEOS Length",
     [](const Inputs& in) {
         return keepsNothing(in, [shape = Shape(ring(in.outline))](std::size_t) { return shape->getLength(); });
     }},
    {Row::area, "GEOS Area",
     [](const Inputs& in) {
         return keepsNothing(in, [shape = Shape(polygon(in.outline))](std::size_t) { return shape->getArea(); });
     }},
    {Row::centre, "GEOS Centroid",
     [](const Inputs& in) {
         return keepsNothing(in, [shape = Shape(polygon(in.outline))](std::size_t) {
             Coordinate centre;
             shape->getCentroid(centre);
             return centre.x + centre.y;
         });
     }},
    {Row::write, "GEOS WKBWriter", write},
    {Row::read, "GEOS WKBReader", read},
};

}  // namespace
}  // namespace peers::with_geos
