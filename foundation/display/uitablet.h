#pragma once

#include "foundation/display/color.h"
#include "foundation/export.h"
#include "foundation/math/pair.h"

/// A surface that shapes draw themselves on, one straight segment at a time.
class MOKDISPC_API gmUITablet {
  public:
    /// What a segment belongs to: the picture itself or what is laid over it.
    enum Layers { eImageLayer = 0, eOverlayLayer = 1 };

    virtual ~gmUITablet();

    /// Draws the segment, both ends included, in the coordinates of the shape.
    virtual void drawLineSeg(const gmPair<double>& from, const gmPair<double>& to, const gmColor& color,
                             Layers layers) = 0;

  protected:
    gmUITablet() = default;
    gmUITablet(const gmUITablet&) = default;
    gmUITablet& operator=(const gmUITablet&) = default;
};
