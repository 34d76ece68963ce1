// What has to hold of any bytes that are loaded as an archive.
#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/edgeanswers.h"

namespace fuzz {

inline void pass(gmArchive& archive, gmPersistent& object) {
    archive || object;
}

template <class T>
void pass(gmArchive& archive, gmPtrHandle<T>& handle) {
    archive || handle;
}

/// Any class that there is, errors among them, behind pointers. What is loaded belongs to its archive.
struct Pointers {
    std::unique_ptr<std::istringstream> in;
    std::unique_ptr<gmArchive> archive;
    std::vector<gmPersistent*> objects{3, nullptr};
};

/// Shapes one after the other: what one archive holds may lead from each to those before it.
struct InTurn {
    gmContour contour;
    gmPtrHandle<gm2XformBase> xform;
    gmRegion region;
    EdgeContour edge;
    gmRegionSet set;
    gmPtrHandle<gmRegion> shared;
};

inline void pass(gmArchive& archive, InTurn& shapes) {
    archive || shapes.contour || shapes.xform || shapes.region || shapes.edge || shapes.set || shapes.shared;
}

struct SimpleShapes {
    gmPoint point;
    gmLine line;
    gmLineSeg segment;
    gmRect rect;
    gmCircle circle;
    gmEllipse ellipse;
    gmPolygon polygon;
};

inline void pass(gmArchive& archive, SimpleShapes& shapes) {
    archive || shapes.point || shapes.line || shapes.segment || shapes.rect || shapes.circle || shapes.ellipse ||
        shapes.polygon;
}

inline Answers answersOf(const gmPtrHandle<gm2XformBase>& xform) {
    Answers answers;
    answers.add(xform);
    answers.askEdgePoints([&] { return xform->inverseBase(); });
    answers.askEdgePoints([&] { return xform->composeBase(*xform); });
    answers.askEdgePoints([&] { return xform->clone(); });
    return answers;
}

inline Answers answersOf(const InTurn& shapes) {
    Answers answers = answersOf(shapes.contour);
    answers.add(answersOf(shapes.xform));
    if (!shapes.xform.isNull())
        answers.ask([&] { return gmContour(shapes.contour).encloseRect(shapes.xform->linearXform()); });
    answers.add(answersOf(shapes.region));
    answers.add(answersOf(shapes.edge));
    answers.add(answersOf(shapes.set));
    answers.add(RegionCPtr(shapes.shared));
    return answers;
}

inline Answers answersOf(const SimpleShapes& shapes) {
    Answers answers;
    answers.ask([&] { return shapes.line.proj({1, 2}).position(); });
    answers.ask([&] { return shapes.line.intersect(shapes.segment.line()).position(); });
    answers.ask([&] { return shapes.line.distToPoint({1, 2}); });
    answers.ask([&] { return shapes.segment.distToPoint({1, 2}); });
    answers.ask([&] { return shapes.point.distToPoint({1, 2}); });
    answers.ask([&] { return shapes.rect.within(shapes.circle.center()); });
    answers.ask([&] { return gmContour(shapes.polygon); });
    answers.ask([&] { return gfDistToEllipse(shapes.ellipse, {1, 2}); });
    return answers;
}

inline Answers answersOf(const Pointers& pointers) {
    Answers answers;
    for (const gmPersistent* object : pointers.objects) {
        answers.add(object ? gm_Instantiator::className(typeid(*object)).c_str() : "null");
        if (const auto* error = dynamic_cast<const gmException*>(object))
            answers.add(error->what());
        // From the most derived on: a region with edge points is all three.
        if (const auto* edgeRegion = dynamic_cast<const EdgeRegion*>(object))
            answers.add(answersOf(*edgeRegion));
        else if (const auto* edgeContour = dynamic_cast<const EdgeContour*>(object))
            answers.add(answersOf(*edgeContour));
        else if (const auto* region = dynamic_cast<const gmRegion*>(object))
            answers.add(answersOf(*region));
        else if (const auto* contour = dynamic_cast<const gmContour*>(object))
            answers.add(answersOf(*contour));
        if (const auto* edgeSet = dynamic_cast<const EdgeSet*>(object))
            answers.add(answersOf(*edgeSet));
        else if (const auto* set = dynamic_cast<const gmRegionSet*>(object))
            answers.add(answersOf(*set));
    }
    return answers;
}

template <class Object>
void load(const std::string& bytes, Object& object) {
    std::istringstream in(bytes);
    gmArchive archive(in);
    pass(archive, object);
}

inline void load(const std::string& bytes, Pointers& pointers) {
    pointers.objects.assign(pointers.objects.size(), nullptr);
    pointers.archive.reset();  // before the stream that it reads
    pointers.in = std::make_unique<std::istringstream>(bytes);
    pointers.archive = std::make_unique<gmArchive>(*pointers.in);
    for (gmPersistent*& object : pointers.objects)
        gmPersistent::serializePointer(*pointers.archive, nullptr, object);
}

template <class Object>
std::string stored(Object& object) {
    std::ostringstream out;
    gmArchive archive(out);
    pass(archive, object);
    return out.str();
}

inline std::string stored(Pointers& pointers) {
    std::ostringstream out;
    gmArchive archive(out);
    for (gmPersistent* object : pointers.objects) {
        gmPersistent* none = nullptr;
        gmPersistent::serializePointer(archive, object, none);
    }
    return out.str();
}

// Something for loading to replace, where there can be anything.
template <class Object>
void fill(Object&) {}
inline std::vector<gmVector<2>> filling() {
    return {{0, 0}, {9, 0}, {9, 9}, {0, 9}, {4, 20}};
}
inline std::vector<gmEdgelet> edgeFilling() {
    return {{{0, 0}, 1, gmAngle8(2)}, {{9, 0}, 3, gmAngle8(4)}, {{9, 9}, 5, gmAngle8(6)}};
}
inline void fill(gmContour& contour) {
    contour = gmContour(filling(), false, 9);
}
inline void fill(gmRegion& region) {
    region = gmRegion(filling());
    region.holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{1, 1}, {2, 1}, {2, 2}}))});
}
inline void fill(gmRegionSet& set) {
    set.add(RegionCPtr(new gmRegion(filling())));
}
inline void fill(EdgeContour& contour) {
    contour = EdgeContour(edgeFilling());
}
inline void fill(EdgeRegion& region) {
    region = EdgeRegion(edgeFilling(), 9);
    region.holes(EdgeRegion::Holes{gmPtrHandle_const<EdgeRegion>(new EdgeRegion(edgeFilling()))});
}
inline void fill(EdgeSet& set) {
    set = EdgeSet(EdgeSet::Regions{gmPtrHandle_const<EdgeRegion>(new EdgeRegion(edgeFilling()))});
}

