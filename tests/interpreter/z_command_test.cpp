#include <sstream>
#include <string>

#include "support/definition_test.h"

namespace {

using ZCommand = DefinitionTest;

// Eins runs from XA 0:00 to XB 1:00, Zwei back in 0:50; a row's body starts on line 14.
std::string const kStrecke =
    "BTR XA Astadt\nBTR XB Bdorf\nZL Eins {\nXA . N1 H - 0:00\nXB . N2 H 1:00 -\n}\n"
    "ZL Zwei {\nXB . N2 H - 0:00\nXA . N1 H 0:50 -\n}\nSET Zuglauf Eins\nSET Linie RB 7\n";

TEST_F(ZCommand, ReadsRunTimeDaysAndCategoryFromItsLineOrNamesTheFault) {
  // "category line run reftime days" of the last train ("run!": a run not entered by name).
  auto zug = [&] {
    Zug const& z = fpl.getZuege().back();
    return z.gattung + " " + z.liniennummer + " " + z.zuglauf->name +
           (fpl.getZLByName().count(z.zuglauf->name) ? " " : "! ") + std::to_string(z.reftime) +
           " " + (z.verkehrstag ? z.verkehrstag->days : "-");
  };
  std::pair<char const*, char const*> const faelle[] = {
      {"Z 4711 > 10:00", "RB 7 Eins 32400 -"},  // the arrival at the destination
      {"Z 4711 > (10:00 Zwei)", "RB 7 Zwei 33000 -"},
      {"Z 5 > 2562047788015215:30:08", "RB 7 Eins 9223372036854772208 -"},  // wraps around
      {"Z 1 8:00 tgl RE | Nv", "RE|Nv 7 Eins 28800 1234567"},
      {"Z 2 8:00 tgl\nSET Gattung IC", "RB 7 Eins 28800 1234567"},  // a keyword is no category
      {"Z 3 8:00\nSET Gattung EC", "RB 7 Eins 28800 -"},
      {"Z 4711 Eins", "z. 14 Z: Z-Kommando mit unbekannten Parametern."},
      {"Z 4711 8:00 tgl RE | 5", "z. 14 5: Syntaxfehler: Keine betriebliche Gattung angegeben."},
      {"Z 4711 * tgl\nBTR XC",
       "z. 14 Z: Z-Kommando mit impliziter Zuglaufdefinition, aber ohne Datenblock."},
      {"Z 4 * Sa RE {\nXB . N2 H - 0:10\nXA . N1 H 0:55 -\n}", "RE 7 4! 0 6"},
  };
  for (auto const& [body, erwartet] : faelle)
    EXPECT_EQ(outcome(kStrecke + body, zug), erwartet) << body;
  // The train is made before its arguments are checked and stays, without a number.
  EXPECT_EQ(outcome(kStrecke + "Z abc 8:00", zug),
            "z. 14 Z: Z-Kommando mit unbekannten Parametern.");
  ASSERT_EQ(fpl.getZuege().size(), 1u);
  EXPECT_EQ(fpl.getZuegeByNummer().at("abc")->nummer, 0);

  // Every train command changes trains, so output must be resolved again.
  outcome(kStrecke + "Z 1 8:00 tgl", zug);
  for (char const* befehl : {"Z 2 9:00\n", "TZ 3 3 1 9:00 0:10\n", "M (1) LINIE 4\n"}) {
    fpl.postprocess();
    ASSERT_TRUE(fpl.isPostprocessed());
    std::istringstream in(kHeader + std::string(befehl));
    fpl.read(in, "weiter.fpl");
    fpl.execute(true, fpl.getTokenLists().back().get());
    EXPECT_FALSE(fpl.isPostprocessed()) << befehl;
  }
}

}  // namespace
