// Everything that shapes can be asked, with the answers written down to the bit.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "cntrtmpl/cntrtmpl.h"

namespace fuzz {

inline void require(bool kept, const char* promise) {
    if (kept)
        return;
    std::fprintf(stderr, "broken: %s\n", promise);
    std::abort();
}

/// Answers in the order of the questions. That a shape refuses a question with one of the errors it may is an answer;
/// any other exception goes through, and ends the run.
class Answers {
  public:
    template <class Question>
    void ask(Question question) {
        try {
            add(question());
        } catch (const gmContourDefs::Errors& error) {
            refused(error);
        } catch (const gmBadPointer& error) {
            refused(error);
        }
    }

    /// The same where a transform may have no inverse, or where the question is not for edge points.
    template <class Question>
    void askEdgePoints(Question question) {
        try {
            ask(question);
        } catch (const gmMathError::Singular& error) {
            refused(error);
        } catch (const gmPel::BadWindow& error) {
            refused(error);
        }
    }

    template <class T>
    static Answers of(const T& value) {
        Answers answers;
        answers.add(value);
        return answers;
    }

    void add(bool value) { text_ += value ? '1' : '0'; }
    void add(long value) { addBytes(value); }
    void add(int value) { addBytes(value); }
    void add(std::size_t value) { addBytes(value); }
    // Which of all NaNs an answer is depends on how the compiler orders the operands.
    void add(double value) { addBytes(std::isnan(value) ? std::nan("") : value); }
    void add(const char* value) { text_ += value; }
    void add(const gmVector<2>& value) { addAll(value.x(), value.y()); }
    void add(const gmMatrix<2>& value) { addAll(value(0, 0), value(0, 1), value(1, 0), value(1, 1)); }
    void add(const gmXform<2>& value) { addAll(value.translation(), value.matrix()); }
    void add(const gmRect& value) { addAll(value.lower(), value.upper()); }
    void add(const gmCircle& value) { addAll(value.center(), value.radius()); }
    void add(const gmLineSeg& value) { addAll(value.p1(), value.p2()); }
    void add(const gmEllipse& value) {
        addAll(value.center(), value.xRadius(), value.yRadius(), value.rotation().value());
    }
    void add(const gmEdgelet& value) {
        addAll(value.position(), static_cast<int>(value.magnitude()), static_cast<int>(value.angle().value()));
    }
    void add(const gmContour& value) {
        addAll(value.points(), value.isClosed(), value.cachedVectorSize(), static_cast<std::size_t>(value.label()));
    }
    void add(const gmRegion& value) {
        add(static_cast<const gmContour&>(value));
        add(value.holes().size());
        for (const RegionCPtr& hole : value.holes())
            add(hole);
    }
    void add(const RegionCPtr& value) {
        add(value.isNull());
        if (!value.isNull())
            add(static_cast<const gmContour&>(*value));
    }
    void add(const gmRegionSet& value) { addAll(value.regions(), value.cachedVectorSize()); }
    void add(const gmPtrHandle<gm2XformBase>& value) {
        add(value.isNull());
        if (!value.isNull())
            add(value->linearXform());
    }
    template <class T>
    void add(const std::vector<T>& values) {
        add(values.size());
        for (const auto& value : values)
            add(static_cast<const T&>(value));
    }
    void add(const Answers& other) { text_ += other.text_; }

    friend bool operator==(const Answers& a, const Answers& b) { return a.text_ == b.text_; }

  private:
    void refused(const gmException& error) { text_ += error.what(); }

    template <class... Values>
    void addAll(const Values&... values) {
        (add(values), ...);
    }

    template <class T>
    void addBytes(T value) {
        char bytes[sizeof value];
        std::memcpy(bytes, &value, sizeof value);
        text_.append(bytes, sizeof value);
    }

