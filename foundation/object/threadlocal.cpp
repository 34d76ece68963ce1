#include "foundation/object/threadlocal.h"

#include <atomic>
#include <map>
#include <memory>
#include <utility>

namespace {

struct Slot {
    void* value = nullptr;
    long (*cleanUp)(void*) = nullptr;
};

using Slots = std::map<std::uint64_t, Slot>;

// A plain pointer has no destructor, so that code which runs late in a thread's end (destructors of other
// thread-local objects, clean-up functions) still finds a usable, if empty, slot.
thread_local Slots* slots = nullptr;

// How often the thread's end has cleaned up, and whether it is doing so now.
thread_local int ends = 0;
thread_local bool ending = false;

// Runs the clean-ups at the thread's end, again for as long as they set values anew, within reason.
struct AtThreadEnd {
    ~AtThreadEnd() {
        ++ends;
        ending = true;
        for (int round = 0; slots && round < 4; ++round) {
            const std::unique_ptr<Slots> current(std::exchange(slots, nullptr));
            for (const auto& [id, slot] : *current)
                if (slot.value && slot.cleanUp)
                    slot.cleanUp(slot.value);
        }
        delete std::exchange(slots, nullptr);
        ending = false;
    }
};

// Each destructor of a thread-local object that sets a value after the clean-ups asks for one more end, and each end
// for an object of its own, because one that was destroyed is not made again. Past the last, values are kept and
// nobody cleans them up.
template <int End = 0>
void planCleanUp() {
    if constexpr (End < 16) {
        if (End < ends)
            return planCleanUp<End + 1>();
        thread_local AtThreadEnd atThreadEnd;
        static_cast<void>(atThreadEnd);
    }
}

}  // namespace

gm_ThreadLocal::gm_ThreadLocal() {
    // Numbers are never used twice: a new slot must not find what was left under an old one's address.
    static std::atomic<std::uint64_t> next{0};
    id_ = next++;
}

void* gm_ThreadLocal::OSValue() const {
    if (!slots)
        return nullptr;
    const auto found = slots->find(id_);
    return found == slots->end() ? nullptr : found->second.value;
}

void gm_ThreadLocal::OSValue(void* value) {
    OSValue(value, nullptr);
}

void gm_ThreadLocal::OSValue(void* value, long (*cleanUp)(void*)) {
    if (!slots) {
        auto made = std::make_unique<Slots>();
        if (!ending)
            planCleanUp();
        slots = made.release();
    }
    (*slots)[id_] = Slot{value, cleanUp};
}
