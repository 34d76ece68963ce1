// Counts the allocations of an action and lets one of them fail. For programs that are linked with allocations.cpp,
// which replaces the global operator new.
#pragma once

#include <new>

namespace support {

struct AllocationWatch {
    bool watching = false;
    long count = 0;
    long failing = -1;  // the number of the allocation that fails
};
inline thread_local AllocationWatch allocationWatch;

/// How many allocations the action makes.
template <class Action>
long allocationsOf(Action action) {
    allocationWatch = {true, 0, -1};
    action();
    allocationWatch.watching = false;
    return allocationWatch.count;
}

/// Runs the action with its allocation number `which` failing; whether it came that far.
template <class Action>
bool interruptedAt(long which, Action action) {
    allocationWatch = {true, 0, which};
    try {
        action();
    } catch (const std::bad_alloc&) {
        // What is tested is what it leaves behind.
    }
    allocationWatch.watching = false;
    return allocationWatch.count > which;
}

/// More allocations than any of the actions makes.
constexpr long enoughAllocations = 5000;

}  // namespace support
