#include <istream>

#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"

void Fahrplandefinition::read(std::istream& in, std::string const& filename) {
  // The list is kept before any check can fail: errors point at its tokens.
  tokenLists.push_back(std::make_unique<TokenList>());
  TokenList& list = *tokenLists.back();
  list.read(in, filename);
  list.prepare();

  Token const* first = list.front();
  if (!first) throw Error(nullptr, "Leere Tokenliste."_cp1252);
  if (!Token::Match(first, "Quorvel FplDef %num%"))
    throw Error(first, "Kein gültiger Formatheader vorhanden."_cp1252);
  if (first->strAt(2) != "1") throw Error(first, "Keine unterstützte Formatversion."_cp1252);
}
