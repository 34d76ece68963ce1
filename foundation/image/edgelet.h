#pragma once

#include "foundation/export.h"
#include "foundation/math/angle.h"
#include "foundation/math/vector.h"
#include "foundation/object/archive.h"

/// An edge point found in an image: where the grey value changes, how strongly, and in which direction it rises.
/// Default: everything 0.
class MOKIP_API gmEdgelet {
  public:
    gmEdgelet() = default;
    gmEdgelet(const gmVector<2>& position, unsigned short magnitude, const gmAngle8& angle)
        : position_(position), magnitude_(magnitude), angle_(angle) {}

    const gmVector<2>& position() const { return position_; }
    unsigned short magnitude() const { return magnitude_; }
    const gmAngle8& angle() const { return angle_; }

    friend bool operator==(const gmEdgelet& a, const gmEdgelet& b) {
        return a.position_ == b.position_ && a.magnitude_ == b.magnitude_ && a.angle_ == b.angle_;
    }
    friend bool operator!=(const gmEdgelet& a, const gmEdgelet& b) { return !(a == b); }

  private:
    gmVector<2> position_;
    unsigned short magnitude_ = 0;
    gmAngle8 angle_;
};

/// The position, the magnitude, the angle.
MOKIP_API gmArchive& operator||(gmArchive& archive, gmEdgelet& edgelet);
