// AUT name [comment]: adds an author to the timetable.
#include "model/fahrplandefinition.h"

void Fahrplandefinition::kommandoAUT(Token const* cmd, bool) {
  Token const* name = cmd->next();
  // The comment is optional and belongs to the command's line only.
  Token const* kommentar = name->next();
  bool hatKommentar = kommentar && kommentar->line() == cmd->line();
  autoren.emplace_back(name->str(), hatKommentar ? kommentar->str() : std::string());
}
