// Look-up of the vehicles of a formation in the loaded libraries.
#include "model/fahrplandefinition.h"
#include "tokenizer/std_conversions.h"

Fzg const& Fahrplandefinition::getFzg(Reihung const* r, std::size_t i) const {
  Reihung::Platz const& platz = r->fahrzeuge.at(i);
  for (FzgLib const& lib : fzgLibs)
    if (lib.nummer == platz.bibliothek) return mapAt(lib.fahrzeuge, platz.fahrzeug);
  throwUnknownKey();
}
