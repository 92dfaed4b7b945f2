// Train number lists in parentheses: plain, LISTE and SCHLEIFE.
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/fahrplandefinition.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/token_list.h"

// Reaches the private list reader.
struct ParserTestAccess {
  static Token const* parseList(Token const* open, std::vector<unsigned int>& numbers) {
    return Fahrplandefinition::parseList(open, numbers);
  }
};

namespace {

// "numbers | stop token", or the fault: "token: message" or the standard exception's text.
// Unlinked tokens may end before ")" as no checked file can.
std::string lies(std::string const& text, bool verknuepfen = true) {
  TokenList tokens;
  std::istringstream in(text);
  tokens.read(in, "l.fpl");
  if (verknuepfen) tokens.prepare();
  std::vector<unsigned int> zahlen;
  try {
    std::string stop = ParserTestAccess::parseList(tokens.front(), zahlen)->str();
    std::string ergebnis;
    for (unsigned int z : zahlen)
      ergebnis += std::to_string(z) + " ";
    return ergebnis + "| " + stop;
  } catch (Error const& e) {
    return e.token->str() + ": " + e.message;
  } catch (std::exception const& e) {
    return e.what();
  }
}

TEST(NumberList, ReadsTheThreeForms) {
  EXPECT_EQ(lies("(1 2\n3)"), "1 2 3 | )");
  EXPECT_EQ(lies("(LISTE 1 2 3)"), "1 2 3 | )");
  EXPECT_EQ(lies("(SCHLEIFE 100 110 5)"), "100 105 110 | )");
  EXPECT_EQ(lies("(SCHLEIFE 100 109 5)"), "100 105 | )");
  EXPECT_EQ(lies("(SCHLEIFE 7 7 3)"), "7 | )");
  EXPECT_EQ(lies("(SCHLEIFE 9 7 1)"), "| )");
  EXPECT_EQ(lies("(SCHLEIFE 4294967290 4294967295 5)"), "4294967290 4294967295 | )");
  EXPECT_EQ(lies("()"), "| )");
  EXPECT_EQ(lies("(WENN VT 1)"), "| WENN");
}

TEST(NumberList, FaultsAreRefusedWithoutReadingPastTheList) {
  std::string const fehlt = "Syntaxfehler in Schleife: Erwartet Start, Ende und Schrittweite.";
  EXPECT_EQ(lies("(SCHLEIFE 1 9 2 4)"), "4: Syntaxfehler in Schleife: Zu viele Parameter.");
  EXPECT_EQ(lies("(SCHLEIFE 1 9 0)"),
            "0: Syntaxfehler in Schleife: Schrittweite darf nicht 0 sein.");
  EXPECT_EQ(lies("(SCHLEIFE 1 9)"), "): " + fehlt);
  EXPECT_EQ(lies("(SCHLEIFE 1 9", false), "9: " + fehlt);
  std::string const offen = "(: Syntaxfehler in Liste: Schließende Klammer fehlt."_cp1252;
  EXPECT_EQ(lies("(SCHLEIFE 1 9 2", false), offen);
  EXPECT_EQ(lies("(LISTE 1 2", false), offen);
  EXPECT_EQ(lies("(1 A 3)"), "invalid stoul argument");
  EXPECT_EQ(lies("(1 4294967296)"), "stoul argument out of range");
  // At most 100000 numbers, counted before any memory is taken.
  std::string const zuViele = "(: Syntaxfehler in Liste: Mehr als 100000 Zugnummern.";
  auto kurz = [](std::string const& text) { return lies(text).substr(0, 60); };
  EXPECT_EQ(kurz("(SCHLEIFE 0 200000 2)"), zuViele);
  EXPECT_TRUE(lies("(SCHLEIFE 0 199998 2)").ends_with(" 199998 | )"));
  std::string liste = "(LISTE";
  for (int i = 0; i <= 100000; ++i)
    liste += " 1";
  EXPECT_EQ(kurz(liste + ")"), zuViele);
}

}  // namespace
