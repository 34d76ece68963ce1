#pragma once

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "cntr/detail/randomindex.h"

namespace detail {

/// A few results, kept by key. It takes entries until it holds one more than the limit; then each new entry replaces
/// one drawn by the random cache index. Lowering the limit removes nothing.
template <class Key, class Value, class Less = std::less<Key>>
class KeyedCache {
  public:
    /// The value of the key, or null.
    const Value* find(const Key& key) const {
        const auto place = std::lower_bound(entries_.begin(), entries_.end(), key, isBefore);
        return place == entries_.end() || Less()(key, place->first) ? nullptr : &place->second;
    }

    /// Adds the value of a key that is not there. `key` must be equal to itself: NaN orders with nothing. The answer is
    /// the key that was replaced, if any; valid until the next call.
    const Key* insert(const Key& key, const Value& value, long limit) {
        const auto place = std::lower_bound(entries_.begin(), entries_.end(), key, isBefore);
        const auto size = static_cast<long>(entries_.size());
        if (size <= limit) {
            entries_.emplace(place, key, value);
            return nullptr;
        }
        // The entry itself moves to its new place: there is nothing to allocate that could fail half-way.
        const auto victim = entries_.begin() + randomCacheIndex(size);
        replaced_ = victim->first;
        *victim = {key, value};
        if (place <= victim)
            std::rotate(place, victim, victim + 1);
        else
            std::rotate(victim, victim + 1, place);
        return &replaced_;
    }

    std::size_t size() const { return entries_.size(); }
    void clear() { entries_.clear(); }

  private:
    using Entry = std::pair<Key, Value>;

    static bool isBefore(const Entry& entry, const Key& key) { return Less()(entry.first, key); }

    std::vector<Entry> entries_;  // by key
    Key replaced_{};
};

}  // namespace detail
