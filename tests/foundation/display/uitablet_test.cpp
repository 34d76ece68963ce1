#include "foundation/display/uitablet.h"

#include <memory>

#include "tests/foundation/support.h"

namespace {

/// Counts what is drawn on it.
class Counter : public gmUITablet {
  public:
    explicit Counter(int& destroyed) : destroyed_(destroyed) {}
    ~Counter() override { ++destroyed_; }
    void drawLineSeg(const gmPair<double>&, const gmPair<double>&, const gmColor&, Layers) override { ++segments; }

    int segments = 0;

  private:
    int& destroyed_;
};

TEST(UITablet, DrawsThroughItsInterface) {
    int destroyed = 0;
    {
        const auto counter = std::make_unique<Counter>(destroyed);
        gmUITablet& tablet = *counter;
        tablet.drawLineSeg({0.0, 0.0}, {1.0, 1.0}, gmColor(), gmUITablet::eImageLayer);
        EXPECT_EQ(counter->segments, 1);
    }
    EXPECT_EQ(destroyed, 1);
    { const std::unique_ptr<gmUITablet> owned = std::make_unique<Counter>(destroyed); }
    EXPECT_EQ(destroyed, 2) << "destroyed through its base";
}

TEST(UITablet, HasTwoLayers) {
    EXPECT_EQ(gmUITablet::eImageLayer, 0);
    EXPECT_EQ(gmUITablet::eOverlayLayer, 1);
}

}  // namespace
