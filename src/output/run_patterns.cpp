#include "output/run_patterns.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_set>

#include "model/zeit_arithmetik.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"
#include "tokenizer/token.h"

namespace {

using BetriebsstelleInfo = Aussenanlage::BetriebsstelleInfo;

// Entries into and out of a layout belong to it by the layout's name, every
// other entry by its operating point.
bool liegtInAnlage(Aussenanlage const& aa, FplEintrag const& e) {
  if (e.typ == FplEintrag::Einfahrt || e.typ == FplEintrag::Ausfahrt) return e.anlage == aa.name;
  return aa.betriebsstellen.count(e.bahnhof) != 0;
}

// A stop is shown only where the layout has the signal it refers to: a stop
// signal ("H") needs a station for trains without length, any other kind a
// main signal.
bool signalVorhanden(FplEintrag const& e, BetriebsstelleInfo const& info) {
  return e.signalart == "H" ? info.stationforlengthless : info.hauptsignaltyp;
}

std::string_view signalPraefix(std::string const& signalart) {
  if (signalart == "H") return "stoppoint:";
  if (signalart == "E") return "esig:";
  if (signalart == "A") return "asig:";
  if (signalart == "Z") return "zsig:";
  if (signalart == "B") return "bksigbk:";
  return "bksigau:";
}

// "14:esig:N2": the operating point's id in the layout, the signal kind, the signal.
std::string signalReferenz(FplEintrag const& e, BetriebsstelleInfo const& info) {
  std::string ref = std::to_string(info.id) + ':';
  ref += signalPraefix(e.signalart);
  return ref + e.gleis;
}

// Directions read from the layout file are referred to by their bare id, those
// defined by the definition as objects of the timetable file.
std::string richtungsReferenz(Aussenanlage const& aa, FplEintrag const& e) {
  auto it = aa.fahrtrichtungen.find(e.anlagePunkt);
  if (it == aa.fahrtrichtungen.end()) {
    throw Error(e.token, std::string("Fahrtrichtung "_cp1252) + e.anlagePunkt +
                             " ist in Außenanlage "_cp1252 + aa.name + " nicht definiert."_cp1252);
  }
  std::string id = std::to_string(it->second.id);
  return it->second.ausAussenanlage ? id : "0:" + id;
}

char const* elementName(std::uint8_t typ) {
  switch (typ) {
    case FplEintrag::Einfahrt:
      return "einfahrt";
    case FplEintrag::Ausfahrt:
      return "ausfahrt";
    case FplEintrag::Start:
      return "start";
    case FplEintrag::Ziel:
      return "ziel";
    default:
      return "halt";
  }
}

void text(MusterEintrag& m, char const* name, std::string value) {
  m.attribute.push_back({name, std::move(value), 0, false});
}

void zeit(MusterEintrag& m, char const* name, long long t, long long reftime) {
  if (t != keineZeit) m.attribute.push_back({name, {}, fplc::detail::zeitMinus(t, reftime), true});
}

// The attributes after "ref", each only when its condition holds.
void attributeAnhaengen(MusterEintrag& m, FplEintrag const& e, long long reftime) {
  if (e.typ == FplEintrag::Ziel && !e.folge.empty() && e.folge[0] != '*')
    text(m, "changezugnummer", e.folge);
  zeit(m, "abfahrt", e.ab, reftime);
  zeit(m, "ankunft", e.an, reftime);
  if (e.mindesthaltezeit != keineZeit)
    text(m, "mindesthaltezeit", std::to_string(e.mindesthaltezeit));
  if (e.changedirection) text(m, "changedirection", "1");
  if (!e.gattung.empty()) {
    auto bar = e.gattung.find('|');
    text(m, "changezuggattung", e.gattung.substr(0, bar));
    if (bar != std::string::npos) text(m, "changezuggattungbetrieblich", e.gattung.substr(bar + 1));
  }
  if (!e.gattung.empty() || !e.linie.empty()) text(m, "changezuggattungliniennr", e.linie);
  if (e.lenkziffer >= 0 && e.lenkziffer <= 9)
    text(m, "changeznlenkzifferoverride", std::to_string(e.lenkziffer));
}

// The entry's element, or none when the signal rule leaves a stop out.
bool bildeEintrag(Aussenanlage const& aa, FplEintrag const& e, long long reftime,
                  MusterEintrag& m) {
  m.element = elementName(e.typ);
  if (e.typ == FplEintrag::Einfahrt || e.typ == FplEintrag::Ausfahrt) {
    m.ref = richtungsReferenz(aa, e);
  } else if (e.typ == FplEintrag::Halt || e.typ == FplEintrag::Start || e.typ == FplEintrag::Ziel) {
    BetriebsstelleInfo const& info = aa.betriebsstellen.at(e.bahnhof);
    if (!signalVorhanden(e, info)) return false;
    m.ref = signalReferenz(e, info);
  } else {
    return false;  // a kind without an element of its own
  }
  attributeAnhaengen(m, e, reftime);
  return true;
}

// A text that is equal for two patterns exactly when they are equal.
std::string schluessel(std::vector<MusterEintrag> const& eintraege) {
  std::string s;
  auto feld = [&s](std::string_view v) {
    s += std::to_string(v.size());
    s += ':';
    s += v;
  };
  for (MusterEintrag const& m : eintraege) {
    feld(m.element);
    feld(m.ref);
    for (MusterAttribut const& a : m.attribute) {
      feld(a.name);
      if (!a.istZeit) {
        feld(a.text);
        continue;
      }
      std::string zeit = std::to_string(a.zeit);
      zeit.insert(zeit.begin(), 't');  // no concatenation: GCC 12 warns falsely on it
      feld(zeit);
    }
    s += ';';
  }
  return s;
}

}  // namespace

