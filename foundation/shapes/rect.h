#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "foundation/math/vector.h"
#include "foundation/shapes/shape.h"

/// An axis-aligned rectangle, its border included. Default: empty.
///
/// An empty rectangle contains nothing, meets nothing (but the whole plane) and encloses as nothing; so is one made
/// with a negative size or with a NaN. A rectangle of size (0, 0) is a point, and not empty. It is held as its two
/// corners, so that boxes that touch, touch exactly. Archived as the lower, then the upper corner.
class MOKSTD_API gmRect : public gmShape {
  public:
    gmRect() = default;
    /// From the corner with the lowest x and y, and the size.
    gmRect(const gmVector<2>& origin, const gmVector<2>& size) : gmRect(FromCorners{}, origin, origin + size) {}

    bool isEmpty() const { return !(lower_.x() <= upper_.x()); }
    /// The corner with the lowest x and y; (0, 0) when empty.
    gmVector<2> origin() const { return isEmpty() ? gmVector<2>() : lower_; }
    /// Width and height; (0, 0) when empty.
    gmVector<2> size() const { return isEmpty() ? gmVector<2>() : upper_ - lower_; }
    /// The two corners as they are held: of an empty rectangle, infinities that no point lies between.
    const gmVector<2>& lower() const { return lower_; }
    const gmVector<2>& upper() const { return upper_; }

    /// The smallest rectangle that contains both.
    gmRect enclose(const gmRect& other) const {
        return gmRect(FromCorners{}, {std::min(lower_.x(), other.lower_.x()), std::min(lower_.y(), other.lower_.y())},
                      {std::max(upper_.x(), other.upper_.x()), std::max(upper_.y(), other.upper_.y())});
    }

    /// Makes this the smallest rectangle that contains it and v: what enclose answers for the zero-size rectangle at v.
    void extend(const gmVector<2>& v) {
        if (std::isnan(v.x()) || std::isnan(v.y()))
            return;
        lower_ = gmVector<2>(std::min(lower_.x(), v.x()), std::min(lower_.y(), v.y()));
        upper_ = gmVector<2>(std::max(upper_.x(), v.x()), std::max(upper_.y(), v.y()));
    }

    /// True when v lies in the rectangle or on its border.
    virtual bool within(const gmVector<2>& v) const {
        return lower_.x() <= v.x() && v.x() <= upper_.x() && lower_.y() <= v.y() && v.y() <= upper_.y();
    }

    /// True when the two have a point in common; touching is enough.
    bool overlaps(const gmRect& other) const {
        return upper_.x() >= other.lower_.x() && other.upper_.x() >= lower_.x() && upper_.y() >= other.lower_.y() &&
               other.upper_.y() >= lower_.y();
    }

    friend bool operator==(const gmRect& a, const gmRect& b) { return a.lower_ == b.lower_ && a.upper_ == b.upper_; }

  private:
    struct FromCorners {};
    gmRect(FromCorners, const gmVector<2>& lower, const gmVector<2>& upper) {
        if (lower.x() <= upper.x() && lower.y() <= upper.y()) {
            lower_ = lower;
            upper_ = upper;
        }
    }
    void archiveContent(gmArchive& archive) override;

    static constexpr double infinity = std::numeric_limits<double>::infinity();
    gmVector<2> lower_{infinity, infinity};
    gmVector<2> upper_{-infinity, -infinity};
};
