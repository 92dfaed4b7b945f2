// BIB number path: loads a vehicle library.
#include "external/dateizugriff.h"
#include "external/install_path.h"
#include "external/installation.h"
#include "model/fahrplandefinition.h"
#include "tokenizer/std_conversions.h"

void Fahrplandefinition::kommandoBIB(Token const* cmd, bool) {
  Token const* nummer = cmd->next();
  FzgLib& lib = fzgLibs.emplace_back();
  lib.nummer = static_cast<int>(toULong(nummer->str()));
  // The path belongs to the command's line; the library keeps it as written, so
  // that the timetable refers to it the same way.
  Token const* pfad = nummer->next();
  if (pfad && pfad->line() == cmd->line()) lib.datei = pfad->str();
  fplc::detail::pruefeErlaubt(cmd, expandInstallPath(lib.datei), erlaubteVerzeichnisse);
  lib.readSTWB(warnungen, cmd);
}
