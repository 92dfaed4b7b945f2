// Train modifiers at the end of stop lines.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

class ModifierParser : public DefinitionTest {
 protected:
  // The stop "XA . N1 E - 8:00 <modifiers>" on line 3, followed by a route-book line
  // that is only found when the parser stops at the end of the stop line.
  std::string lies(std::string const& modifikatoren) {
    fpl.clear(false);
    run("BTR XA Astadt\nZL R {\nXA . N1 E - 8:00 " + modifikatoren + "\n$ VzG 4\n}\n");
    FplEintrag const& e = fpl.getZL().back().eintraege.at(0);
    return std::to_string(e.lenkziffer) + (e.changedirection ? " W " : " - ") + e.gattung + "/" +
           e.linie + "/" + e.folge + " " + e.vzg;
  }
  std::string fehler(std::string const& modifikatoren) {
    fpl.clear(false);
    Error e = runExpectingError("ZL R {\nXA . N1 E - 8:00 " + modifikatoren + "\n}\n");
    return e.token->str() + ": " + e.message;
  }
};

TEST_F(ModifierParser, ReadsEveryModifierUpToTheEndOfTheLine) {
  EXPECT_EQ(lies(""), "-1 - // 4");
  EXPECT_EQ(lies("LZ 12 WENDE GATTUNG RE | IRE FOLGE ZN + 2"), "9 W RE|IRE//+2 4");
  EXPECT_EQ(lies("LINIE RB 12 LZ * 4 FOLGE ZN 4711"), "14 - RB/12/4711 4");
  EXPECT_EQ(lies("LINIE RB | N S1 LZ 0"), "0 - RB|N/S1/ 4");
}

TEST_F(ModifierParser, FaultsNameTheOffendingToken) {
  std::string const folge =
      "Syntaxfehler: Zugnummernregel für Wechsel auf Folgeleistung fehlt."_cp1252;
  EXPECT_EQ(fehler("LZ -"), "-: Syntaxfehler: Lenkziffernangabe fehlt.");
  EXPECT_EQ(fehler("wende"), "wende: Syntaxfehler: Undefinierter Auftrag.");
  EXPECT_EQ(fehler("GATTUNG 12"), "12: Syntaxfehler: Keine Gattung angegeben.");
  EXPECT_EQ(fehler("GATTUNG RE | 5"), "5: Syntaxfehler: Keine betriebliche Gattung angegeben.");
  EXPECT_EQ(fehler("LINIE RB | N"), "N: Syntaxfehler: Keine Liniennummer angegeben.");
  EXPECT_EQ(fehler("FOLGE 12"), "12: " + folge);
  // The value is never taken from the next line; the fault points at it.
  EXPECT_EQ(fehler("FOLGE ZN +"), "}: " + folge);
  EXPECT_THROW(lies("LZ 99999999999"), std::out_of_range);
}

}  // namespace
