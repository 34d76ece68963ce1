#pragma once

#include <iosfwd>
#include <optional>
#include <string>
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
    /// Throws: gmMathError::OutOfRange for a width that is negative or not finite.
    void strokeWidth(Layers layers, double thousandths);

    /// Fills the whole picture, its margin included, below everything that is drawn. Transparent unless set.
    void background(const gmColor& color) { background_ = color; }

    /// What viewers and screen readers call the picture, in UTF-8. Nothing unless set.
    void title(const std::string& title) { title_ = title; }

    /// Writes the picture. An empty picture when nothing was drawn.
    /// Throws: gmMathError::OutOfRange, before it writes, when what was drawn spans more than the largest double.
    void write(std::ostream& out) const;

  private:
    struct Segment {
        gmPair<double> from;
        gmPair<double> to;
        gmColor color;
    };

    YAxis yAxis_;
    double strokeWidth_[2] = {2.0, 2.0};
    std::optional<gmColor> background_;
    std::string title_;
    std::vector<Segment> segments_[2];
};
