#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "foundation/display/uitablet.h"
#include "foundation/shapes/rect.h"

/// A tablet that collects segments and writes them as an SVG picture.
///
/// The picture shows all that was drawn, with a margin of a fiftieth of the larger side, or the view box that was
/// set. The image layer lies below the overlay layer. Segments of one colour and layer that follow each other end to
/// start become one path. Numbers are written in full and independent of the locale.
class MOKDISPC_API gmSvgTablet : public gmUITablet {
  public:
    /// Which way y grows in the drawn coordinates: down as in images (the default) or up as in mathematics.
    enum YAxis { eYDown = 0, eYUp = 1 };

    explicit gmSvgTablet(YAxis yAxis = eYDown) : yAxis_(yAxis) {}

    /// Throws: gmMathError::OutOfRange for a coordinate that is not finite, which SVG cannot hold.
    void drawLineSeg(const gmPair<double>& from, const gmPair<double>& to, const gmColor& color,
                     Layers layers) override;

    /// The width of the lines of a layer, in thousandths of the larger side of the view box or, without one, of
    /// what was drawn; 2 unless set.
    /// Throws: gmMathError::OutOfRange for a width that is negative or not finite.
    void strokeWidth(Layers layers, double thousandths);

    /// The size in pixels at which viewers show the picture, scaled alike in x and y and centred. Unless set, they
    /// scale it to fit.
    /// Throws: gmMathError::OutOfRange for a width or height that is not positive or not finite.
    void size(double width, double height);

    /// Shows this part of the drawn coordinates, without a margin. Unless set, all that was drawn is shown.
    /// Throws: gmMathError::OutOfRange for a rectangle that is empty, not finite, or without width or height.
    void viewBox(const gmRect& box);

    /// Fills the whole picture, its margin included, below everything that is drawn. Transparent unless set, and in
    /// a picture without a view box where nothing was drawn.
    void background(const gmColor& color) { background_ = color; }

    /// What viewers and screen readers call the picture, in UTF-8. Nothing unless set.
    /// Throws: gmMathError::OutOfRange for text that is not UTF-8 or has a character that XML cannot hold.
    void title(const std::string& title);

    /// Writes the picture. An empty picture when nothing was drawn. Whether the stream took it all is the state of
    /// the stream.
    /// Throws: gmMathError::OutOfRange, before it writes, when the picture or its lines are too large or too small
    /// for a double.
    void write(std::ostream& out) const;

  private:
    struct Segment {
        gmPair<double> from;
        gmPair<double> to;
        gmColor color;
    };

    /// What the picture shows, y growing down.
    struct Box {
        double left;
        double top;
        double width;
        double height;
        double larger;  ///< the side that the lines are thousandths of
    };

    double sign() const { return yAxis_ == eYUp ? -1.0 : 1.0; }
    std::optional<Box> drawnBox() const;
    std::string group(Layers layer, const Box& box) const;

    YAxis yAxis_;
    double strokeWidth_[2] = {2.0, 2.0};
    std::optional<gmColor> background_;
    std::optional<gmPair<double>> size_;
    std::optional<Box> viewBox_;
    std::string title_;  // escaped
    std::vector<Segment> segments_[2];
};
