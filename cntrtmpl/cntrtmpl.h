// The shapes that carry edge points, with everything they stand on.
#pragma once

#include "cntr/cntr.h"
#include "cntrtmpl/contourt.h"
#include "cntrtmpl/regionsett.h"
#include "cntrtmpl/regiont.h"
