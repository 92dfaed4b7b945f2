#include "model/fahrplandefinition.h"
#include "model/hash_maps.h"

#include <string>

Fahrplandefinition::Fahrplandefinition() {
  initHashMap(aussenanlagenByName);
  initHashMap(btr);
  initHashMap(reihungenByName);
  initHashMap(fzgNamen);
  initHashMap(bif);
  initHashMap(vtByName);
  initHashMap(implicitVT);
  initHashMap(zlByName);
  initHashMap(segmenteByKey);
  initHashMap(zuegeByNummer);
}

Fahrplandefinition::~Fahrplandefinition() = default;

void Fahrplandefinition::clear(bool keepSettings) {
  // Records point at tokens and at each other: drop them all before the tokens.
  zuege.clear();
  zuegeByNummer.clear();
  schreibindex = {};
  segmente.clear();
  segmenteByKey.clear();
  zl.clear();
  zlByName.clear();
  zlCounter = 0;
  verkehrstage.clear();
  vtByName.clear();
  implicitVT.clear();
  defaultVT = Verkehrstag();
  vtCounter = 0;
  bif.clear();
  fzgNamen.clear();
  reihungen.clear();
  reihungenByName.clear();
  reihungCounter = 0;
  fzgLibs.clear();
  btr.clear();
  betriebsstellen.clear();
  aussenanlagenByName.clear();
  aussenanlagen.clear();
  autoren.clear();
  warnungen.clear();
  ausgaben.clear();
  tokenLists.clear();

  if (!keepSettings) {
    gattung.clear();
    liniennummer.clear();
    verspaetungsmodell.clear();
    lenkziffer = -1;
  }
  reihung = nullptr;
  reihungGedreht = false;
  zuglauf = nullptr;
  postprocessed = false;
  ausgabeUebersprungen = false;
  currentCommand = nullptr;
  dateiTiefe = 0;
  gelesenBytes = 0;
}

std::string Fahrplandefinition::createTokenLocationString(Token const* tok) const {
  std::string line = "z. " + std::to_string(tok->line());
  if (tokenLists.size() < 2) return line;
  return tok->getTokenList()->file() + ", " + line;
}

std::string Fahrplandefinition::stringifyTokens() {
  return tokenLists.front()->stringify();
}
