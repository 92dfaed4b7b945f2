// Dispatch: one command per line outside brackets, known keywords only.
#include <string>

#include "support/definition_test.h"

namespace {

using Dispatch = DefinitionTest;

TEST_F(Dispatch, OneCommandPerLineOutsideBracketsAndKnownKeywordsOnly) {
  fpl.execute(false, nullptr);  // nothing read yet: nothing to run, no crash
  EXPECT_TRUE(fpl.getTokenLists().empty());
  std::pair<char const*, char const*> const cases[] = {
      // A block spanning lines belongs to its command, even a line starting with a keyword.
      {"SET Gattung A {\nSET Gattung B\nZ 1 }\nSET Liniennummer 3", "A|3"},
      // A token after a multi-line block on the block's last line starts a command.
      {"SET Gattung A {\nx\n} SET Liniennummer 4", "A|4"},
      {"SET Gattung A\n( SET Gattung B )", "A|"},
      // Two commands on one line: the second is an argument of the first.
      {"SET Liniennummer 5 SET Liniennummer 6", "|5"},
      {"SET Gattung A\nSET", "z. 3 SET: Syntaxfehler: Befehl ohne Argumente."},
      {"set Gattung A", "z. 2 set: Unbekanntes Kommando: 'set'."},
  };
  auto settings = [&] { return fpl.getGattungSetting() + "|" + fpl.getLiniennummerSetting(); };
  for (auto const& [body, expected] : cases)
    EXPECT_EQ(outcome(body, settings), expected) << body;
}

}  // namespace
