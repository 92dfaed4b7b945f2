#include "resolve/start_index.h"

#include <algorithm>
#include <cstdint>

#include "resolve/folgeleistung.h"

namespace fplc::detail {
namespace {

// Times within this bound neither wrap when a day is added nor when two of
// them are subtracted, so that departure order is distance order.
constexpr long long kSichereZeit = 1LL << 60;

bool sicher(long long zeit) {
  return zeit >= -kSichereZeit && zeit <= kSichereZeit;
}

// Operating point and track; names hold no NUL byte, so the pair stays apart.
std::string schluessel(FplEintrag const& e) {
  std::string s = e.bahnhof;
  s += '\0';
  s += e.gleis;
  return s;
}

// Whether `k` starts its run where `ende` lies: same operating point, same track.
bool beginntAn(Zug const& k, FplEintrag const& ende) {
  FplEintrag const& start = k.zuglauf->eintraege.front();
  return start.typ == FplEintrag::Start && start.bahnhof == ende.bahnhof &&
         start.gleis == ende.gleis;
}

}  // namespace

Startindex::Startindex(std::list<Zug> const& zuege) {
  for (Zug const& zug : zuege)
    aufnehmen(zug);
}

void Startindex::aufnehmen(Zug const& zug) {
  if (!zug.zuglauf || zug.zuglauf->eintraege.empty()) return;
  FplEintrag const& start = zug.zuglauf->eintraege.front();
  if (start.typ != FplEintrag::Start) return;
  Fach& fach = faecher[schluessel(start)];
  long long const zeit = abfahrtAmStart(zug);
  if (fach.inListenfolge.empty()) fach.frueheste = fach.spaeteste = zeit;
  fach.frueheste = std::min(fach.frueheste, zeit);
  fach.spaeteste = std::max(fach.spaeteste, zeit);
  fach.inListenfolge.push_back(&zug);
  fach.nachAbfahrt.insert({zeit, naechsterPlatz++, &zug});
}

std::int32_t Startindex::folge(Zug const& zug, char tag) const {
  auto fach = faecher.find(schluessel(zug.zuglauf->eintraege.back()));
  if (fach == faecher.end()) return 0;
  Zug const* gefunden = naechster(fach->second, zug, tag);
  return gefunden ? gefunden->nummer : 0;
}

// In departure order the first candidate that runs has the shortest distance
// on its day, and of equal departures the first place in the list; the closer
// of the two days wins, the first in the list on a tie. Absurd times, which
// wrap around, are searched by a scan in list order instead.
Zug const* Startindex::naechster(Fach const& fach, Zug const& zug, char tag) const {
  FplEintrag const& ende = zug.zuglauf->eintraege.back();
  auto passt = [&](Zug const& k) { return beginntAn(k, ende); };
  long long const ankunft = ankunftAmZiel(zug);
  if (!sicher(ankunft) || !sicher(fach.frueheste) || !sicher(fach.spaeteste))
    return naechsterFolgezug(fach.inListenfolge, ankunft, tag, passt);

  // The first departure later than the arrival once `tagDazu` is added, of a
  // train that has a run starting here and runs on that day.
  auto erste = [&](long long tagDazu, auto faehrt) -> Abfahrt const* {
    Abfahrt const nach{ankunft - tagDazu, SIZE_MAX, nullptr};
    for (auto it = fach.nachAbfahrt.upper_bound(nach); it != fach.nachAbfahrt.end(); ++it) {
      if (it->zeit + tagDazu - ankunft >= kKeinAbstand) return nullptr;
      Zug const& k = *it->zug;
      if (k.zuglauf && !k.zuglauf->eintraege.empty() && passt(k) && faehrt(k)) return &*it;
    }
    return nullptr;
  };
  Abfahrt const* amTag = erste(0, [&](Zug const& k) { return faehrtAm(k, tag); });
  Abfahrt const* amTagDanach =
      erste(kSekundenProTag, [&](Zug const& k) { return faehrtAmTagDanach(k, tag); });
  if (!amTag || !amTagDanach) {
    Abfahrt const* einzige = amTag ? amTag : amTagDanach;
    return einzige ? einzige->zug : nullptr;
  }
  long long const abstand = amTag->zeit - ankunft;
  long long const abstandDanach = amTagDanach->zeit + kSekundenProTag - ankunft;
  if (abstand != abstandDanach) return abstand < abstandDanach ? amTag->zug : amTagDanach->zug;
  return amTag->platz < amTagDanach->platz ? amTag->zug : amTagDanach->zug;
}

}  // namespace fplc::detail
