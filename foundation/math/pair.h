#pragma once

/// Two numbers of one kind, for example the x and y of a pixel. Default: both zero.
template <class T>
class gmPair {
  public:
    constexpr gmPair() = default;
    constexpr gmPair(T x, T y) : x_(x), y_(y) {}

    constexpr T x() const { return x_; }
    constexpr T y() const { return y_; }

    friend constexpr bool operator==(const gmPair& a, const gmPair& b) { return a.x_ == b.x_ && a.y_ == b.y_; }
    friend constexpr bool operator!=(const gmPair& a, const gmPair& b) { return !(a == b); }

  private:
    T x_{};
    T y_{};
};
