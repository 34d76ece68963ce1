#include "bench/outlines.h"

namespace {

/// The cheapest tablet: what is left is the contour's own work.
class NoTablet : public gmUITablet {
  public:
    void drawLineSeg(const gmPair<double>& from, const gmPair<double>&, const gmColor&, Layers) override {
        benchmark::DoNotOptimize(from.x());
    }
};

void draw(benchmark::State& state) {
    const gmContour contour(bench::outline(static_cast<std::size_t>(state.range(0))), true);
    NoTablet tablet;
    for (auto _ : state)
        contour.draw(tablet, gmContourDefs::eOutline, gmColor(), gmUITablet::eImageLayer);
}

BENCHMARK(draw)->Apply(bench::sizes);

}  // namespace
