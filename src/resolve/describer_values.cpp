// The values a layout's train describer and passenger information need for a
// train: its routing digit at a station, and the category and line that hold
// while the train is inside the layout. They only read the records.
#include <cstdint>
#include <string>
#include <utility>

#include "model/fahrplandefinition.h"
#include "tokenizer/std_conversions.h"

namespace {

constexpr std::uint16_t kAlleZiffern = 0xFFFF;

// The candidate set a preference mark (10 and above) narrows to: the single
// bit of the preferred digit, within 16 bits.
std::uint16_t bevorzugteZiffer(int mark) {
  int bit = mark - 10;
  return bit < 16 ? static_cast<std::uint16_t>(1u << bit) : 0;
}

// The smallest admissible digit 0..9 of a candidate set; -1 when the set still
// admits every digit (nothing narrowed it) or none of the ten.
signed char kleinsteZiffer(std::uint16_t kandidaten) {
  if (kandidaten == kAlleZiffern) return -1;
  for (int d = 0; d <= 9; ++d)
    if (kandidaten & (1u << d)) return static_cast<signed char>(d);
  return -1;
}

// The walk's state while the run is read from its end towards its start.
struct LenkzifferSuche {
  std::uint16_t kandidaten = kAlleZiffern;
  std::uint16_t gemerkt = kAlleZiffern;
  bool gefunden = false;

  void merken() {
    gefunden = true;
    gemerkt = kandidaten;
  }
};

// Splits "public|operational" at the first "|"; without one the operational
// category is empty.
std::pair<std::string, std::string> teileGattung(std::string const& g) {
  auto bar = g.find('|');
  if (bar == std::string::npos) return {g, ""};
  return {g.substr(0, bar), g.substr(bar + 1)};
}

}  // namespace

signed char Fahrplandefinition::calcLenkziffer(Zug const* zug, std::string const& bahnhof) const {
  return calcLenkziffer(zug, nullptr, bahnhof);
}

signed char Fahrplandefinition::calcLenkziffer(Zug const* zug, Aussenanlage const* aa,
                                               std::string const& bahnhof) const {
  LenkzifferSuche suche;
  if (zug->zuglauf) {
    auto const& eintraege = zug->zuglauf->eintraege;
    for (auto it = eintraege.rbegin(); it != eintraege.rend(); ++it) {
      FplEintrag const& e = *it;
      if (e.lenkziffer != -1) {
        if (e.lenkziffer < 10) {
          suche.kandidaten = kAlleZiffern;
          // A fixed digit before the stop (in running order) decides at once.
          if (suche.gefunden) return e.lenkziffer;
        } else {
          suche.kandidaten = bevorzugteZiffer(e.lenkziffer);
        }
      }
      if (e.isHalt()) {
        if (e.bahnhof != bahnhof) continue;
        if (e.lenkziffer >= 0 && e.lenkziffer <= 9) return e.lenkziffer;
        suche.merken();
      } else if (e.typ == FplEintrag::Einfahrt) {
        if (aa && e.anlage == aa->name) suche.merken();
      } else if (e.typ == FplEintrag::Ausfahrt) {
        Aussenanlage const* anlage = mapAt(aussenanlagenByName, e.anlage);
        std::uint16_t erlaubt = mapAt(anlage->fahrtrichtungen, e.anlagePunkt).lenkziffern;
        suche.kandidaten &= erlaubt;
        if (suche.kandidaten == 0) {
          // Nothing admissible is left: once the station was passed, the set
          // seen there stands; before it, the direction's own set starts anew.
          if (suche.gefunden) {
            suche.kandidaten = suche.gemerkt;
            break;
          }
          suche.kandidaten = erlaubt;
        }
      }
    }
  }
  if (zug->lenkzifferOverride != -1) return zug->lenkzifferOverride;
  return kleinsteZiffer(suche.kandidaten);
}

std::pair<std::string, std::string> Fahrplandefinition::getGattung(Aussenanlage const& aa,
                                                                   Zug const* zug) {
  std::string g = zug->gattung;
  if (zug->zuglauf) {
    for (FplEintrag const& e : zug->zuglauf->eintraege) {
      if (!e.gattung.empty()) g = e.gattung;
      if (e.anlage != aa.name) continue;
      if (e.typ == FplEintrag::Ausfahrt) {
        g = zug->gattung;
        break;
      }
      if (e.typ == FplEintrag::Einfahrt) break;
    }
  }
  return teileGattung(g);
}

std::string Fahrplandefinition::getLinie(Aussenanlage const& aa, Zug const* zug) {
  std::string l = zug->liniennummer;
  if (!zug->zuglauf) return l;
  for (FplEintrag const& e : zug->zuglauf->eintraege) {
    if (!e.linie.empty())
      l = e.linie;
    else if (!e.gattung.empty())
      l.clear();  // a new category without a new line drops the line
    if (e.anlage != aa.name) continue;
    if (e.typ == FplEintrag::Ausfahrt) return zug->liniennummer;
    if (e.typ == FplEintrag::Einfahrt) return l;
  }
  return l;
}
