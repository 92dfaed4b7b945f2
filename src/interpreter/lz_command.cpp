// LZ layout direction digit ...: the routing digits admissible on a direction,
// set after the layout was loaded.
// LZ layout: reports each direction of the layout file that no train run defined so
// far enters or leaves.
#include <algorithm>

#include "interpreter/fahrtrichtungen.h"
#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

namespace {

char const* const kSyntaxfehler = "Syntaxfehler im LZ-Kommando."_cp1252;

bool onLine(Token const* t, Token const* cmd) {
  return t && t->line() == cmd->line();
}

bool isUsed(std::list<Zuglauf> const& runs, std::string const& anlage, std::string const& key) {
  for (Zuglauf const& run : runs)
    for (FplEintrag const& e : run.eintraege)
      if ((e.typ == FplEintrag::Einfahrt || e.typ == FplEintrag::Ausfahrt) && e.anlage == anlage &&
          e.anlagePunkt == key)
        return true;
  return false;
}

}  // namespace

void Fahrplandefinition::kommandoLZ(Token const* cmd, bool) {
  Token const* layout = cmd->next();
  if (!onLine(layout, cmd)) throw Error(cmd, kSyntaxfehler);
  auto found = aussenanlagenByName.find(layout->str());
  if (found == aussenanlagenByName.end())
    throw Error(layout, std::string("Unbekannte Außenanlage: "_cp1252) + layout->str() + ".");
  Aussenanlage& aa = *found->second;

  Token const* direction = layout->next();
  if (!onLine(direction, cmd)) {
    meldeUnbenutzteFahrtrichtungen(aa, cmd);
    return;
  }
  Aussenanlage::Fahrtrichtung& richtung = findeFahrtrichtung(aa, direction);
  std::uint16_t digits = 0;
  Token const* t = direction->next();
  if (!onLine(t, cmd)) throw Error(cmd, kSyntaxfehler);
  for (; onLine(t, cmd); t = t->next()) {
    if (!t->isNumber())
      throw Error(t, "Syntaxfehler im LZ-Kommando: Lenkziffer ist keine Zahl."_cp1252);
    if (!addLenkziffer(digits, t->str())) throw Error(t, kSyntaxfehler);
  }
  richtung.lenkziffern = digits;
}

void Fahrplandefinition::meldeUnbenutzteFahrtrichtungen(Aussenanlage const& aa, Token const* cmd) {
  // In the order of the layout file's ids, so that the report does not depend on hashing.
  std::vector<Aussenanlage::Fahrtrichtung const*> unbenutzt;
  for (auto const& [key, richtung] : aa.fahrtrichtungen)
    if (richtung.ausAussenanlage && !isUsed(zl, aa.name, key)) unbenutzt.push_back(&richtung);
  std::sort(unbenutzt.begin(), unbenutzt.end(), [](auto const* a, auto const* b) {
    return a->id != b->id ? a->id < b->id : a->name < b->name;
  });
  for (auto const* richtung : unbenutzt)
    warnungen.emplace_back(cmd,
                           std::string("Fahrtrichtung aus Außenanlage bleibt unbenutzt: "_cp1252) +
                               richtung->name + ".");
}
