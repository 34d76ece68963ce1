#pragma once

#include "foundation/math/vector.h"
#include "foundation/shapes/shape.h"

/// A circle. Default: centre (0, 0), radius 0. Archived as the centre, then the radius.
class MOKSTD_API gmCircle : public gmShape {
  public:
    gmCircle() = default;
    gmCircle(const gmVector<2>& center, double radius) : center_(center), radius_(radius) {}

    const gmVector<2>& center() const { return center_; }
    double radius() const { return radius_; }

    friend bool operator==(const gmCircle& a, const gmCircle& b) {
        return a.center_ == b.center_ && a.radius_ == b.radius_;
    }

  private:
    void archiveContent(gmArchive& archive) override;

    gmVector<2> center_;
    double radius_ = 0.0;
};
