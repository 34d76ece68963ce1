#include <stdexcept>

#include "bench/outlines.h"
#include "cntr/region.h"

namespace {

using Holes = std::vector<RegionCPtr>;

gmRegion plain(std::size_t n) {
    return gmRegion(bench::outline(n));
}

/// With nine small holes of a sixteenth of the vertices each.
gmRegion holed(std::size_t n) {
    Holes holes;
    const gmContour shape(bench::outline(n / 16 + 3), true);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) {
            const gmPtrHandle<gmRegion> hole(new gmRegion);
            const gmVector<2> shift(350.0 + 100.0 * column, 350.0 + 100.0 * row);
            gmRegion(shape).map(gmXform<2>(gmMatrix<2>(0.05, 0.0, 0.0, 0.05), shift), *hole);
            holes.push_back(hole);
        }
    gmRegion region(bench::outline(n));
    region.holes(holes);
    return region;
}

/// An outline that goes around three times and crosses itself six times.
gmRegion crossing(std::size_t n) {
    std::vector<gmVector<2>> points;
    for (std::size_t i = 0; i < n; ++i) {
        // Shifted, so that it does not cross itself in its vertices.
        const double t = 6.283185307179586 * (static_cast<double>(i) + 0.3) / static_cast<double>(n);
        const double radius = 300.0 + 150.0 * std::cos(2.0 * t);
        points.emplace_back(500.0 + radius * std::cos(3.0 * t), 500.0 + radius * std::sin(3.0 * t));
    }
    return gmRegion(points);
}

/// Vertices at random places of a square: everything crosses everything.
gmRegion tangled(std::size_t n) {
    std::mt19937 engine(1);
    std::vector<gmVector<2>> points;
    for (std::size_t i = 0; i < n; ++i) {
        const double x = static_cast<double>(engine() % 100000) / 100.0;
        points.emplace_back(x, static_cast<double>(engine() % 100000) / 100.0);
    }
    return gmRegion(points);
}

/// The same on a coarse grid, where edges run along each other and through vertices: clean-up refuses it.
gmRegion hopeless(std::size_t n) {
    std::mt19937 engine(777);
    std::vector<gmVector<2>> points;
    for (std::size_t i = 0; i < n; ++i) {
        const double x = static_cast<double>(engine() % 20);
        points.emplace_back(x, static_cast<double>(engine() % 20));
    }
    return gmRegion(points);
}

template <class Make>
void inside(benchmark::State& state, Make make) {
    const gmRegion region = make(static_cast<std::size_t>(state.range(0)));
    const std::vector<gmVector<2>> points = bench::queries();
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(region.inside(points[i++ % points.size()], true));
}

/// Setting the holes anew empties the caches and costs next to nothing itself where there are none.
void insideFirst(benchmark::State& state) {
    gmRegion region = plain(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        region.holes(Holes());
        benchmark::DoNotOptimize(region.inside({500.0, 500.0}, true));
    }
}

void area(benchmark::State& state) {
    gmRegion region = plain(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        region.holes(Holes());
        benchmark::DoNotOptimize(region.area(true));
    }
}

template <class Make, class CleanUp>
void cleanUp(benchmark::State& state, Make make, CleanUp cleanUp) {
    gmRegion region = make(static_cast<std::size_t>(state.range(0)));
    gmRegion result;
    for (auto _ : state) {
        region.holes(Holes());
        cleanUp(region, result);
        benchmark::DoNotOptimize(result.points().data());
    }
}

void regularize(const gmRegion& region, gmRegion& out) {
    region.regularize(out);
}
void outerHull(const gmRegion& region, gmRegion& out) {
    region.outerHull(out);
}
void refused(const gmRegion& region, gmRegion& out) {
    try {
        region.regularize(out);
    } catch (const gmContourDefs::BadParams&) {
        return;
    }
    throw std::logic_error("clean-up was to be refused");
}

BENCHMARK_CAPTURE(inside, plain_cached, plain)->Apply(bench::sizes);
BENCHMARK_CAPTURE(inside, holed_cached, holed)->Apply(bench::sizes);
BENCHMARK(insideFirst)->Apply(bench::sizes);
BENCHMARK(area)->Apply(bench::sizes);
// Quadratic: the largest size would take minutes.
BENCHMARK_CAPTURE(cleanUp, regularize, crossing, regularize)->Arg(16)->Arg(256)->Arg(4096);
BENCHMARK_CAPTURE(cleanUp, outerHull, crossing, outerHull)->Arg(16)->Arg(256)->Arg(4096);
// What clean-up costs at the worst.
BENCHMARK_CAPTURE(cleanUp, regularize_tangled, tangled, regularize)->Arg(200);
BENCHMARK_CAPTURE(cleanUp, outerHull_tangled, tangled, outerHull)->Arg(200);
BENCHMARK_CAPTURE(cleanUp, refused, hopeless, refused)->Arg(1000);

}  // namespace
