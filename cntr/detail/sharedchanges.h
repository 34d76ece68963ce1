#pragma once

#include <cstdint>

namespace detail {

/// Counts the changes of contours that handles share, all over the process: whoever remembers something of shared
/// contours asks whether there were any since. (Handles let an application change a region that a set holds.)
std::uint64_t sharedChanges();
void noteSharedChange();

}  // namespace detail
