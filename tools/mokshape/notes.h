#pragma once

#include <string>

#include "tools/io/outline.h"

namespace mokshape {

/// Says on standard error what of a file was lost, one line a note.
void printNotes(const std::string& file, const Notes& notes);

}  // namespace mokshape
