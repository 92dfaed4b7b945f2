#include <sstream>
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

using DefinitionReader = DefinitionTest;

TEST_F(DefinitionReader, ChecksTheHeaderAndKeepsTheListAnErrorPointsInto) {
  std::string const kopf = "Kein gültiger Formatheader vorhanden."_cp1252;
  std::string const version = "Keine unterstützte Formatversion."_cp1252;
  std::pair<char const*, std::string> const cases[] = {
      {"", "ohne Token: Leere Tokenliste."},
      {"// nur ein Kommentar\n", "ohne Token: Leere Tokenliste."},
      {"Quorvel FplDef\n", "z. 1: " + kopf},
      {"Quorvel FplDef x\n", "z. 1: " + kopf},
      {"quorvel FplDef 1\n", "z. 1: " + kopf},
      {"\n\nQuorvel FplDef 2\n", "z. 3: " + version},
      {"Quorvel FplDef 01\n", "z. 1: " + version},
      {"Quorvel FplDef 1 // leer\n", "ausgeführt: Quorvel FplDef 1, z. 1"},
  };
  for (auto const& [text, expected] : cases) {
    fpl.clear(false);
    std::istringstream in(text);
    std::string outcome;
    try {
      fpl.read(in, "kopf.fpl");
      fpl.execute(false, static_cast<TokenList const*>(nullptr));
      outcome = "ausgeführt: " + fpl.stringifyTokens() + ", " +
                fpl.createTokenLocationString(fpl.getFrontToken());
    } catch (Error const& e) {
      outcome = describe(e);
      EXPECT_TRUE(!e.token || e.token == fpl.getFrontToken()) << text;
    }
    EXPECT_EQ(outcome, expected) << text;
    EXPECT_EQ(fpl.getTokenLists().size(), 1u);
  }
}

}  // namespace
