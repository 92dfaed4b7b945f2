#include "model/zug.h"

long long Zug::getStartzeit() const {
  if (!zuglauf || zuglauf->eintraege.empty()) return reftime;
  FplEintrag const& first = zuglauf->eintraege.front();
  if (first.an != keineZeit) return reftime + first.an;
  if (first.ab != keineZeit) return reftime + first.ab;
  return reftime;
}
