#pragma once

#include "foundation/export.h"

/// A colour of 8 bits a channel. Default: black.
class MOKDISPC_API gmColor {
  public:
    constexpr gmColor() = default;
    constexpr gmColor(unsigned char red, unsigned char green, unsigned char blue)
        : red_(red), green_(green), blue_(blue) {}

    constexpr unsigned char red() const { return red_; }
    constexpr unsigned char green() const { return green_; }
    constexpr unsigned char blue() const { return blue_; }

    friend constexpr bool operator==(const gmColor& a, const gmColor& b) {
        return a.red_ == b.red_ && a.green_ == b.green_ && a.blue_ == b.blue_;
    }
    friend constexpr bool operator!=(const gmColor& a, const gmColor& b) { return !(a == b); }

  private:
    unsigned char red_ = 0;
    unsigned char green_ = 0;
    unsigned char blue_ = 0;
};
