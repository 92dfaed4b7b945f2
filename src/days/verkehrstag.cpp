#include "days/verkehrstag.h"
#include "days/weekday_list.h"

#include <ctime>

namespace {

static_assert(sizeof(std::time_t) >= 8, "calendar times beyond 2038 need a 64-bit time_t");

// The local weekday of a calendar time, 0 (Sunday) to 6 (Saturday), or -1 when
// the time lies outside the local calendar.
int localWeekday(long long t) {
  std::tm local{};
#ifdef _WIN32
  __time64_t time = t;
  if (_localtime64_s(&local, &time) != 0) return -1;
#else
  std::time_t time = static_cast<std::time_t>(t);
  if (!localtime_r(&time, &local)) return -1;
#endif
  return local.tm_wday;
}

// The weekday digit of a weekday number 0..6: "1" Monday ... "7" Sunday.
char weekdayDigit(int weekday) {
  return weekday == 0 ? '7' : static_cast<char>('0' + weekday);
}

bool contains(std::string const& days, char digit) {
  return days.find(digit) != std::string::npos;
}

char const* weekdayShortName(char digit) {
  static char const* const names[] = {"Mo", "Di", "Mi", "Do", "Fr", "Sa", "So"};
  if (digit < '1' || digit > '7') return "Unbekannt";
  return names[digit - '1'];
}

}  // namespace

bool Verkehrstag::Match(long long t) const {
  int weekday = localWeekday(t);
  return weekday >= 0 && contains(days, weekdayDigit(weekday));
}

bool Verkehrstag::MatchVortag(long long t) const {
  int weekday = localWeekday(t);
  if (weekday < 0) return false;
  // Sunday's previous day is Saturday; Monday's (weekday number 0) is Sunday.
  char previous = weekday == 0 ? '6' : weekdayDigit(weekday - 1);
  return contains(days, previous);
}

bool Verkehrstag::MatchFolgetag(long long t) const {
  int weekday = localWeekday(t);
  return weekday >= 0 && contains(days, weekdayDigit((weekday + 1) % 7));
}

bool Verkehrstag::MatchWochentag(char d) const {
  return contains(days, d);
}

bool Verkehrstag::MatchWochentagDanach(char d) const {
  char next = static_cast<char>(d + 1);
  return contains(days, next == '8' ? '1' : next);
}

unsigned char Verkehrstag::getValue() const {
  std::uint32_t mask = 0;
  for (char c : days) {
    // The shift is taken modulo 32: a stray character sets some bit instead of
    // shifting out of range.
    unsigned shift = static_cast<unsigned>(static_cast<unsigned char>(c) - '1') & 31u;
    mask |= std::uint32_t{1} << shift;
  }
  return static_cast<unsigned char>(mask & 0xFFu);
}

std::string Verkehrstag::getBasisindex() const {
  return from + "*" + to + "*" + exclude + "*" + include;
}

std::string fplc::detail::formatWeekdayList(std::string const& weekdays) {
  std::string text;
  for (std::size_t i = 0; i < weekdays.size(); ++i) {
    text += weekdayShortName(weekdays[i]);
    if (i + 2 == weekdays.size()) {
      text += " und ";
    } else if (i + 2 < weekdays.size()) {
      text += ", ";
    }
  }
  return text;
}
