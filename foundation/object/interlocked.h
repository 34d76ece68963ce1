#pragma once

#include <atomic>
#include <cstdint>

/// A 32-bit count that several threads may change.
using gmInterlockedCount = std::atomic<std::int32_t>;

/// Adds one and returns the new value. Relaxed: whoever adds a reference already holds one, so the object is
/// visible to it and nothing else has to be ordered.
inline std::int32_t gfInterlockedIncrement(gmInterlockedCount& count) {
    return count.fetch_add(1, std::memory_order_relaxed) + 1;
}

/// Subtracts one and returns the new value. Acquire-release: the thread that sees zero destroys the object, and
/// must see everything that the other threads did to it before they let go.
inline std::int32_t gfInterlockedDecrement(gmInterlockedCount& count) {
    return count.fetch_sub(1, std::memory_order_acq_rel) - 1;
}
