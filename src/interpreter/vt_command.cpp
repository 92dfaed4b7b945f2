// VT: defines a named day-of-operation record, or with the name "*" sets the
// validity period of the template that implicit day expressions copy.
//   VT * from to
//   VT name days from to include exclude
#include <algorithm>
#include <string>

#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"

namespace {

// The token after `t` when it stands on `line`: the fields of a VT line come only
// from the command's own line, a missing one is empty.
Token const* nextOnLine(Token const* t, std::uint32_t line) {
  Token const* next = t ? t->next() : nullptr;
  return next && next->line() == line ? next : nullptr;
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
  std::uint32_t const line = cmd->line();
  Token const* name = nextOnLine(cmd, line);
  Token const* last = nullptr;  // the last field read, for the check of surplus tokens

  if (name && name->str() == "*") {
    Token const* from = nextOnLine(name, line);
    Token const* to = nextOnLine(from, line);
    defaultVT.from = from ? from->str() : std::string();
    defaultVT.to = to ? to->str() : std::string();
    last = to;
  } else {
    Token const* days = nextOnLine(name, line);
    // A missing days token is reported where it should stand: after the last token
    // of the line.
    if (!isWeekdayDigits(days))
      throw Error(days ? days : (name ? name : cmd),
                  "Wochentage müssen als Ziffern angegeben werden."_cp1252);
    Token const* from = nextOnLine(days, line);
    Token const* to = nextOnLine(from, line);
    Token const* include = nextOnLine(to, line);
    Token const* exclude = nextOnLine(include, line);

    Verkehrstag& vt = verkehrstage.emplace_back();
    vt.name = name->str();
    vt.days = days->str();
    vt.from = fieldText(from);
    vt.to = fieldText(to);
    vt.include = fieldText(include);
    vt.exclude = fieldText(exclude);
    vt.id = ++vtCounter;
    vtByName[vt.name] = &vt;
    last = exclude;
  }

  // Dates written with separators ("01.05.2024") split into several tokens and
  // would shift the fields silently: say so when the line has more than it uses.
  if (Token const* surplus = nextOnLine(last, line))
    warnungen.emplace_back(surplus, "Überzählige Angaben in VT-Zeile werden ignoriert."_cp1252);
}
