// Modifiers at the end of a stop line (and in M): WENDE, GATTUNG, LINIE, FOLGE ZN, LZ.
#include "interpreter/modifier_parser.h"

#include <algorithm>

#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

namespace {

// The token after `t` when it stands on the same line, else null: a modifier never
// takes its values from the next line.
Token const* nextOnLine(Token const* t) {
  Token const* next = t->next();
  return next && next->line() == t->line() ? next : nullptr;
}

// A bracket is never a modifier's value: the closing brace of the block would be
// taken in, and the block read on past its end.
bool isBracket(Token const* t) {
  return t && t->link() != nullptr;
}

// The token after `t` on its line when it may be a value, else null.
Token const* valueOnLine(Token const* t) {
  Token const* next = nextOnLine(t);
  return isBracket(next) ? nullptr : next;
}

bool isNameValue(Token const* t) {
  return t && t->isName() && !isBracket(t);
}

// Errors point at the offending token; when the chain ends there is none, so at
// the last token that was read.
[[noreturn]] void fail(Token const* current, char const* message) {
  Token const* next = current->next();
  throw Error(next ? next : current, message);
}

// name ["|" name]; leaves `cursor` on the last category token.
std::string readGattung(Token const*& cursor) {
  Token const* name = nextOnLine(cursor);
  if (!isNameValue(name)) fail(cursor, "Syntaxfehler: Keine Gattung angegeben."_cp1252);
  cursor = name;
  std::string gattung = name->str();

  Token const* bar = nextOnLine(cursor);
  if (!bar || bar->str() != "|") return gattung;
  Token const* betrieblich = nextOnLine(bar);
  if (!isNameValue(betrieblich))
    fail(bar, "Syntaxfehler: Keine betriebliche Gattung angegeben."_cp1252);
  cursor = betrieblich;
  return gattung + "|" + betrieblich->str();
}

// ZN [sign] value: an absolute train number or a signed difference to the current one.
std::string readFolge(Token const*& cursor) {
  char const* missing = "Syntaxfehler: Zugnummernregel für Wechsel auf Folgeleistung fehlt."_cp1252;
  Token const* zn = nextOnLine(cursor);
  if (!zn || zn->str() != "ZN") fail(cursor, missing);
  Token const* value = valueOnLine(zn);
  if (!value) fail(zn, missing);
  cursor = value;
  if (value->str() != "+" && value->str() != "-") return value->str();
  Token const* difference = valueOnLine(value);
  if (!difference) fail(value, missing);
  cursor = difference;
  return value->str() + difference->str();
}

// ["*"] number: a fixed routing digit 0..9, or with "*" a preferred one (10..19).
std::int8_t readLenkziffer(Token const*& cursor) {
  Token const* t = nextOnLine(cursor);
  bool bevorzugt = t && t->str() == "*";
  if (bevorzugt) {
    cursor = t;
    t = nextOnLine(t);
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
    Token const* nummer = valueOnLine(cursor);
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
