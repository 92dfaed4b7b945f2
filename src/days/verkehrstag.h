#pragma once
// Days of operation: a set of weekdays with a calendar validity that the library
// only copies and compares.
#include <cstdint>
#include <string>

#include "../export.h"

struct FPLC_API Verkehrstag {
  std::string name;
  std::string days;  // weekday digits "1" (Monday) .. "7" (Sunday), e.g. "12345"
  std::string from;
  std::string to;
  std::string exclude;
  std::string include;
  std::uint32_t id = 0;

  bool Match(long long t) const;
  bool MatchVortag(long long t) const;
  bool MatchFolgetag(long long t) const;
  bool MatchWochentag(char d) const;
  bool MatchWochentagDanach(char d) const;
  unsigned char getValue() const;
  std::string getBasisindex() const;
};
