#include "bench/outlines.h"

namespace {

using bench::cachedCall;
using bench::firstCall;
using bench::perPoint;

std::size_t longSegment(const gmContour& contour) {
    return contour.intersections(gmLineSeg({0.0, 480.0}, {1000.0, 520.0}), true).size();
}
std::size_t shortSegment(const gmContour& contour, const gmVector<2>& point) {
    return contour.intersections(gmLineSeg(point, point + gmVector<2>(5.0, 3.0)), true).size();
}
bool selfIntersecting(const gmContour& contour) {
    return contour.isSelfIntersecting();
}

// Small beside the outline, so that the larger sizes end in a lunch break.
void twoContours(benchmark::State& state) {
    const gmContour contour(bench::outline(static_cast<std::size_t>(state.range(0))), true);
    gmContour other;
    gmContour(bench::outline(64), true).map(gmXform<2>(gmMatrix<2>(1.0, 0.0, 0.0, 1.0), {100.0, 50.0}), other);
    for (auto _ : state)
        benchmark::DoNotOptimize(contour.intersections(other).size());
}

BENCHMARK_CAPTURE(firstCall, longSegment, longSegment)->Apply(bench::sizes);
BENCHMARK_CAPTURE(cachedCall, longSegment, longSegment)->Apply(bench::sizes);
BENCHMARK_CAPTURE(perPoint, shortSegment_cached, shortSegment)->Apply(bench::sizes);
BENCHMARK(twoContours)->Apply(bench::sizes);
BENCHMARK_CAPTURE(firstCall, selfIntersecting, selfIntersecting)->Apply(bench::sizes);
BENCHMARK_CAPTURE(cachedCall, selfIntersecting, selfIntersecting)->Apply(bench::sizes);

}  // namespace
