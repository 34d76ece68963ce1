#pragma once

#include <functional>
#include <utility>

#include "foundation/object/persistent.h"

namespace support {

/// Counts the changes that reporting objects announce while it lives. One at a time.
class ChangeCounter {
  public:
    /// `look`, if given, sees the object at each announcement.
    explicit ChangeCounter(std::function<void(const gmPersistent&)> look = nullptr) : look_(std::move(look)) {
        current() = this;
        gmPersistent::changeObserver(&ChangeCounter::observe);
    }
    ChangeCounter(const ChangeCounter&) = delete;
    ChangeCounter& operator=(const ChangeCounter&) = delete;
    ~ChangeCounter() {
        gmPersistent::changeObserver(nullptr);
        current() = nullptr;
    }

    /// The number of changes since the last call.
    int take() { return std::exchange(count_, 0); }

  private:
    static ChangeCounter*& current() {
        static ChangeCounter* counter = nullptr;
        return counter;
    }
    static void observe(const gmPersistent& object) {
        current()->count_++;
        if (current()->look_)
            current()->look_(object);
    }

    std::function<void(const gmPersistent&)> look_;
    int count_ = 0;
};

}  // namespace support
