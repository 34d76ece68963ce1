#pragma once

namespace detail {

/// A value that is computed on demand. How a cache is held and published is known here alone.
///
/// The value stays in place when it is invalidated, so that its buffers serve the next computation. A computation
/// that throws leaves the slot invalid. Copies copy the value with its flag.
template <class T>
class Cached {
  public:
    Cached() = default;
    Cached(const Cached&) = default;
    Cached(Cached&&) noexcept = default;
    Cached& operator=(const Cached&) = delete;  // a copy is made first and then moved here: that cannot fail half-way
    Cached& operator=(Cached&&) noexcept = default;
    ~Cached() = default;

    bool isValid() const { return valid_; }

    /// The value, made by fill(value) if it is not there yet.
    template <class Fill>
    const T& get(Fill fill) {
        if (!valid_) {
            fill(value_);
            valid_ = true;
        }
        return value_;
    }

    void invalidate() { valid_ = false; }

  private:
    bool valid_ = false;
    T value_{};
};

}  // namespace detail
