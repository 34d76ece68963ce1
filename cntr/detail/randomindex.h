#pragma once

#include "cntr/export.h"

namespace detail {

/// A uniformly drawn index in [0, size). Every thread draws from a generator of its own that starts with seed 1, so
/// that what a full cache evicts is the same in every run.
MOKCNTR_API long randomCacheIndex(long size);

}  // namespace detail
