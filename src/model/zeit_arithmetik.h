#pragma once
// Arithmetic on times, reference times, day shifts and series steps.
//
// Times are signed 64-bit second counts that a definition can set to any value
// its digits spell, so sums and products of absurd times may leave the range of
// long long. They wrap around as two's-complement 64-bit numbers instead of
// overflowing: for every time that fits a day of operation the result is the
// ordinary one, and for the others it is defined.
#include <cstdint>

namespace fplc::detail {

constexpr long long zeitPlus(long long a, long long b) {
  return static_cast<long long>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}

constexpr long long zeitMinus(long long a, long long b) {
  return static_cast<long long>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
}

constexpr long long zeitMal(long long a, long long b) {
  return static_cast<long long>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
}

}  // namespace fplc::detail
