#include "bench/outlines.h"

namespace {

using bench::cachedCall;
using bench::firstCall;

double length(const gmContour& contour) {
    return contour.length();
}
double meanPosition(const gmContour& contour) {
    return contour.meanPosition().x();
}
std::size_t edges(const gmContour& contour) {
    return contour.lineSegs().size();
}

void map(benchmark::State& state) {
    const gmContour contour(bench::outline(static_cast<std::size_t>(state.range(0))), true);
    const gmXform<2> turn(gmMatrix<2>(gmRadian(0.3), gmRadian(0.3), 1.0, 1.0), {10.0, 20.0});
    gmContour out;
    for (auto _ : state) {
        contour.map(turn, out);
        benchmark::DoNotOptimize(out.points().data());
    }
}

void copyWithCaches(benchmark::State& state) {
    const gmContour contour(bench::outline(static_cast<std::size_t>(state.range(0))), true);
    contour.computeLineSegs();
    for (auto _ : state) {
        const gmContour copy(contour);
        benchmark::DoNotOptimize(copy.points().data());
    }
}

BENCHMARK_CAPTURE(firstCall, length, length)->Apply(bench::sizes);
BENCHMARK_CAPTURE(cachedCall, length, length)->Apply(bench::sizes);
BENCHMARK_CAPTURE(firstCall, meanPosition, meanPosition)->Apply(bench::sizes);
BENCHMARK_CAPTURE(cachedCall, meanPosition, meanPosition)->Apply(bench::sizes);
BENCHMARK_CAPTURE(firstCall, edges, edges)->Apply(bench::sizes);
BENCHMARK_CAPTURE(cachedCall, edges, edges)->Apply(bench::sizes);
BENCHMARK(map)->Apply(bench::sizes);
BENCHMARK(copyWithCaches)->Apply(bench::sizes);

}  // namespace
