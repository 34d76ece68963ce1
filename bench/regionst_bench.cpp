#include "bench/outlines.h"
#include "cntr/regionst.h"

namespace {

/// Sixteen outlines side by side, of a sixteenth of the vertices each; every other one crosses its neighbour if asked.
gmRegionSet parts(std::size_t n, bool crossing) {
    const gmRegion shape(bench::outline(n / 16 + 3));
    std::vector<RegionCPtr> regions;
    for (int i = 0; i < 16; ++i) {
        const gmPtrHandle<gmRegion> part(new gmRegion);
        const gmVector<2> shift(1100.0 * i - (crossing && i % 2 == 1 ? 500.3 : 0.0), 0.7 * i);
        shape.map(gmXform<2>(gmMatrix<2>(1.0, 0.0, 0.0, 1.0), shift), *part);
        regions.emplace_back(part);
    }
    return gmRegionSet(regions);
}

/// A query of a set whose caches are empty, while those of its regions are filled.
template <class Query>
void first(benchmark::State& state, Query query) {
    gmRegionSet set = parts(static_cast<std::size_t>(state.range(0)), false);
    const std::vector<RegionCPtr> regions = set.regions();
    for (auto _ : state) {
        set.regions(regions);
        benchmark::DoNotOptimize(query(set));
    }
}

template <class Query>
void cached(benchmark::State& state, Query query) {
    const gmRegionSet set = parts(static_cast<std::size_t>(state.range(0)), false);
    benchmark::DoNotOptimize(query(set));
    for (auto _ : state)
        benchmark::DoNotOptimize(query(set));
}

double area(const gmRegionSet& set) {
    return set.area(true);
}
double moments(const gmRegionSet& set) {
    return set.inertiaMatrix(true)(0, 0);
}
bool selfIntersecting(const gmRegionSet& set) {
    return set.isSelfIntersecting();
}

void inside(benchmark::State& state) {
    const gmRegionSet set = parts(static_cast<std::size_t>(state.range(0)), false);
    const std::vector<gmVector<2>> points = bench::queries();
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(set.inside(points[i++ % points.size()] * 16.0, true));
}

void regularize(benchmark::State& state) {
    gmRegionSet set = parts(static_cast<std::size_t>(state.range(0)), true);
    const std::vector<RegionCPtr> regions = set.regions();
    gmRegionSet result;
    for (auto _ : state) {
        set.regions(regions);
        set.regularize(result);
        benchmark::DoNotOptimize(result);
    }
}

BENCHMARK_CAPTURE(first, area, area)->Apply(bench::sizes);
BENCHMARK_CAPTURE(cached, area, area)->Apply(bench::sizes);
BENCHMARK_CAPTURE(first, moments, moments)->Apply(bench::sizes);
BENCHMARK(inside)->Apply(bench::sizes);
// Quadratic: the largest size would take minutes.
BENCHMARK_CAPTURE(first, selfIntersecting, selfIntersecting)->Arg(16)->Arg(256)->Arg(4096);
BENCHMARK(regularize)->Arg(16)->Arg(256)->Arg(4096);

}  // namespace
