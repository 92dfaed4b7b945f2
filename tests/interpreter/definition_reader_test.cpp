#include <sstream>
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

using DefinitionReader = DefinitionTest;

TEST_F(DefinitionReader, ChecksTheHeaderAndKeepsTheListAnErrorPointsInto) {
  std::pair<char const*, char const*> const cases[] = {
      {"// nur ein Kommentar\n", "ohne Token: Leere Tokenliste."},
      {"quorvel FplDef 1\n", "z. 1 quorvel: Kein gültiger Formatheader vorhanden."_cp1252},
      {"\n\nQuorvel FplDef 2\n", "z. 3 Quorvel: Keine unterstützte Formatversion."_cp1252},
      {"Quorvel FplDef 01\n", "z. 1 Quorvel: Keine unterstützte Formatversion."_cp1252},
      {"Quorvel FplDef 1 // leer\n", "Quorvel FplDef 1"},
  };
  for (auto const& [text, expected] : cases) {
    fpl.clear(false);
    std::istringstream in(text);
    try {
      fpl.read(in, "kopf.fpl");
      EXPECT_EQ(fpl.stringifyTokens(), expected);
    } catch (Error const& e) {
      EXPECT_EQ(fault(e), expected) << text;  // the fault's token is the list's first
    }
    EXPECT_EQ(fpl.getTokenLists().size(), 1u);  // kept: the fault's token points into it
  }
}

}  // namespace
