// Post-processing before output: the times of every run are made to run on
// across midnight, and automatic successor services ("*") are resolved per
// weekday, splitting a train where its weekdays have different successors.
#include <array>
#include <cstdint>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "days/weekday_list.h"
#include "model/fahrplandefinition.h"
#include "resolve/folgeleistung.h"
#include "resolve/start_index.h"
#include "tokenizer/cp1252.h"

namespace {

// A step back in time of this much or more is read as a crossing of midnight.
constexpr long long kMitternachtsSprung = 72000;

// Adds the day shift to one time of a run and moves it (and every later time)
// on by a day when it lies 20 hours or more before the previous time.
// Absurd times wrap around instead of overflowing.
void zeitFortschreiben(long long& zeit, long long& tagVerschiebung, long long& vorherige) {
  using fplc::detail::zeitPlus;
  if (zeit == keineZeit) return;
  zeit = zeitPlus(zeit, tagVerschiebung);
  if (fplc::detail::zeitMinus(vorherige, zeit) >= kMitternachtsSprung) {
    zeit = zeitPlus(zeit, kSekundenProTag);
    tagVerschiebung = zeitPlus(tagVerschiebung, kSekundenProTag);
  }
  vorherige = zeit;
}

bool hatAutomatischeFolge(Zug const& zug) {
  if (!zug.zuglauf || zug.zuglauf->eintraege.empty()) return false;
  FplEintrag const& letzter = zug.zuglauf->eintraege.back();
  return letzter.typ == FplEintrag::Ziel && letzter.folge == "*";
}

// Per weekday (index 0 = Monday): the successor's number minus the train's own
// number, or nothing when no successor was found on that day.
using Verschiebungen = std::array<std::optional<long long>, 7>;

char wochentag(int index) {
  return static_cast<char>('1' + index);
}

Verschiebungen folgenJeWochentag(fplc::detail::AutomatischeFolgesuche const& suche,
                                 Zug const& zug) {
  Verschiebungen verschiebungen;
  for (int i = 0; i < 7; ++i) {
    if (!faehrtAm(zug, wochentag(i))) continue;
    std::int32_t nummer = suche.folge(zug, wochentag(i));
    if (nummer != 0) verschiebungen[i] = static_cast<long long>(nummer) - zug.nummer;
  }
  return verschiebungen;
}

// The weekdays on which the train runs but no successor was found, as digits.
std::string tageOhneFolge(Zug const& zug, Verschiebungen const& verschiebungen) {
  std::string tage;
  for (int i = 0; i < 7; ++i)
    if (faehrtAm(zug, wochentag(i)) && !verschiebungen[i]) tage += wochentag(i);
  return tage;
}

// "+2", "+0" or "-1": the successor rule that a run copy carries.
std::string folgeText(long long verschiebung) {
  std::string text = std::to_string(verschiebung);
  if (verschiebung >= 0) text.insert(text.begin(), '+');
  return text;
}

// Run copies with a fixed successor rule, shared by every train that had the
// same run and the same number shift during one post-processing pass.
class Laufkopien {
 public:
  Laufkopien(std::list<Zuglauf>& zl, std::uint32_t& zlCounter) : zl(zl), zlCounter(zlCounter) {}

  Zuglauf const* fuer(Zuglauf const* lauf, long long verschiebung) {
    auto [it, neu] = kopien.try_emplace({lauf, verschiebung}, nullptr);
    if (neu) it->second = &anlegen(*lauf, verschiebung);
    return it->second;
  }

 private:
  Zuglauf& anlegen(Zuglauf const& lauf, long long verschiebung) {
    Zuglauf& kopie = zl.emplace_back(lauf);
    kopie.id = static_cast<int>(++zlCounter);
    kopie.eintraege.back().folge = folgeText(verschiebung);
    kopie.name += kopie.eintraege.back().folge;
    return kopie;
  }

