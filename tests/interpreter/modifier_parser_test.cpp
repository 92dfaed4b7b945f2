#include <stdexcept>
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

using ModifierParser = DefinitionTest;

TEST_F(ModifierParser, ReadsEveryModifierUpToTheEndOfTheLineOrNamesTheFault) {
  // Rows end stop line 4; the route-book line is read only when the parser stops before it.
  std::string const stop = "BTR XA Astadt\nZL R {\nXA . N1 E - 8:00 ";
  auto eintrag = [&] {  // "routing-digit W|- category/line/folge vzg"
    FplEintrag const& e = fpl.getZL().back().eintraege.at(0);
    return std::to_string(e.lenkziffer) + (e.changedirection ? " W " : " - ") + e.gattung + "/" +
           e.linie + "/" + e.folge + " " + e.vzg;
  };
  std::pair<char const*, char const*> const faelle[] = {
      {"", "-1 - // 4"},
      {"LZ 12 WENDE GATTUNG RE | IRE FOLGE ZN + 2", "9 W RE|IRE//+2 4"},
      {"LINIE RB 12 LZ * 4 FOLGE ZN 4711", "14 - RB/12/4711 4"},
      {"LZ -", "z. 4 -: Syntaxfehler: Lenkziffernangabe fehlt."},
      {"wende", "z. 4 wende: Syntaxfehler: Undefinierter Auftrag."},
      {"GATTUNG 12", "z. 4 12: Syntaxfehler: Keine Gattung angegeben."},
      {"GATTUNG RE | 5", "z. 4 5: Syntaxfehler: Keine betriebliche Gattung angegeben."},
      {"LINIE RB | N", "z. 4 N: Syntaxfehler: Keine Liniennummer angegeben."},
      // Values after FOLGE, LZ and "|" are the following tokens, on whatever line: the
      // rule takes "$" from the next line, whose next token is then a modifier.
      {"FOLGE ZN +", "z. 5 VzG: Syntaxfehler: Undefinierter Auftrag."},
      {"FOLGE ZN", "z. 5 VzG: Syntaxfehler: Undefinierter Auftrag."},
      {"FOLGE",
       "z. 5 $: Syntaxfehler: Zugnummernregel für Wechsel auf Folgeleistung fehlt."_cp1252},
      {"LZ *", "z. 5 $: Syntaxfehler: Lenkziffernangabe fehlt."},
      {"GATTUNG RE |", "z. 5 $: Syntaxfehler: Keine betriebliche Gattung angegeben."},
      {"GATTUNG", "z. 5 $: Syntaxfehler: Keine Gattung angegeben."},  // must be on the line
      {"LINIE RE", "z. 4 RE: Syntaxfehler: Keine Liniennummer angegeben."},
  };
  EXPECT_THROW(run(stop + "LZ 99999999999\n}\n"), std::out_of_range);
  for (auto const& [modifikatoren, erwartet] : faelle)
    EXPECT_EQ(outcome(stop + modifikatoren + "\n$ VzG 4\n}\n", eintrag), erwartet) << modifikatoren;
}

}  // namespace
