// Z: one train, its run reference, days, category and implicit run.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

// Eins runs from XA (departure 0:00) to XB (arrival 1:00), Zwei back in 0:50.
std::string const kStrecke =
    "BTR XA Astadt\nBTR XB Bdorf\nZL Eins {\nXA . N1 H - 0:00\nXB . N2 H 1:00 -\n}\n"
    "ZL Zwei {\nXB . N2 H - 0:00\nXA . N1 H 0:50 -\n}\nSET Zuglauf Eins\n";

class ZCommand : public DefinitionTest {
 protected:
  Zug const& zug(std::string const& nummer) { return *fpl.getZuegeByNummer().at(nummer); }
};

TEST_F(ZCommand, ArrivalTimeIsTurnedIntoTheStartOfTheRun) {
  run(kStrecke + "Z 4711 > 10:00\nZ 4712 > (10:00 Zwei)\nZ 4713 10:00\n");
  EXPECT_EQ(zug("4711").reftime, 9 * 3600);
  EXPECT_EQ(zug("4711").zuglauf->name, "Eins");
  EXPECT_EQ(zug("4712").reftime, 10 * 3600 - 50 * 60);
  EXPECT_EQ(zug("4713").reftime, 10 * 3600);
}

TEST_F(ZCommand, DaysAndCategoryComeOnlyFromTheCommandsLine) {
  run(kStrecke + "SET Linie RB 7\nZ 1 8:00 tgl RE | Nv\nZ 2 8:00 tgl\nSET Gattung IC\nZ 3 8:00\n" +
      "SET Gattung EC\n");
  EXPECT_EQ(zug("1").gattung + zug("1").liniennummer + zug("1").verkehrstag->days, "RE|Nv71234567");
  // The next command's keyword is neither a category nor days.
  EXPECT_EQ(zug("2").gattung, "RB");
  EXPECT_EQ(zug("3").gattung, "IC");
  EXPECT_EQ(zug("3").verkehrstag, nullptr);
}

TEST_F(ZCommand, ImplicitRunIsTheTrainsOwnAndUnnamedForOthers) {
  run(kStrecke + "Z 4711 * Sa RE {\nXB . N2 H - 0:10\nXA . N1 H 0:55 -\n}\n");
  Zug const& z = zug("4711");
  EXPECT_EQ(z.zuglauf, &fpl.getZL().back());
  EXPECT_EQ(z.zuglauf->name, "4711");
  EXPECT_EQ(z.reftime, 0);
  EXPECT_EQ(z.gattung + z.verkehrstag->days, "RE6");
  EXPECT_EQ(fpl.getZLByName().count("4711"), 0u);
}

TEST_F(ZCommand, FaultsNameTheirToken) {
  std::pair<char const*, std::string> const faelle[] = {
      {"Z abc 8:00\n", "Z: Z-Kommando mit unbekannten Parametern."},
      {"Z 4711 Eins\n", "Z: Z-Kommando mit unbekannten Parametern."},
      {"Z 4711 8:00 tgl RE | 5\n", "5: Syntaxfehler: Keine betriebliche Gattung angegeben."},
      {"Z 4711 * tgl\nBTR XC\n",
       "Z: Z-Kommando mit impliziter Zuglaufdefinition, aber ohne Datenblock."},
  };
  for (auto const& [zeile, erwartet] : faelle) {
    fpl.clear(false);
    Error e = runExpectingError(zeile);
    EXPECT_EQ(e.token->str() + ": " + e.message, erwartet);
  }
}

// Every train command changes trains, so output must be resolved again.
TEST_F(ZCommand, TrainCommandsRequireNewPostprocessing) {
  run(kStrecke + "Z 1 8:00 tgl\n");
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
