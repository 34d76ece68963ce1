#pragma once

#include <iosfwd>
#include <vector>

#include "tools/mokshape/measures.h"

namespace mokshape {

/// Draws the outlines as an SVG picture, one panel a file: outlines with their holes, and over them their centres as
/// crosses, bounding boxes and fitted ellipses. Outlines that cross themselves have a colour of their own; below those
/// that were cleaned, they show faintly as they were. y grows downwards.
///
/// Panels whose contents are of similar size show them at similar scales, see layOut.
/// Throws: FileError that names the file whose outlines are too far apart for a picture.
void writePicture(std::ostream& out, const std::vector<MeasuredFile>& files);

/// Draws the outlines of a file as they were and, to the right, as they are after clean-up, in the same colours. Those
/// that were replaced have the colour of outlines that cross themselves.
/// Throws: FileError that names the file whose outlines are too far apart for a picture.
void writeBeforeAndAfter(std::ostream& out, const OutlineFile& before, const std::vector<Outline>& after,
                         const std::vector<Outline>& replaced);

}  // namespace mokshape
