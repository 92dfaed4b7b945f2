// BIF name { lines }: declares a line with its operating points and the places
// where it enters or leaves layouts.
//
//   Bf|Hp|Abzw|Bk|Uest <point> [[-] <km> , <fraction>]   an operating point of a kind
//   * <point>                                              an operating point, kind unstated
//   | [-] <km> , <fraction>                                a kilometre mark
//   <-|-> <layout> . <direction>                           entering / leaving a layout
#include <charconv>

#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"

namespace {

char const* const kFehlerhaft = "BIF-Kommando mit fehlerhaftem Datenblock."_cp1252;

Strecke::Punkt::Art artOf(std::string const& word) {
  if (word == "Bf") return Strecke::Punkt::Bf;
  if (word == "Hp") return Strecke::Punkt::Hp;
  if (word == "Abzw") return Strecke::Punkt::Abzw;
  if (word == "Bk") return Strecke::Punkt::Bk;
  return Strecke::Punkt::Uest;
}

// Reads "[-] <km> , <fraction>" when it starts at `t`; returns the token after it,
// or `t` itself when no position stands there.
Token const* readPosition(Token const* t, Strecke::Punkt& punkt) {
  if (!Token::Match(t, "-| %num% , %num%")) return t;
  bool negativ = t->str() == "-";
  if (negativ) t = t->next();
  std::string const ganz = t->str(), bruch = t->strAt(2);
  punkt.hatPosition = true;
  punkt.position = (negativ ? "-" : "") + ganz + "," + bruch;
  // The number is read without the locale: the comma is the author's, not the C library's.
  std::string const zahl = ganz + "." + bruch;
  std::from_chars(zahl.data(), zahl.data() + zahl.size(), punkt.km);
  if (negativ) punkt.km = -punkt.km;
  return t->tokAt(3);
}

}  // namespace

void Fahrplandefinition::kommandoBIF(Token const* cmd, bool) {
  Token const* name = cmd->next();
  Token const* open = name->next();
  if (!open || open->str() != "{" || !open->link())
    throw Error(cmd, "BIF-Kommando ohne Datenblock."_cp1252);

  Strecke strecke;
  strecke.name = name->str();
  for (Token const* t = open->next(); t != open->link();) {
    Token const* after = nullptr;
    if (Token::Match(t, "Bf|Hp|Abzw|Bk|Uest %name%") || Token::Match(t, "* %name%")) {
      Strecke::Punkt punkt;
      punkt.token = t;
      Betriebsstelle* bs = getBTR_weak(t->next());
      punkt.betriebsstelle = bs;
      if (t->str() != "*") {
        punkt.art = artOf(t->str());
        if (bs->fplcat == 0) bs->fplcat = punkt.art;
        after = readPosition(t->tokAt(2), punkt);
      } else {
        after = t->tokAt(2);
      }
      strecke.punkte.push_back(punkt);
    } else if (Token::Match(t, "%or% -| %num% , %num%")) {
      Strecke::Punkt punkt;
      punkt.token = t;
      punkt.art = Strecke::Punkt::Marke;
      after = readPosition(t->next(), punkt);
      strecke.punkte.push_back(punkt);
    } else if (Token::Match(t, "->|<- %name% . %name%")) {
      strecke.uebergaenge.push_back(
          {t->str() == "<-", t->strAt(1), t->strAt(3), strecke.punkte.size(), t});
      after = t->tokAt(4);
    } else {
      throw Error(t, kFehlerhaft);
    }
    // Each entry is a line of its own.
    bool endsLine = after == open->link() || after->line() != t->line();
    if (!endsLine || after->prev()->line() != t->line()) throw Error(t, kFehlerhaft);
    t = after;
  }
  bif[strecke.name] = std::move(strecke);
}
