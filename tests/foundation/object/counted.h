// Objects that count how many of them live, for tests of ownership.
#pragma once

#include <atomic>

#include "foundation/object/handle.h"
#include "foundation/object/repbase.h"

namespace support {

class Counted : public virtual gmRepBase {
  public:
    explicit Counted(int number = 0) : number_(number) { ++alive; }
    Counted(const Counted& other) : gmRepBase(other), number_(other.number_) { ++alive; }
    Counted& operator=(const Counted&) = default;
    ~Counted() override {
        --alive;
        ++destroyed;
    }

    int number() const { return number_; }
    void number(int value) { number_ = value; }

    /// Where a chain of objects goes on.
    gmPtrHandle<Counted> next;

    static inline std::atomic<int> alive{0};
    static inline std::atomic<int> destroyed{0};

  private:
    int number_;
};

class DerivedCounted : public Counted {
  public:
    using Counted::Counted;
};

}  // namespace support
