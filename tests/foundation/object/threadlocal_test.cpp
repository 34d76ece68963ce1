#include "foundation/object/threadlocal.h"

#include <thread>
#include <vector>

#include "tests/foundation/support.h"

namespace {

class Slot : public gm_ThreadLocal {
  public:
    Slot() = default;
};

int numbers[4];
std::vector<void*> cleaned;

long clean(void* value) {
    cleaned.push_back(value);
    return 0;
}

/// Runs in a thread of its own, to its end.
template <class Work>
void onAThread(Work work) {
    std::thread(work).join();
}

class ThreadLocal : public testing::Test {
  protected:
    ThreadLocal() { cleaned.clear(); }
};

TEST_F(ThreadLocal, IsNullAtFirst) {
    const Slot slot;
    EXPECT_EQ(slot.OSValue(), nullptr);
}

TEST_F(ThreadLocal, KeepsAValueForEachThread) {
    Slot slot;
    slot.OSValue(&numbers[0]);
    onAThread([&slot] {
        EXPECT_EQ(slot.OSValue(), nullptr);
        slot.OSValue(&numbers[1]);
        EXPECT_EQ(slot.OSValue(), &numbers[1]);
    });
    EXPECT_EQ(slot.OSValue(), &numbers[0]);
    slot.OSValue(nullptr);
    EXPECT_EQ(slot.OSValue(), nullptr);
}

TEST_F(ThreadLocal, KeepsSlotsApart) {
    Slot a;
    Slot b;
    a.OSValue(&numbers[0]);
    EXPECT_EQ(b.OSValue(), nullptr);
    b.OSValue(&numbers[1]);
    EXPECT_EQ(a.OSValue(), &numbers[0]);
}

TEST_F(ThreadLocal, ANewSlotNeverFindsTheValueOfAnOldOne) {
    for (int i = 0; i < 100; ++i) {
        Slot slot;
        ASSERT_EQ(slot.OSValue(), nullptr);
        slot.OSValue(&numbers[0]);
    }
}

TEST_F(ThreadLocal, CleansUpWhenTheThreadEnds) {
    Slot slot;
    onAThread([&slot] {
        slot.OSValue(&numbers[2], clean);
        EXPECT_TRUE(cleaned.empty());
    });
    EXPECT_EQ(cleaned, std::vector<void*>{&numbers[2]});
}

TEST_F(ThreadLocal, CleansUpEverySlot) {
    Slot a;
    Slot b;
    onAThread([&] {
        a.OSValue(&numbers[0], clean);
        b.OSValue(&numbers[1], clean);
    });
    EXPECT_EQ(cleaned.size(), 2U);
}

TEST_F(ThreadLocal, CleansUpOnlyTheLastValue) {
    Slot slot;
    onAThread([&slot] {
        slot.OSValue(&numbers[0], clean);
        slot.OSValue(&numbers[1], clean);
    });
    EXPECT_EQ(cleaned, std::vector<void*>{&numbers[1]});
}

TEST_F(ThreadLocal, CleansUpNothingWithoutAFunctionOrAValue) {
    Slot slot;
    Slot other;
    onAThread([&] {
        slot.OSValue(&numbers[0], clean);
        slot.OSValue(&numbers[1]);
        other.OSValue(&numbers[2], clean);
        other.OSValue(nullptr);
    });
    EXPECT_TRUE(cleaned.empty());
}

TEST_F(ThreadLocal, CleansUpValuesOfASlotThatIsGone) {
    onAThread([] {
        Slot slot;
        slot.OSValue(&numbers[3], clean);
    });
    EXPECT_EQ(cleaned, std::vector<void*>{&numbers[3]});
}

TEST_F(ThreadLocal, LeavesOtherThreadsAlone) {
    Slot slot;
    slot.OSValue(&numbers[0], clean);
    onAThread([&slot] { slot.OSValue(&numbers[1]); });
    EXPECT_TRUE(cleaned.empty());
    slot.OSValue(nullptr);
}

Slot* late = nullptr;
int renewals = 0;

long renew(void* value) {
    cleaned.push_back(value);
    EXPECT_EQ(late->OSValue(), nullptr) << "what is being cleaned up is gone";
    if (renewals-- > 0)
        late->OSValue(&numbers[1], renew);
    return 0;
}

TEST_F(ThreadLocal, CleansUpWhatACleanUpSetsAnew) {
    Slot slot;
    late = &slot;
    renewals = 2;
    onAThread([&slot] { slot.OSValue(&numbers[0], renew); });
    EXPECT_EQ(cleaned, (std::vector<void*>{&numbers[0], &numbers[1], &numbers[1]}));
}

TEST_F(ThreadLocal, EndsTheThreadThoughACleanUpNeverGivesUp) {
    Slot slot;
    late = &slot;
    renewals = 1000000;
    onAThread([&slot] { slot.OSValue(&numbers[0], renew); });
    EXPECT_LT(cleaned.size(), 100U);
    renewals = 0;
}

/// Uses the slot when the clean-ups of its thread have already run.
struct LastBreath {
    ~LastBreath() {
        seen.push_back(late->OSValue());
        late->OSValue(&numbers[1], clean);
        renewed.push_back(late->OSValue());
    }
    static inline std::vector<void*> seen;
    static inline std::vector<void*> renewed;
};

TEST_F(ThreadLocal, CanBeUsedUntilTheVeryEndOfItsThread) {
    Slot slot;
    late = &slot;
    onAThread([&slot] {
        // Made before the slot is first used, so that they go after it.
        thread_local const LastBreath breaths[6];
        static_cast<void>(&breaths);
        slot.OSValue(&numbers[0], clean);
    });
    // The six go one after the other, as parts of one object: the value of the first is still there for the second.
    EXPECT_EQ(LastBreath::seen.front(), nullptr) << "the clean-ups have run";
    EXPECT_EQ(LastBreath::renewed, std::vector<void*>(6, &numbers[1]));
    EXPECT_EQ(cleaned, (std::vector<void*>{&numbers[0], &numbers[1]})) << "late values are cleaned up as well";
}

template <int Breath>
void breathe() {
    thread_local const LastBreath breath;
    static_cast<void>(&breath);
}

TEST_F(ThreadLocal, CanBeUsedByOneLateDestructorAfterTheOther) {
    LastBreath::seen.clear();
    LastBreath::renewed.clear();
    Slot slot;
    late = &slot;
    onAThread([&slot] {
        breathe<0>();
        breathe<1>();
        breathe<2>();
        breathe<3>();
        breathe<4>();
        breathe<5>();
        slot.OSValue(&numbers[0], clean);
    });
    EXPECT_EQ(LastBreath::seen, std::vector<void*>(6, nullptr));
    EXPECT_EQ(LastBreath::renewed, std::vector<void*>(6, &numbers[1]));
    EXPECT_EQ(cleaned.size(), 7U) << "each late value is cleaned up";
}

}  // namespace
