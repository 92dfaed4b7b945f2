#include <stdexcept>

#include "support/definition_test.h"

namespace {

class Dispatch : public DefinitionTest {};

TEST_F(Dispatch, OneCommandPerLineOutsideBrackets) {
  struct Case {
    char const* body;
    char const* gattung;
    char const* liniennummer;
  };
  Case const cases[] = {
      // A block spanning lines belongs to its command, even a line starting with a keyword.
      {"SET Gattung A {\nSET Gattung B\nZ 1 }\nSET Liniennummer 3", "A", "3"},
      // A token after a multi-line block on the block's last line starts a command.
      {"SET Gattung A {\nx\n} SET Liniennummer 4", "A", "4"},
      {"SET Gattung A\n( SET Gattung B )", "A", ""},
      // Two commands on one line: the second is an argument of the first.
      {"SET Liniennummer 5 SET Liniennummer 6", "", "5"},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(c.body);
    fpl.clear(false);
    run(c.body);
    EXPECT_EQ(fpl.getGattungSetting(), c.gattung);
    EXPECT_EQ(fpl.getLiniennummerSetting(), c.liniennummer);
  }
}

TEST_F(Dispatch, RejectsLastTokenAndUnknownKeywords) {
  std::pair<char const*, char const*> const cases[] = {
      {"SET Gattung A\nSET", "z. 3: Syntaxfehler: Befehl ohne Argumente."},
      {"FOO", "z. 2: Syntaxfehler: Befehl ohne Argumente."},
      {"XYZ\nSET Gattung A", "z. 2: Unbekanntes Kommando: 'XYZ'."},
      {"set Gattung A", "z. 2: Unbekanntes Kommando: 'set'."},
      {"ZLX a", "z. 2: Unbekanntes Kommando: 'ZLX'."},
  };
  for (auto const& [body, expected] : cases) {
    fpl.clear(false);
    EXPECT_EQ(describe(runExpectingError(body)), expected) << body;
  }
}

TEST_F(Dispatch, RemembersTheCommandThatFailed) {
  EXPECT_THROW(run("SET Gattung A\nSET Reihung Unbekannt\nSET Gattung B"), std::out_of_range);
  ASSERT_NE(fpl.getCurrentCommand(), nullptr);
  EXPECT_EQ(fpl.getCurrentCommand()->line(), 3u);
  EXPECT_EQ(fpl.getGattungSetting(), "A");

  std::istringstream again("Quorvel FplDef 1\nSET Gattung C\n");
  fpl.read(again, "nochmal.fpl");
  fpl.execute(true, fpl.getTokenLists().back().get());
  EXPECT_EQ(fpl.getCurrentCommand(), nullptr);
}

}  // namespace
