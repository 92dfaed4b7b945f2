#include <cstring>

#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"

// Keywords are tried in this order; the first whole-text match runs.
Fahrplandefinition::KommandoEintrag const Fahrplandefinition::kommandos[] = {
    {"AUT", &Fahrplandefinition::kommandoAUT}, {"BTR", &Fahrplandefinition::kommandoBTR},
    {"AA", &Fahrplandefinition::kommandoAA},   {"LZ", &Fahrplandefinition::kommandoLZ},
    {"BIB", &Fahrplandefinition::kommandoBIB}, {"FZG", &Fahrplandefinition::kommandoFZG},
    {"RHG", &Fahrplandefinition::kommandoRHG}, {"VT", &Fahrplandefinition::kommandoVT},
    {"ZL", &Fahrplandefinition::kommandoZL},   {"ZLS", &Fahrplandefinition::kommandoZLS},
    {"SET", &Fahrplandefinition::kommandoSET}, {"TZ", &Fahrplandefinition::kommandoTZ},
    {"Z", &Fahrplandefinition::kommandoZ},     {"M", &Fahrplandefinition::kommandoM},
    {"DAT", &Fahrplandefinition::kommandoDAT}, {"BIF", &Fahrplandefinition::kommandoBIF},
    {"OUT", &Fahrplandefinition::kommandoOUT},
};

void Fahrplandefinition::execute(bool skipOutput, TokenList const* list) {
  if (!list) {
    if (tokenLists.empty()) return;  // nothing was read
    list = tokenLists.front().get();
  }
  // The command is the first token of a source line; a bracketed group, however
  // many lines it spans, belongs to the command before it.
  Token const* tok = list->front();
  for (int header = 0; header < 3 && tok; ++header)
    tok = tok->next();
  std::uint32_t lastLine = 0;
  while (tok) {
    if (tok->link()) {
      tok = tok->link()->next();
      continue;
    }
    if (tok->line() != lastLine) {
      execute(skipOutput, tok);
      lastLine = tok->line();
    }
    tok = tok->next();
  }
}

void Fahrplandefinition::execute(bool skipOutput, Token const* command) {
  if (!command->next()) throw Error(command, "Syntaxfehler: Befehl ohne Argumente."_cp1252);
  for (KommandoEintrag const& eintrag : kommandos) {
    if (command->str() != eintrag.keyword) continue;
    // Remembered for front-ends; an include restores the including command after
    // it. At the top level there is none, also after an earlier run that failed.
    Token const* outer = dateiTiefe == 0 ? nullptr : currentCommand;
    currentCommand = command;
    (this->*eintrag.handler)(command, skipOutput);
    currentCommand = outer;
    return;
  }
  throw Error(command, std::string("Unbekanntes Kommando: '") + command->str() + "'.");
}
