#pragma once

#include <iosfwd>
#include <vector>

#include "tools/mokshape/measures.h"

namespace mokshape {

/// Draws the outlines as an SVG picture, one panel a file: outlines, and over those that are not holes their centres
/// as crosses, bounding boxes and fitted ellipses. Outlines that cross themselves have a colour of their own. y grows
/// downwards.
///
/// Panels whose contents are of similar size show them at similar scales, see layOut.
/// Throws: FileError that names the file whose outlines are too far apart for a picture.
void writePicture(std::ostream& out, const std::vector<MeasuredFile>& files);

}  // namespace mokshape
