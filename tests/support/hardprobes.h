// What to ask of an outline where a search structure is most likely to answer something else than a plain loop.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "foundation/math/xform.h"
#include "foundation/shapes/lineseg.h"
#include "tests/support/hardshapes.h"

namespace support {

struct Box {
    gmVector<2> lower;
    gmVector<2> upper;
};

/// Draws the places; the outline has a vertex at least.
class HardProbes {
  public:
    HardProbes(const HardShape& shape, Random& random)
        : shape_(shape), points_(shape.outline.points), random_(random), box_(boxOf(0, points_.size())) {}

    /// Random, on, beside and off the outline, at the corners of the boxes of its runs, and nowhere.
    Points places() {
        Points places = {vertex(),      vertex(),      shape_.center, middle(),
                         anywhere(0.0), anywhere(0.0), anywhere(0.0), anywhere(1.0)};
        for (int i = 0; i < 3; i++) {
            places.push_back(besideAnEdge());
            places.push_back(besideAVertex());
        }
        places.push_back(corner(run(8)));
        places.push_back(corner(run(8)) + step(1.0) * 1e-7);
        places.push_back(aHairBeside(corner(run(8))));
        places.push_back(corner(run(64)));
        places.push_back(corner(box_));
        places.push_back(corner(box_) * 0.98 + (box_.lower + box_.upper) * 0.01);
        places.push_back((vertex() + vertex()) * 0.5);
        places.push_back((box_.lower + box_.upper) * 0.5);
        places.push_back(random_.gridPoint(-4, 84) * 0.5);
        places.push_back(aHairBeside(shape_.center));
        if (random_.chance(0.3))
            places.push_back(nowhere());
        return places;
    }

    /// Places from where the first wide gap between the vertices' directions begins or ends at a vertex close by: a
    /// line through the middle of the gap passes it at about the tolerance of crossings.
    Points grazing(int count) {
        Points places;
        std::vector<double> angles;
        const gmVector<2> v = vertex();
        for (const gmVector<2>& other : points_)
            if ((other - v).len() > 1e-3)
                angles.push_back((other - v).angle().norm().value());
        if (angles.empty() || !std::all_of(angles.begin(), angles.end(), [](double a) { return std::isfinite(a); }))
            return places;
        std::sort(angles.begin(), angles.end());
        const double wide = twoPi / 2.0 / static_cast<double>(points_.size());
        std::size_t first = 0;
        while (first + 1 < angles.size() && !(angles[first + 1] - angles[first] > wide))
            first++;
        const double from = angles[first];
        const double to = first + 1 < angles.size() ? angles[first + 1] : angles[0] + twoPi;
        while (count-- > 0) {
            const double within = wide * random_.real(1.0, 1.2);
            const double angle = random_.chance(0.5) ? from + within : to - within;
            const double off = 1e-6 / std::sin(wide / 2.0) * random_.real(0.05, 1.3);
            places.push_back(v - gmVector<2>(off, gmRadian(angle)));
        }
        return places;
    }

