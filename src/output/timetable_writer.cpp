// The simulator's timetable document for one layout: only what touches the
// layout is written, and formations, run patterns and days are written once as
// templates that the trains refer to.
#include <tinyxml2.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "model/fahrplandefinition.h"
#include "model/zeit_arithmetik.h"
#include "output/run_patterns.h"
#include "output/xml_ziel.h"
#include "output/zeit.h"

namespace {

std::string zeitText(long long t) {
  return zeitToString(t, true, false);
}

// A reference to an object defined in the timetable file itself.
std::string dateiRef(int id) {
  return "0:" + std::to_string(id);
}

// A train of the layout's timetable with what its element needs.
struct GeschriebenerZug {
  Zug const* zug;
  LaufImTemplate const* lauf;
  signed char lenkziffer;  // the train's routing digit in the layout; -1 none
};

// Ids of the templates of one kind: 1, 2, 3 in definition order of the records
// that written trains use.
template <typename Record>
class Vorlagennummern {
 public:
  template <typename Container>
  Vorlagennummern(Container const& definitionsreihenfolge,
                  std::unordered_set<Record const*> const& benutzt) {
    for (Record const& r : definitionsreihenfolge) {
      if (!benutzt.count(&r)) continue;
      reihenfolge.push_back(&r);
      ids[&r] = static_cast<int>(reihenfolge.size());
    }
  }
  std::vector<Record const*> reihenfolge;
  std::unordered_map<Record const*, int> ids;
};

// Writes the elements that `inhalt` opens inside an element of its own.
template <typename Ziel, typename Inhalt>
void element(Ziel& ziel, char const* name, Inhalt inhalt) {
  ziel.oeffne(name);
  inhalt();
  ziel.schliesse();
}

template <typename Ziel>
void attribut(Ziel& ziel, char const* name, std::string const& wert) {
  ziel.attribut(name, wert.c_str());
}

template <typename Ziel>
void schreibeWurzelattribute(Ziel& ziel, std::string const& name,
                             std::string const& aussenanlageRef) {
  attribut(ziel, "name", name);
  attribut(ziel, "aussenanlage", aussenanlageRef);
  ziel.attribut("version", "0.0.9.83 eI");
  ziel.attribut("editor", "Zuglinor 0.21");
}

template <typename Ziel>
void schreibeAutoren(Ziel& ziel, std::vector<std::pair<std::string, std::string>> const& autoren) {
  for (auto const& autor : autoren) {
    element(ziel, "autor", [&] {
      attribut(ziel, "name", autor.first);
      attribut(ziel, "kommentar", autor.second);
    });
  }
}

// Libraries that a written formation takes a vehicle from, in loading order;
// a library number loaded twice is written once.
template <typename Ziel>
void schreibeBibliotheken(Ziel& ziel, std::vector<FzgLib> const& fzgLibs,
                          std::vector<Reihung const*> const& reihungen) {
  std::set<int> benutzt;
  for (Reihung const* r : reihungen)
    for (Reihung::Platz const& p : r->fahrzeuge)
      benutzt.insert(p.bibliothek);
  for (FzgLib const& lib : fzgLibs) {
    if (benutzt.erase(lib.nummer) == 0) continue;
    element(ziel, "bibliothek", [&] {
      attribut(ziel, "id", std::to_string(lib.nummer));
      attribut(ziel, "filename", lib.datei);
    });
  }
}

template <typename Ziel>
void schreibeReihungen(Ziel& ziel, Vorlagennummern<Reihung> const& reihungen) {
  for (Reihung const* r : reihungen.reihenfolge) {
    element(ziel, "rhgtemplate", [&] {
      attribut(ziel, "id", std::to_string(reihungen.ids.at(r)));
      attribut(ziel, "name", r->name);
      for (Reihung::Platz const& p : r->fahrzeuge) {
        element(ziel, "fahrzeugref", [&] {
          ziel.attribut("gedreht", p.gedreht ? "1" : "0");
          attribut(ziel, "ref", std::to_string(p.bibliothek) + ':' + std::to_string(p.fahrzeug));
        });
      }
    });
  }
}

// Entries carry the times of the run that made the pattern.
template <typename Ziel>
void schreibeMusterEintrag(Ziel& ziel, MusterEintrag const& m, long long reftime) {
  element(ziel, m.element, [&] {
    attribut(ziel, "ref", m.ref);
    for (MusterAttribut const& a : m.attribute)
      attribut(ziel, a.name,
               a.istZeit ? zeitText(fplc::detail::zeitPlus(reftime, a.zeit)) : a.text);
  });
}

template <typename Ziel>
void schreibeZuglauftemplates(Ziel& ziel, Zuglauftemplates const& templates) {
  for (Zuglauftemplate const& t : templates.vorlagen) {
    element(ziel, "zuglauftemplate", [&] {
      attribut(ziel, "id", std::to_string(t.id));
      attribut(ziel, "name", t.erster->name);
      attribut(ziel, "reftime", zeitText(t.bild.reftime));
      for (MusterEintrag const& m : t.bild.eintraege)
        schreibeMusterEintrag(ziel, m, t.bild.reftime);
    });
  }
}

template <typename Ziel>
void schreibeTagestemplates(Ziel& ziel, Vorlagennummern<Verkehrstag> const& tage) {
  for (Verkehrstag const* vt : tage.reihenfolge) {
    element(ziel, "daytemplate", [&] {
      attribut(ziel, "id", std::to_string(tage.ids.at(vt)));
      attribut(ziel, "name", vt->name);
      attribut(ziel, "days", vt->days);
      attribut(ziel, "from", vt->from);
      attribut(ziel, "to", vt->to);
      attribut(ziel, "exclude", vt->exclude);
      attribut(ziel, "include", vt->include);
    });
  }
}

// Directions that the definition added to the layout, by id and then name, so
// that the file does not depend on the order of a hash map.
template <typename Ziel>
void schreibeFahrtrichtungen(Ziel& ziel, Aussenanlage const& aa) {
  std::vector<Aussenanlage::Fahrtrichtung const*> eigene;
  for (auto const& [key, richtung] : aa.fahrtrichtungen)
    if (!richtung.ausAussenanlage) eigene.push_back(&richtung);
  std::sort(eigene.begin(), eigene.end(), [](auto const* a, auto const* b) {
    return a->id != b->id ? a->id < b->id : a->name < b->name;
  });
  for (Aussenanlage::Fahrtrichtung const* r : eigene) {
    element(ziel, "fahrtrichtung", [&] {
      attribut(ziel, "id", std::to_string(r->id));
      attribut(ziel, "name", r->name);
      for (int anschluss : r->anschluesse)
        element(ziel, "anschluss", [&] { attribut(ziel, "id", std::to_string(anschluss)); });
    });
  }
}

// Reference time of a train's path: its own offset plus its run's reference time.
long long pfadReftime(GeschriebenerZug const& g) {
  return fplc::detail::zeitPlus(g.zug->reftime, g.lauf->reftime);
}

std::string zugnummerText(Zug const& zug) {
  return std::to_string(static_cast<std::uint32_t>(zug.nummer));
}

template <typename Ziel>
void schreibeZugAttribute(Ziel& ziel, Aussenanlage const& aa, GeschriebenerZug const& g) {
  Zug const& zug = *g.zug;
  attribut(ziel, "nummer", zugnummerText(zug));
  ziel.attribut("name", "");
  auto const [gattung, betrieblich] = Fahrplandefinition::getGattung(aa, &zug);
  attribut(ziel, "zuggattung", gattung);
  if (!betrieblich.empty()) attribut(ziel, "zuggattungbetrieblich", betrieblich);
  if (!zug.verspaetungsmodell.empty()) attribut(ziel, "randomoverride", zug.verspaetungsmodell);
  // Only a train with a routing digit of its own carries the attribute; the digit
  // is the one the describer rules give it in this layout.
  if (zug.lenkzifferOverride != -1 && g.lenkziffer >= 0 && g.lenkziffer <= 9)
    attribut(ziel, "znlenkzifferoverride", std::to_string(g.lenkziffer));
  attribut(ziel, "zuggattungliniennr", Fahrplandefinition::getLinie(aa, &zug));
}

template <typename Ziel>
void schreibeZuege(Ziel& ziel, Aussenanlage const& aa, std::vector<GeschriebenerZug> const& zuege,
                   Vorlagennummern<Reihung> const& reihungen,
                   Vorlagennummern<Verkehrstag> const& tage) {
  for (GeschriebenerZug const& g : zuege) {
    element(ziel, "zug", [&] {
      schreibeZugAttribute(ziel, aa, g);
      if (g.zug->reihung) {
        element(ziel, "rhgref", [&] {
          attribut(ziel, "ref", dateiRef(reihungen.ids.at(g.zug->reihung)));
          ziel.attribut("gedreht", g.zug->gedreht ? "1" : "0");
        });
      }
      if (g.zug->verkehrstag) {
        element(ziel, "dayref",
                [&] { attribut(ziel, "ref", dateiRef(tage.ids.at(g.zug->verkehrstag))); });
      }
      element(ziel, "zuglaufref", [&] {
        attribut(ziel, "ref", dateiRef(g.lauf->vorlage->id));
        attribut(ziel, "reftime", zeitText(pfadReftime(g)));
      });
    });
  }
}

// "Astadt - Cstadt": the first and the last stop of the run.
std::string fahrplanText(Zuglauf const& lauf) {
  std::vector<std::string const*> halte;
  for (FplEintrag const& e : lauf.eintraege)
    if (e.isHalt()) halte.push_back(&e.bahnhof);
  if (halte.empty()) return lauf.name;
  if (halte.size() == 1) return *halte.front();
  return *halte.front() + " - " + *halte.back();
}

// The trains of one TZ command that share one run template form a clock-face
// family; each of them is one path of it, at its own reference time.
template <typename Ziel>
void schreibeTaktzuege(Ziel& ziel, std::vector<GeschriebenerZug> const& zuege) {
  std::vector<std::vector<GeschriebenerZug const*>> familien;
  std::map<std::pair<Token const*, Zuglauftemplate const*>, std::size_t> familieVon;
  for (GeschriebenerZug const& g : zuege) {
    if (!g.zug->token || g.zug->token->str() != "TZ") continue;
    auto [it, neu] = familieVon.try_emplace({g.zug->token, g.lauf->vorlage}, familien.size());
    if (neu) familien.emplace_back();
    familien[it->second].push_back(&g);
  }
  int id = 0;
  for (auto const& familie : familien) {
    element(ziel, "taktzug", [&] {
      attribut(ziel, "id", std::to_string(++id));
      attribut(ziel, "fpl", fahrplanText(*familie.front()->zug->zuglauf));
      attribut(ziel, "ref", dateiRef(familie.front()->lauf->vorlage->id));
      for (GeschriebenerZug const* g : familie) {
        element(ziel, "trasse", [&] {
          attribut(ziel, "zugnummer", zugnummerText(*g->zug));
          attribut(ziel, "reftime", zeitText(pfadReftime(*g)));
        });
      }
    });
  }
}

using ZuegeNachLauf =
    std::unordered_map<Zuglauf const*, std::vector<std::pair<std::size_t, Zug const*>>>;

// Every train with a run, under its run, with its place in the list.
ZuegeNachLauf zuegeJeLauf(std::list<Zug> const& zuege) {
  ZuegeNachLauf index;
  std::size_t platz = 0;
  Zuglauf const* letzterLauf = nullptr;
  std::vector<std::pair<std::size_t, Zug const*>>* fach = nullptr;
  for (Zug const& zug : zuege) {
    ++platz;
    if (!zug.zuglauf) continue;
    if (zug.zuglauf != letzterLauf) {  // trains of one series share a run
      letzterLauf = zug.zuglauf;
      fach = &index[zug.zuglauf];
    }
    fach->emplace_back(platz, &zug);
  }
  return index;
}

// The trains of the runs that have a template, in list order.
std::vector<Zug const*> zuegeInListenfolge(Zuglauftemplates const& templates,
                                           ZuegeNachLauf const& index) {
  std::vector<std::pair<std::size_t, Zug const*>> gesammelt;
  for (auto const& [lauf, imTemplate] : templates.fuerLauf) {
    auto const& zuege = index.at(lauf);
    gesammelt.insert(gesammelt.end(), zuege.begin(), zuege.end());
  }
  std::sort(gesammelt.begin(), gesammelt.end());
  std::vector<Zug const*> ergebnis;
  ergebnis.reserve(gesammelt.size());
  for (auto const& [platz, zug] : gesammelt)
    ergebnis.push_back(zug);
  return ergebnis;
}

}  // namespace

