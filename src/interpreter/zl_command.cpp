// ZL name { lines }: defines a named train run.
#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"

void Fahrplandefinition::kommandoZL(Token const* cmd, bool) {
  postprocessed = false;
  Token const* name = cmd->next();
  Token const* block = name->next();
  if (!block || !block->link()) throw Error(cmd, "ZL-Kommando erfordert Datenblock."_cp1252);

  parseZL(block);
  // Only a run read without fault gets its name; a later run of the same name
  // takes over the name while the earlier one stays in the list.
  Zuglauf& lauf = zl.back();
  lauf.name = name->str();
  zlByName[lauf.name] = &lauf;
}
