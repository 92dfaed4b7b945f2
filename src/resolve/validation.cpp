// Plausibility checks of the finished timetable. Every finding becomes a
// warning; the timetable itself is left untouched.
#include <algorithm>
#include <list>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "days/weekday_list.h"
#include "model/fahrplandefinition.h"
#include "resolve/folgeleistung.h"
#include "tokenizer/cp1252.h"

namespace {

// A step back in time of this much or more is a crossing of midnight, not a fault.
constexpr long long kMitternachtsSprung = 72000;
constexpr long long kDreiStunden = 10800;
// Runs that touch the first or the last hour of the day are not timed.
constexpr long long kErsteStundeEnde = 3600;
constexpr long long kLetzteStundeBeginn = 82800;

// Whether `zeit` lies before `bezug` by less than the midnight threshold.
// Absurd times wrap around instead of overflowing.
bool liegtKurzDavor(long long zeit, long long bezug) {
  return zeit < bezug && fplc::detail::zeitMinus(bezug, zeit) < kMitternachtsSprung;
}

// What one run does with one layout: how often it enters and leaves it, and
// whether it starts or ends at one of the layout's stations.
struct AnlagenBilanz {
  std::string name;
  int einfahrten = 0;
  int ausfahrten = 0;
  bool startInnen = false;
  bool zielInnen = false;
};

// The state the checks keep while reading one run.
class Laufpruefung {
 public:
  Laufpruefung(std::list<Aussenanlage> const& anlagen, std::vector<Error>& warnungen)
      : anlagen(anlagen), warnungen(warnungen) {}

  void pruefe(Zuglauf const& lauf) {
    for (FplEintrag const& e : lauf.eintraege) {
      pruefeZeiten(e);
      pruefeArt(e);
    }
    if (lauf.eintraege.empty()) return;
    pruefeVerlassen(lauf.eintraege.back());
    pruefeLaufzeit(lauf.eintraege.front());
    pruefeFolgeRegel(lauf);
  }

 private:
  void warne(Token const* token, std::string const& text) { warnungen.emplace_back(token, text); }

  void sieheZeit(long long zeit) {
    zuletzt = zeit;
    kleinste = kleinste ? std::min(*kleinste, zeit) : zeit;
    groesste = groesste ? std::max(*groesste, zeit) : zeit;
  }

  void pruefeZeiten(FplEintrag const& e) {
    if (e.an != keineZeit) {
      if (zuletzt && liegtKurzDavor(e.an, *zuletzt))
        warne(e.token, "Ankunftszeit liegt vor Fahrtzeit an vorangehendem Eintrag.");
      sieheZeit(e.an);
    }
    if (e.ab != keineZeit) {
      if (zuletzt && liegtKurzDavor(e.ab, *zuletzt) && e.an == keineZeit)
        warne(e.token, "Abfahrtszeit liegt vor Fahrtzeit an vorangehendem Eintrag.");
      sieheZeit(e.ab);
    }
    if (e.an != keineZeit && e.ab != keineZeit && liegtKurzDavor(e.ab, e.an))
      warne(e.token, "Abfahrtszeit vor Ankunftszeit.");
  }

  void pruefeArt(FplEintrag const& e) {
    if (e.typ == FplEintrag::Einfahrt)
      pruefeEinfahrt(e);
    else if (e.typ == FplEintrag::Ausfahrt)
      pruefeAusfahrt(e);
    else if (e.isHalt())
      pruefeHalt(e);
  }

  void pruefeEinfahrt(FplEintrag const& e) {
    AnlagenBilanz& b = bilanz(e.anlage);
    if (b.einfahrten < b.ausfahrten)
      warne(e.token, "Außenanlage wurde verlassen, bevor in sie eingefahren wird."_cp1252);
    ++b.einfahrten;
    if (b.ausfahrten + 1 < b.einfahrten)
      warne(
          e.token,
          "Mehrfache aufeinanderfolgende Einfahrt in Außenanlage, ohne dass sie zwischenzeitlich verlassen wurde."_cp1252);
    if (!eingefahren.insert(e.anlage + "." + e.anlagePunkt).second)
      warne(e.token, "Einfahrt mehrfach im Zuglauf.");
  }