void Fahrplandefinition::write(tinyxml2::XMLDocument& doc, std::string const& name,
                               Aussenanlage const& aussenanlage,
                               std::string const& aussenanlageRef) const {
  fplc::detail::DokumentZiel ziel(doc);
  schreibeFahrplan(ziel, name, aussenanlage, aussenanlageRef);
}

void Fahrplandefinition::writeText(tinyxml2::XMLPrinter& printer, std::string const& name,
                                   Aussenanlage const& aussenanlage,
                                   std::string const& aussenanlageRef) const {
  fplc::detail::TextZiel ziel(printer);
  schreibeFahrplan(ziel, name, aussenanlage, aussenanlageRef);
}

template <typename Ziel>
void Fahrplandefinition::schreibeFahrplan(Ziel& ziel, std::string const& name,
                                          Aussenanlage const& aussenanlage,
                                          std::string const& aussenanlageRef) const {
  // The trains whose run has a template here, in list order. After
  // post-processing they come from the index of trains by run and of runs by
  // place, which the first layout builds; otherwise from walks over the whole
  // lists.
  Zuglauftemplates templates;
  std::vector<Zug const*> zuegeDerAnlage;
  if (postprocessed) {
    if (!schreibindex.aktuell) {
      schreibindex = {};
      schreibindex.zuegeNachLauf = zuegeJeLauf(zuege);
      for (Zuglauf const& lauf : zl)
        if (schreibindex.zuegeNachLauf.contains(&lauf))
          schreibindex.benutzteLaeufe.push_back(&lauf);
      ordneNachOrt(schreibindex.benutzteLaeufe, schreibindex.laeufeNachBetriebsstelle,
                   schreibindex.laeufeNachAnlage);
      schreibindex.aktuell = true;
    }
    templates = bildeZuglauftemplates(
        aussenanlage,
        laeufeDerAnlage(aussenanlage, schreibindex.benutzteLaeufe,
                        schreibindex.laeufeNachBetriebsstelle, schreibindex.laeufeNachAnlage));
    zuegeDerAnlage = zuegeInListenfolge(templates, schreibindex.zuegeNachLauf);
  } else {
    templates = bildeZuglauftemplates(aussenanlage, zl, zuege);
    for (Zug const& zug : zuege)
      if (templates.finde(zug.zuglauf)) zuegeDerAnlage.push_back(&zug);
  }

  // A train is written where its run has a template; only what those trains use
  // is written besides them.
  std::vector<GeschriebenerZug> geschrieben;
  std::unordered_set<Reihung const*> benutzteReihungen;
  std::unordered_set<Verkehrstag const*> benutzteTage;
  for (Zug const* zug : zuegeDerAnlage) {
    LaufImTemplate const* lauf = templates.finde(zug->zuglauf);
    signed char lz = calcLenkziffer(zug, &aussenanlage, lauf->lenkzifferBahnhof);
    geschrieben.push_back({zug, lauf, lz});
    if (zug->reihung) benutzteReihungen.insert(zug->reihung);
    if (zug->verkehrstag) benutzteTage.insert(zug->verkehrstag);
  }
  Vorlagennummern<Reihung> const rhg(reihungen, benutzteReihungen);
  Vorlagennummern<Verkehrstag> const tage(verkehrstage, benutzteTage);

  ziel.deklaration();
  element(ziel, "fahrplan", [&] {
    schreibeWurzelattribute(ziel, name, aussenanlageRef);
    schreibeAutoren(ziel, autoren);
    schreibeBibliotheken(ziel, fzgLibs, rhg.reihenfolge);
    schreibeReihungen(ziel, rhg);
    schreibeZuglauftemplates(ziel, templates);
    schreibeTagestemplates(ziel, tage);
    schreibeFahrtrichtungen(ziel, aussenanlage);
    schreibeZuege(ziel, aussenanlage, geschrieben, rhg, tage);
    schreibeTaktzuege(ziel, geschrieben);
  });
}
