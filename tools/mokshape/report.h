#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "tools/mokshape/measures.h"
#include "tools/mokshape/options.h"

namespace mokshape {

/// Writes the measures of all files as one report. Numbers of JSON and CSV round-trip; those of the table are rounded
/// to about five digits. Missing measures are null, empty and "-".
void writeReport(std::ostream& out, Format format, const std::vector<MeasuredFile>& files);

/// What the report in JSON says of each shape of a file: an object on one line.
std::vector<std::string> jsonOfShapes(const MeasuredFile& file);

}  // namespace mokshape
