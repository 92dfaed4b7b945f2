// Run references of Z, M and SET Zuglauf: a time for the current run, or a
// group "(" [time] name { [time] name } ")" naming one run or composing several.
#include <vector>

#include "model/fahrplandefinition.h"
#include "model/zeit_arithmetik.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

namespace {

// One run named in a group, with the time written before it (or none).
struct Teil {
  long long zeit;
  Zuglauf const* lauf;
  Token const* name;
};

[[noreturn]] void ungueltig(Token const* t) {
  throw Error(t, "Ungültige Fahrtzeit-/Zuglaufangabe."_cp1252);
}

std::vector<Teil> readTeile(Token const* open,
                            std::unordered_map<std::string, Zuglauf*> const& zlByName) {
  std::vector<Teil> teile;
  Token const* close = open->link();
  for (Token const* t = open->next(); t != close; t = t->next()) {
    long long zeit = keineZeit;
    if (t->isTime()) {
      zeit = t->time();
      t = t->next();
    }
    // Run names are whatever ZL was given: words or numbers.
    if (t == close || !(t->isName() || t->isNumber())) ungueltig(t);
    teile.push_back({zeit, mapAt(zlByName, t->str()), t});
  }
  if (teile.empty()) ungueltig(close);
  return teile;
}

void verschiebe(FplEintrag& e, long long um) {
  for (long long* zeit : {&e.an, &e.ab, &e.anReserve, &e.abReserve})
    if (*zeit != keineZeit) *zeit = fplc::detail::zeitPlus(*zeit, um);
}

// The end stop of one part and the start stop of the next become one plain stop:
// arrival from the first, departure and changes from the second.
void verbinde(FplEintrag& halt, FplEintrag const& weiter) {
  halt.ab = weiter.ab;
  // A next part that ends where it starts leaves the run's end here.
  halt.typ = halt.ab == keineZeit ? FplEintrag::Ziel : FplEintrag::Halt;
  if (weiter.mindesthaltezeit != keineZeit) halt.mindesthaltezeit = weiter.mindesthaltezeit;
  // "*" leaves the track open for the part that continues from here.
  if (halt.gleis == "*") {
    halt.gleis = weiter.gleis;
    halt.signalart = weiter.signalart;
  }
  halt.changedirection = halt.changedirection || weiter.changedirection;
  if (weiter.lenkziffer != -1) halt.lenkziffer = weiter.lenkziffer;
  if (!weiter.gattung.empty()) {
    halt.gattung = weiter.gattung;
    halt.linie = weiter.linie;
  }
  // The train goes on: a successor rule of the first part's end no longer applies.
  halt.folge = weiter.folge;
}

// A stop's token is its line's first token, the operating point's abbreviation; the
// long name is no key, points without one share it.
bool selbeBetriebsstelle(FplEintrag const& a, FplEintrag const& b) {
  return a.token && b.token && a.token->str() == b.token->str();
}

void haengeAn(Zuglauf& gesamt, Teil const& teil, long long verschiebung) {
  auto& eintraege = gesamt.eintraege;
  for (std::size_t i = 0; i < teil.lauf->eintraege.size(); ++i) {
    FplEintrag e = teil.lauf->eintraege[i];
    verschiebe(e, verschiebung);
    if (i == 0 && !eintraege.empty()) {
      FplEintrag& bisher = eintraege.back();
      // A part can only go on where the train has arrived, at the same place.
      if (bisher.an == keineZeit) throw Error(teil.name, "Zugläufe inkompatibel."_cp1252);
      if (bisher.isHalt() && e.isHalt()) {
        if (!selbeBetriebsstelle(bisher, e))
          throw Error(teil.name, "Zugläufe inkompatibel."_cp1252);
        verbinde(bisher, e);
        continue;
      }
    }
    eintraege.push_back(e);
  }
}

}  // namespace

Token const* Fahrplandefinition::parseZLSpec(Token const* tok, Zuglauf const** run,
                                             long long* time) {
  if (tok && tok->isTime()) {
    if (run) *run = zuglauf;
    if (time) *time = tok->time();
    return tok;
  }
  if (!tok || tok->str() != "(" || !tok->link()) ungueltig(tok);

  std::vector<Teil> teile = readTeile(tok, zlByName);
  // The first time is the reference time, as for a single run; without one the
  // caller's time stays (0 for a new train).
  long long bezug = teile.front().zeit;
  if (time && bezug != keineZeit) *time = bezug;
  if (teile.size() == 1) {
    if (run) *run = teile.front().lauf;
    return tok->link();
  }

  Zuglauf& gesamt = zl.emplace_back();
  gesamt.id = static_cast<int>(++zlCounter);
  gesamt.token = tok;
  for (Teil const& teil : teile) {
    if (&teil != &teile.front()) gesamt.name += "+";
    gesamt.name += teil.lauf->name;
    // Later parts are placed at their time relative to the first part.
    long long verschiebung =
        teil.zeit == keineZeit ? 0
                               : fplc::detail::zeitMinus(teil.zeit, bezug == keineZeit ? 0 : bezug);
    haengeAn(gesamt, teil, verschiebung);
  }
  if (run) *run = &gesamt;
  return tok->link();
}
