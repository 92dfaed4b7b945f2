#pragma once
// Successor services: the number a run's successor rule names, and the search
// for a successor train shared by post-processing and validation.
#include <cstdint>
#include <functional>
#include <list>
#include <vector>

#include "model/zeit_arithmetik.h"
#include "model/zug.h"
#include "tokenizer/error.h"

class Fahrplandefinition;

namespace fplc::detail {

// Seconds in one day of operation.
inline constexpr long long kSekundenProTag = 86400;
// The distance a successor search starts with; only closer successors count.
inline constexpr long long kKeinAbstand = 2147483647;

// The successor's train number named by the last entry's `folge` of `zug`'s run:
// a text starting with a digit is absolute, anything else ("+2", "-1") is added
// to the train's own number. Malformed texts throw the standard conversion
// exceptions ("invalid stoi argument", "stoi argument out of range").
long long folgeZugnummer(Zug const& zug);

// The departure time at which `zug`'s run starts: its first entry's `ab` plus
// its reference time. The run must not be empty.
long long abfahrtAmStart(Zug const& zug);

// The arrival at the end of `zug`'s run: its last entry's `an` plus its
// reference time. The run must not be empty.
long long ankunftAmZiel(Zug const& zug);

// Whether the train runs on weekday `tag` ("1".."7"); a train without days of
// operation runs on none.
bool faehrtAm(Zug const& zug, char tag);
// Whether the train runs on the weekday after `tag` ("7" is followed by "1").
bool faehrtAmTagDanach(Zug const& zug, char tag);

inline Zug const& alsZug(Zug const& zug) {
  return zug;
}
inline Zug const& alsZug(Zug const* zug) {
  return *zug;
}

// The closest successor on weekday `tag` among the `kandidaten` (trains or
// pointers to trains, in list order) that have a non-empty run and that
// `passt` accepts: a start later than `ankunft` on that day, or on the day
// after. Ties keep the train met first. Null when none. Times wrap around
// instead of overflowing.
template <typename Kandidaten, typename Passt>
Zug const* naechsterFolgezug(Kandidaten const& kandidaten, long long ankunft, char tag,
                             Passt passt) {
  using fplc::detail::zeitMinus;
  long long bester = kKeinAbstand;
  Zug const* gefunden = nullptr;
  auto pruefe = [&](Zug const& k, long long start) {
    if (start > ankunft && zeitMinus(start, ankunft) < bester) {
      bester = zeitMinus(start, ankunft);
      gefunden = &k;
    }
  };
  for (auto const& eintrag : kandidaten) {
    Zug const& k = fplc::detail::alsZug(eintrag);
    if (!k.zuglauf || k.zuglauf->eintraege.empty() || !passt(k)) continue;
    long long start = abfahrtAmStart(k);
    if (faehrtAm(k, tag)) pruefe(k, start);
    if (faehrtAmTagDanach(k, tag)) pruefe(k, fplc::detail::zeitPlus(start, kSekundenProTag));
  }
  return gefunden;
}

}  // namespace fplc::detail

// The library's own sources name these unqualified.
using fplc::detail::abfahrtAmStart;
using fplc::detail::ankunftAmZiel;
using fplc::detail::faehrtAm;
using fplc::detail::faehrtAmTagDanach;
using fplc::detail::folgeZugnummer;
using fplc::detail::kKeinAbstand;
using fplc::detail::kSekundenProTag;
using fplc::detail::naechsterFolgezug;

namespace fplc::detail {

// Step 2 of post-processing: makes the times of `lauf` run on across midnight.
void ueberMitternachtFortschreiben(Zuglauf& lauf);

// Where post-processing looks for automatic successors. `folge` gives the
// number of the closest train starting where `zug` ends on weekday `tag` (0
// when none); `angehaengt` is told of every train that splitting appends to
// the list. The library answers from an index; the tests from plain scans.
struct AutomatischeFolgesuche {
  std::function<std::int32_t(Zug const& zug, char tag)> folge;
  std::function<void(Zug const& zug)> angehaengt;
};

// Step 3 of post-processing: resolves the automatic successors of every train
// in `zuege` (trains appended while splitting included), splitting trains and
// runs where weekdays have different successors.
void loeseAutomatischeFolgenAuf(Fahrplandefinition& fpl, std::list<Zug>& zuege,
                                std::list<Zuglauf>& zl, std::uint32_t& zlCounter,
                                std::vector<Error>& warnungen, AutomatischeFolgesuche const& suche);

// Where validation looks for the successor a run names: `existiert` tells
// whether any train bears `nummer`; `folge` gives the closest train with that
// number and a non-empty run on weekday `tag` after `ankunft`, or null.
struct NummernFolgesuche {
  std::function<bool(long long nummer)> existiert;
  std::function<Zug const*(long long nummer, long long ankunft, char tag)> folge;
};

// Part of validation: checks the successor of every train whose run names one
// by number, weekday by weekday, appending the findings to `warnungen`.
void pruefeFesteFolgen(std::list<Zug> const& zuege, std::vector<Error>& warnungen,
                       NummernFolgesuche const& suche);

}  // namespace fplc::detail
