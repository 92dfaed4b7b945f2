#include <string>

#include "support/definition_test.h"

namespace {

using Dispatch = DefinitionTest;

TEST_F(Dispatch, OneCommandPerLineOutsideBracketsAndKnownKeywordsOnly) {
  std::pair<char const*, char const*> const cases[] = {
      // A block spanning lines belongs to its command, even a line starting with a keyword.
      {"SET Gattung A {\nSET Gattung B\nZ 1 }\nSET Liniennummer 3", "A|3"},
      // A token after a multi-line block on the block's last line starts a command.
      {"SET Gattung A {\nx\n} SET Liniennummer 4", "A|4"},
      {"SET Gattung A\n( SET Gattung B )", "A|"},
      // Two commands on one line: the second is an argument of the first.
      {"SET Liniennummer 5 SET Liniennummer 6", "|5"},
      {"SET Gattung A\nSET", "z. 3: Syntaxfehler: Befehl ohne Argumente."},
      {"FOO", "z. 2: Syntaxfehler: Befehl ohne Argumente."},
      {"set Gattung A", "z. 2: Unbekanntes Kommando: 'set'."},
      {"ZLX a", "z. 2: Unbekanntes Kommando: 'ZLX'."},
  };
  for (auto const& [body, expected] : cases) {
    fpl.clear(false);
    try {
      run(body);
      EXPECT_EQ(fpl.getGattungSetting() + "|" + fpl.getLiniennummerSetting(), expected) << body;
    } catch (Error const& e) {
      EXPECT_EQ(describe(e), expected) << body;
    }
  }
}

TEST_F(Dispatch, RunningBeforeAnythingWasReadDoesNothing) {
  fpl.execute(false, nullptr);
  EXPECT_TRUE(fpl.getTokenLists().empty());
  EXPECT_EQ(fpl.getCurrentCommand(), nullptr);
}

}  // namespace
