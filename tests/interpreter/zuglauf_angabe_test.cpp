// Run references: a time for the current run, one named run, or a run
// composed of several with its junction rules.
#include <gtest/gtest.h>

#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

// Hin ends at XB on an open track "*"; Weiter starts there on N2; Stumpf has no
// arrival at its end; Zurueck starts at XA.
std::string const kLaeufe =
    "BTR XA Astadt\nBTR XB Bdorf\nBTR XC Cheim\n"
    "ZL Hin {\nXA . N1 H - 0:00\nXB . \"*\" H 0:30 - WENDE\n}\n"
    "ZL Weiter {\nXB . N2 E - 0:00 LZ 4\nXC . N3 H 0:40 - FOLGE ZN +1\n}\n"
    "ZL Stumpf {\nXA . N1 H - 0:00\n}\nZL Zurueck {\nXA . N1 H - 0:00\nXB . N2 H 0:20 -\n}\n";

class ZuglaufAngabe : public DefinitionTest {
 protected:
  Zug const& zug(std::string const& nummer) { return *fpl.getZuegeByNummer().at(nummer); }
};

TEST_F(ZuglaufAngabe, OneRunTakesTheTimeAsReferenceTime) {
  run(kLaeufe + "SET Zuglauf Hin\nZ 1 8:00\nZ 2 (7:00 Weiter)\nZ 3 (Weiter)\n");
  EXPECT_EQ(zug("1").zuglauf->name + zug("2").zuglauf->name, "HinWeiter");
  EXPECT_EQ(zug("1").reftime, 8 * 3600);
  EXPECT_EQ(zug("2").reftime, 7 * 3600);
  EXPECT_EQ(zug("3").reftime, 0);
}

TEST_F(ZuglaufAngabe, ComposedRunJoinsTheMeetingStops) {
  run(kLaeufe + "Z 1 (8:00 Hin 8:35 Weiter)\n");
  Zuglauf const& lauf = *zug("1").zuglauf;
  EXPECT_EQ(&lauf, &fpl.getZL().back());
  EXPECT_EQ(lauf.name + " " + std::to_string(lauf.id), "Hin+Weiter 5");
  EXPECT_EQ(fpl.getZLByName().count("Hin+Weiter"), 0u);
  EXPECT_EQ(zug("1").reftime, 8 * 3600);
  ASSERT_EQ(lauf.eintraege.size(), 3u);
  // Arrival from the first part, departure, track and changes from the second.
  FplEintrag const& knoten = lauf.eintraege[1];
  EXPECT_EQ(knoten.typ, FplEintrag::Halt);
  EXPECT_EQ(knoten.an, 30 * 60);
  EXPECT_EQ(knoten.ab, 35 * 60);
  EXPECT_EQ(knoten.gleis + knoten.signalart, "N2E");
  EXPECT_TRUE(knoten.changedirection);
  EXPECT_EQ(knoten.lenkziffer, 4);
  EXPECT_EQ(lauf.eintraege[2].an, 75 * 60);
  EXPECT_EQ(lauf.eintraege[2].folge, "+1");
  EXPECT_EQ(fpl.getZLByName().at("Hin")->eintraege[1].gleis, "*");
}

TEST_F(ZuglaufAngabe, FaultsNameTheirToken) {
  std::pair<char const*, char const*> const faelle[] = {
      {"Z 1 (8:00 Stumpf Weiter)\n", "Weiter: Zugläufe inkompatibel."_cp1252},
      {"Z 1 (8:00 Hin Zurueck)\n", "Zurueck: Zugläufe inkompatibel."_cp1252},
      {"Z 1 (8:00)\n", "): Ungültige Fahrtzeit-/Zuglaufangabe."_cp1252},
      {"Z 1 (Hin 9:00)\n", "): Ungültige Fahrtzeit-/Zuglaufangabe."_cp1252},
      {"SET Zuglauf (Hin , Weiter)\n", ",: Ungültige Fahrtzeit-/Zuglaufangabe."_cp1252},
      {"M (1) ZL Hin\n", "Hin: Ungültige Fahrtzeit-/Zuglaufangabe."_cp1252},
  };
  for (auto const& [zeile, erwartet] : faelle) {
    fpl.clear(false);
    Error e = runExpectingError(kLaeufe + zeile);
    EXPECT_EQ(e.token->str() + ": " + e.message, erwartet);
  }
}

}  // namespace
