// SET: the current settings that every train made afterwards takes over.
#include <cstdint>
#include <string>

#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

namespace {

// An optional trailing value belongs to the command's line: when the line ends
// before it, it is empty and never taken from the next line.
std::string const& valueOnLine(Token const* cmd, Token const* value) {
  static std::string const none;
  if (!value || value->line() != cmd->line()) return none;
  return value->str();
}

// Reads an optional "|" operational-category after `category` and appends it
// to `gattung`. Returns the last token used.
Token const* appendBetrieblicheGattung(Token const* category, std::string& gattung) {
  Token const* bar = category->next();
  if (!bar || bar->str() != "|") return category;
  Token const* name = bar->next();
  if (!name || !name->isName())
    throw Error(name ? name : bar, "Syntaxfehler: Keine betriebliche Gattung angegeben."_cp1252);
  gattung += "|" + name->str();
  return name;
}

bool isGattung(std::string const& setting) {
  return setting.size() == 7 && setting.compare(0, 7, "Gattung") == 0;
}

}  // namespace

void Fahrplandefinition::kommandoSET(Token const* cmd, bool) {
  Token const* setting = cmd->next();
  Token const* value = setting->next();
  std::string const& name = setting->str();

  if (isGattung(name)) {
    gattung = setting->strAt(1);
    if (value) appendBetrieblicheGattung(value, gattung);
  } else if (name == "Liniennummer") {
    liniennummer = valueOnLine(cmd, value);
  } else if (name == "Linie") {
    if (!value || !value->isName())
      throw Error(value ? value : setting, "Syntaxfehler: Keine Gattung angegeben."_cp1252);
    gattung = value->str();
    Token const* lastCategory = appendBetrieblicheGattung(value, gattung);
    Token const* number = lastCategory->next();
    if (!number || number->line() != lastCategory->line())
      throw Error(lastCategory, "Syntaxfehler: Keine Liniennummer angegeben."_cp1252);
    liniennummer = number->str();
  } else if (name == "Lenkziffer") {
    std::string const& text = valueOnLine(cmd, value);
    // Stored in 8 bits: 300 becomes 44.
    lenkziffer = text.empty() ? std::int8_t(-1) : static_cast<std::int8_t>(toInt(text));
  } else if (name == "Reihung") {
    reihungGedreht = value && value->str() == "~";
    std::string const& reihungName = setting->strAt(reihungGedreht ? 2 : 1);
    // An unknown name surfaces as the map's out-of-range exception.
    reihung = mapAt(reihungenByName, reihungName);
  } else if (name == "Zuglauf") {
    if (value && value->str() == "(") {
      Zuglauf const* run = nullptr;
      parseZLSpec(value, &run, nullptr);  // no departure time is asked for
      zuglauf = run;
    } else {
      zuglauf = mapAt(zlByName, setting->strAt(1));
    }
  } else if (name == "Verspaetungsmodell") {
    verspaetungsmodell = setting->strAt(1);
  } else {
    throw Error(cmd,
                std::string("SET-Kommando mit unbekannter Statusvariable: "_cp1252) + name + ".");
  }
}
