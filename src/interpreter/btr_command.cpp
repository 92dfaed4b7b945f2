// BTR ds100 [name]: declares an operating point.
#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"

void Fahrplandefinition::kommandoBTR(Token const* cmd, bool) {
  Token const* ds100 = cmd->next();
  // The name is optional and belongs to the command's line only: `BTR XA` followed
  // by another command must not take that command's keyword as its name.
  Token const* nameTok = ds100->next();
  std::string name = nameTok && nameTok->line() == cmd->line() ? nameTok->str() : std::string();

  auto found = btr.find(ds100->str());
  if (found == btr.end()) {
    Betriebsstelle& neu = betriebsstellen.emplace_back();
    neu.ds100 = ds100->str();
    neu.name = name;
    btr.emplace(neu.ds100, &neu);
    return;
  }
  // The first declaration keeps its name; a different one is only reported.
  if (found->second->name != name)
    warnungen.emplace_back(cmd, std::string("Widerspruch: BTR ") + ds100->str() + " redefiniert.");
}