Laufbild fplc::detail::bildeLaufbild(Aussenanlage const& aa, Zuglauf const& lauf) {
  Laufbild bild;
  std::string ersterBahnhof;
  bool stoppGefunden = false;
  for (FplEintrag const& e : lauf.eintraege) {
    if (!liegtInAnlage(aa, e)) continue;
    if (!bild.hatEintraegeInAnlage) {
      // The reference time comes from the first entry in the layout, even when
      // the signal rule leaves it out.
      bild.hatEintraegeInAnlage = true;
      long long t = e.getAnOrAb();
      bild.reftime = t == keineZeit ? 0 : t;
    }
    MusterEintrag m;
    if (!bildeEintrag(aa, e, bild.reftime, m)) continue;
    if (bild.eintraege.empty()) ersterBahnhof = e.bahnhof;
    if (!stoppGefunden && e.isHalt()) {
      stoppGefunden = true;
      bild.lenkzifferBahnhof = e.bahnhof;
    }
    bild.eintraege.push_back(std::move(m));
  }
  if (!stoppGefunden) bild.lenkzifferBahnhof = ersterBahnhof;
  return bild;
}

std::vector<Zuglauf const*> fplc::detail::benutzteLaeufe(std::list<Zuglauf> const& zl,
                                                         std::list<Zug> const& zuege) {
  // Trains of one series follow each other with one run: each run is entered
  // once per stretch.
  std::vector<Zuglauf const*> benutzt;
  for (Zug const& z : zuege)
    if (z.zuglauf && (benutzt.empty() || benutzt.back() != z.zuglauf)) benutzt.push_back(z.zuglauf);
  std::sort(benutzt.begin(), benutzt.end(), std::less<>());
  std::vector<Zuglauf const*> laeufe;
  for (Zuglauf const& lauf : zl)
    if (std::binary_search(benutzt.begin(), benutzt.end(), &lauf, std::less<>()))
      laeufe.push_back(&lauf);
  return laeufe;
}

void fplc::detail::ordneNachOrt(std::vector<Zuglauf const*> const& laeufe,
                                OrtsIndex& nachBetriebsstelle, OrtsIndex& nachAnlage) {
  auto merke = [](std::vector<std::size_t>& plaetze, std::size_t platz) {
    if (plaetze.empty() || plaetze.back() != platz) plaetze.push_back(platz);
  };
  for (std::size_t platz = 0; platz < laeufe.size(); ++platz) {
    for (FplEintrag const& e : laeufe[platz]->eintraege) {
      if (e.typ == FplEintrag::Einfahrt || e.typ == FplEintrag::Ausfahrt)
        merke(nachAnlage[e.anlage], platz);
      else
        merke(nachBetriebsstelle[e.bahnhof], platz);
    }
  }
}

std::vector<Zuglauf const*> fplc::detail::laeufeDerAnlage(Aussenanlage const& aa,
                                                          std::vector<Zuglauf const*> const& laeufe,
                                                          OrtsIndex const& nachBetriebsstelle,
                                                          OrtsIndex const& nachAnlage) {
  std::vector<std::size_t> plaetze;
  auto sammle = [&plaetze](OrtsIndex const& index, std::string const& ort) {
    auto it = index.find(ort);
    if (it != index.end()) plaetze.insert(plaetze.end(), it->second.begin(), it->second.end());
  };
  sammle(nachAnlage, aa.name);
  for (auto const& [bahnhof, info] : aa.betriebsstellen)
    sammle(nachBetriebsstelle, bahnhof);
  std::sort(plaetze.begin(), plaetze.end());
  plaetze.erase(std::unique(plaetze.begin(), plaetze.end()), plaetze.end());
  std::vector<Zuglauf const*> ergebnis;
  ergebnis.reserve(plaetze.size());
  for (std::size_t platz : plaetze)
    ergebnis.push_back(laeufe[platz]);
  return ergebnis;
}

Zuglauftemplates fplc::detail::bildeZuglauftemplates(Aussenanlage const& aa,
                                                     std::list<Zuglauf> const& zl,
                                                     std::list<Zug> const& zuege) {
  return bildeZuglauftemplates(aa, benutzteLaeufe(zl, zuege));
}

Zuglauftemplates fplc::detail::bildeZuglauftemplates(
    Aussenanlage const& aa, std::vector<Zuglauf const*> const& benutzteLaeufe) {
  Zuglauftemplates ergebnis;
  std::unordered_map<std::string, Zuglauftemplate const*> nachSchluessel;
  for (Zuglauf const* laufZeiger : benutzteLaeufe) {
    Zuglauf const& lauf = *laufZeiger;
    Laufbild bild = bildeLaufbild(aa, lauf);
    if (bild.eintraege.empty()) continue;
    Zuglauftemplate const*& vorlage = nachSchluessel[schluessel(bild.eintraege)];
    if (!vorlage) {
      int id = static_cast<int>(ergebnis.vorlagen.size()) + 1;
      ergebnis.vorlagen.push_back({id, &lauf, bild});
      vorlage = &ergebnis.vorlagen.back();
    }
    ergebnis.fuerLauf[&lauf] = {vorlage, bild.reftime, std::move(bild.lenkzifferBahnhof)};
  }
  return ergebnis;
}