    /// Across everything, along edges, beside vertices, ending on, just before and at boxes, and without length.
    std::vector<gmLineSeg> segments() {
        std::vector<gmLineSeg> segments;
        const auto add = [&](const gmVector<2>& a, const gmVector<2>& b) {
            random_.chance(0.5) ? segments.emplace_back(a, b) : segments.emplace_back(b, a);
        };
        const gmVector<2> size = box_.upper - box_.lower;
        const auto between = [&] { return random_.real(-0.2, 1.2); };
        add(box_.lower - size * 0.1, box_.upper + size * 0.1);
        for (int i = 0; i < 3; i++) {
            const gmVector<2> a = anywhere(0.3);
            add(a, anywhere(0.3));
        }
        const gmVector<2> level = anywhere(0.1);
        add({box_.lower.x() - 1.0, level.y()}, {box_.upper.x() + 1.0, level.y()});
        add({level.x(), box_.lower.y() - 1.0}, {level.x(), box_.upper.y() + 1.0});
        const gmVector<2> through = vertex();
        add({box_.lower.x() - 1.0, through.y()}, {box_.upper.x() + 1.0, through.y()});
        add(through, anywhere(0.0));
        add(through, through);
        const gmVector<2> off = middle();
        add(off, off);

        // Along an edge: itself, longer, and beside it, turned a little.
        const std::size_t k = index();
        const gmVector<2> a = points_[k];
        const gmVector<2> b = points_[(k + 1) % points_.size()];
        const gmVector<2> normal = gmVector<2>(a.y() - b.y(), b.x() - a.x()).unit();
        add(a, b);
        add(a + (a - b) * between(), b + (b - a) * between());
        const gmVector<2> aside = normal * random_.oneOf<double>({0.0, 5e-7, 1e-6, 1.5e-6, 2e-6, 1e-9});
        const gmVector<2> turn = normal * random_.oneOf<double>({1e-5, 1e-6, 1e-9, 1e-11, 1e-12});
        add(a + (a - b) * 0.3 + aside, b + (b - a) * 0.3 + aside + turn * (b - a).len());

        // Ends on the outline, or just before it.
        const gmVector<2> from = anywhere(0.2);
        const gmVector<2> to = random_.chance(0.5) ? middle() : vertex();
        const gmVector<2> ahead = (to - from).unit();
        for (const double missing : {0.0, 5e-7, random_.oneOf<double>({9.99e-7, 1.001e-6, 1e-6, -5e-7, 1e-5})})
            add(from, to - ahead * missing);

        for (int i = 0; i < 3; i++) {
            tangent(box_, random_.chance(0.5) ? 0 : runStart(8), add);
            tangent(box_, runStart(8), add);
        }

        // From the corners of boxes: short rays, and pieces that touch the box only.
        for (const int edges : {8, 8, 64}) {
            const Box box = run(edges);
            const gmVector<2> at = corner(box);
            const gmVector<2> away = (box.upper - box.lower) * random_.oneOf<double>({0.01, 0.5, 1.5});
            add(at, at + gmVector<2>(away.x() * random_.real(-1, 1), away.y() * random_.real(-1, 1)));
            add({box.lower.x() - away.x(), at.y()}, {box.upper.x() + away.x(), at.y()});
            add(box.upper, box.upper + away);
        }
        if (random_.chance(0.3))
            add(vertex(), nowhere());
        return segments;
    }

    /// Directions along axes, almost along them, square to edges and any.
    std::vector<gmRadian> angles() {
        std::vector<gmRadian> angles;
        const double quarter = twoPi / 4.0;
        for (int i = 0; i < 2; i++) {
            const double hair = random_.oneOf<double>({1e-17, 1e-16, 1e-15, 1.1e-15, 1e-12, 1e-9, 1e-7});
            angles.emplace_back(random_.integer(-4, 4) * quarter);
            angles.emplace_back(random_.integer(-4, 4) * quarter + hair);
            angles.emplace_back(random_.integer(-4, 4) * quarter - hair);
            const gmVector<2> along = vertex() - vertex();
            angles.emplace_back(std::atan2(along.x(), -along.y()));
            const std::size_t k = index();
            const gmVector<2> edge = points_[(k + 1) % points_.size()] - points_[k];
            angles.emplace_back(std::atan2(edge.x(), -edge.y()));
            angles.emplace_back(std::atan2(-edge.x(), edge.y()));
            angles.emplace_back(random_.real(-7.0, 7.0));
            angles.emplace_back(random_.integer(-8, 8) * quarter / 2.0);
        }
        if (random_.chance(0.2))
            angles.emplace_back(random_.oneOf<double>({std::numeric_limits<double>::infinity(), std::nan(""), 1e9}));
        return angles;
    }

