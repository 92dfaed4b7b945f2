// Train modifiers at the end of stop lines.
#include <stdexcept>
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

class ModifierParser : public DefinitionTest {
 protected:
  // "routing-digit W|- category/line/folge vzg" of the stop "XA . N1 E - 8:00 <modifiers>",
  // followed by a route-book line that is only read when the parser stops at the end of the
  // stop line; or the fault as "token: message".
  std::string lies(std::string const& modifikatoren) {
    fpl.clear(false);
    try {
      run("BTR XA Astadt\nZL R {\nXA . N1 E - 8:00 " + modifikatoren + "\n$ VzG 4\n}\n");
    } catch (Error const& e) {
      return e.token->str() + ": " + e.message;
    }
    FplEintrag const& e = fpl.getZL().back().eintraege.at(0);
    return std::to_string(e.lenkziffer) + (e.changedirection ? " W " : " - ") + e.gattung + "/" +
           e.linie + "/" + e.folge + " " + e.vzg;
  }
};

TEST_F(ModifierParser, ReadsEveryModifierUpToTheEndOfTheLineOrNamesTheFault) {
  std::string const folge =
      "Syntaxfehler: Zugnummernregel für Wechsel auf Folgeleistung fehlt."_cp1252;
  std::pair<char const*, std::string> const faelle[] = {
      {"", "-1 - // 4"},
      {"LZ 12 WENDE GATTUNG RE | IRE FOLGE ZN + 2", "9 W RE|IRE//+2 4"},
      {"LINIE RB 12 LZ * 4 FOLGE ZN 4711", "14 - RB/12/4711 4"},
      {"LINIE RB | N S1 LZ 0", "0 - RB|N/S1/ 4"},
      {"LZ -", "-: Syntaxfehler: Lenkziffernangabe fehlt."},
      {"wende", "wende: Syntaxfehler: Undefinierter Auftrag."},
      {"GATTUNG 12", "12: Syntaxfehler: Keine Gattung angegeben."},
      {"GATTUNG RE | 5", "5: Syntaxfehler: Keine betriebliche Gattung angegeben."},
      {"LINIE RB | N", "N: Syntaxfehler: Keine Liniennummer angegeben."},
      {"FOLGE 12", "12: " + folge},
      // The value is never taken from the next line; the fault points at it.
      {"FOLGE ZN +", "$: " + folge},
  };
  for (auto const& [modifikatoren, erwartet] : faelle)
    EXPECT_EQ(lies(modifikatoren), erwartet) << modifikatoren;
  EXPECT_THROW(lies("LZ 99999999999"), std::out_of_range);
}

}  // namespace
