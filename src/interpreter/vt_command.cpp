// VT: defines a named day-of-operation record, or with the name "*" sets the
// validity period of the template that implicit day expressions copy.
//   VT * from to
//   VT name days from to include exclude
#include <algorithm>
#include <string>

#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"

namespace {

// The token after `t` when it stands on `t`'s line: the validity fields come from
// the line of the token before them; a missing one is empty.
Token const* nextOnLine(Token const* t) {
  Token const* next = t ? t->next() : nullptr;
  return next && next->line() == t->line() ? next : nullptr;
}

// A field's text; absent or written as "-" it is empty.
std::string fieldText(Token const* t) {
  return t && t->str() != "-" ? t->str() : std::string();
}

bool isWeekdayDigits(Token const* t) {
  return t && t->isNumber() &&
         std::all_of(t->str().begin(), t->str().end(), [](char c) { return c >= '1' && c <= '7'; });
}

}  // namespace

void Fahrplandefinition::kommandoVT(Token const* cmd, bool) {
  // The name and the days are required arguments: each is the token after the one
  // before it even when the line ends there, so a missing days token is reported
  // at the first token of the next line.
  Token const* name = cmd->next();
  if (name->str() == "*") {
    Token const* from = nextOnLine(name);
    Token const* to = nextOnLine(from);
    defaultVT.from = from ? from->str() : std::string();
    defaultVT.to = to ? to->str() : std::string();
    return;
  }
  Token const* days = name->next();
  if (!isWeekdayDigits(days))
    throw Error(days ? days : name, "Wochentage müssen als Ziffern angegeben werden."_cp1252);
  Token const* from = nextOnLine(days);
  Token const* to = nextOnLine(from);
  Token const* include = nextOnLine(to);
  Token const* exclude = nextOnLine(include);

  Verkehrstag& vt = verkehrstage.emplace_back();
  vt.name = name->str();
  vt.days = days->str();
  vt.from = fieldText(from);
  vt.to = fieldText(to);
  vt.include = fieldText(include);
  vt.exclude = fieldText(exclude);
  vt.id = ++vtCounter;
  vtByName[vt.name] = &vt;
}
