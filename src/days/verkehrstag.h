#pragma once
// Days of operation: a set of weekdays with a calendar validity that the library
// only copies and compares.
#include <cstdint>
#include <string>

struct Verkehrstag {
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

// "Mo, Mi und Fr" for the weekday digits "135".
std::string formatWeekdayList(std::string const& weekdays);