  void pruefeAusfahrt(FplEintrag const& e) {
    AnlagenBilanz& b = bilanz(e.anlage);
    ++b.ausfahrten;
    if (b.ausfahrten > b.einfahrten && !b.startInnen)
      warne(e.token, std::string("Außenanlage "_cp1252) + e.anlage +
                         " wird verlassen, bevor/ohne dass in sie eingefahren wurde.");
    if (!ausgefahren.insert(e.anlage + "." + e.anlagePunkt).second)
      warne(e.token, "Ausfahrt mehrfach im Zuglauf.");
  }

  void pruefeHalt(FplEintrag const& e) {
    if (!halte.insert(e.bahnhof).second) warne(e.token, "Halt mehrfach im Zuglauf.");
    if (e.typ != FplEintrag::Start && e.typ != FplEintrag::Ziel) return;
    for (Aussenanlage const& aa : anlagen) {
      if (!aa.betriebsstellen.contains(e.bahnhof)) continue;
      if (e.typ == FplEintrag::Start)
        bilanz(aa.name).startInnen = true;
      else
        bilanz(aa.name).zielInnen = true;
    }
  }

  // A run that ends inside a layout may have entered it once more than it left.
  void pruefeVerlassen(FplEintrag const& letzter) {
    for (AnlagenBilanz const& b : bilanzen)
      if (b.einfahrten > b.ausfahrten + (b.zielInnen ? 1 : 0))
        warne(letzter.token,
              std::string("Zug verlässt Außenanlage '"_cp1252) + b.name + "' nicht mehr.");
  }

  void pruefeLaufzeit(FplEintrag const& erster) {
    if (!kleinste) return;
    if (fplc::detail::zeitMinus(*groesste, *kleinste) > kDreiStunden &&
        *kleinste > kErsteStundeEnde && *groesste < kLetzteStundeBeginn)
      warne(erster.token, "Zuglaufzeit größer 3 Stunden."_cp1252);
  }

  // A run that ends at a station of a layout must say which train follows.
  void pruefeFolgeRegel(Zuglauf const& lauf) {
    FplEintrag const& letzter = lauf.eintraege.back();
    if (letzter.typ != FplEintrag::Ziel || !letzter.folge.empty()) return;
    bool inAnlage = std::any_of(anlagen.begin(), anlagen.end(), [&](Aussenanlage const& aa) {
      return aa.betriebsstellen.contains(letzter.bahnhof);
    });
    // A run made without a block of its own has no token: its last line stands in.
    if (inAnlage)
      warne(lauf.token ? lauf.token : letzter.token,
            "Zuglauf hat keine ZN-Regel für eine Folgeleistung."_cp1252);
  }

  // The record of a layout, made on first mention; kept in order of mention so
  // that the warnings at the end of the run follow the run.
  AnlagenBilanz& bilanz(std::string const& name) {
    for (AnlagenBilanz& b : bilanzen)
      if (b.name == name) return b;
    bilanzen.push_back(AnlagenBilanz{name});
    return bilanzen.back();
  }

