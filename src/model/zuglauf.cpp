#include "model/zuglauf.h"

long long Zuglauf::getZielzeit() const {
  if (eintraege.empty()) return keineZeit;
  FplEintrag const& last = eintraege.back();
  if (last.typ == FplEintrag::Einfahrt || last.typ == FplEintrag::Ausfahrt) return keineZeit;
  return last.getAnOrAb();
}
