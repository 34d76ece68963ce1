#pragma once

#include "foundation/export.h"

class gmDegree;

/// An angle in radians. It may lie outside one turn; norm() brings it back.
class MOKSTD_API gmRadian {
  public:
    constexpr gmRadian() = default;
    explicit constexpr gmRadian(double radians) : value_(radians) {}
    constexpr gmRadian(const gmDegree& degrees);

    constexpr double value() const { return value_; }

    /// The same direction in [0, 2 pi). NaN for an angle that is not finite.
    gmRadian norm() const;

    constexpr gmRadian operator-() const { return gmRadian(-value_); }
    constexpr gmRadian operator+(const gmRadian& other) const { return gmRadian(value_ + other.value_); }
    constexpr gmRadian operator-(const gmRadian& other) const { return gmRadian(value_ - other.value_); }

    friend constexpr bool operator==(const gmRadian& a, const gmRadian& b) { return a.value_ == b.value_; }
    friend constexpr bool operator!=(const gmRadian& a, const gmRadian& b) { return !(a == b); }
    friend constexpr bool operator<(const gmRadian& a, const gmRadian& b) { return a.value_ < b.value_; }

  private:
    double value_ = 0.0;
};

/// An angle in degrees.
class MOKSTD_API gmDegree {
  public:
    constexpr gmDegree() = default;
    explicit constexpr gmDegree(double degrees) : value_(degrees) {}
    constexpr gmDegree(const gmRadian& radians) : value_(radians.value() * 57.29577951308232) {}

    constexpr double value() const { return value_; }

    friend constexpr bool operator==(const gmDegree& a, const gmDegree& b) { return a.value_ == b.value_; }
    friend constexpr bool operator!=(const gmDegree& a, const gmDegree& b) { return !(a == b); }

  private:
    double value_ = 0.0;
};

constexpr gmRadian::gmRadian(const gmDegree& degrees) : value_(degrees.value() * 0.017453292519943295) {}

/// An angle in 256ths of a turn, as edge points carry it.
class MOKSTD_API gmAngle8 {
  public:
    constexpr gmAngle8() = default;
    explicit constexpr gmAngle8(unsigned char value) : value_(value) {}

    constexpr unsigned char value() const { return value_; }

    friend constexpr bool operator==(const gmAngle8& a, const gmAngle8& b) { return a.value_ == b.value_; }
    friend constexpr bool operator!=(const gmAngle8& a, const gmAngle8& b) { return !(a == b); }

  private:
    unsigned char value_ = 0;
};