    /// No two that agree in all but the last stored value: those share a remembered box.
    std::vector<gmXform<2>> xforms() {
        const gmRadian angle(random_.real(-4.0, 4.0));
        const gmVector<2> shift = random_.point(-5.0, 5.0);
        std::vector<gmXform<2>> xforms = {
            gmXform<2>(),
            gmXform<2>(gmMatrix<2>(1, 0, 0, 1), random_.point(-1.0, 1.0) * 5e-16),
            gmXform<2>(gmMatrix<2>(0, -1, 1, 0), {}),
            gmXform<2>(gmMatrix<2>(angle, angle, 1.0, 1.0), shift),
            gmXform<2>(gmMatrix<2>(-1, 0, 0, 1), {}),
            gmXform<2>(gmMatrix<2>(1, 0, 0, -1), shift),
            gmXform<2>(gmMatrix<2>(random_.real(-2, 2), random_.real(-2, 2), random_.real(-2, 2), random_.real(-2, 2)),
                       shift),
            gmXform<2>(gmMatrix<2>(1, 1e-9, 0, 1), {}),
            gmXform<2>(gmMatrix<2>(1, 0.5, 0, 1), shift * 1e6)};
        if (random_.chance(0.3))
            xforms.push_back(random_.oneOf<gmXform<2>>({
                gmXform<2>(gmMatrix<2>(0, 0, 0, 0), {}),
                gmXform<2>(gmMatrix<2>(1e200, 3, -2, 1e-200), shift),
                gmXform<2>(gmMatrix<2>(1e308, 1e308, 0, 1), {}),
                gmXform<2>(gmMatrix<2>(std::nan(""), 0, 0, 1), {}),
                gmXform<2>(gmMatrix<2>(1, 0, 0, 1), {0.0, -std::numeric_limits<double>::infinity()}),
            }));
        return xforms;
    }

    /// Around a place: those of the library, of the outline, exactly as far as a vertex, and such as have no cells.
    double tolerance(const gmVector<2>& place) {
        const double infinity = std::numeric_limits<double>::infinity();
        const double toVertex = vertex().distance(place);
        const double edge = vertex().distance(vertex());
        return random_.oneOf<double>({1e-6, 1e-6, 1.0, 1.5, 0.01, edge, edge * 0.1, toVertex, toVertex,
                                      std::nextafter(toVertex, infinity), 10.0, 1e3, 1e9, infinity, 1e-309, 1e-12, 0.0,
                                      -1.0, std::nan("")});
    }

    /// Through a vertex as well as rounding allows, with the others on one side.
    gmLineSeg tangentThroughAVertex() {
        const gmVector<2> u(1.0, gmRadian(random_.real(0.0, twoPi)));
        const gmVector<2> along = gmVector<2>(-u.y(), u.x()) * (box_.upper - box_.lower).len();
        const gmVector<2> at =
            *std::max_element(points_.begin(), points_.end(),
                              [&](const gmVector<2>& a, const gmVector<2>& b) { return a.dot(u) < b.dot(u); });
        return {at - along * random_.real(0.1, 1.5), at + along * random_.real(0.1, 1.5)};
    }

    gmVector<2> vertex() { return points_[index()]; }

    /// In the box of the outline, or as far around it.
    gmVector<2> anywhere(double around) {
        const gmVector<2> size = box_.upper - box_.lower;
        const double x = random_.real(-around, 1.0 + around);
        const double y = random_.real(-around, 1.0 + around);
        return {box_.lower.x() + size.x() * x, box_.lower.y() + size.y() * y};
    }

    gmVector<2> nowhere() {
        const double infinity = std::numeric_limits<double>::infinity();
        const double odd = random_.oneOf<double>({std::nan(""), infinity, -infinity, 1e9, -1e12, 1e160, -1e300});
        if (random_.chance(0.5))
            return {odd, random_.oneOf<double>({std::nan(""), infinity, -infinity})};
        return random_.chance(0.5) ? gmVector<2>(odd, vertex().y()) : gmVector<2>(vertex().x(), odd);
    }

  private:
    std::size_t index() { return static_cast<std::size_t>(random_.integer(0, static_cast<int>(points_.size()) - 1)); }

    /// The middle of an edge.
    gmVector<2> middle() {
        const std::size_t k = index();
        return (points_[k] + points_[(k + 1) % points_.size()]) * 0.5;
    }

