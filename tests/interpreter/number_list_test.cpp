#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/fahrplandefinition.h"
#include "support/definition_test.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/token_list.h"

// Reads `text` with the private list reader: "numbers | stop token", "token: message" or
// the standard exception's text. Without ")" at its end, the text stays unlinked.
struct ParserTestAccess {
  static std::string lies(std::string const& text) {
    TokenList tokens;
    std::istringstream in(text);
    tokens.read(in, "l.fpl");
    if (text.ends_with(")")) tokens.prepare();
    std::vector<unsigned int> zahlen;
    try {
      Token const* stop = Fahrplandefinition::parseList(tokens.front(), zahlen);
      std::string ergebnis;
      for (unsigned int z : zahlen)
        ergebnis += std::to_string(z) + " ";
      return ergebnis + "| " + stop->str();
    } catch (Error const& e) {
      return e.token->str() + ": " + e.message;
    } catch (std::exception const& e) {
      return e.what();
    }
  }
};

namespace {

TEST(NumberList, ReadsTheThreeFormsAndRefusesFaultsWithoutReadingPastTheList) {
  std::pair<std::string, std::string> const faelle[] = {
      {"(1 2\n3)", "1 2 3 | )"},
      {"(LISTE 1 2 3)", "1 2 3 | )"},
      {"(SCHLEIFE 100 110 5)", "100 105 110 | )"},
      {"(SCHLEIFE 100 109 5)", "100 105 | )"},
      {"(SCHLEIFE 7 7 3)", "7 | )"},
      {"(SCHLEIFE 9 7 1)", "| )"},
      {"(SCHLEIFE 4294967290 4294967295 5)", "4294967290 4294967295 | )"},
      {"()", "| )"},
      {"(WENN VT 1)", "| WENN"},
      {"(SCHLEIFE 1 9 2 4)", "4: Syntaxfehler in Schleife: Zu viele Parameter."},
      {"(SCHLEIFE 1 9 0)", "0: Syntaxfehler in Schleife: Schrittweite darf nicht 0 sein."},
      {"(SCHLEIFE 1 9)", "invalid stoul argument"},  // ")" is converted as the step
      {"(SCHLEIFE 1 9", "9: Syntaxfehler in Schleife: Erwartet Start, Ende und Schrittweite."},
      {"(SCHLEIFE 1 9 2", "(: Syntaxfehler in Liste: Schließende Klammer fehlt."_cp1252},
      {"(1 A 3)", "invalid stoul argument"},
      {"(1 4294967296)", "stoul argument out of range"},
      // At most 100000 numbers, counted before any memory is taken.
      {"(SCHLEIFE 0 200000 2)", "(: Syntaxfehler in Liste: Mehr als 100000 Zugnummern."},
  };
  for (auto const& [text, erwartet] : faelle)
    EXPECT_EQ(ParserTestAccess::lies(text), erwartet) << text.substr(0, 40);
  EXPECT_TRUE(ParserTestAccess::lies("(SCHLEIFE 0 199998 2)").ends_with(" 199998 | )"));
}

// "(" [LISTE] 1 2 ... n ")"
std::string liste(char const* schluessel, unsigned int n) {
  std::string text = std::string("(") + schluessel;
  for (unsigned int i = 1; i <= n; ++i)
    text += " " + std::to_string(i);
  return text + ")";
}

TEST(NumberList, EveryFormHoldsTheLimitOfOneHundredThousandNumbers) {
  std::string const zuViele = "(: Syntaxfehler in Liste: Mehr als 100000 Zugnummern.";
  std::pair<std::string, std::string> const faelle[] = {
      {"(SCHLEIFE 0 4294967295 1)", zuViele},  // 2^32 numbers: a 32-bit count would be 0
      {"(SCHLEIFE 1 4294967295 1)", zuViele},
      {"(SCHLEIFE 0 4294967295 42949)", zuViele},  // 100002 numbers
      {"(SCHLEIFE 0 4294967295 42950)", " 4294957050 | )"},
      {"(SCHLEIFE 1 100001 1)", zuViele},
      {"(SCHLEIFE 1 100000 1)", " 100000 | )"},
      {liste("", 100001), zuViele},
      {liste("LISTE", 100001), zuViele},
      {liste("LISTE", 100000), " 100000 | )"},
  };
  for (auto const& [text, erwartet] : faelle) {
    std::string const ergebnis = ParserTestAccess::lies(text);
    EXPECT_TRUE(ergebnis.ends_with(erwartet))
        << text.substr(0, 40) << " gave " << ergebnis.substr(ergebnis.size() - 60);
  }
}

using NumberListCommands = DefinitionTest;

// The commands that take a list stop at the limit with the message at the list.
TEST_F(NumberListCommands, StopAtTheLimitWithTheListsLocation) {
  std::string const zuViele = ": Syntaxfehler in Liste: Mehr als 100000 Zugnummern.";
  std::pair<std::string, std::string> const faelle[] = {
      {"M (SCHLEIFE 0 4294967295 1) WENDE", "z. 2 (" + zuViele},
      {"BTR XA\nM\n(SCHLEIFE 1 100001 1) WENDE", "z. 4 (" + zuViele},
      {"TZ (SCHLEIFE 0 4294967295 1) 8:00 0:01", "z. 2 (" + zuViele},
      {"TZ " + liste("LISTE", 100001) + " 8:00 0:01", "z. 2 (" + zuViele},
      {"TZ 0 2147483647 1 8:00 0:01",
       "z. 2 TZ: Syntaxfehler in Taktzug-Kommando: Mehr als 100000 Züge."_cp1252},
  };
  for (auto const& [text, erwartet] : faelle)
    EXPECT_EQ(outcome(text, [] { return std::string("kein Fehler"); }), erwartet)
        << text.substr(0, 40);
  EXPECT_TRUE(fpl.getZuege().empty());
}

}  // namespace
