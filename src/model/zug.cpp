#include "model/zug.h"

#include "model/zeit_arithmetik.h"

long long Zug::getStartzeit() const {
  if (!zuglauf || zuglauf->eintraege.empty()) return reftime;
  FplEintrag const& first = zuglauf->eintraege.front();
  if (first.an != keineZeit) return fplc::detail::zeitPlus(reftime, first.an);
  if (first.ab != keineZeit) return fplc::detail::zeitPlus(reftime, first.ab);
  return reftime;
}
