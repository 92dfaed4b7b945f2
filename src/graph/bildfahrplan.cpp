#include "graph/bildfahrplan.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "days/verkehrstag.h"
#include "model/betriebsstelle.h"
#include "model/strecke.h"
#include "model/zeit_arithmetik.h"
#include "model/zug.h"
#include "tokenizer/cp1252.h"

namespace fplc::graph {

namespace {

using detail::zeitMinus;
using detail::zeitPlus;

// Where a place of the line is drawn: its index in Bildfahrplan::orte, or none
// for a point of the line without a position.
using OrtIndex = std::unordered_map<std::string, std::optional<std::size_t>>;

// Runs name their stops by the point's long name; points without one (made
// implicitly) are known by their abbreviation, which their stop line begins with.
std::string schluessel(Betriebsstelle const& bs) {
  return bs.name.empty() ? "K:" + bs.ds100 : "N:" + bs.name;
}

std::string schluessel(FplEintrag const& e) {
  if (!e.bahnhof.empty()) return "N:" + e.bahnhof;
  return e.token ? "K:" + e.token->str() : std::string();
}

std::string aufzaehlung(std::vector<std::string> const& teile) {
  std::string text;
  for (std::string const& t : teile)
    text += (text.empty() ? "" : ", ") + t;
  return text;
}

Ort::Art artDes(Strecke::Punkt const& p) {
  if (p.art != Strecke::Punkt::Unbestimmt || !p.betriebsstelle) return Ort::Art(p.art);
  std::uint8_t const kat = p.betriebsstelle->fplcat;
  return kat <= Ort::Uest ? Ort::Art(kat) : Ort::Unbestimmt;
}

OrtIndex ordneOrteEin(Strecke const& strecke, Bildfahrplan& bild) {
  OrtIndex index;
  std::vector<std::string> ohnePosition, doppelt;
  for (Strecke::Punkt const& p : strecke.punkte) {
    Ort ort;
    ort.art = artDes(p);
    ort.position = p.position;
    ort.km = p.km;
    if (p.betriebsstelle) {
      ort.kuerzel = cp1252::toUtf8(p.betriebsstelle->ds100);
      ort.name = cp1252::toUtf8(p.betriebsstelle->name);
      std::string const key = schluessel(*p.betriebsstelle);
      if (index.count(key)) {
        doppelt.push_back(ort.kuerzel);
        continue;
      }
      index[key] = std::nullopt;
      if (!p.hatPosition) {
        ohnePosition.push_back(ort.kuerzel);
        continue;
      }
      index[key] = bild.orte.size();
    } else {
      ort.name = "km " + p.position;
    }
    if (p.hatPosition) bild.orte.push_back(ort);
  }

  bool const keinOrt = std::none_of(bild.orte.begin(), bild.orte.end(),
                                    [](Ort const& o) { return o.art != Ort::Marke; });
  if (keinOrt) {
    bild.hinweise.push_back(
        "Die Strecke hat keine Betriebsstelle mit Kilometerangabe: ohne sie lässt sich kein "
        "Bildfahrplan zeichnen.");
    return {};
  }
  auto const gleicherKm = [&](Ort const& o) { return o.km == bild.orte.front().km; };
  if (bild.orte.size() > 1 && std::all_of(bild.orte.begin(), bild.orte.end(), gleicherKm))
    bild.hinweise.push_back(
        "Alle Betriebsstellen liegen bei demselben Kilometer: der Bildfahrplan hat keine Breite.");
  if (!ohnePosition.empty())
    bild.hinweise.push_back("Ohne Kilometerangabe, nicht gezeichnet: " + aufzaehlung(ohnePosition) +
                            ".");
  if (!doppelt.empty())
    bild.hinweise.push_back(
        "Mehrfach in der Strecke, gezeichnet an der ersten Stelle: " + aufzaehlung(doppelt) + ".");
  return index;
}

// A boundary lies on a kilometre mark next to it, else halfway between its neighbours.
std::optional<double> kmDerGrenze(Strecke const& strecke, std::size_t nachPunkten) {
  Strecke::Punkt const* vor = nachPunkten > 0 ? &strecke.punkte[nachPunkten - 1] : nullptr;
  Strecke::Punkt const* nach =
      nachPunkten < strecke.punkte.size() ? &strecke.punkte[nachPunkten] : nullptr;
  if (vor && !vor->hatPosition) vor = nullptr;
  if (nach && !nach->hatPosition) nach = nullptr;
  if (vor && vor->art == Strecke::Punkt::Marke) return vor->km;
  if (nach && nach->art == Strecke::Punkt::Marke) return nach->km;
  if (vor && nach) return (vor->km + nach->km) / 2;
  if (vor) return vor->km;
  if (nach) return nach->km;
  return std::nullopt;
}

void ordneGrenzenEin(Strecke const& strecke, Bildfahrplan& bild) {
  for (Strecke::Uebergang const& u : strecke.uebergaenge) {
    std::optional<double> km = kmDerGrenze(strecke, u.nachPunkten);
    if (!km) continue;
    std::string const anlage = cp1252::toUtf8(u.anlage);
    auto gleich = [&](Grenze const& g) { return g.km == *km; };
    auto vorhanden = std::find_if(bild.grenzen.begin(), bild.grenzen.end(), gleich);
    if (vorhanden == bild.grenzen.end()) {
      bild.grenzen.push_back({*km, anlage});
    } else if (("| " + vorhanden->anlagen + " |").find("| " + anlage + " |") == std::string::npos) {
      vorhanden->anlagen += " | " + anlage;
    }
  }
}

// The train's run along the line; none when it touches fewer than two of its points.
std::optional<Fahrt> fahrtAufStrecke(Zug const& zug, OrtIndex const& index) {
  if (!zug.zuglauf) return std::nullopt;
  Fahrt fahrt;
  fahrt.nummer = zug.nummer;
  fahrt.gattung = cp1252::toUtf8(oeffentlicheGattung(zug.gattung));
  if (zug.verkehrstag) fahrt.tage = cp1252::toUtf8(zug.verkehrstag->days);
  std::vector<Zeitpunkt> abschnitt;
  std::vector<std::size_t> beruehrt;
  auto schliesseAbschnitt = [&] {
    if (!abschnitt.empty()) fahrt.abschnitte.push_back(std::move(abschnitt));
    abschnitt.clear();
  };
  for (FplEintrag const& e : zug.zuglauf->eintraege) {
    if (e.typ == FplEintrag::Einfahrt || e.typ == FplEintrag::Ausfahrt) continue;
    auto ort = index.find(schluessel(e));
    if (ort == index.end()) {  // a stop off the line: the train leaves it here
      schliesseAbschnitt();
      continue;
    }
    if (!ort->second || (e.an == keineZeit && e.ab == keineZeit)) continue;
    long long const an = e.an != keineZeit ? e.an : e.ab;
    long long const ab = e.ab != keineZeit ? e.ab : e.an;
    abschnitt.push_back({*ort->second, zeitPlus(zug.reftime, an), zeitPlus(zug.reftime, ab)});
    if (std::find(beruehrt.begin(), beruehrt.end(), *ort->second) == beruehrt.end())
      beruehrt.push_back(*ort->second);
  }
  schliesseAbschnitt();
  if (beruehrt.size() < 2) return std::nullopt;
  return fahrt;
}

long long stundeAbwaerts(long long t) {
  long long stunden = t / 3600;
  if (t % 3600 < 0) --stunden;
  return detail::zeitMal(stunden, 3600);  // wraps only for times near the end of the range
}

// Full hours from the earliest to the latest drawn time, at most kMaxZeitspanne.
void bestimmeZeitspanne(Bildfahrplan& bild) {
  std::optional<long long> frueh, spaet;
  for (Fahrt const& f : bild.fahrten)
    for (auto const& abschnitt : f.abschnitte)
      for (Zeitpunkt const& z : abschnitt) {
        frueh = std::min({frueh.value_or(z.an), z.an, z.ab});
        spaet = std::max({spaet.value_or(z.an), z.an, z.ab});
      }
  if (!frueh) return;
  bild.beginn = stundeAbwaerts(*frueh);
  // Unsigned: the distance of absurd times may exceed the range of long long.
  unsigned long long const bis =
      static_cast<unsigned long long>(*spaet) - static_cast<unsigned long long>(bild.beginn);
  unsigned long long const stunden = std::max(1ULL, bis / 3600 + (bis % 3600 != 0));
  if (stunden > kMaxZeitspanne / 3600) {
    bild.ende = zeitPlus(bild.beginn, kMaxZeitspanne);
    bild.hinweise.push_back(
        "Die Fahrten überspannen mehr als 7 Tage; gezeichnet sind die ersten 7 Tage.");
    return;
  }
  bild.ende = zeitPlus(bild.beginn, static_cast<long long>(stunden) * 3600);
}

}  // namespace

std::string oeffentlicheGattung(std::string const& gattung) {
  return gattung.substr(0, gattung.find('|'));
}

Bildfahrplan baueBildfahrplan(Strecke const& strecke, std::list<Zug> const& zuege,
                              Tagesfilter const& filter) {
  Bildfahrplan bild;
  bild.strecke = cp1252::toUtf8(strecke.name);
  OrtIndex const index = ordneOrteEin(strecke, bild);
  if (index.empty()) return bild;
  ordneGrenzenEin(strecke, bild);

  std::size_t anAnderenTagen = 0;
  for (Zug const& zug : zuege) {
    std::optional<Fahrt> fahrt = fahrtAufStrecke(zug, index);
    if (!fahrt) continue;
    if (filter.laeuft(zug.verkehrstag))
      bild.fahrten.push_back(std::move(*fahrt));
    else
      ++anAnderenTagen;
  }
  if (bild.fahrten.empty() && anAnderenTagen == 0)
    bild.hinweise.push_back("Kein Zug berührt zwei Betriebsstellen dieser Strecke.");
  else if (bild.fahrten.empty())
    bild.hinweise.push_back("Kein Zug dieser Strecke verkehrt " + filter.beschreibung() +
                            " (an anderen Tagen: " + std::to_string(anAnderenTagen) + ").");
  bestimmeZeitspanne(bild);
  return bild;
}

}  // namespace fplc::graph
