// Look-up of operating points by the train-run parsers.
#include "external/installation.h"
#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

Betriebsstelle* Fahrplandefinition::getBTR_weak(Token const* t) {
  // Developers of a layout want every point declared; authors get a point made up
  // for them, with a warning so that a typing error does not go unnoticed.
  if (quorvel_dev) return mapAt(btr, t->str());
  auto found = btr.find(t->str());
  if (found != btr.end()) return found->second;

  Betriebsstelle& neu = betriebsstellen.emplace_back();
  neu.ds100 = t->str();
  btr.emplace(neu.ds100, &neu);
  warnungen.emplace_back(t, std::string("Betriebsstelle ") + t->str() + " implizit generiert.");
  return &neu;
}
