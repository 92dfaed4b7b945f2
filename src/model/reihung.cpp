#include "model/reihung.h"

std::string Reihung::getFirstFzgName() const {
  return fahrzeuge.empty() ? std::string() : fahrzeuge.front().fzg;
}

bool Reihung::isKongruent(Reihung const* other) const {
  if (!other) return false;
  if (id == other->id) return true;
  std::size_t const n = fahrzeuge.size();
  if (other->fahrzeuge.size() != n) return false;
  auto sameVehicle = [](Platz const& a, Platz const& b) {
    return a.bibliothek == b.bibliothek && a.fahrzeug == b.fahrzeug;
  };
  for (std::size_t i = 0; i < n; ++i) {
    Platz const& candidate = other->fahrzeuge[i];
    if (!sameVehicle(candidate, fahrzeuge[i]) && !sameVehicle(candidate, fahrzeuge[n - 1 - i]))
      return false;
  }
  return true;
}
