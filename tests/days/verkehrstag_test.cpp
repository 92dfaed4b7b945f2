#include "days/verkehrstag.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

namespace {

Verkehrstag withDays(std::string days) {
  Verkehrstag vt;
  vt.days = std::move(days);
  return vt;
}

// The weekday is taken in local time: a zone with daylight saving is fixed for
// the test, the process's zone restored afterwards. The weekday digit of each
// row is matched as a digit too.
TEST(VerkehrstagTest, MatchesTheLocalWeekdayAndItsNeighbours) {
  char const* saved = std::getenv("TZ");
  std::string const savedTz = saved ? saved : "";
  setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
  tzset();
  struct {
    char const* local;
    long long t;
    char day, previous, next;
  } const rows[] = {
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
      {"Fr 2100-01-01 01:00", 4102444800LL, '5', '4', '6'},
  };
  for (auto const& row : rows) {
    for (char d = '1'; d <= '7'; ++d) {
      SCOPED_TRACE(std::string(row.local) + ", days " + d);
      Verkehrstag const vt = withDays(std::string(1, d));
      EXPECT_EQ(vt.Match(row.t), d == row.day);
      EXPECT_EQ(vt.MatchVortag(row.t), d == row.previous);
      EXPECT_EQ(vt.MatchFolgetag(row.t), d == row.next);
      EXPECT_EQ(vt.MatchWochentag(row.day), d == row.day);
      EXPECT_EQ(vt.MatchWochentagDanach(row.day), d == row.next);
    }
    Verkehrstag const none;
    EXPECT_FALSE(none.Match(row.t) || none.MatchVortag(row.t) || none.MatchFolgetag(row.t) ||
                 none.MatchWochentag(row.day) || none.MatchWochentagDanach(row.day));
  }
  saved ? setenv("TZ", savedTz.c_str(), 1) : unsetenv("TZ");
  tzset();
}

TEST(VerkehrstagTest, ValueBasisindexAndWeekdayList) {
  std::pair<char const*, unsigned> const values[] = {
      {"", 0}, {"7", 64}, {"12345", 31}, {"1234567", 127}, {"6677", 96}, {"8", 128}, {"0", 0}};
  for (auto [days, value] : values)
    EXPECT_EQ(withDays(days).getValue(), value) << days;

  EXPECT_EQ(Verkehrstag().getBasisindex(), "***");
  Verkehrstag vt{"Sommer", "67", "20240501", "20240930", "20240815", "20241003", 1};
  EXPECT_EQ(vt.getBasisindex(), "20240501*20240930*20240815*20241003");

  std::pair<char const*, char const*> const lists[] = {{"135", "Mo, Mi und Fr"},
                                                       {"1234567", "Mo, Di, Mi, Do, Fr, Sa und So"},
                                                       {"4", "Do"},
                                                       {"", ""},
                                                       {"19", "Mo und Unbekannt"}};
  for (auto [digits, text] : lists)
    EXPECT_EQ(formatWeekdayList(digits), text) << digits;
}

}  // namespace
