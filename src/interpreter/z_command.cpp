// Z number [">"] run [days] [category ["|" operational category]]: one train.
#include "interpreter/train_factory.h"
#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/std_conversions.h"

void Fahrplandefinition::kommandoZ(Token const* cmd, bool) {
  postprocessed = false;
  Token const* nummer = cmd->next();
  // The train is made before its arguments are checked, so that it stays in the
  // list after a fault, like every record built before one; its number is set only
  // once the arguments are known to be right.
  Zug& zug = createZug(cmd, 0, nummer->str());
  if (!Token::Match(nummer, "%num% >| %time%|*|("))
    throw Error(cmd, "Z-Kommando mit unbekannten Parametern."_cp1252);
  zug.nummer = toInt(nummer->str());

  Token const* angabe = nummer->next();
  bool ankunft = angabe->str() == ">";
  if (ankunft) angabe = angabe->next();

  // "*": the train's own run follows as a data block; there is no run
  // reference to read, and the reference time stays 0.
  bool implizit = angabe->str() == "*";
  Token const* last = angabe;
  if (!implizit) {
    last = parseZLSpec(angabe, &zug.zuglauf, &zug.reftime);
    if (ankunft) zug.reftime = startFuerAnkunft(zug.reftime, zug.zuglauf);
  }

  // Days only from the command's own line, so that the next command is never
  // taken for days; the block of an implicit run is no day group either.
  Token const* t = last->next();
  bool tage = tokenOnLine(t, cmd->line()) && !(implizit && t->str() == "{");
  if (tage) t = parseInlineVT(t, &zug.verkehrstag)->next();

  // A category on a later line belongs to another command; the setting stays.
  if (t && t->isName() && t->line() == nummer->line()) t = readZugGattung(t, zug.gattung)->next();

  if (!implizit) return;
  if (!t || !t->link())
    throw Error(cmd, "Z-Kommando mit impliziter Zuglaufdefinition, aber ohne Datenblock."_cp1252);
  parseZL(t);
  // The run is the train's own: it bears the train's number but is not entered
  // among the named runs, so no other command can refer to it.
  Zuglauf& lauf = zl.back();
  lauf.name = nummer->str();
  zug.zuglauf = &lauf;
  zug.reftime = 0;
}
