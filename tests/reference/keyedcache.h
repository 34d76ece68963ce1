// What a contour remembers by transform and by angle, kept as plainly as can be: a map that is rebuilt entry by entry.
#pragma once

#include <cmath>
#include <functional>
#include <map>

#include "foundation/math/floor.h"
#include "foundation/math/random.h"
#include "tests/reference/extent.h"
#include "tests/reference/outline.h"

namespace reference {

template <class Key, class Value, class Less = std::less<Key>>
class KeyedCache {
  public:
    using Entries = std::map<Key, Value, Less>;

    const Value* find(const Key& key) const {
        const auto found = entries_.find(key);
        return found == entries_.end() ? nullptr : &found->second;
    }

    void insert(const Key& key, const Value& value, long limit, gmRandomUniform& random) {
        const auto size = static_cast<long>(entries_.size());
        if (size <= limit) {
            entries_.emplace(key, value);
            return;
        }
        const long victim = gfIFloor(random.next(0.0, static_cast<double>(size)));
        Entries rebuilt;
        long k = 0;
        for (const auto& [oldKey, oldValue] : entries_) {
            if (k == victim)
                rebuilt.emplace(key, value);
            else
                rebuilt.emplace(oldKey, oldValue);
            k++;
        }
        entries_ = rebuilt;
    }

    const Entries& entries() const { return entries_; }
    void clear() { entries_.clear(); }

  private:
    Entries entries_;
};

/// The first five stored values tell transforms apart, one after the other.
struct FirstFiveLess {
    bool operator()(const gmXform<2>& a, const gmXform<2>& b) const {
        for (std::size_t i = 0; i < 5; i++) {
            if (a.values()[i] < b.values()[i])
                return true;
            if (b.values()[i] < a.values()[i])
                return false;
        }
        return false;
    }
};

/// A contour as far as its two keyed caches go, on a thread whose generator is `random`.
class RememberingOutline {
  public:
    RememberingOutline(const Outline& outline, gmRandomUniform& random) : outline_(outline), random_(random) {}

    gmRect encloseRect(const gmXform<2>& xform) {
        bool hasNan = false;
        for (const double value : xform.values())
            hasNan = hasNan || std::isnan(value);
        if (hasNan)
            return reference::encloseRect(outline_, xform);
        if (const gmRect* known = rects.find(xform))
            return *known;
        const gmRect rect = reference::encloseRect(outline_, xform);
        rects.insert(xform, rect, limit, random_);
        return rect;
    }

    long extremalVertexIndex(const gmRadian& angle) {
        if (std::isnan(angle.value()))
            return reference::extremalVertexIndex(outline_, angle);
        if (const long* known = angles.find(angle.value()))
            return *known;
        const long index = reference::extremalVertexIndex(outline_, angle);
        angles.insert(angle.value(), index, limit, random_);
        return index;
    }

    void change(const Outline& outline) {
        outline_ = outline;
        rects.clear();
        angles.clear();
    }

    const Outline& outline() const { return outline_; }

    long limit = 3;
    KeyedCache<gmXform<2>, gmRect, FirstFiveLess> rects;
    KeyedCache<double, long> angles;

  private:
    Outline outline_;
    gmRandomUniform& random_;
};

}  // namespace reference
