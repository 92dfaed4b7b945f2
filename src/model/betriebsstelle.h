#pragma once
// An operating point (station, halt, junction, block post, crossover).
#include <cstdint>
#include <string>

#include "../export.h"

struct FPLC_API Betriebsstelle {
  std::string ds100;  // abbreviation; the key of the definition's table
  std::string name;   // long name; stop entries and segments store this text
  std::uint8_t fplcat =
      0;  // 0 unknown, 1 Bf, 2 Hp, 3 Abzw, 4 Bk, 5 Uest; never overwritten once set
  std::uint8_t benutzt = 0;  // set when a train run or segment refers to the point
};
