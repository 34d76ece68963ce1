#include "foundation/object/handle.h"

#include <type_traits>
#include <vector>

#include "foundation/object/exception.h"
#include "tests/foundation/object/counted.h"
#include "tests/foundation/support.h"

namespace {

using support::Counted;
using support::DerivedCounted;
using Handle = gmPtrHandle<Counted>;
using ConstHandle = gmPtrHandle_const<Counted>;

/// Each test starts and must end without living objects.
class HandleTest : public testing::Test {
  protected:
    HandleTest() {
        Counted::alive = 0;
        Counted::destroyed = 0;
    }
    ~HandleTest() override { EXPECT_EQ(Counted::alive, 0); }
};

class HandleCounting : public HandleTest {};
class HandleAssignment : public HandleTest {};
class HandleConversion : public HandleTest {};
class HandleDereference : public HandleTest {};

TEST_F(HandleCounting, TheLastHandleDestroysTheObject) {
    {
        Handle first(new Counted);
        {
            const Handle second = first;
            EXPECT_EQ(first->referenceCount(), 2);
            EXPECT_EQ(second.get(), first.get());
        }
        EXPECT_EQ(Counted::destroyed, 0);
        EXPECT_EQ(first->referenceCount(), 1);
    }
    EXPECT_EQ(Counted::destroyed, 1);
}

TEST_F(HandleCounting, CopiesInAVectorDestroyTheObjectOnce) {
    {
        std::vector<Handle> handles(1, Handle(new Counted));
        for (int i = 0; i < 100; ++i)
            handles.push_back(handles.front());
        EXPECT_EQ(handles.front()->referenceCount(), 101);
        handles.erase(handles.begin(), handles.begin() + 50);
        EXPECT_EQ(handles.front()->referenceCount(), 51);
    }
    EXPECT_EQ(Counted::destroyed, 1);
}

TEST_F(HandleCounting, ANewObjectCountsZero) {
    const Counted onTheStack;
    EXPECT_EQ(onTheStack.referenceCount(), 0);
}

TEST_F(HandleCounting, ACopiedObjectStartsAtZero) {
    const Handle handle(new Counted(4));
    const Counted copy(*handle);
    EXPECT_EQ(copy.referenceCount(), 0);
    EXPECT_EQ(copy.number(), 4);
}

TEST_F(HandleCounting, AssigningAnObjectLeavesBothCounts) {
    const Handle target(new Counted(1));
    const Handle other = target;
    const Handle source(new Counted(2));
    *target = *source;
    EXPECT_EQ(target->number(), 2);
    EXPECT_EQ(target->referenceCount(), 2);
    EXPECT_EQ(source->referenceCount(), 1);
}

TEST_F(HandleCounting, MovingHandsTheObjectOver) {
    Handle from(new Counted);
    const Counted* const object = from.get();
    const Handle to = std::move(from);
    EXPECT_EQ(to.get(), object);
    EXPECT_EQ(to->referenceCount(), 1);
    EXPECT_TRUE(from.isNull());
}

TEST_F(HandleCounting, MovingNeverThrowsSoThatVectorsMove) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Handle>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<Handle>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<ConstHandle>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<ConstHandle>);
}

TEST_F(HandleCounting, ARawPointerIsTakenOnlyOnRequest) {
    EXPECT_FALSE((std::is_convertible_v<Counted*, Handle>));
    EXPECT_FALSE((std::is_convertible_v<const Counted*, ConstHandle>));
    EXPECT_TRUE((std::is_convertible_v<std::nullptr_t, Handle>));
    EXPECT_TRUE((std::is_convertible_v<std::nullptr_t, ConstHandle>));
}

TEST_F(HandleAssignment, LetsGoOfTheOldObject) {
    Handle handle(new Counted(1));
    const Handle other(new Counted(2));
    handle = other;
    EXPECT_EQ(Counted::destroyed, 1);
    EXPECT_EQ(handle->number(), 2);
    EXPECT_EQ(handle->referenceCount(), 2);
}

TEST_F(HandleAssignment, OfNullEmptiesTheHandle) {
    Handle handle(new Counted);
    handle = nullptr;
    EXPECT_TRUE(handle.isNull());
    EXPECT_EQ(Counted::destroyed, 1);
}

TEST_F(HandleAssignment, ToItselfKeepsTheObject) {
    Handle handle(new Counted(7));
    const Handle& same = handle;
    handle = same;
    ASSERT_FALSE(handle.isNull());
    EXPECT_EQ(handle->referenceCount(), 1);
    EXPECT_EQ(handle->number(), 7);
}

TEST_F(HandleAssignment, MovedToItselfKeepsTheObject) {
    Handle handle(new Counted(7));
    Handle& same = handle;
    handle = std::move(same);
    ASSERT_FALSE(handle.isNull());
    EXPECT_EQ(handle->referenceCount(), 1);
}

