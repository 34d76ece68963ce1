#pragma once

#include <vector>

#include "foundation/math/xform.h"
#include "foundation/shapes/rect.h"

namespace mokshape {

/// A place of its own in a picture.
struct Panel {
    gmXform<2> xform;  ///< from the coordinates of the content to those of the picture: a scale and a shift
    gmRect frame;      ///< in the picture

    double scale() const { return xform.matrix()(0, 0); }
};

/// Puts contents of these extents side by side, in rows from the top, each centred in its panel. Panels of a row are
/// equally high, rows are equally wide. Contents of similar size keep one scale, but for a row that is enlarged, by
/// half at most, to fill the width; otherwise all become equally large.
std::vector<Panel> layOut(const std::vector<gmRect>& extents);

/// The same in a single row.
std::vector<Panel> layOutInRow(const std::vector<gmRect>& extents);

}  // namespace mokshape