/// Whatever an object holds, it stores that, and answers as what is loaded from there: of what it held before, nothing
/// is left. Nothing is asked of one that is refused, as it may be after a load that was refused part-way.
template <class Object>
void checkStored(Object& object) {
    const Answers answers = answersOf(object);
    require(answersOf(object) == answers, "the same question has the same answer");
    std::string once;
    try {
        once = stored(object);
    } catch (const gmArchive::Errors&) {
        return;
    }
    Object again;
    load(once, again);
    require(stored(again) == once, "what was loaded is stored with the same bytes");
    require(answersOf(again) == answers, "what was stored answers the same");
}

/// The same of what a refused load has left.
template <class Object>
void checkRefused(Object& object) {
    checkStored(object);
}
/// Edge points that were there before may still be, and no archive of a region holds them.
inline void checkRefused(EdgeRegion& region) {
    gmRegion plain(region);
    checkStored(plain);
}

/// The bytes are refused with an error of the archive's, or what they hold can be asked everything, and comes back from
/// an archive of its own with the same answers and the same bytes. What a refusal leaves behind is no worse.
template <class Object>
void checkLoaded(const std::string& bytes) {
    Object object;
    fill(object);
    answersOf(object);
    try {
        load(bytes, object);
    } catch (const gmArchive::Errors&) {
        return checkRefused(object);
    }
    checkStored(object);
}

/// What the bytes are loaded as; a number beyond the last begins again with the first.
enum class Kind {
    eInTurn,
    ePointers,
    eContour,
    eRegion,
    eSet,
    eEdgeContour,
    eEdgeRegion,
    eEdgeSet,
    eSharedRegion,
    eXform,
    eSimpleShapes,
    eCount
};

struct SharedRegion {
    gmPtrHandle<gmRegion> region;
};

inline void pass(gmArchive& archive, SharedRegion& shared) {
    archive || shared.region;
}

inline Answers answersOf(const SharedRegion& shared) {
    return shared.region.isNull() ? Answers() : answersOf(*shared.region);
}

inline void check(Kind kind, const std::string& bytes) {
    switch (kind) {
        case Kind::ePointers:
            return checkLoaded<Pointers>(bytes);
        case Kind::eContour:
            return checkLoaded<gmContour>(bytes);
        case Kind::eRegion:
            return checkLoaded<gmRegion>(bytes);
        case Kind::eSet:
            return checkLoaded<gmRegionSet>(bytes);
        case Kind::eEdgeContour:
            return checkLoaded<EdgeContour>(bytes);
        case Kind::eEdgeRegion:
            return checkLoaded<EdgeRegion>(bytes);
        case Kind::eEdgeSet:
            return checkLoaded<EdgeSet>(bytes);
        case Kind::eSharedRegion:
            return checkLoaded<SharedRegion>(bytes);
        case Kind::eXform:
            return checkLoaded<gmPtrHandle<gm2XformBase>>(bytes);
        case Kind::eSimpleShapes:
            return checkLoaded<SimpleShapes>(bytes);
        default:
            return checkLoaded<InTurn>(bytes);
    }
}

}  // namespace fuzz
