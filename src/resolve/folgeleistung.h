#pragma once
// Successor services: the number a run's successor rule names, and the search
// for a successor train shared by post-processing and validation.
#include <list>

#include "model/zug.h"

// Seconds in one day of operation.
namespace fplc::detail {

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

// Whether the train runs on weekday `tag` ("1".."7"); a train without days of
// operation runs on none.
bool faehrtAm(Zug const& zug, char tag);
// Whether the train runs on the weekday after `tag` ("7" is followed by "1").
bool faehrtAmTagDanach(Zug const& zug, char tag);

// The closest successor on weekday `tag` among the trains that `passt` accepts
// (each with a non-empty run): a start later than `ankunft` on that day, or on
// the day after. Ties keep the train met first in list order. Null when none.
template <typename Passt>
Zug const* naechsterFolgezug(std::list<Zug> const& zuege, long long ankunft, char tag,
                             Passt passt) {
  long long bester = kKeinAbstand;
  Zug const* gefunden = nullptr;
  auto pruefe = [&](Zug const& k, long long start) {
    if (start > ankunft && start - ankunft < bester) {
      bester = start - ankunft;
      gefunden = &k;
    }
  };
  for (Zug const& k : zuege) {
    if (!k.zuglauf || k.zuglauf->eintraege.empty() || !passt(k)) continue;
    long long start = abfahrtAmStart(k);
    if (faehrtAm(k, tag)) pruefe(k, start);
    if (faehrtAmTagDanach(k, tag)) pruefe(k, start + kSekundenProTag);
  }
  return gefunden;
}

}  // namespace fplc::detail

// The library's own sources name these unqualified.
using fplc::detail::abfahrtAmStart;
using fplc::detail::faehrtAm;
using fplc::detail::faehrtAmTagDanach;
using fplc::detail::folgeZugnummer;
using fplc::detail::kKeinAbstand;
using fplc::detail::kSekundenProTag;
using fplc::detail::naechsterFolgezug;
