// Modifiers at the end of a stop line (and in M): WENDE, GATTUNG, LINIE, FOLGE ZN, LZ.
#include "interpreter/modifier_parser.h"

#include <algorithm>

#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

namespace {

// The token after `t` when it stands on the same line, else null.
Token const* nextOnLine(Token const* t) {
  Token const* next = t->next();
  return next && next->line() == t->line() ? next : nullptr;
}

// Errors point at the offending token. Where the chain ends there is none; the
// fault is then reported at the last token that was read.
[[noreturn]] void fail(Token const* current, char const* message) {
  Token const* next = current->next();
  throw Error(next ? next : current, message);
}

// The token after `current`, which must exist; else the fault `message`.
Token const* following(Token const* current, char const* message) {
  Token const* next = current->next();
  if (!next) fail(current, message);
  return next;
}

// name ["|" name]; leaves `cursor` on the last category token. The category must
// stand on the keyword's line, and so must the optional "|"; the operational
// category after a "|" is simply the token that follows.
std::string readGattung(Token const*& cursor) {
  Token const* name = nextOnLine(cursor);
  if (!name || !name->isName()) fail(cursor, "Syntaxfehler: Keine Gattung angegeben."_cp1252);
  cursor = name;
  std::string gattung = name->str();

  Token const* bar = nextOnLine(cursor);
  if (!bar || bar->str() != "|") return gattung;
  Token const* betrieblich = bar->next();
  if (!betrieblich || !betrieblich->isName())
    fail(bar, "Syntaxfehler: Keine betriebliche Gattung angegeben."_cp1252);
  cursor = betrieblich;
  return gattung + "|" + betrieblich->str();
}

// ZN [sign] value: an absolute train number or a signed difference to the current
// one. The rule is the token after ZN wherever it stands: at the end of a line it
// is the first token of the next line.
std::string readFolge(Token const*& cursor) {
  char const* missing = "Syntaxfehler: Zugnummernregel für Wechsel auf Folgeleistung fehlt."_cp1252;
  Token const* zn = following(cursor, missing);
  if (zn->str() != "ZN") throw Error(zn, missing);
  Token const* value = following(zn, missing);
  cursor = value;
  if (value->str() != "+" && value->str() != "-") return value->str();
  Token const* difference = following(value, missing);
  cursor = difference;
  return value->str() + difference->str();
}

// ["*"] number: a fixed routing digit 0..9, or with "*" a preferred one (10..19).
// The optional "*" stands on the keyword's line; the number is the token that follows.
std::int8_t readLenkziffer(Token const*& cursor) {
  Token const* t = nextOnLine(cursor);
  bool bevorzugt = t && t->str() == "*";
  if (!bevorzugt) t = cursor->next();
  if (bevorzugt) {
    cursor = t;
    t = t->next();
  }
  if (!t || !t->isNumber()) fail(cursor, "Syntaxfehler: Lenkziffernangabe fehlt."_cp1252);
  cursor = t;
  int ziffer = std::clamp(toInt(t->str()), 0, 9);
  return static_cast<std::int8_t>(bevorzugt ? ziffer + 10 : ziffer);
}

}  // namespace

void fplc::detail::readModifikator(FplEintrag& eintrag, Token const*& cursor) {
  Token const* t = cursor;
  std::string const& keyword = t->str();
  if (keyword == "WENDE") {
    eintrag.changedirection = true;
  } else if (keyword == "GATTUNG") {
    eintrag.gattung = readGattung(cursor);
  } else if (keyword == "LINIE") {
    eintrag.gattung = readGattung(cursor);
    Token const* nummer = nextOnLine(cursor);
    if (!nummer) throw Error(cursor, "Syntaxfehler: Keine Liniennummer angegeben."_cp1252);
    eintrag.linie = nummer->str();
    cursor = nummer;
  } else if (keyword == "FOLGE") {
    eintrag.folge = readFolge(cursor);
  } else if (keyword == "LZ") {
    eintrag.lenkziffer = readLenkziffer(cursor);
  } else {
    throw Error(t, "Syntaxfehler: Undefinierter Auftrag."_cp1252);
  }
}

void Fahrplandefinition::parseModifikatoren(FplEintrag& eintrag, Token const*& cursor) {
  eintrag.lenkziffer = -1;
  eintrag.changedirection = false;
  eintrag.folge.clear();
  eintrag.gattung.clear();
  eintrag.linie.clear();

  // Nothing separates modifiers: each starts where the previous one ended.
  while (Token const* t = nextOnLine(cursor)) {
    cursor = t;
    readModifikator(eintrag, cursor);
  }
}
