#pragma once

#include <vector>

#include "foundation/math/vector.h"
#include "foundation/shapes/shape.h"

/// A list of vertices and the rule by which a display fills it. Default: no vertex, even-odd.
/// Archived as the fill mode, the number of vertices and the vertices.
class MOKSTD_API gmPolygon : public gmShape {
  public:
    enum PolyFillMode { eEvenOdd = 0, eNonZero = 1 };

    gmPolygon() = default;
    gmPolygon(const std::vector<gmVector<2>>& vertices, PolyFillMode fillMode)
        : vertices_(vertices), fillMode_(fillMode) {}

    int size() const { return static_cast<int>(vertices_.size()); }
    /// The vertex with that index. Throws: gmMathError::OutOfRange when there is none.
    const gmVector<2>& operator[](long index) const;
    PolyFillMode fillMode() const { return fillMode_; }

    friend bool operator==(const gmPolygon& a, const gmPolygon& b) {
        return a.vertices_ == b.vertices_ && a.fillMode_ == b.fillMode_;
    }

  private:
    void archiveContent(gmArchive& archive) override;

    std::vector<gmVector<2>> vertices_;
    PolyFillMode fillMode_ = eEvenOdd;
};
