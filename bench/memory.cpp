// Prints what a region takes, in bytes a vertex: as it is made, and after questions of several kinds.
#include <malloc.h>

#include <cstdio>
#include <memory>

#include "bench/shapes.h"
#include "cntr/region.h"

namespace {

double allocated() {
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

void print(std::size_t n) {
    const std::vector<gmVector<2>> points = bench::outline(n);
    const double before = allocated();
    const auto region = std::make_unique<gmRegion>(points);
    const auto perVertex = [&] { return (allocated() - before) / static_cast<double>(n); };
    const double made = perVertex();
    const auto search = [&] {
        region->inside({500.0, 500.0}, false);
        region->closestPoint({1.0, 2.0}, false);
        region->vertexIndex({1.0, 2.0}, 5.0);
        region->intersections(gmLineSeg({0.0, 0.0}, {900.0, 900.0}), true);
    };
    search();
    const double searched = perVertex();
    region->isSelfIntersecting();
    region->diameter(gmContourDefs::eMaxVertexPair);
    region->length();
    const double measured = perVertex();
    region->lineSegs();
    std::printf("| %zu | %.1f | %.1f | %.1f | %.1f |\n", n, made, searched, measured, perVertex());
}

}  // namespace

int main() {
    std::printf("| vertices | as made | after searches | after measures | with lineSegs() |\n");
    std::printf("|--:|--:|--:|--:|--:|\n");
    for (const std::size_t n : {16, 256, 4096, 65536})
        print(n);
}
