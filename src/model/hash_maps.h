#pragma once
// The set-up of every hash map that the definition keys by text or number.

namespace fplc::detail {

// Hash maps of the definition start with 8 buckets and a maximum load factor of 1.0.
template <typename Map>
void initHashMap(Map& map) {
  map.rehash(8);
  map.max_load_factor(1.0f);
}

}  // namespace fplc::detail

// The library's own sources name it unqualified.
using fplc::detail::initHashMap;
