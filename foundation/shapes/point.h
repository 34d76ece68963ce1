#pragma once

#include "foundation/math/vector.h"
#include "foundation/shapes/shape.h"

/// The result of a projection or an intersection: a position, or none (parallel lines). Default: none.
/// Archived as whether it exists, then the position.
class MOKSTD_API gmPoint : public gmShape {
  public:
    gmPoint() = default;
    explicit gmPoint(const gmVector<2>& position) : exists_(true), position_(position) {}

    bool exists() const { return exists_; }
    /// The position; (0, 0) when there is none.
    const gmVector<2>& position() const { return position_; }
    /// The distance from the position to v; +infinity when there is no position.
    double distToPoint(const gmVector<2>& v) const;

    friend bool operator==(const gmPoint& a, const gmPoint& b) {
        return a.exists_ == b.exists_ && a.position_ == b.position_;
    }

  private:
    void archiveContent(gmArchive& archive) override;

    bool exists_ = false;
    gmVector<2> position_;
};
