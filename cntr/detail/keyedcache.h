#pragma once

#include <functional>
#include <iterator>
#include <map>
#include <utility>

#include "cntr/detail/randomindex.h"

namespace detail {

/// A few results, kept by key. It takes entries until it holds one more than the limit; then each new entry replaces
/// one drawn by the random cache index. Lowering the limit removes nothing.
template <class Key, class Value, class Less = std::less<Key>>
class KeyedCache {
  public:
    /// The value of the key, or null.
    const Value* find(const Key& key) const {
        const auto found = entries_.find(key);
        return found == entries_.end() ? nullptr : &found->second;
    }

    /// Adds the value of a key that is not there. `key` must be equal to itself: NaN orders with nothing.
    void insert(const Key& key, const Value& value, long limit) {
        const auto size = static_cast<long>(entries_.size());
        if (size <= limit) {
            entries_.emplace(key, value);
            return;
        }
        // The entry itself moves to its new place: there is nothing to allocate that could fail half-way.
        auto node = entries_.extract(std::next(entries_.begin(), randomCacheIndex(size)));
        node.key() = key;
        node.mapped() = value;
        entries_.insert(std::move(node));
    }

    std::size_t size() const { return entries_.size(); }
    void clear() { entries_.clear(); }

  private:
    std::map<Key, Value, Less> entries_;
};

}  // namespace detail
