#include "foundation/object/threadlocal.h"

#include <atomic>
#include <map>

namespace {

struct Slot {
    void* value = nullptr;
    long (*cleanUp)(void*) = nullptr;
};

using Slots = std::map<std::uint64_t, Slot>;

// A plain pointer has no destructor, so that code which runs late in a thread's end (destructors of other
// thread-local objects, clean-up functions) still finds a usable, if empty, slot.
thread_local Slots* slots = nullptr;

// Runs the clean-ups at the thread's end, again for as long as they set values anew, within reason.
struct AtThreadEnd {
    ~AtThreadEnd() {
        for (int round = 0; slots && round < 4; ++round) {
            const Slots ending = *slots;
            delete slots;
            slots = nullptr;
            for (const auto& [id, slot] : ending)
                if (slot.value && slot.cleanUp)
                    slot.cleanUp(slot.value);
        }
    }
};

Slots& ownSlots() {
    thread_local AtThreadEnd atThreadEnd;
    static_cast<void>(atThreadEnd);
    if (!slots)
        slots = new Slots;
    return *slots;
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
    ownSlots()[id_] = Slot{value, cleanUp};
}
