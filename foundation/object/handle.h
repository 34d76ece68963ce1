#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

#include "foundation/export.h"
#include "foundation/object/repbase.h"

/// Storage of a counted handle that only reads its object. Use gmPtrHandle_const.
template <class T>
class MOKSTD_API gmPtrHandleBase_const : public gm_PtrHandleBase_RepAccessor {
  public:
    gmPtrHandleBase_const() = default;
    explicit gmPtrHandleBase_const(const T* object) : object_(object) { acquire(object_); }
    gmPtrHandleBase_const(const gmPtrHandleBase_const& other) : gmPtrHandleBase_const(other.object_) {}
    gmPtrHandleBase_const(gmPtrHandleBase_const&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    gmPtrHandleBase_const& operator=(gmPtrHandleBase_const other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~gmPtrHandleBase_const() override { release(object_); }

    bool isNull() const { return object_ == nullptr; }
    /// The object, or null. It stays the handle's.
    const T* get() const { return object_; }
    /// Throws: gmBadPointer when the handle is empty.
    const T& operator*() const { return *checked(); }
    const T* operator->() const { return checked(); }

  protected:
    const T* checked() const {
        if (!object_)
            throwBadPointer();
        return object_;
    }

  private:
    const T* object_ = nullptr;
};

/// Storage of a counted handle that may change its object. Use gmPtrHandle.
template <class T>
class MOKSTD_API gmPtrHandleBase : public gmPtrHandleBase_const<T> {
  public:
    gmPtrHandleBase() = default;
    explicit gmPtrHandleBase(T* object) : gmPtrHandleBase_const<T>(object) {}

    // The object was handed over as a T*, so that taking its const away again is sound.
    T* get() const { return const_cast<T*>(gmPtrHandleBase_const<T>::get()); }
    /// Throws: gmBadPointer when the handle is empty.
    T& operator*() const { return *const_cast<T*>(this->checked()); }
    T* operator->() const { return const_cast<T*>(this->checked()); }
};

/// A counted handle that may change its object: the object lives as long as any handle holds it, and the last
/// one destroys it. Copying shares; an empty handle holds nothing. T derives from gmRepBase and lives on the
/// heap. Handles to one object may be copied and dropped on several threads; one handle belongs to one thread.
template <class T, class Base = gmPtrHandleBase<T>, class ConstBase = gmPtrHandleBase_const<T>>
class MOKSTD_API gmPtrHandle : public Base {
  public:
    gmPtrHandle() = default;
    gmPtrHandle(std::nullptr_t) {}
    explicit gmPtrHandle(T* object) : Base(object) {}
    /// Shares the object of a handle to a derived class.
    template <class U, std::enable_if_t<std::is_convertible_v<U*, T*>, int> = 0>
    gmPtrHandle(const gmPtrHandle<U>& other) : Base(other.get()) {}
};

/// A counted handle that only reads its object; see gmPtrHandle.
template <class T, class Base = gmPtrHandleBase_const<T>>
class MOKSTD_API gmPtrHandle_const : public Base {
  public:
    gmPtrHandle_const() = default;
    gmPtrHandle_const(std::nullptr_t) {}
    explicit gmPtrHandle_const(const T* object) : Base(object) {}
    /// Shares the object of a handle to the same or a derived class, const or not.
    template <class U, std::enable_if_t<std::is_convertible_v<const U*, const T*>, int> = 0>
    gmPtrHandle_const(const gmPtrHandle<U>& other) : Base(other.get()) {}
    template <class U, std::enable_if_t<std::is_convertible_v<const U*, const T*>, int> = 0>
    gmPtrHandle_const(const gmPtrHandle_const<U>& other) : Base(other.get()) {}
};

/// True when both hold the same object, or neither holds one. Values are not compared.
template <class T, class U>
bool operator==(const gmPtrHandleBase_const<T>& a, const gmPtrHandleBase_const<U>& b) {
    return a.get() == b.get();
}
template <class T, class U>
bool operator!=(const gmPtrHandleBase_const<T>& a, const gmPtrHandleBase_const<U>& b) {
    return !(a == b);
}
