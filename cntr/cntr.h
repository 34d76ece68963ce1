// Everything that the contour library offers, with the foundation it stands on.
#pragma once

#include "cntr/contour.h"
#include "cntr/defs.h"
#include "cntr/inertia.h"
#include "cntr/region.h"
#include "cntr/regionptr.h"
#include "cntr/regionst.h"
#include "foundation/foundation.h"
