// The successor train of a train on a given date, and the helpers that
// post-processing and validation share for finding successors.
#include "resolve/folgeleistung.h"

#include <cctype>
#include <string>

#include "tokenizer/std_conversions.h"

long long fplc::detail::folgeZugnummer(Zug const& zug) {
  std::string const& folge = zug.zuglauf->eintraege.back().folge;
  long long wert = toInt(folge);
  if (!folge.empty() && std::isdigit(static_cast<unsigned char>(folge.front()))) return wert;
  return zug.nummer + wert;
}

long long fplc::detail::abfahrtAmStart(Zug const& zug) {
  return fplc::detail::zeitPlus(zug.zuglauf->eintraege.front().ab, zug.reftime);
}

long long fplc::detail::ankunftAmZiel(Zug const& zug) {
  return fplc::detail::zeitPlus(zug.zuglauf->eintraege.back().an, zug.reftime);
}

bool fplc::detail::faehrtAm(Zug const& zug, char tag) {
  return zug.verkehrstag && zug.verkehrstag->MatchWochentag(tag);
}

bool fplc::detail::faehrtAmTagDanach(Zug const& zug, char tag) {
  return zug.verkehrstag && zug.verkehrstag->MatchWochentagDanach(tag);
}

namespace {

// The best candidate so far: a successor train and the reference time of its
// service (shifted by a day when it runs on the day before or after).
struct Kandidat {
  long long ankunft;
  long long bester = kKeinAbstand;
  Zug const* zug = nullptr;
  long long reftime = 0;

  void pruefe(Zug const& k, long long start, long long verschiebung) {
    using fplc::detail::zeitMinus;
    start = fplc::detail::zeitPlus(start, verschiebung);
    if (start > ankunft && zeitMinus(start, ankunft) < bester) {
      bester = zeitMinus(start, ankunft);
      zug = &k;
      reftime = fplc::detail::zeitPlus(k.reftime, verschiebung);
    }
  }
};

}  // namespace

Zug const* Zug::getFolgeleistung(std::list<Zug> const& zuege, long long datum,
                                 long long* ref) const {
  long long eigeneRef = ref ? *ref : reftime;
  if (ref) *ref = 0;
  // A train without a run has no end to be followed from.
  if (!zuglauf || zuglauf->eintraege.empty()) return nullptr;
  long long nummerDerFolge = folgeZugnummer(*this);
  Kandidat kandidat{fplc::detail::zeitPlus(zuglauf->eintraege.back().an, eigeneRef)};

  for (Zug const& k : zuege) {
    if (k.nummer != nummerDerFolge || !k.zuglauf || k.zuglauf->eintraege.empty()) continue;
    if (!k.verkehrstag) continue;  // runs on no day
    Verkehrstag const& tage = *k.verkehrstag;
    long long start = abfahrtAmStart(k);
    // A train with a negative reference time started on the day before `datum`:
    // its successor runs on the day before or on `datum` itself; otherwise on
    // `datum` or on the day after.
    if (eigeneRef < 0) {
      if (tage.MatchVortag(datum)) kandidat.pruefe(k, start, -kSekundenProTag);
      if (tage.Match(datum)) kandidat.pruefe(k, start, 0);
    } else {
      if (tage.Match(datum)) kandidat.pruefe(k, start, 0);
      if (tage.MatchFolgetag(datum)) kandidat.pruefe(k, start, kSekundenProTag);
    }
  }
  if (ref) *ref = kandidat.zug ? kandidat.reftime : 0;
  return kandidat.zug;
}