  std::list<Zuglauf>& zl;
  std::uint32_t& zlCounter;
  std::map<std::pair<Zuglauf const*, long long>, Zuglauf const*> kopien;
};

// One group of weekdays with the same number shift: the shift and the weekday
// bit mask (bit n-1 for weekday n).
struct Tagesgruppe {
  long long verschiebung;
  unsigned maske;
};

std::vector<Tagesgruppe> gruppiereNachVerschiebung(Verschiebungen const& verschiebungen) {
  std::vector<Tagesgruppe> gruppen;
  std::array<bool, 7> vergeben{};
  for (int i = 0; i < 7; ++i) {
    if (!verschiebungen[i] || vergeben[i]) continue;
    Tagesgruppe gruppe{*verschiebungen[i], 0};
    for (int j = i; j < 7; ++j) {
      if (verschiebungen[j] != gruppe.verschiebung) continue;
      gruppe.maske |= 1u << j;
      vergeben[j] = true;
    }
    gruppen.push_back(gruppe);
  }
  return gruppen;
}

// Gives the train the run copy and the days of the first group, and appends a
// copy of the train for every further group. The days of a later group derive
// from the train's days as the first group left them. Weekdays in no group
// drop out; with no group at all the train keeps no run.
void aufteilenNachFolge(Zug& zug, std::vector<Tagesgruppe> const& gruppen, Laufkopien& laufkopien,
                        std::list<Zug>& zuege, Fahrplandefinition& fpl,
                        fplc::detail::AutomatischeFolgesuche const& suche) {
  Zuglauf const* lauf = zug.zuglauf;
  zug.zuglauf = nullptr;
  for (std::size_t i = 0; i < gruppen.size(); ++i) {
    Zuglauf const* kopie = laufkopien.fuer(lauf, gruppen[i].verschiebung);
    if (i == 0) {
      zug.zuglauf = kopie;
      zug.verkehrstag = fpl.createVT_weak(zug.verkehrstag, gruppen[i].maske);
      continue;
    }
    Zug weiterer = zug;
    weiterer.zuglauf = kopie;
    weiterer.verkehrstag = fpl.createVT_weak(zug.verkehrstag, gruppen[i].maske);
    suche.angehaengt(zuege.emplace_back(std::move(weiterer)));
  }
}

}  // namespace

void fplc::detail::ueberMitternachtFortschreiben(Zuglauf& lauf) {
  long long tagVerschiebung = 0;
  long long vorherige = 0;
  for (FplEintrag& e : lauf.eintraege) {
    zeitFortschreiben(e.an, tagVerschiebung, vorherige);
    zeitFortschreiben(e.ab, tagVerschiebung, vorherige);
  }
}

void Fahrplandefinition::postprocess() {
  if (postprocessed) return;
  postprocessed = true;
  schreibindex = {};
  for (Zuglauf& lauf : zl)
    fplc::detail::ueberMitternachtFortschreiben(lauf);

  fplc::detail::Startindex index(zuege);
  fplc::detail::AutomatischeFolgesuche suche{
      [&](Zug const& zug, char tag) { return index.folge(zug, tag); },
      [&](Zug const& zug) { index.aufnehmen(zug); }};
  fplc::detail::loeseAutomatischeFolgenAuf(*this, zuege, zl, zlCounter, warnungen, suche);
}

void fplc::detail::loeseAutomatischeFolgenAuf(Fahrplandefinition& fpl, std::list<Zug>& zuege,
                                              std::list<Zuglauf>& zl, std::uint32_t& zlCounter,
                                              std::vector<Error>& warnungen,
                                              AutomatischeFolgesuche const& suche) {
  Laufkopien laufkopien(zl, zlCounter);
  // Trains appended while splitting are reached too: list iterators stay valid.
  for (auto it = zuege.begin(); it != zuege.end(); ++it) {
    Zug& zug = *it;
    if (!hatAutomatischeFolge(zug)) continue;
    Verschiebungen verschiebungen = folgenJeWochentag(suche, zug);
    std::string ohneFolge = tageOhneFolge(zug, verschiebungen);
    if (!ohneFolge.empty())
      warnungen.emplace_back(zug.token, std::string("Folgeleistung für Zug "_cp1252) +
                                            std::to_string(zug.nummer) + " am " +
                                            formatWeekdayList(ohneFolge) + " nicht ermittelbar.");
    aufteilenNachFolge(zug, gruppiereNachVerschiebung(verschiebungen), laufkopien, zuege, fpl,
                       suche);
  }
}
