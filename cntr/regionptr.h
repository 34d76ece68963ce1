#pragma once

#include "foundation/object/handle.h"

class gmRegion;

/// A shared region that is only read: what holds the holes of a region, and the results that shapes keep.
using RegionCPtr = gmPtrHandle_const<gmRegion>;
