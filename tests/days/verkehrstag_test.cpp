#include "days/verkehrstag.h"
#include "days/weekday_list.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>
#include <tuple>

namespace {

// Weekdays in local time, under a zone with daylight saving fixed for the test (and restored).
// Each row gives the weekday digits of the day, the day before and the day after.
TEST(VerkehrstagTest, MatchesTheLocalWeekdayAndItsNeighbours) {
  char const* saved = std::getenv("TZ");
  std::string const savedTz = saved ? saved : "";
  setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
  tzset();
  std::tuple<char const*, long long, char, char, char> const rows[] = {
      {"Mo 2024-03-25 12:00", 1711364400, '1', '7', '2'},
      {"Di 2024-03-26 12:00", 1711450800, '2', '1', '3'},
      {"Mi 2024-03-27 12:00", 1711537200, '3', '2', '4'},
      {"Do 2024-03-28 12:00", 1711623600, '4', '3', '5'},
      {"Fr 2024-03-29 12:00", 1711710000, '5', '4', '6'},
      {"Sa 2024-03-30 23:59", 1711839540, '6', '5', '7'},
      {"So 2024-03-31 00:30 CET, UTC Saturday", 1711841400, '7', '6', '1'},
      {"So 2024-03-31 13:00 CEST", 1711882800, '7', '6', '1'},
      {"Mo 2024-04-01 00:30 CEST, UTC Sunday", 1711924200, '1', '7', '2'},
      {"So 2024-10-27 00:30 CEST, UTC Saturday", 1729981800, '7', '6', '1'},
      {"Fr 2100-01-01 01:00", 4102444800LL, '5', '4', '6'}};
  for (auto const& [local, t, day, previous, next] : rows) {
    for (char d = '0'; d <= '7'; ++d) {  // '0': a record without days matches nothing
      Verkehrstag const vt{"", d == '0' ? "" : std::string(1, d), "", "", "", "", 0};
      EXPECT_EQ(std::tuple(vt.Match(t), vt.MatchVortag(t), vt.MatchFolgetag(t),
                           vt.MatchWochentag(day), vt.MatchWochentagDanach(day)),
                std::tuple(d == day, d == previous, d == next, d == day, d == next))
          << local << ", days " << d;
    }
  }
  saved ? setenv("TZ", savedTz.c_str(), 1) : unsetenv("TZ");
  tzset();
}

TEST(VerkehrstagTest, ValueBasisindexAndWeekdayList) {
  std::pair<char const*, unsigned> const values[] = {
      {"", 0}, {"7", 64}, {"12345", 31}, {"1234567", 127}, {"6677", 96}, {"8", 128}, {"0", 0}};
  for (auto [days, value] : values)
    EXPECT_EQ((Verkehrstag{"", days, "", "", "", "", 0}.getValue()), value) << days;
  Verkehrstag const sommer{"Sommer", "67", "20240501", "20240930", "20240815", "20241003", 1};
  EXPECT_EQ(Verkehrstag().getBasisindex() + " " + sommer.getBasisindex(),
            "*** 20240501*20240930*20240815*20241003");
  std::string lists;
  for (char const* digits : {"1234567", "135", "4", "", "19"})
    lists += formatWeekdayList(digits) + "|";
  EXPECT_EQ(lists, "Mo, Di, Mi, Do, Fr, Sa und So|Mo, Mi und Fr|Do||Mo und Unbekannt|");
}

}  // namespace
