#include <thread>
#include <vector>

#include "foundation/object/handle.h"
#include "foundation/object/interlocked.h"
#include "tests/foundation/object/counted.h"
#include "tests/foundation/support.h"

namespace {

using support::Counted;

TEST(Interlocked, YieldsTheNewValue) {
    gmInterlockedCount count{5};
    EXPECT_EQ(gfInterlockedIncrement(count), 6);
    EXPECT_EQ(gfInterlockedDecrement(count), 5);
    EXPECT_EQ(gfInterlockedDecrement(count), 4);
    EXPECT_EQ(sizeof count, 4U);
}

TEST(Interlocked, LosesNoChangeOfTwoThreads) {
    gmInterlockedCount count{0};
    const auto change = [&count] {
        for (int i = 0; i < 100000; ++i) {
            gfInterlockedIncrement(count);
            gfInterlockedIncrement(count);
            gfInterlockedDecrement(count);
        }
    };
    std::thread first(change);
    std::thread second(change);
    first.join();
    second.join();
    EXPECT_EQ(count.load(), 200000);
}

TEST(HandleThreads, CopyingAndDroppingOnTwoThreadsDestroysOnce) {
    Counted::alive = 0;
    Counted::destroyed = 0;
    const gmPtrHandle<Counted> shared(new Counted(17));
    const auto work = [&shared] {
        std::vector<gmPtrHandle_const<Counted>> held;
        for (int i = 0; i < 20000; ++i) {
            gmPtrHandle<Counted> copy = shared;
            held.push_back(copy);
            if (held.size() > 16)
                held.clear();
            ASSERT_EQ(copy->number(), 17);
        }
    };
    std::thread first(work);
    std::thread second(work);
    first.join();
    second.join();
    EXPECT_EQ(shared->referenceCount(), 1);
    EXPECT_EQ(Counted::destroyed, 0);
}

TEST(HandleThreads, WhoeverLetsGoLastSeesWhatTheOtherWrote) {
    // Without ordering the thread that destroys would race with the one that wrote: the sanitizer tells.
    Counted::destroyed = 0;
    for (int i = 0; i < 2000; ++i) {
        gmPtrHandle<Counted> mine(new Counted);
        mine->next = gmPtrHandle<Counted>(new Counted);
        std::thread other([theirs = mine]() mutable {
            theirs->number(theirs->number() + 1);
            theirs = nullptr;
        });
        mine = nullptr;
        other.join();
    }
    EXPECT_EQ(Counted::destroyed, 4000);
}

}  // namespace