    gmVector<2> step(double size) { return gmVector<2>(size, gmRadian(random_.integer(0, 7) * twoPi / 8.0)); }

    double distanceOff() {
        return random_.oneOf<double>({1e-9, 1e-7, 5e-7, 9.99e-7, 1e-6, 1.001e-6, 1.5e-6, 2e-6, 4.9e-6, 5.1e-6, 1e-5,
                                      1e-4, 1e-3, 3e-3, 0.01, 0.1, 1.0}) *
               random_.oneOf<double>({-1.0, 1.0});
    }

    gmVector<2> besideAnEdge() {
        const std::size_t k = index();
        const gmVector<2> a = points_[k];
        const gmVector<2> b = points_[(k + 1) % points_.size()];
        const gmVector<2> normal = gmVector<2>(a.y() - b.y(), b.x() - a.x()).unit();
        return a + (b - a) * random_.oneOf<double>({0.5, 0.1, random_.real(-0.1, 1.1)}) + normal * distanceOff();
    }

    gmVector<2> besideAVertex() {
        const gmVector<2> v = vertex();
        return v + gmVector<2>(distanceOff(), gmRadian(random_.real(0.0, twoPi)));
    }

    gmVector<2> aHairBeside(const gmVector<2>& place) {
        const double infinity = std::numeric_limits<double>::infinity();
        const double x = std::nextafter(place.x(), random_.chance(0.5) ? infinity : -infinity);
        return {x, random_.chance(0.5) ? place.y() : std::nextafter(place.y(), infinity)};
    }

    Box boxOf(std::size_t first, std::size_t count) const {
        Box box = {points_[first % points_.size()], points_[first % points_.size()]};
        for (std::size_t i = first; i < first + count; i++) {
            const gmVector<2>& v = points_[i % points_.size()];
            box.lower = {std::min(box.lower.x(), v.x()), std::min(box.lower.y(), v.y())};
            box.upper = {std::max(box.upper.x(), v.x()), std::max(box.upper.y(), v.y())};
        }
        return box;
    }

    /// The first vertex of a run of that many edges, counted from the first edge: a closed outline's starts at the last
    /// vertex.
    std::size_t runStart(int edges) {
        const std::size_t n = points_.size();
        const auto length = static_cast<std::size_t>(edges);
        return index() / length * length + (shape_.outline.closed ? n - 1 : 0);
    }

    /// The box of the vertices of a run of edges.
    Box run(int edges) {
        const std::size_t first = runStart(edges);
        return boxOf(first, std::min(static_cast<std::size_t>(edges) + 1, points_.size()));
    }

    gmVector<2> corner(const Box& box) {
        return {random_.chance(0.5) ? box.lower.x() : box.upper.x(),
                random_.chance(0.5) ? box.lower.y() : box.upper.y()};
    }

    /// A segment that passes the farthest vertex of a run (or of everything, for the run that starts at 0) on the far
    /// side: the whole run lies beyond the line, less than or about the tolerance of crossings away.
    template <class Add>
    void tangent(const Box& box, std::size_t first, const Add& add) {
        const gmVector<2> u(1.0, gmRadian(random_.real(0.0, twoPi)));
        const std::size_t count = first == 0 ? points_.size() : std::min<std::size_t>(9, points_.size());
        gmVector<2> farthest = points_[first % points_.size()];
        for (std::size_t i = first; i < first + count; i++)
            if (points_[i % points_.size()].dot(u) > farthest.dot(u))
                farthest = points_[i % points_.size()];
        const double scale = random_.oneOf<double>({1.0, 1.0, 1.0, 100.0});
        const gmVector<2> at =
            farthest + u * (scale * random_.oneOf<double>({1e-8, 3e-7, 7e-7, 9.9e-7, 1.1e-6, 1.9e-6}));
        const gmVector<2> along = gmVector<2>(-u.y(), u.x()) * (box.upper - box.lower).len();
        add(at - along, at + along);
    }

    const HardShape& shape_;
    const Points& points_;
    Random& random_;
    Box box_;
};

}  // namespace support