    std::string text_;
};

/// What questions are asked with.
struct Probes {
    std::vector<gmVector<2>> points;
    gmLineSeg segment;
    gmRadian angle{0.7};
    double tolerance = 0.5;
};

inline Probes probesOf(const std::vector<gmVector<2>>& outline) {
    Probes probes;
    probes.points = {{1.25, 2.5}};
    if (!outline.empty()) {
        probes.points.push_back(outline.front());
        probes.points.push_back((outline.front() + outline.back()) * 0.5);
    }
    probes.segment = gmLineSeg(probes.points.back(), {-3.0, 5.0});
    return probes;
}

// Clean-up traces an outline as often around as it crosses itself, and sets compare every edge with every other: within
// these bounds that stays a matter of milliseconds.
constexpr std::size_t fewVertices = 48;
constexpr std::size_t fewRegions = 16;

/// Turned and moved: no two of the library's remembered transforms that share an answer.
inline gmXform<2> turned() {
    return gmXform<2>(gmMatrix<2>(0.6, -0.8, 0.8, 0.6), gmVector<2>(3.0, -1.0));
}

inline Answers answersOf(const gmContour& contour, const Probes& probes) {
    Answers answers;
    answers.add(contour);
    for (const gmVector<2>& point : probes.points) {
        for (const bool vertexOnly : {false, true}) {
            answers.ask([&] { return contour.closestPoint(point, vertexOnly); });
            answers.ask([&] { return contour.distToPoint(point, vertexOnly); });
        }
        answers.ask([&] { return contour.closestVertexIndex(point); });
        answers.ask([&] { return contour.vertexIndex(point, probes.tolerance); });
    }
    for (const bool include : {false, true})
        answers.ask([&] { return contour.intersections(probes.segment, include); });
    answers.ask([&] { return contour.intersections(gmContour(probes.points, false)); });
    answers.ask([&] { return contour.isSelfIntersecting(); });
    answers.ask([&] { return contour.length(); });
    answers.ask([&] { return contour.meanPosition(); });
    answers.ask([&] { return contour.lineSegs(); });
    answers.ask([&] { return contour.validLine(); });
    for (const gmXform<2>& xform : {gmXform<2>::I, turned()})
        answers.ask([&] { return contour.encloseRect(xform); });
    for (const auto mode : {gmContourDefs::eMaxVertexPair, gmContourDefs::eFromFirstVertex})
        answers.ask([&] { return contour.encloseCircle(mode); });
    answers.ask([&] { return contour.extremalVertexIndex(probes.angle); });
    answers.ask([&] { return contour.extremalVertexPosition(probes.angle); });
    answers.ask([&] {
        gmRegion hull;
        contour.convexHull(hull);
        return hull;
    });
    answers.ask([&] {
        gmEllipse ellipse;
        double residual = 0.0;
        contour.fitEllipse(ellipse, residual);
        answers.add(residual);
        return ellipse;
    });
    answers.ask([&] {
        gmContour mapped;
        contour.map(turned(), mapped);
        return mapped;
    });
    return answers;
}

inline Answers answersOf(const gmContour& contour) {
    return answersOf(contour, probesOf(contour.points()));
}

/// The outcome of a clean-up; the result is kept out of the question, so that a refusal shows that it was left alone.
template <class Shape>
void askCleanUp(Answers& answers, const Shape& shape, void (Shape::*cleanUp)(Shape&) const) {
    Shape result;
    answers.ask([&] {
        (shape.*cleanUp)(result);
        return true;
    });
    answers.add(result);
}

inline Answers answersOf(const gmRegion& region, const Probes& probes) {
    Answers answers = answersOf(static_cast<const gmContour&>(region), probes);
    answers.add(region);
    for (const bool holes : {false, true}) {
        for (const gmVector<2>& point : probes.points) {
            answers.ask([&] { return region.inside(point, holes); });
            for (const bool vertexOnly : {false, true}) {
                answers.ask([&] { return region.closestPoint(point, vertexOnly, holes); });
                answers.ask([&] { return region.distToPoint(point, vertexOnly, holes, true); });
            }
            answers.ask([&] {
                long hole = 0;
                const long vertex = region.closestVertexIndex(point, holes, hole);
                answers.add(hole);
                return vertex;
            });
        }
        answers.ask([&] { return region.intersections(probes.segment, true, holes); });
        answers.ask([&] { return region.area(holes); });
        answers.ask([&] { return region.inertiaMatrix(holes); });
    }
    answers.ask([&] { return region.centerOfMass(false); });
    // With holes it is answered once: asked all the same, but nothing to compare.
    Answers().ask([&] { return region.centerOfMass(true); });
    if (region.points().size() > fewVertices)
        return answers;
    askCleanUp(answers, region, &gmRegion::regularize);
    askCleanUp(answers, region, &gmRegion::outerHull);
    return answers;
}

inline Answers answersOf(const gmRegion& region) {
    return answersOf(region, probesOf(region.points()));
}

inline Answers answersOf(const gmRegionSet& set, const Probes& probes) {
    Answers answers;
    answers.add(set);
    const std::vector<RegionCPtr> regions = set.regions();
    bool few = regions.size() <= fewRegions;
    for (const RegionCPtr& region : regions)
        few = few && (region.isNull() || region->points().size() <= fewVertices);
    for (const bool holes : {false, true}) {
        for (const gmVector<2>& point : probes.points) {
            answers.ask([&] { return set.inside(point, holes); });
            answers.ask([&] { return set.distToPoint(point, false, holes, true); });
        }
        answers.ask([&] { return set.area(holes); });
        answers.ask([&] { return set.inertiaMatrix(holes); });
    }
    answers.ask([&] { return set.centerOfMass(false); });
    Answers().ask([&] { return set.centerOfMass(true); });
    for (const gmXform<2>& xform : {gmXform<2>::I, turned()})
        answers.ask([&] { return set.encloseRect(xform); });
    if (!few)
        return answers;
    // Refused part-way, it answers from then on.
    Answers().ask([&] { return set.isSelfIntersecting(); });
    answers.ask([&] { return set.isSelfIntersecting(); });
    askCleanUp(answers, set, &gmRegionSet::regularize);
    askCleanUp(answers, set, &gmRegionSet::outerHull);
    return answers;
}

inline Answers answersOf(const gmRegionSet& set) {
    const std::vector<RegionCPtr> regions = set.regions();
    const bool none = regions.empty() || regions.back().isNull();
    return answersOf(set, probesOf(none ? std::vector<gmVector<2>>() : regions.back()->points()));
}

}  // namespace fuzz
