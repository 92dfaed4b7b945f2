// RHG name [~] vehicle ...: declares a formation of named vehicles.
#include "model/fahrplandefinition.h"
#include "tokenizer/std_conversions.h"

void Fahrplandefinition::kommandoRHG(Token const* cmd, bool) {
  Token const* name = cmd->next();
  Reihung& reihung = reihungen.emplace_back();
  reihung.id = ++reihungCounter;
  reihung.name = name->str();
  reihungenByName[reihung.name] = &reihung;

  bool gedreht = false;
  for (Token const* t = name->next(); t && t->line() == cmd->line(); t = t->next()) {
    if (t->str() == "~") {
      gedreht = true;
      continue;
    }
    auto const& [bibliothek, fahrzeug] = mapAt(fzgNamen, t->str());
    reihung.fahrzeuge.push_back({t->str(), bibliothek, fahrzeug, gedreht});
    gedreht = false;
  }
}
