#pragma once
// A line (BIF command): its operating points in order and its layout transitions.
#include <cstdint>
#include <string>
#include <vector>

struct Strecke {
  std::string name;
};
