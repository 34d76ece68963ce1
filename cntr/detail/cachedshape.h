#pragma once

#include "cntr/detail/cached.h"
#include "foundation/object/handle.h"

namespace detail {

/// The shape that the cache holds, made by fill(shape) if it is not there yet. It outlives being copied over the
/// cache's owner, which then lets go of it.
template <class Shape, class Fill>
gmPtrHandle_const<Shape> cachedShape(Cached<gmPtrHandle_const<Shape>>& cache, Fill fill) {
    return cache.get([&](gmPtrHandle_const<Shape>& slot) {
        const gmPtrHandle<Shape> fresh(new Shape);
        slot = fresh;
        fill(*fresh);
    });
}

}  // namespace detail
