#pragma once

#include <iosfwd>
#include <vector>

#include "foundation/display/uitablet.h"

/// A tablet that collects segments and writes them as an SVG picture.
///
/// The picture shows all that was drawn, with a margin of a fiftieth of the larger side. The image layer lies
/// below the overlay layer. Segments of one colour and layer that follow each other end to start become one path.
/// Numbers are written in full and independent of the locale.
class MOKDISPC_API gmSvgTablet : public gmUITablet {
  public:
    /// Which way y grows in the drawn coordinates: down as in images (the default) or up as in mathematics.
    enum YAxis { eYDown = 0, eYUp = 1 };

    explicit gmSvgTablet(YAxis yAxis = eYDown) : yAxis_(yAxis) {}

    /// Throws: gmMathError::OutOfRange for a coordinate that is not finite, which SVG cannot hold.
    void drawLineSeg(const gmPair<double>& from, const gmPair<double>& to, const gmColor& color,
                     Layers layers) override;

    /// The width of the lines of a layer, in thousandths of the picture's larger side; 2 unless set.
    void strokeWidth(Layers layers, double thousandths);

    /// Writes the picture. An empty picture when nothing was drawn.
    void write(std::ostream& out) const;

  private:
    struct Segment {
        gmPair<double> from;
        gmPair<double> to;
        gmColor color;
    };

    YAxis yAxis_;
    double strokeWidth_[2] = {2.0, 2.0};
    std::vector<Segment> segments_[2];
};
