// How the benchmarks ask: first calls, cached calls, a new point each time.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <random>
#include <vector>

#include "bench/shapes.h"
#include "cntr/contour.h"

namespace bench {

/// Registers the sizes that every benchmark is measured at.
inline void sizes(benchmark::internal::Benchmark* b) {
    b->Arg(16)->Arg(256)->Arg(4096)->Arg(65536);
}

/// A query of a contour whose caches are empty. Setting closedness anew empties them and costs next to nothing itself.
template <class Query>
void firstCall(benchmark::State& state, Query query) {
    gmContour contour(outline(static_cast<std::size_t>(state.range(0))), true);
    for (auto _ : state) {
        contour.isClosed(true);
        benchmark::DoNotOptimize(query(contour));
    }
}

/// The same query again, answered from the caches.
template <class Query>
void cachedCall(benchmark::State& state, Query query) {
    const gmContour contour(outline(static_cast<std::size_t>(state.range(0))), true);
    benchmark::DoNotOptimize(query(contour));
    for (auto _ : state)
        benchmark::DoNotOptimize(query(contour));
}

/// A query about a point, a new point each time.
template <class Query>
void perPoint(benchmark::State& state, Query query) {
    const gmContour contour(outline(static_cast<std::size_t>(state.range(0))), true);
    const std::vector<gmVector<2>> points = queries();
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(query(contour, points[i++ % points.size()]));
}

}  // namespace bench
