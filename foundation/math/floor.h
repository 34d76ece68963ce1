#pragma once

#include "foundation/export.h"

/// The largest integer not above the argument. An argument beyond the range of long gives the nearest long,
/// NaN gives 0.
MOKSTD_API long gfIFloor(double value);
