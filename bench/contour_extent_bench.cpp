#include "bench/outlines.h"

namespace {

using bench::cachedCall;
using bench::firstCall;

double encloseRect(const gmContour& contour) {
    return contour.encloseRect(gmXform<2>::I).size().x();
}
double encloseTurnedRect(const gmContour& contour) {
    static const gmXform<2> turn(gmMatrix<2>(gmRadian(0.3), gmRadian(0.3), 1.0, 1.0), {});
    return contour.encloseRect(turn).size().x();
}
double farthestPair(const gmContour& contour) {
    return contour.diameter(gmContourDefs::eMaxVertexPair);
}
double fromFirstVertex(const gmContour& contour) {
    return contour.diameter(gmContourDefs::eFromFirstVertex);
}
long extremalVertex(const gmContour& contour) {
    return contour.extremalVertexIndex(gmRadian(0.7));
}
double fitEllipse(const gmContour& contour) {
    gmEllipse ellipse;
    double residual = 0.0;
    contour.fitEllipse(ellipse, residual);
    return residual;
}

BENCHMARK_CAPTURE(firstCall, encloseRect, encloseRect)->Apply(bench::sizes);
BENCHMARK_CAPTURE(cachedCall, encloseRect, encloseRect)->Apply(bench::sizes);
BENCHMARK_CAPTURE(firstCall, encloseTurnedRect, encloseTurnedRect)->Apply(bench::sizes);
BENCHMARK_CAPTURE(cachedCall, encloseTurnedRect, encloseTurnedRect)->Apply(bench::sizes);
BENCHMARK_CAPTURE(firstCall, farthestPair, farthestPair)->Apply(bench::sizes);
BENCHMARK_CAPTURE(cachedCall, farthestPair, farthestPair)->Apply(bench::sizes);
BENCHMARK_CAPTURE(firstCall, fromFirstVertex, fromFirstVertex)->Apply(bench::sizes);
BENCHMARK_CAPTURE(cachedCall, fromFirstVertex, fromFirstVertex)->Apply(bench::sizes);
BENCHMARK_CAPTURE(firstCall, extremalVertex, extremalVertex)->Apply(bench::sizes);
BENCHMARK_CAPTURE(cachedCall, extremalVertex, extremalVertex)->Apply(bench::sizes);
BENCHMARK_CAPTURE(firstCall, fitEllipse, fitEllipse)->Apply(bench::sizes);
BENCHMARK_CAPTURE(cachedCall, fitEllipse, fitEllipse)->Apply(bench::sizes);

}  // namespace
