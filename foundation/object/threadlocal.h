#pragma once

#include <cstdint>

#include "foundation/export.h"

/// One thread-local slot: every thread sees a value of its own, null at first.
class MOKSTD_API gm_ThreadLocal {
  public:
    gm_ThreadLocal(const gm_ThreadLocal&) = delete;
    gm_ThreadLocal& operator=(const gm_ThreadLocal&) = delete;

    /// This thread's value.
    void* OSValue() const;
    /// Sets this thread's value, without a clean-up. A value that was there is forgotten, not cleaned up.
    void OSValue(void* value);
    /// Sets this thread's value and the function that cleans it up when the thread ends (unless it is null by
    /// then). What the function returns is ignored. Values that clean-ups and
    /// late destructors set while the thread ends are cleaned up in turn, within reason.
    void OSValue(void* value, long (*cleanUp)(void*));

  protected:
    gm_ThreadLocal();
    /// Values of threads that still run are cleaned up when those threads end.
    ~gm_ThreadLocal() = default;

  private:
    std::uint64_t id_;
};
