#include "graph/tagesfilter.h"

#include <array>
#include <charconv>
#include <ctime>

#include "days/verkehrstag.h"

namespace fplc::graph {

namespace {

constexpr std::array<char const*, 7> kKurznamen = {"Mo", "Di", "Mi", "Do", "Fr", "Sa", "So"};

bool liesZahl(std::string const& text, std::size_t von, std::size_t laenge, int& zahl) {
  for (std::size_t i = von; i < von + laenge; ++i)
    if (text[i] < '0' || text[i] > '9') return false;
  char const* anfang = text.data() + von;
  return std::from_chars(anfang, anfang + laenge, zahl).ec == std::errc();
}

bool istSchaltjahr(int jahr) {
  return (jahr % 4 == 0 && jahr % 100 != 0) || jahr % 400 == 0;
}

int tageImMonat(int jahr, int monat) {
  constexpr int tage[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return monat == 2 && istSchaltjahr(jahr) ? 29 : tage[monat - 1];
}

}  // namespace

bool Tagesfilter::laeuft(Verkehrstag const* tage) const {
  if (!tage) return false;
  switch (art) {
    case Alle:
      return true;
    case Wochentag:
      return tage->MatchWochentag(wochentag);
    case Datum:
      return tage->Match(datum);
  }
  return false;
}

std::string Tagesfilter::beschreibung() const {
  if (art == Alle) return "ohne Tagesfilter";
  if (wochentag < '1' || wochentag > '7') return "an keinem Tag";
  std::string tag = std::string("am ") + kKurznamen[wochentag - '1'];
  if (art == Wochentag) return tag;
  // text is "JJJJ-MM-TT", checked when the filter was made.
  return tag + ", " + text.substr(8, 2) + "." + text.substr(5, 2) + "." + text.substr(0, 4);
}

std::optional<Tagesfilter> wochentagsfilter(std::string const& text) {
  for (std::size_t i = 0; i < kKurznamen.size(); ++i) {
    if (text != kKurznamen[i]) continue;
    Tagesfilter filter;
    filter.art = Tagesfilter::Wochentag;
    filter.wochentag = static_cast<char>('1' + i);
    filter.text = text;
    return filter;
  }
  return std::nullopt;
}

std::optional<Tagesfilter> datumsfilter(std::string const& text) {
  int jahr = 0, monat = 0, tag = 0;
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
  if (!liesZahl(text, 0, 4, jahr) || !liesZahl(text, 5, 2, monat) || !liesZahl(text, 8, 2, tag))
    return std::nullopt;
  if (jahr < 1970 || monat < 1 || monat > 12 || tag < 1 || tag > tageImMonat(jahr, monat))
    return std::nullopt;

  // Noon keeps the date clear of daylight-saving changes, which happen at night.
  std::tm zeit{};
  zeit.tm_year = jahr - 1900;
  zeit.tm_mon = monat - 1;
  zeit.tm_mday = tag;
  zeit.tm_hour = 12;
  zeit.tm_isdst = -1;
  std::time_t const sekunden = std::mktime(&zeit);
  if (sekunden == std::time_t(-1)) return std::nullopt;

  Tagesfilter filter;
  filter.art = Tagesfilter::Datum;
  filter.datum = static_cast<long long>(sekunden);
  // mktime has filled in the weekday, 0 for Sunday.
  filter.wochentag = static_cast<char>(zeit.tm_wday == 0 ? '7' : '0' + zeit.tm_wday);
  filter.text = text;
  return filter;
}

}  // namespace fplc::graph
