#include "graph/tagesfilter.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <time.h>

#include <string>

#include "days/verkehrstag.h"

namespace fplc::graph {
namespace {

// The weekday of a date is that of local time, as the library matches dates.
class TagesfilterTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char const* tz = getenv("TZ");
    if (tz) alterWert = tz, hatteWert = true;
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    tzset();
  }
  void TearDown() override {
    if (hatteWert)
      setenv("TZ", alterWert.c_str(), 1);
    else
      unsetenv("TZ");
    tzset();
  }
  std::string alterWert;
  bool hatteWert = false;
};

// "Di 2: am Di, 01.12.2026" for a filter; "-" for text that is none.
std::string beschreibe(std::optional<Tagesfilter> const& f) {
  if (!f) return "-";
  return std::string(1, f->wochentag) + ": " + f->beschreibung();
}

TEST_F(TagesfilterTest, ReadsWeekdaysAndCalendarDates) {
  std::pair<char const*, char const*> const wochentage[] = {
      {"Mo", "1: am Mo"}, {"So", "7: am So"}, {"mo", "-"}, {"7", "-"}, {"", "-"}, {"Mon", "-"}};
  for (auto const& [text, erwartet] : wochentage)
    EXPECT_EQ(beschreibe(wochentagsfilter(text)), erwartet) << text;

  std::pair<char const*, char const*> const daten[] = {
      {"2026-12-01", "2: am Di, 01.12.2026"},
      {"2026-12-13", "7: am So, 13.12.2026"},
      {"2026-03-29", "7: am So, 29.03.2026"},  // the night clocks go forward
      {"2028-02-29", "2: am Di, 29.02.2028"},
      {"1970-01-01", "4: am Do, 01.01.1970"},
      {"2026-02-29", "-"},
      {"2026-13-01", "-"},
      {"2026-00-10", "-"},
      {"2026-12-32", "-"},
      {"1969-12-31", "-"},
      {"2026-1-01", "-"},
      {"2026-12-1 ", "-"},
      {"+026-12-01", "-"},
      {"01.12.2026", "-"},
  };
  for (auto const& [text, erwartet] : daten)
    EXPECT_EQ(beschreibe(datumsfilter(text)), erwartet) << text;
}

TEST_F(TagesfilterTest, LetsTrainsRunAsTheirDaysOfOperationSay) {
  Verkehrstag werktags;
  werktags.days = "12345";
  Tagesfilter const alle;
  EXPECT_TRUE(alle.laeuft(&werktags));
  EXPECT_FALSE(alle.laeuft(nullptr));  // a train without days runs on no day
  EXPECT_TRUE(wochentagsfilter("Fr")->laeuft(&werktags));
  EXPECT_FALSE(wochentagsfilter("Sa")->laeuft(&werktags));
  EXPECT_TRUE(datumsfilter("2026-12-04")->laeuft(&werktags));   // a Friday
  EXPECT_FALSE(datumsfilter("2026-12-05")->laeuft(&werktags));  // a Saturday
}

}  // namespace
}  // namespace fplc::graph
