#pragma once

#include <algorithm>
#include <cmath>

#include "cntr/detail/keyedcache.h"
#include "foundation/math/xform.h"
#include "foundation/shapes/rect.h"

namespace detail {

/// Orders transforms by the first five of their stored values. The sixth takes no part: two transforms that differ
/// there only share an entry. (No two do that keep the orientation and all angles; a reflection may share the entry of
/// a rotation.)
struct XformLess {
    bool operator()(const gmXform<2>& a, const gmXform<2>& b) const {
        return std::lexicographical_compare(a.values().begin(), a.values().begin() + 5, b.values().begin(),
                                            b.values().begin() + 5);
    }
};

/// The bounding boxes of a shape under a few transforms.
class RectCache {
  public:
    /// The box under the transform, made by compute() unless it is kept. What a transform with a NaN yields is not
    /// kept: it orders with nothing.
    template <class Compute>
    gmRect get(const gmXform<2>& xform, long limit, Compute compute) {
        const auto& values = xform.values();
        if (std::any_of(values.begin(), values.end(), [](double value) { return std::isnan(value); }))
            return compute();
        if (const gmRect* known = boxes_.find(xform))
            return *known;
        const gmRect box = compute();
        const gmXform<2>* const replaced = boxes_.insert(xform, box, limit);
        if (replaced && isIdentity(*replaced))
            holdsIdentity_ = false;
        if (isIdentity(xform)) {
            holdsIdentity_ = true;
            identity_ = box;
        }
        return box;
    }

    /// The box under the identity, or null when it is not kept.
    const gmRect* identity() const { return holdsIdentity_ ? &identity_ : nullptr; }

    void clear() {
        boxes_.clear();
        holdsIdentity_ = false;
    }

  private:
    static bool isIdentity(const gmXform<2>& xform) {
        return !XformLess()(xform, gmXform<2>::I) && !XformLess()(gmXform<2>::I, xform);
    }

    KeyedCache<gmXform<2>, gmRect, XformLess> boxes_;
    bool holdsIdentity_ = false;
    gmRect identity_;
};

}  // namespace detail
