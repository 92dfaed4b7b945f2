// TZ: a series of clock-face trains, in three forms told apart by the first
// argument: numbers (first last step time timestep), a list "(...)" or a block "*".
#include <cstdint>
#include <string>
#include <vector>

#include "interpreter/number_list.h"
#include "interpreter/train_factory.h"
#include "model/fahrplandefinition.h"
#include "model/zeit_arithmetik.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

void Fahrplandefinition::kommandoTZ(Token const* cmd, bool) {
  postprocessed = false;
  std::string const& form = cmd->next()->str();
  if (form == "(")
    kommandoTZListe(cmd);
  else if (form == "*")
    kommandoTZBlock(cmd);
  else
    kommandoTZZahlen(cmd);
}

// TZ first last step time timestep [days]
void Fahrplandefinition::kommandoTZZahlen(Token const* cmd) {
  Token const* first = cmd->next();
  if (!Token::Match(first, "%num% %num% %num%"))
    throw Error(first,
                "Syntaxfehler in Taktzug-Kommando: Erwartet Start- und Endzugnummern sowie "
                "Schrittweite als erste drei Argumente."_cp1252);
  long long von = toInt(first->str());
  long long bis = toInt(first->strAt(1));
  long long schritt = toInt(first->strAt(2));
  // Equal numbers pass and make one train, although the text asks for a smaller
  // start number: existing definitions rely on it.
  if (bis < von)
    throw Error(first,
                "Syntaxfehler in Taktzug-Kommando: Startzugnummer muss kleiner als Endzugnummer "
                "sein."_cp1252);
  if (schritt == 0)
    throw Error(first->tokAt(2),
                "Syntaxfehler in Taktzug-Kommando: Schrittweite muss größer als 0 sein."_cp1252);

  Token const* zeit = first->tokAt(3);
  if (!Token::Match(zeit, "%time% %time%"))
    throw Error(zeit ? zeit : cmd,
                "Syntaxfehler in Taktzug-Kommando: Erwarte Startzeit und Schrittweite als viertes "
                "und fünftes Argument."_cp1252);
  long long takt = zeit->next()->time();

  Verkehrstag const* tage = nullptr;
  if (Token const* t = tokenOnLine(zeit->tokAt(2), cmd->line())) parseInlineVT(t, &tage);

  // Counted before any train is made: a slip in the numbers must not fill the memory.
  if (static_cast<unsigned long long>((bis - von) / schritt) + 1 > maxZugnummern)
    throw Error(cmd, std::string("Syntaxfehler in Taktzug-Kommando: Mehr als ") +
                         std::to_string(maxZugnummern) + " Züge."_cp1252);

  long long reftime = zeit->time();
  for (long long nummer = von; nummer <= bis;
       nummer += schritt, reftime = fplc::detail::zeitPlus(reftime, takt)) {
    Zug& zug = createZug(cmd, static_cast<std::int32_t>(nummer), std::to_string(nummer));
    zug.reftime = reftime;
    zug.verkehrstag = tage;
  }
}

// TZ "(" numbers ")" [">"] time timestep [days]
void Fahrplandefinition::kommandoTZListe(Token const* cmd) {
  std::vector<unsigned int> nummern;
  Token const* t = parseList(cmd->next(), nummern)->next();
  bool ankunft = t && t->str() == ">";
  if (ankunft) t = t->next();
  if (!t || !t->isTime())
    throw Error(cmd, "TZ-Kommando erwartet Startzeit als zweiten Parameter."_cp1252);
  Token const* takt = t->next();
  if (!takt || !takt->isTime())
    throw Error(cmd, "TZ-Kommando erwartet Schrittweite als Zeit als dritten Parameter."_cp1252);

  Verkehrstag const* tage = nullptr;
  if (Token const* vt = tokenOnLine(takt->next(), cmd->line())) parseInlineVT(vt, &tage);

  long long zeit = t->time();
  for (unsigned int nummer : nummern) {
    // Listed numbers are unsigned; a train keeps their 32-bit pattern, which the
    // writer writes unsigned again, so 4294967295 stays 4294967295.
    Zug& zug = createZug(cmd, static_cast<std::int32_t>(nummer), std::to_string(nummer));
    zug.reftime = ankunft ? startFuerAnkunft(zeit, zug.zuglauf) : zeit;
    zug.verkehrstag = tage;
    zeit = fplc::detail::zeitPlus(zeit, takt->time());
  }
}

// TZ "*" [days] "{" { number [">"] time } "}"
void Fahrplandefinition::kommandoTZBlock(Token const* cmd) {
  Token const* t = cmd->tokAt(2);
  Verkehrstag const* tage = nullptr;
  if (tokenOnLine(t, cmd->line()) && t->str() != "{") t = parseInlineVT(t, &tage)->next();
  if (!t || t->str() != "{" || !t->link())
    throw Error(cmd, "Syntaxfehler in Taktzug-Kommando: Datenblock erwartet."_cp1252);

  for (Token const* paar = t->next(); paar != t->link();) {
    // "}" is neither a number, ">" nor a time, so a pair never reaches past the block.
    if (!Token::Match(paar, "%num% >| %time%"))
      throw Error(paar,
                  "Syntaxfehler in Taktzug-Kommando: Pärchen aus Zugnummer und Startzeit in "
                  "Datenblock erwartet."_cp1252);
    Token const* zeit = paar->next();
    bool ankunft = zeit->str() == ">";
    if (ankunft) zeit = zeit->next();
    Zug& zug = createZug(cmd, toInt(paar->str()), paar->str());
    zug.reftime = ankunft ? startFuerAnkunft(zeit->time(), zug.zuglauf) : zeit->time();
    zug.verkehrstag = tage;
    paar = zeit->next();
  }
}
