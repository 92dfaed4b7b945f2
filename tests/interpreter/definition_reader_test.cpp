#include <gtest/gtest.h>

#include <sstream>

#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"

namespace {

TEST(DefinitionReader, RejectsMissingOrUnsupportedHeader) {
  struct Case {
    char const* text;
    unsigned line;  // 0: the fault has no token
    char const* message;
  };
  Case const cases[] = {
      {"", 0, "Leere Tokenliste."},
      {"// nur ein Kommentar\n", 0, "Leere Tokenliste."},
      {"Quorvel FplDef\n", 1, "Kein gültiger Formatheader vorhanden."_cp1252},
      {"Quorvel FplDef x\n", 1, "Kein gültiger Formatheader vorhanden."_cp1252},
      {"quorvel FplDef 1\n", 1, "Kein gültiger Formatheader vorhanden."_cp1252},
      {"\n\nQuorvel FplDef 2\n", 3, "Keine unterstützte Formatversion."_cp1252},
      {"Quorvel FplDef 01\n", 1, "Keine unterstützte Formatversion."_cp1252},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(c.text);
    Fahrplandefinition fpl;
    std::istringstream in(c.text);
    try {
      fpl.read(in, "kopf.fpl");
      ADD_FAILURE() << "no Error";
    } catch (Error const& e) {
      EXPECT_EQ(e.message, c.message);
      EXPECT_EQ(e.token ? e.token->line() : 0, c.line);
      EXPECT_TRUE(!e.token || e.token == fpl.getFrontToken());
    }
    // The list is kept although the check failed: the Error points into it.
    EXPECT_EQ(fpl.getTokenLists().size(), 1u);
  }
}

TEST(DefinitionReader, HeaderOnlyFileExecutesNothing) {
  Fahrplandefinition fpl;
  std::istringstream in("Quorvel FplDef 1 // leer\n");
  fpl.read(in, "kopf.fpl");
  EXPECT_NO_THROW(fpl.execute(false, static_cast<TokenList const*>(nullptr)));
  EXPECT_EQ(fpl.stringifyTokens(), "Quorvel FplDef 1");
  EXPECT_EQ(fpl.createTokenLocationString(fpl.getFrontToken()), "z. 1");
}

}  // namespace
