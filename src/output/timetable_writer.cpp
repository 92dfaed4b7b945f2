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
#include "output/zeit.h"

using tinyxml2::XMLElement;
using tinyxml2::XMLNode;

namespace {

std::string zeitText(long long t) {
  return zeitToString(t, true, false);
}

// A reference to an object defined in the timetable file itself.
std::string dateiRef(int id) {
  return "0:" + std::to_string(id);
}

XMLElement* neuesElement(XMLNode* eltern, char const* name) {
  XMLElement* e = eltern->GetDocument()->NewElement(name);
  eltern->InsertEndChild(e);
  return e;
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

XMLElement* schreibeWurzel(tinyxml2::XMLDocument& doc, std::string const& name,
                           std::string const& aussenanlageRef) {
  doc.InsertFirstChild(doc.NewDeclaration());
  XMLElement* fahrplan = neuesElement(&doc, "fahrplan");
  fahrplan->SetAttribute("name", name.c_str());
  fahrplan->SetAttribute("aussenanlage", aussenanlageRef.c_str());
  fahrplan->SetAttribute("version", "0.0.9.83 eI");
  fahrplan->SetAttribute("editor", "Zuglinor 0.21");
  return fahrplan;
}

void schreibeAutoren(XMLElement* fahrplan,
                     std::vector<std::pair<std::string, std::string>> const& autoren) {
  for (auto const& [name, kommentar] : autoren) {
    XMLElement* autor = neuesElement(fahrplan, "autor");
    autor->SetAttribute("name", name.c_str());
    autor->SetAttribute("kommentar", kommentar.c_str());
  }
}

// Libraries that a written formation takes a vehicle from, in loading order;
// a library number loaded twice is written once.
void schreibeBibliotheken(XMLElement* fahrplan, std::vector<FzgLib> const& fzgLibs,
                          std::vector<Reihung const*> const& reihungen) {
  std::set<int> benutzt;
  for (Reihung const* r : reihungen)
    for (Reihung::Platz const& p : r->fahrzeuge)
      benutzt.insert(p.bibliothek);
  for (FzgLib const& lib : fzgLibs) {
    if (benutzt.erase(lib.nummer) == 0) continue;
    XMLElement* e = neuesElement(fahrplan, "bibliothek");
    e->SetAttribute("id", std::to_string(lib.nummer).c_str());
    e->SetAttribute("filename", lib.datei.c_str());
  }
}

void schreibeReihungen(XMLElement* fahrplan, Vorlagennummern<Reihung> const& reihungen) {
  for (Reihung const* r : reihungen.reihenfolge) {
    XMLElement* vorlage = neuesElement(fahrplan, "rhgtemplate");
    vorlage->SetAttribute("id", std::to_string(reihungen.ids.at(r)).c_str());
    vorlage->SetAttribute("name", r->name.c_str());
    for (Reihung::Platz const& p : r->fahrzeuge) {
      XMLElement* ref = neuesElement(vorlage, "fahrzeugref");
      ref->SetAttribute("gedreht", p.gedreht ? "1" : "0");
      ref->SetAttribute("ref",
                        (std::to_string(p.bibliothek) + ':' + std::to_string(p.fahrzeug)).c_str());
    }
  }
}

// Entries carry the times of the run that made the pattern.
void schreibeMusterEintrag(XMLElement* vorlage, MusterEintrag const& m, long long reftime) {
  XMLElement* e = neuesElement(vorlage, m.element);
  e->SetAttribute("ref", m.ref.c_str());
  for (MusterAttribut const& a : m.attribute) {
    std::string wert = a.istZeit ? zeitText(fplc::detail::zeitPlus(reftime, a.zeit)) : a.text;
    e->SetAttribute(a.name, wert.c_str());
  }
}

void schreibeZuglauftemplates(XMLElement* fahrplan, Zuglauftemplates const& templates) {
  for (Zuglauftemplate const& t : templates.vorlagen) {
    XMLElement* vorlage = neuesElement(fahrplan, "zuglauftemplate");
    vorlage->SetAttribute("id", std::to_string(t.id).c_str());
    vorlage->SetAttribute("name", t.erster->name.c_str());
    vorlage->SetAttribute("reftime", zeitText(t.bild.reftime).c_str());
    for (MusterEintrag const& m : t.bild.eintraege)
      schreibeMusterEintrag(vorlage, m, t.bild.reftime);
  }
}

void schreibeTagestemplates(XMLElement* fahrplan, Vorlagennummern<Verkehrstag> const& tage) {
  for (Verkehrstag const* vt : tage.reihenfolge) {
    XMLElement* e = neuesElement(fahrplan, "daytemplate");
    e->SetAttribute("id", std::to_string(tage.ids.at(vt)).c_str());
    e->SetAttribute("name", vt->name.c_str());
    e->SetAttribute("days", vt->days.c_str());
    e->SetAttribute("from", vt->from.c_str());
    e->SetAttribute("to", vt->to.c_str());
    e->SetAttribute("exclude", vt->exclude.c_str());
    e->SetAttribute("include", vt->include.c_str());
  }
}

// Directions that the definition added to the layout, by id and then name, so
// that the file does not depend on the order of a hash map.
void schreibeFahrtrichtungen(XMLElement* fahrplan, Aussenanlage const& aa) {
  std::vector<Aussenanlage::Fahrtrichtung const*> eigene;
  for (auto const& [key, richtung] : aa.fahrtrichtungen)
    if (!richtung.ausAussenanlage) eigene.push_back(&richtung);
  std::sort(eigene.begin(), eigene.end(), [](auto const* a, auto const* b) {
    return a->id != b->id ? a->id < b->id : a->name < b->name;
  });
  for (Aussenanlage::Fahrtrichtung const* r : eigene) {
    XMLElement* e = neuesElement(fahrplan, "fahrtrichtung");
    e->SetAttribute("id", std::to_string(r->id).c_str());
    e->SetAttribute("name", r->name.c_str());
    for (int anschluss : r->anschluesse)
      neuesElement(e, "anschluss")->SetAttribute("id", std::to_string(anschluss).c_str());
  }
}

// Reference time of a train's path: its own offset plus its run's reference time.
long long pfadReftime(GeschriebenerZug const& g) {
  return fplc::detail::zeitPlus(g.zug->reftime, g.lauf->reftime);
}

void schreibeZugAttribute(XMLElement* e, Aussenanlage const& aa, GeschriebenerZug const& g) {
  Zug const& zug = *g.zug;
  e->SetAttribute("nummer", std::to_string(static_cast<std::uint32_t>(zug.nummer)).c_str());
  e->SetAttribute("name", "");
  auto const [gattung, betrieblich] = Fahrplandefinition::getGattung(aa, &zug);
  e->SetAttribute("zuggattung", gattung.c_str());
  if (!betrieblich.empty()) e->SetAttribute("zuggattungbetrieblich", betrieblich.c_str());
  if (!zug.verspaetungsmodell.empty())
    e->SetAttribute("randomoverride", zug.verspaetungsmodell.c_str());
  // Only a train with a routing digit of its own carries the attribute; the digit
  // is the one the describer rules give it in this layout.
  if (zug.lenkzifferOverride != -1 && g.lenkziffer >= 0 && g.lenkziffer <= 9)
    e->SetAttribute("znlenkzifferoverride", std::to_string(g.lenkziffer).c_str());
  e->SetAttribute("zuggattungliniennr", Fahrplandefinition::getLinie(aa, &zug).c_str());
}

void schreibeZuege(XMLElement* fahrplan, Aussenanlage const& aa,
                   std::vector<GeschriebenerZug> const& zuege,
                   Vorlagennummern<Reihung> const& reihungen,
                   Vorlagennummern<Verkehrstag> const& tage) {
  for (GeschriebenerZug const& g : zuege) {
    XMLElement* e = neuesElement(fahrplan, "zug");
    schreibeZugAttribute(e, aa, g);
    if (g.zug->reihung) {
      XMLElement* ref = neuesElement(e, "rhgref");
      ref->SetAttribute("ref", dateiRef(reihungen.ids.at(g.zug->reihung)).c_str());
      ref->SetAttribute("gedreht", g.zug->gedreht ? "1" : "0");
    }
    if (g.zug->verkehrstag)
      neuesElement(e, "dayref")
          ->SetAttribute("ref", dateiRef(tage.ids.at(g.zug->verkehrstag)).c_str());
    XMLElement* lauf = neuesElement(e, "zuglaufref");
    lauf->SetAttribute("ref", dateiRef(g.lauf->vorlage->id).c_str());
    lauf->SetAttribute("reftime", zeitText(pfadReftime(g)).c_str());
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
void schreibeTaktzuege(XMLElement* fahrplan, std::vector<GeschriebenerZug> const& zuege) {
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
    XMLElement* takt = neuesElement(fahrplan, "taktzug");
    takt->SetAttribute("id", std::to_string(++id).c_str());
    takt->SetAttribute("fpl", fahrplanText(*familie.front()->zug->zuglauf).c_str());
    takt->SetAttribute("ref", dateiRef(familie.front()->lauf->vorlage->id).c_str());
    for (GeschriebenerZug const* g : familie) {
      XMLElement* trasse = neuesElement(takt, "trasse");
      trasse->SetAttribute("zugnummer",
                           std::to_string(static_cast<std::uint32_t>(g->zug->nummer)).c_str());
      trasse->SetAttribute("reftime", zeitText(pfadReftime(*g)).c_str());
    }
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
  // The trains whose run has a template here, in list order. After
  // post-processing they come from the index of trains by run, which the first
  // layout builds; otherwise from a walk over the whole list.
  Zuglauftemplates templates;
  std::vector<Zug const*> zuegeDerAnlage;
  if (postprocessed) {
    if (!zuegeNachLaufAktuell) {
      zuegeNachLauf = zuegeJeLauf(zuege);
      benutzteLaeufe.clear();
      for (Zuglauf const& lauf : zl)
        if (zuegeNachLauf.contains(&lauf)) benutzteLaeufe.push_back(&lauf);
      zuegeNachLaufAktuell = true;
    }
    templates = bildeZuglauftemplates(aussenanlage, benutzteLaeufe);
    zuegeDerAnlage = zuegeInListenfolge(templates, zuegeNachLauf);
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

  XMLElement* fahrplan = schreibeWurzel(doc, name, aussenanlageRef);
  schreibeAutoren(fahrplan, autoren);
  schreibeBibliotheken(fahrplan, fzgLibs, rhg.reihenfolge);
  schreibeReihungen(fahrplan, rhg);
  schreibeZuglauftemplates(fahrplan, templates);
  schreibeTagestemplates(fahrplan, tage);
  schreibeFahrtrichtungen(fahrplan, aussenanlage);
  schreibeZuege(fahrplan, aussenanlage, geschrieben, rhg, tage);
  schreibeTaktzuege(fahrplan, geschrieben);
}
