#pragma once

#include <cstdint>
#include <limits>

#include "cntr/defs.h"

namespace detail {

/// The cachedVectorSize that a caller asks for, as it is held.
inline std::int32_t checkedCacheLimit(long size) {
    if (size < 0)
        throw gmContourDefs::BadParams();
    if (size > std::numeric_limits<std::int32_t>::max())
        throw gmContourDefs::BadParams("cachedVectorSize does not fit in 32 bits");
    return static_cast<std::int32_t>(size);
}

}  // namespace detail
