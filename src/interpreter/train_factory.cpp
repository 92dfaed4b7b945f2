// A new train takes over the settings that are current when it is made.
#include "interpreter/train_factory.h"

#include "model/fahrplandefinition.h"
#include "model/zeit_arithmetik.h"
#include "tokenizer/cp1252.h"

Zug& Fahrplandefinition::createZug(Token const* cmd, std::int32_t nummer,
                                   std::string const& nummerText) {
  Zug& zug = zuege.emplace_back();
  zug.token = cmd;
  zug.nummer = nummer;
  zug.gattung = gattung;
  zug.liniennummer = liniennummer;
  zug.verspaetungsmodell = verspaetungsmodell;
  zug.reihung = reihung;
  zug.gedreht = reihungGedreht;
  zug.zuglauf = zuglauf;
  zug.lenkzifferOverride = lenkziffer;
  // A number used again points the map at the newer train; both stay in the list.
  zuegeByNummer[nummerText] = &zug;
  return zug;
}

Token const* fplc::detail::tokenOnLine(Token const* t, std::uint32_t line) {
  return t && t->line() == line ? t : nullptr;
}

Token const* fplc::detail::readZugGattung(Token const* name, std::string& gattung) {
  gattung = name->str();
  Token const* bar = name->next();
  if (!bar || bar->str() != "|") return name;
  Token const* betrieblich = bar->next();
  if (!betrieblich || !betrieblich->isName())
    throw Error(betrieblich ? betrieblich : bar,
                "Syntaxfehler: Keine betriebliche Gattung angegeben."_cp1252);
  gattung += "|" + betrieblich->str();
  return betrieblich;
}

long long fplc::detail::startFuerAnkunft(long long ankunft, Zuglauf const* run) {
  long long ziel = run ? run->getZielzeit() : keineZeit;
  return ziel == keineZeit ? ankunft : fplc::detail::zeitMinus(ankunft, ziel);
}
