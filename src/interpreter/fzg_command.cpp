// FZG name library vehicle: names a vehicle of a loaded library for formations.
#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

void Fahrplandefinition::kommandoFZG(Token const* cmd, bool) {
  Token const* name = cmd->next();
  if (!Token::Match(name, "%any% %num% %num%"))
    throw Error(name, "Syntaxfehler im FZG-Kommando."_cp1252);
  Token const* bibliothek = name->next();
  Token const* fahrzeug = bibliothek->next();
  int const nummer = static_cast<int>(toULong(bibliothek->str()));
  int const id = static_cast<int>(toULong(fahrzeug->str()));

  // A name is only useful for a vehicle that exists: a typing error in the numbers
  // is reported here rather than when the timetable is written.
  bool bekannt = false;
  for (FzgLib const& lib : fzgLibs)
    if (lib.nummer == nummer && lib.fahrzeuge.count(id)) bekannt = true;
  if (!bekannt) throw Error(fahrzeug, "Unbekanntes Fahrzeug."_cp1252);

  fzgNamen[name->str()] = {nummer, id};
}
