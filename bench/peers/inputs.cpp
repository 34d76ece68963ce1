#include "bench/peers/inputs.h"

#include <algorithm>
#include <cmath>
#include <random>

#include "bench/shapes.h"

namespace peers {
namespace {

constexpr double turn = 6.283185307179586;
const Point middle(500.0, 500.0);

/// The standard library's distributions differ from one library to the next; this does not.
class Random {
  public:
    explicit Random(unsigned seed) : engine_(seed) {}
    double operator()(double from, double to) {
        return from + (to - from) * static_cast<double>(engine_()) / 4294967296.0;
    }
    Point point(double from, double to) {
        const double x = (*this)(from, to);
        return {x, (*this)(from, to)};
    }
    Point step(double length) { return Point(length, gmRadian((*this)(0.0, turn))); }
    template <class T>
    const T& of(const std::vector<T>& list) {
        return list[engine_() % list.size()];
    }
    template <class T>
    void shuffle(std::vector<T>& list) {
        for (std::size_t i = list.size(); i > 1; --i)
            std::swap(list[i - 1], list[engine_() % i]);
    }

  private:
    std::mt19937 engine_;
};

template <class Make>
auto many(Make make) {
    std::vector<decltype(make())> made;
    for (std::size_t i = 0; i < questionCount; ++i)
        made.push_back(make());
    return made;
}

/// Shrunk around its middle, which comes to `at`, and turned.
Points placed(Points points, double factor, double angle, const Point& at) {
    const gmXform<2> xform(gmMatrix<2>(factor * std::cos(angle), -factor * std::sin(angle), factor * std::sin(angle),
                                       factor * std::cos(angle)),
                           {});
    for (Point& point : points)
        point = xform * (point - middle) + at;
    return points;
}

/// The outline as pixels see it: made as large as gives about n of them.
Points pixels(std::size_t n) {
    Points dense = bench::outline(8 * n);
    double around = 0.0;
    for (std::size_t i = 0; i < dense.size(); ++i) {
        const Point step = dense[i] - dense[(i + 1) % dense.size()];
        around += std::max(std::abs(step.x()), std::abs(step.y()));
    }
    const double factor = static_cast<double>(n) / around;
    Points traced;
    for (const Point& point : dense) {
        const Point pixel(std::round(factor * point.x()), std::round(factor * point.y()));
        if (traced.empty() || pixel != traced.back())
            traced.push_back(pixel);
    }
    while (traced.size() > 1 && traced.front() == traced.back())
        traced.pop_back();
    return traced;
}

Points knot(Points points) {
    const std::size_t n = points.size();
    const auto from = points.begin() + static_cast<std::ptrdiff_t>(3 * n / 4);
    std::reverse(from, from + static_cast<std::ptrdiff_t>(std::max<std::size_t>(2, n / 64)));
    return points;
}

/// Along a wave and back along its mirror image. Nothing is surrounded twice, so that it makes no difference what a
/// library takes such places for.
Points chain(std::size_t n) {
    const std::size_t there = n / 2;
    const auto wave = [](double part) {
        return Point(100.0 + 800.0 * part, 500.0 + 200.0 * std::cos(1.5 * turn * part));
    };
    Points points;
    // Shifted, so that it does not cross itself in its vertices.
    for (std::size_t i = 0; i < there; ++i)
        points.push_back(wave((static_cast<double>(i) + 0.3) / static_cast<double>(there)));
    for (std::size_t i = n - there; i-- > 0;) {
        const Point point = wave((static_cast<double>(i) + 0.4) / static_cast<double>(n - there));
        points.emplace_back(point.x(), 1000.0 - point.y());
    }
    return points;
}

Points nearlyEllipse(std::size_t n) {
    Random random(6);
    Points points;
    for (std::size_t i = 0; i < n; ++i) {
        const double t = turn * static_cast<double>(i) / static_cast<double>(n);
        const Point exact(400.0 * std::cos(t), 250.0 * std::sin(t));
        points.push_back(Point(0.8 * exact.x() - 0.6 * exact.y(), 0.6 * exact.x() + 0.8 * exact.y()) + middle +
                         random.point(-0.01, 0.01));
    }
    return points;
}

/// Half of them anywhere in the box, half of them within 1 to 20 of a vertex.
Points around(const Points& shape, double size, unsigned seed) {
    Random random(seed);
    bool near = false;
    return many([&] {
        near = !near;
        return near ? random.of(shape) + random.step(size * random(0.001, 0.02)) : random.point(0.0, size);
    });
}

/// From one place in the box to another at least half its size away.
std::vector<Segment> across(double size, unsigned seed) {
    Random random(seed);
    return many([&] {
        Segment segment;
        do
            segment = {random.point(0.0, size), random.point(0.0, size)};
        while (segment.from.distance(segment.to) < 0.5 * size);
        return segment;
    });
}

}  // namespace

ManyRegions::ManyRegions(std::size_t n) {
    Random random(7);
    const Points shape = bench::outline(n);
    for (int row = 0; row < 25; ++row)
        for (int column = 0; column < 40; ++column)
            inOrder.push_back(placed(shape, 0.1, random(0.0, turn), Point(110.0 * column + 55.0, 110.0 * row + 55.0)));
    shuffled = inOrder;
    random.shuffle(shuffled);
    questions = many([&] {
        const double x = random(0.0, 4400.0);
        return Point(x, random(0.0, 2750.0));
    });
}

Inputs::Inputs(std::size_t count)
    : n(count),
      outline(bench::outline(n)),
      traced(pixels(n)),
      knotted(knot(outline)),
      chained(chain(n)),
      other(placed(outline, 0.97, 0.7, middle + Point(3.0, 5.0))),
      ellipse(nearlyEllipse(n)),
      questions(around(outline, 1000.0, 1)),
      longSegments(across(1000.0, 2)),
      tolerance(14000.0 / static_cast<double>(n)) {
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            holes.push_back(
                placed(bench::outline(n / 16 + 3), 0.05, 0.1, {400.0 + 100.0 * column, 400.0 + 100.0 * row}));

    double tracedSize = 0.0;
    for (const Point& pixel : traced)
        tracedSize = std::max({tracedSize, pixel.x(), pixel.y()});
    tracedQuestions = around(traced, tracedSize, 1);
    tracedSegments = across(tracedSize, 2);

    Random random(3);
    nearVertices = many([&] { return random.of(outline) + random.step(random(0.0, tolerance)); });
    shortSegments = many([&] {
        const Point from = random.of(outline) + random.step(random(0.0, 8.0));
        return Segment{from, from + random.step(10.0)};
    });
    transforms = many([&] {
        const double angle = random(0.0, turn);
        const double factor = random(0.5, 2.0);
        return gmXform<2>(gmMatrix<2>(factor * std::cos(angle), -factor * std::sin(angle), factor * std::sin(angle),
                                      factor * std::cos(angle)),
                          random.point(-100.0, 100.0));
    });
    angles = many([&] { return random(0.0, turn); });
}

const ManyRegions& Inputs::manyRegions() const {
    if (!manyRegions_)
        manyRegions_ = std::make_shared<const ManyRegions>(n);
    return *manyRegions_;
}

}  // namespace peers
