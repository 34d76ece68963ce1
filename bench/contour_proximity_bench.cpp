#include "bench/outlines.h"

namespace {

using bench::firstCall;
using bench::perPoint;

double closestPoint(const gmContour& contour, const gmVector<2>& point) {
    return contour.closestPoint(point, false).x();
}
long closestVertex(const gmContour& contour, const gmVector<2>& point) {
    return contour.closestVertexIndex(point);
}
std::size_t vertexIndex(const gmContour& contour, const gmVector<2>& point) {
    return contour.vertexIndex(point, 5.0).size();
}
std::size_t vertexIndexOnce(const gmContour& contour) {
    return contour.vertexIndex({500.0, 900.0}, 5.0).size();
}

BENCHMARK_CAPTURE(perPoint, closestPoint, closestPoint)->Apply(bench::sizes);
BENCHMARK_CAPTURE(perPoint, closestVertex, closestVertex)->Apply(bench::sizes);
BENCHMARK_CAPTURE(firstCall, vertexIndex, vertexIndexOnce)->Apply(bench::sizes);
BENCHMARK_CAPTURE(perPoint, vertexIndex_cached, vertexIndex)->Apply(bench::sizes);

}  // namespace
