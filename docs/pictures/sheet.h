// A sheet of panels that the pictures of the guide are drawn on.
#pragma once

#include <string>
#include <vector>

#include "cntr/cntr.h"
#include "foundation/display/svgtablet.h"

namespace pictures {

constexpr gmColor ink(31, 54, 84);
constexpr gmColor red(196, 48, 43);
constexpr gmColor green(38, 132, 115);
constexpr gmColor filling(150, 205, 196);
constexpr gmColor faint(176, 172, 160);

using Points = std::vector<gmVector<2>>;

/// A tablet of so many pixels. What is drawn goes to the panel that was chosen last, in the panel's coordinates, y
/// growing up. Places are rounded to a sixteenth of a pixel: then the last bit of a cosine does not make another
/// picture.
class Sheet : public gmUITablet {
  public:
    Sheet(const std::string& title, double width, double height);

    /// From now on (0, 0) is at this pixel, and 1 is so many pixels long.
    void panel(const gmVector<2>& origin, double scale) {
        origin_ = origin;
        scale_ = scale;
    }
    double pixels(double count) const { return count / scale_; }

    void drawLineSeg(const gmPair<double>& from, const gmPair<double>& to, const gmColor& color,
                     Layers layers) override;
    void line(const gmVector<2>& from, const gmVector<2>& to, const gmColor& color, Layers layers = eImageLayer);
    void dashed(const gmVector<2>& from, const gmVector<2>& to, const gmColor& color);
    void arrow(const gmVector<2>& from, const gmVector<2>& to, const gmColor& color, bool isDashed = false);

    void outline(const gmContour& contour, const gmColor& color, Layers layers = eImageLayer);
    /// The outline, the holes, and their holes.
    void region(const gmRegion& region, const gmColor& color);
    /// Hatches where points are inside.
    void hatch(const gmRegion& region, bool considerHoles, const gmColor& color);
    void rectangle(const gmRect& rect, const gmColor& color);
    void ellipse(const gmEllipse& ellipse, const gmColor& color);
    void dot(const gmVector<2>& place, const gmColor& color);
    void cross(const gmVector<2>& place, const gmColor& color);
    /// A number, centred.
    void number(int value, const gmVector<2>& place, const gmColor& color);

    void write(const std::string& fileName) const { write(tablet_, fileName); }
    static void write(const gmSvgTablet& tablet, const std::string& fileName);

  private:
    gmSvgTablet tablet_;
    gmVector<2> origin_;
    double scale_ = 1.0;
};

}  // namespace pictures
