#pragma once
// One change that an M command makes to the trains it lists, and the changes to
// a run's entries that M makes on a copy of the run.
#include <cstdint>
#include <string>
#include <vector>

#include "model/fahrplandefinition.h"

struct Fahrplandefinition::Modifikation {
  enum class Art : std::uint8_t {
    Gattung,  // the train's category
    Linie,    // the train's line number
    Rhg,      // the train's formation
    Zl,       // the train's run, and its reference time when the run comes with one
    FolgeZn,  // the successor rule at the run's destination
    Ziel,     // entry modifiers (WENDE, LZ, ...) at the run's destination
    Auftrag,  // entry modifiers at the stop of an operating point on a track
    Gleis,    // another track for the stop of an operating point on a track
  };

  Art art = Art::Gattung;
  Token const* keyword = nullptr;  // the modification's keyword, for messages
  std::string text;                // Gattung, Linie: new text; FolgeZn: the rule; Gleis: new track
  Reihung const* reihung = nullptr;
  bool gedreht = false;
  Zuglauf const* zuglauf = nullptr;
  long long reftime = keineZeit;  // keineZeit: the train keeps its reference time
  std::string kuerzel;            // Auftrag, Gleis: the operating point's abbreviation
  std::string gleis;              // Auftrag, Gleis: the track of the stop
  FplEintrag auftrag;             // Ziel, Auftrag: what the entry modifiers set

  // Changes of the run are made on a copy; the others change the train itself.
  bool aendertZuglauf() const { return art >= Art::FolgeZn; }
};

// Each returns false when no entry of `eintraege` fits, and then changes nothing.

// The successor rule at the destination (an end stop as the last entry).
namespace fplc::detail {

bool setzeFolgeRegel(std::vector<FplEintrag>& eintraege, std::string const& regel);
// What the entry modifiers set, at the destination.
bool uebertrageAmZiel(std::vector<FplEintrag>& eintraege, FplEintrag const& auftrag);
// What the entry modifiers set, at every stop at the operating point `kuerzel` on
// track `gleis`.
bool uebertrageAmHalt(std::vector<FplEintrag>& eintraege, std::string const& kuerzel,
                      std::string const& gleis, FplEintrag const& auftrag);
// Track `neu` instead of `gleis` at every stop at the operating point `kuerzel` on
// track `gleis`.
bool wechsleGleis(std::vector<FplEintrag>& eintraege, std::string const& kuerzel,
                  std::string const& gleis, std::string const& neu);

}  // namespace fplc::detail

// The library's own sources name these unqualified.
using fplc::detail::setzeFolgeRegel;
using fplc::detail::uebertrageAmHalt;
using fplc::detail::uebertrageAmZiel;
using fplc::detail::wechsleGleis;
