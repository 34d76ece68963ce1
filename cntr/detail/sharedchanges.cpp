#include "cntr/detail/sharedchanges.h"

#include <atomic>

namespace {

// Relaxed: a contour belongs to one thread at a time, and what hands it over orders these changes with the rest.
std::atomic<std::uint64_t> changes{0};

}  // namespace

std::uint64_t detail::sharedChanges() {
    return changes.load(std::memory_order_relaxed);
}

void detail::noteSharedChange() {
    changes.fetch_add(1, std::memory_order_relaxed);
}
