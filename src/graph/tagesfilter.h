#pragma once
// Which trains a time–distance graph draws: all of them, those running on one
// weekday, or those running on one date, matched as the library matches dates.
#include <optional>
#include <string>

struct Verkehrstag;

namespace fplc::graph {

struct Tagesfilter {
  enum Art { Alle, Wochentag, Datum };
  Art art = Alle;
  char wochentag = 0;   // "1" (Monday) .. "7" (Sunday); for a date its weekday
  long long datum = 0;  // Datum: local noon of the date, seconds since 1970
  std::string text;     // as the user wrote it: "Mo", "2026-12-01"

  // Whether a train with these days of operation runs under the filter. A train
  // without days of operation runs on no day.
  bool laeuft(Verkehrstag const* tage) const;
  // For the page and messages (UTF-8): "am Mo", "am Di, 01.12.2026", "ohne Tagesfilter".
  std::string beschreibung() const;
};

// "Mo" .. "So"; none for anything else.
std::optional<Tagesfilter> wochentagsfilter(std::string const& text);
// "2026-12-01", a date of the Gregorian calendar from 1970 to 9999; none for
// anything else. The weekday is that of the local time zone, as in the library.
std::optional<Tagesfilter> datumsfilter(std::string const& text);

}  // namespace fplc::graph
