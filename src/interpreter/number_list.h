#pragma once
// Limits of the commands that make many trains at once.
#include <cstddef>

// A list of train numbers, and a numeric TZ, yields at most this many numbers
// (trains). More is refused before any memory is taken: such a command is a slip
// that would otherwise exhaust the memory of the machine.
inline constexpr std::size_t maxZugnummern = 100000;
