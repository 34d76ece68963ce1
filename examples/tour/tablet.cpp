// What docs/drawing.md shows: a tablet of one's own.
#include <iostream>

#include "cntr/cntr.h"

namespace {

/// Writes down what a display would paint.
class Listing : public gmUITablet {
  public:
    void drawLineSeg(const gmPair<double>& from, const gmPair<double>& to, const gmColor&, Layers layers) override {
        std::cout << (layers == eOverlayLayer ? "overlay " : "image   ") << from.x() << ' ' << from.y() << " -> "
                  << to.x() << ' ' << to.y() << '\n';
    }
};

}  // namespace

int main() {
    Listing listing;
    const gmContour triangle({{0, 0}, {4, 0}, {4, 3}}, true);
    triangle.draw(listing, gmContourDefs::eOutline, gmColor(31, 54, 84), gmUITablet::eImageLayer);
}
