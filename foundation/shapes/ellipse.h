#pragma once

#include "foundation/math/angle.h"
#include "foundation/math/vector.h"
#include "foundation/shapes/circle.h"
#include "foundation/shapes/shape.h"

/// An ellipse. Default: everything 0. Archived as the centre, the two radii and the rotation.
class MOKSTD_API gmEllipse : public gmShape {
  public:
    /// Its plain description: the x radius lies along the direction `rotation`, the y radius across it.
    struct gmEllipseGeom {
        gmVector<2> center;
        double xRadius = 0.0;
        double yRadius = 0.0;
        gmRadian rotation;
    };

    gmEllipse() = default;
    explicit gmEllipse(const gmEllipseGeom& geom) : geom_(geom) {}
    /// The circle as an ellipse of equal radii and rotation 0.
    explicit gmEllipse(const gmCircle& circle)
        : geom_{circle.center(), circle.radius(), circle.radius(), gmRadian(0.0)} {}

    const gmEllipseGeom& geom() const { return geom_; }
    const gmVector<2>& center() const { return geom_.center; }
    double xRadius() const { return geom_.xRadius; }
    double yRadius() const { return geom_.yRadius; }
    const gmRadian& rotation() const { return geom_.rotation; }

    friend bool operator==(const gmEllipse& a, const gmEllipse& b) {
        return a.geom_.center == b.geom_.center && a.geom_.xRadius == b.geom_.xRadius &&
               a.geom_.yRadius == b.geom_.yRadius && a.geom_.rotation == b.geom_.rotation;
    }

  private:
    void archiveContent(gmArchive& archive) override;

    gmEllipseGeom geom_;
};
