// Look-up of the vehicles of a formation in the loaded libraries.
#include "model/fahrplandefinition.h"
#include "tokenizer/std_conversions.h"

Fzg const& Fahrplandefinition::getFzg(Reihung const* r, std::size_t i) const {
  Reihung::Platz const& platz = r->fahrzeuge.at(i);
  // Like FZG, which accepts a vehicle of any library loaded under the number.
  for (FzgLib const& lib : fzgLibs) {
    if (lib.nummer != platz.bibliothek) continue;
    auto found = lib.fahrzeuge.find(platz.fahrzeug);
    if (found != lib.fahrzeuge.end()) return found->second;
  }
  throwUnknownKey();
}