TEST_F(HandleAssignment, FromWithinTheObjectItLetsGoOf) {
    Handle handle(new Counted(1));
    handle->next = Handle(new Counted(2));
    handle = handle->next;
    ASSERT_FALSE(handle.isNull());
    EXPECT_EQ(handle->number(), 2);
    EXPECT_EQ(handle->referenceCount(), 1);
    EXPECT_EQ(Counted::alive, 1);
}

TEST_F(HandleAssignment, MovedFromWithinTheObjectItLetsGoOf) {
    Handle handle(new Counted(1));
    handle->next = Handle(new Counted(2));
    handle = std::move(handle->next);
    ASSERT_FALSE(handle.isNull());
    EXPECT_EQ(handle->number(), 2);
    EXPECT_EQ(handle->referenceCount(), 1);
    EXPECT_EQ(Counted::alive, 1);
}

TEST_F(HandleAssignment, BetweenHandlesToOneObjectKeepsIt) {
    Handle first(new Counted);
    Handle second = first;
    first = second;
    second = std::move(first);
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(second->referenceCount(), 1);
}

TEST_F(HandleConversion, ADerivedObjectIsDestroyedThroughItsBase) {
    { const Handle handle = gmPtrHandle<DerivedCounted>(new DerivedCounted(3)); }
    EXPECT_EQ(Counted::destroyed, 1);
}

TEST_F(HandleConversion, ToAConstHandleShares) {
    const Handle handle(new Counted);
    const ConstHandle constant = handle;
    EXPECT_EQ(constant.get(), handle.get());
    EXPECT_EQ(handle->referenceCount(), 2);
}

TEST_F(HandleConversion, ToABaseClassShares) {
    const gmPtrHandle<DerivedCounted> derived(new DerivedCounted);
    const Handle base = derived;
    const ConstHandle constBase = derived;
    const ConstHandle constFromConst = gmPtrHandle_const<DerivedCounted>(derived);
    const gmPtrHandle<gmRepBase> root = base;
    EXPECT_EQ(derived->referenceCount(), 5);
    EXPECT_TRUE(root == derived);
    EXPECT_TRUE(constFromConst == constBase);
}

TEST_F(HandleConversion, NeverGoesFromConstOrFromBaseToDerived) {
    EXPECT_FALSE((std::is_constructible_v<Handle, ConstHandle>));
    EXPECT_FALSE((std::is_constructible_v<gmPtrHandle<DerivedCounted>, Handle>));
    EXPECT_FALSE((std::is_constructible_v<gmPtrHandle_const<DerivedCounted>, ConstHandle>));
}

TEST_F(HandleConversion, OfAnEmptyHandleIsEmpty) {
    const Handle base = gmPtrHandle<DerivedCounted>();
    const ConstHandle constant = base;
    EXPECT_TRUE(base.isNull());
    EXPECT_TRUE(constant.isNull());
}

TEST_F(HandleDereference, OfAnEmptyHandleThrowsBadPointer) {
    const Handle handle;
    const ConstHandle constant;
    EXPECT_THROW(static_cast<void>(*handle), gmBadPointer);
    EXPECT_THROW(static_cast<void>(handle->number()), gmBadPointer);
    EXPECT_THROW(static_cast<void>(*constant), gmBadPointer);
    EXPECT_THROW(static_cast<void>(constant->number()), gmBadPointer);
    EXPECT_EQ(handle.get(), nullptr);
    EXPECT_EQ(constant.get(), nullptr);
}

TEST_F(HandleDereference, OfAMovedFromHandleThrowsBadPointer) {
    Handle handle(new Counted);
    const Handle taken = std::move(handle);
    EXPECT_THROW(static_cast<void>(*handle), gmBadPointer);
}

TEST_F(HandleDereference, YieldsTheObject) {
    Counted* const object = new Counted(5);
    const Handle handle(object);
    EXPECT_EQ(&*handle, object);
    EXPECT_EQ(handle.operator->(), object);
    handle->number(6);
    EXPECT_EQ(ConstHandle(handle)->number(), 6);
}

TEST_F(HandleDereference, OfAConstHandleNeverChangesTheObject) {
    EXPECT_TRUE((std::is_same_v<decltype(*std::declval<const ConstHandle&>()), const Counted&>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<const ConstHandle&>().get()), const Counted*>));
    EXPECT_TRUE((std::is_same_v<decltype(*std::declval<const Handle&>()), Counted&>));
}

TEST_F(HandleDereference, EqualityMeansOneObject) {
    const Handle a(new Counted(1));
    const Handle b(new Counted(1));
    const Handle again = a;
    EXPECT_TRUE(a == again);
    EXPECT_TRUE(a == ConstHandle(again));
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a != b);
    EXPECT_TRUE(Handle() == Handle(nullptr));
    EXPECT_TRUE(a != Handle());
}

}  // namespace
