#pragma once
// Number conversions and map look-ups that behave like std::stoi / std::stoul /
// std::stoull and unordered_map::at, but throw the standard exceptions with the
// what() texts that front-ends and existing definitions know:
//   "invalid stoi argument", "stoi argument out of range", "invalid stoul argument",
//   "stoul argument out of range", "invalid stoull argument",
//   "stoull argument out of range", "invalid unordered_map<K, T> key".
#include <stdexcept>
#include <string>

namespace fplc::detail {

int toInt(std::string const& text);
unsigned long toULong(std::string const& text);
unsigned long long toULongLong(std::string const& text);

[[noreturn]] void throwUnknownKey();

template <typename Map, typename Key>
auto& mapAt(Map& map, Key const& key) {
  auto it = map.find(key);
  if (it == map.end()) throwUnknownKey();
  return it->second;
}

}  // namespace fplc::detail

// The library's own sources name these unqualified.
using fplc::detail::mapAt;
using fplc::detail::throwUnknownKey;
using fplc::detail::toInt;
using fplc::detail::toULong;
using fplc::detail::toULongLong;