  std::list<Aussenanlage> const& anlagen;
  std::vector<Error>& warnungen;
  std::optional<long long> zuletzt;
  std::optional<long long> kleinste;
  std::optional<long long> groesste;
  std::vector<AnlagenBilanz> bilanzen;
  std::set<std::string> eingefahren;
  std::set<std::string> ausgefahren;
  std::set<std::string> halte;
};

bool hatFesteFolge(Zug const& zug) {
  if (!zug.zuglauf || zug.zuglauf->eintraege.empty()) return false;
  FplEintrag const& letzter = zug.zuglauf->eintraege.back();
  return letzter.typ == FplEintrag::Ziel && !letzter.folge.empty() && letzter.folge != "*";
}

// The weekdays (as digits) on which a train's successor fails each check.
struct Folgebefund {
  std::string fehlend;
  std::string nichtBeginnend;
  std::string andererBahnhof;
  std::string anderesGleis;
  std::string inkongruent;
};

void ordneTagEin(Folgebefund& befund, Zug const& zug, Zug const* folge, char tag) {
  if (!folge) {
    befund.fehlend += tag;
    return;
  }
  FplEintrag const& ende = zug.zuglauf->eintraege.back();
  FplEintrag const& start = folge->zuglauf->eintraege.front();
  if (start.typ != FplEintrag::Start)
    befund.nichtBeginnend += tag;
  else if (start.bahnhof != ende.bahnhof)
    befund.andererBahnhof += tag;
  else if (start.gleis != ende.gleis)
    befund.anderesGleis += tag;
  if (zug.reihung && !zug.reihung->isKongruent(folge->reihung)) befund.inkongruent += tag;
}

void meldeBefund(std::vector<Error>& warnungen, Zug const& zug, Folgebefund const& befund) {
  std::string zugText = "Folgeleistung für Zug "_cp1252;
  zugText += std::to_string(zug.nummer);
  auto melde = [&](std::string const& tage, char const* vorTagen, char const* nachTagen) {
    if (!tage.empty())
      warnungen.emplace_back(zug.token, zugText + vorTagen + formatWeekdayList(tage) + nachTagen);
  };
  melde(befund.fehlend, " am ", " nicht auffindbar (ggf. zu hoher zeitlicher Abstand).");
  melde(befund.nichtBeginnend, " am ", " ist nicht als beginnender Zug definiert.");
  melde(befund.andererBahnhof, " beginnt am ", " an anderem Bahnhof.");
  melde(befund.anderesGleis, " beginnt am ", " auf anderem Gleis.");
  melde(befund.inkongruent, " hat am ", " eine inkongruente Reihung.");
}

// Checks the successor that a train's run names, weekday by weekday.
void pruefeFolgeleistung(fplc::detail::NummernFolgesuche const& suche, Zug const& zug,
                         std::vector<Error>& warnungen) {
  long long nummer = folgeZugnummer(zug);
  // Existence is a matter of the train list alone, not of the days a train runs.
  if (!suche.existiert(nummer)) {
    warnungen.emplace_back(zug.token, "Folgeleistung von Zug " + std::to_string(zug.nummer) +
                                          ", Zug " + std::to_string(nummer) + ", existiert nicht.");
    return;
  }
  long long ankunft = ankunftAmZiel(zug);
  Folgebefund befund;
  for (char tag = '1'; tag <= '7'; ++tag)
    if (faehrtAm(zug, tag)) ordneTagEin(befund, zug, suche.folge(nummer, ankunft, tag), tag);
  meldeBefund(warnungen, zug, befund);
}

// The trains of the list by number, each number's trains in list order.
class Nummernindex {
 public:
  explicit Nummernindex(std::list<Zug> const& zuege) {
    for (Zug const& zug : zuege)
      nachNummer[zug.nummer].push_back(&zug);
  }

  bool existiert(long long nummer) const { return nachNummer.contains(nummer); }

  Zug const* folge(long long nummer, long long ankunft, char tag) const {
    auto fach = nachNummer.find(nummer);
    if (fach == nachNummer.end()) return nullptr;
    return naechsterFolgezug(fach->second, ankunft, tag, [](Zug const&) { return true; });
  }

 private:
  std::unordered_map<long long, std::vector<Zug const*>> nachNummer;
};

}  // namespace

void Fahrplandefinition::validate() {
  for (Zuglauf const& lauf : zl)
    Laufpruefung(aussenanlagen, warnungen).pruefe(lauf);
  Nummernindex index(zuege);
  fplc::detail::pruefeFesteFolgen(zuege, warnungen,
                                  {[&](long long nummer) { return index.existiert(nummer); },
                                   [&](long long nummer, long long ankunft, char tag) {
                                     return index.folge(nummer, ankunft, tag);
                                   }});
}

void fplc::detail::pruefeFesteFolgen(std::list<Zug> const& zuege, std::vector<Error>& warnungen,
                                     NummernFolgesuche const& suche) {
  for (Zug const& zug : zuege)
    if (hatFesteFolge(zug)) pruefeFolgeleistung(suche, zug, warnungen);
}
