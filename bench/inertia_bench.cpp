#include "cntr/inertia.h"

#include "bench/outlines.h"
#include "foundation/fit/convexhull.h"

namespace {

/// A function of a point list. These keep nothing: every call is a first call.
template <class Measure>
void perOutline(benchmark::State& state, Measure measure) {
    const std::vector<gmVector<2>> points = bench::outline(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(measure(points));
}

double area(const std::vector<gmVector<2>>& points) {
    return gf_Area(points);
}
double centerOfMass(const std::vector<gmVector<2>>& points) {
    return gf_CenterOfMass(points).x();
}
double secondMoments(const std::vector<gmVector<2>>& points) {
    return gf_InertiaDataPolygon(points).inertiaMatrix()(0, 0);
}
double stdDev(const std::vector<gmVector<2>>& points) {
    static std::vector<double> values;
    values.clear();
    for (const gmVector<2>& point : points)
        values.push_back(point.x());
    return gf_StdDev(values);
}
std::size_t convexHull(const std::vector<gmVector<2>>& points) {
    std::vector<gmVector<2>> hull;
    gfConvexHull(points, hull);
    return hull.size();
}

BENCHMARK_CAPTURE(perOutline, area, area)->Apply(bench::sizes);
BENCHMARK_CAPTURE(perOutline, centerOfMass, centerOfMass)->Apply(bench::sizes);
BENCHMARK_CAPTURE(perOutline, secondMoments, secondMoments)->Apply(bench::sizes);
BENCHMARK_CAPTURE(perOutline, stdDev, stdDev)->Apply(bench::sizes);
BENCHMARK_CAPTURE(perOutline, convexHull, convexHull)->Apply(bench::sizes);

}  // namespace
