#pragma once

#include <cstdint>

#include "foundation/export.h"
#include "foundation/object/interlocked.h"

/// Virtual base of objects that handles share. It holds the reference count, which belongs to the object and
/// not to its value: a copy starts at zero, and assignment leaves the target's count alone.
class MOKSTD_API gmRepBase {
  public:
    virtual ~gmRepBase();

    /// How many handles hold the object now. On other threads it may already have changed.
    std::int32_t referenceCount() const { return count_.load(std::memory_order_relaxed); }

  protected:
    gmRepBase() = default;
    gmRepBase(const gmRepBase&) noexcept {}
    gmRepBase& operator=(const gmRepBase&) noexcept { return *this; }

  private:
    friend class gm_PtrHandleBase_RepAccessor;
    mutable gmInterlockedCount count_{0};
};

/// Common base of all handles: the only one that touches reference counts.
class MOKSTD_API gm_PtrHandleBase_RepAccessor {
  public:
    gm_PtrHandleBase_RepAccessor() = default;

  protected:
    gm_PtrHandleBase_RepAccessor(const gm_PtrHandleBase_RepAccessor&) = default;
    gm_PtrHandleBase_RepAccessor& operator=(const gm_PtrHandleBase_RepAccessor&) = default;
    virtual ~gm_PtrHandleBase_RepAccessor();

    /// Counts one handle more; nothing for null.
    static void acquire(const gmRepBase* object) {
        if (object)
            gfInterlockedIncrement(object->count_);
    }
    /// Counts one handle less and destroys the object with the last; nothing for null.
    static void release(const gmRepBase* object) {
        if (object && gfInterlockedDecrement(object->count_) == 0)
            delete object;
    }
    /// Throws gmBadPointer; kept out of line so that a dereference stays a test and a load.
    [[noreturn]] static void throwBadPointer();
};
