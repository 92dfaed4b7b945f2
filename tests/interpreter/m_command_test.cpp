// M: modifications of listed trains, with and without a condition on days.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

// 4711 (daily) and 4712 (Saturdays) share the run Eins from XA to XB; 5000 has no run.
std::string const kZuege =
    "BTR XA Astadt\nBTR XB Bdorf\nRHG Doppel\nZL Eins {\nXA . N1 H - 0:00\nXB . N2 H 1:00 -\n}\n"
    "ZL Zwei {\nXB . N2 H - 0:00\nXA . N1 H 0:50 -\n}\n"
    "Z 5000 8:00\nSET Zuglauf Eins\nSET Linie RB 1\nZ 4711 8:00 tgl\nZ 4712 9:00 Sa\n";

class MCommand : public DefinitionTest {
 protected:
  std::vector<Zug const*> zuege(int nummer) {
    std::vector<Zug const*> result;
    for (Zug const& z : fpl.getZuege())
      if (z.nummer == nummer) result.push_back(&z);
    return result;
  }
  Zug const& zug(int nummer) { return *zuege(nummer).at(0); }
};

TEST_F(MCommand, TrainValuesChangeOnlyForListedTrains) {
  run(kZuege + "M (4711) GATTUNG RE | Nv LINIE 5 RHG ~ Doppel\nM (4712) ZL (10:00 Zwei)\n");
  EXPECT_EQ(zug(4711).gattung + " " + zug(4711).liniennummer, "RE|Nv 5");
  EXPECT_EQ(zug(4711).reihung, &fpl.getReihungen().back());
  EXPECT_TRUE(zug(4711).gedreht);
  EXPECT_EQ(zug(4712).gattung + " " + zug(4712).zuglauf->name, "RB Zwei");
  EXPECT_EQ(zug(4712).reftime, 10 * 3600);
}

TEST_F(MCommand, RunChangesGoToOneSharedCopy) {
  run(kZuege + "M (4711 4712) FOLGE ZN + 1 GLEIS XA . N1 N3 AUFTRAG XB . N2 LZ * 4 GATTUNG IC\n" +
      "M (4712) WENDE\n");
  Zuglauf const& kopie = *zug(4711).zuglauf;
  EXPECT_EQ(kopie.name + " " + std::to_string(kopie.id), "Eins_M 3");
  EXPECT_EQ(kopie.eintraege[0].gleis, "N3");
  FplEintrag const& ziel = kopie.eintraege[1];
  EXPECT_EQ(ziel.folge + " " + ziel.gattung, "+1 IC");
  EXPECT_EQ(ziel.lenkziffer, 14);
  EXPECT_FALSE(ziel.changedirection);
  // A category after AUFTRAG changes at that stop, not the train's own category.
  EXPECT_EQ(zug(4711).gattung, "RB");
  // 4712 shared the copy, then got a copy of it for its reversal.
  EXPECT_EQ(zug(4712).zuglauf->name, "Eins_M_M");
  EXPECT_TRUE(zug(4712).zuglauf->eintraege[1].changedirection);
  Zuglauf const& eins = *fpl.getZLByName().at("Eins");
  EXPECT_EQ(eins.eintraege[0].gleis + eins.eintraege[1].folge, "N1");
}

TEST_F(MCommand, ConditionSplitsATrainOnTheSharedDays) {
  run(kZuege + "M (4711 4712 5000) (WENN VT (Sa + So)) GATTUNG WE\n");
  std::vector<Zug const*> teile = zuege(4711);
  ASSERT_EQ(teile.size(), 2u);
  // The unmodified train keeps the other days; both records are made from its own.
  EXPECT_EQ(teile[0]->gattung + " " + teile[0]->verkehrstag->name, "RB 1234567 12345");
  EXPECT_EQ(teile[1]->gattung + " " + teile[1]->verkehrstag->days, "WE 67");
  // 4712 runs only on the condition's days; 5000 on no day at all.
  EXPECT_EQ(zug(4712).gattung + " " + zug(4712).verkehrstag->days, "WE 6");
  EXPECT_EQ(zug(5000).gattung, "");
  EXPECT_EQ(fpl.getZuege().size(), 4u);
}

TEST_F(MCommand, ModificationsThatMatchNothingAreWarnings) {
  run(kZuege + "M (4711 9999 5000) GLEIS XA . N7 N3 FOLGE ZN 815\nM (5000) WENDE\n");
  std::vector<std::string> texte;
  for (Error const& w : fpl.getWarnungen())
    texte.push_back(w.token->str() + ": " + w.message);
  EXPECT_EQ(texte,
            (std::vector<std::string>{
                "GLEIS: Modifikation von GLEIS konnte bei Zug 4711 nicht angewandt werden.",
                "M: Zug 9999 nicht gefunden.",
                "GLEIS: Modifikation von GLEIS konnte bei Zug 5000 nicht angewandt werden.",
                "FOLGE: Modifikation der ZN-Regel konnte auf Zug 5000 nicht angewandt werden.",
                "WENDE: Modifikation von WENDE konnte bei Zug 5000 nicht angewandt werden.",
            }));
  EXPECT_EQ(zug(4711).zuglauf->eintraege[1].folge, "815");
}

TEST_F(MCommand, FaultsNameTheirTokenAndChangeNothing) {
  std::string const bedingung = "(: Syntaxfehler: Syntax für Bedingung falsch."_cp1252;
  std::string const zn =
      "Syntaxfehler: Zugnummernregel für Wechsel auf Folgeleistung fehlt."_cp1252;
  std::pair<char const*, std::string> const faelle[] = {
      {"M 4711 GATTUNG X\n", "M: Syntaxfehler: M-Kommando erwartet Liste."},
      {"M (4711) (WENN Sa) GATTUNG X\n", bedingung},
      {"M (4711) (WENN VT Sa So) GATTUNG X\n", bedingung},
      {"M (4711) GATTUNG\n", "GATTUNG: Syntaxfehler: Keine Gattung angegeben."},
      {"M (4711) GATTUNG RE | 5\n", "5: Syntaxfehler: Keine betriebliche Gattung angegeben."},
      {"M (4711) LINIE\n", "LINIE: Syntaxfehler: Keine Liniennummer angegeben."},
      {"M (4711) FOLGE 5\n", "5: " + zn},
      {"M (4711) FOLGE ZN + x\n", "+: " + zn},
      {"M (4711) AUFTRAG XB N2 WENDE\n", "AUFTRAG: Syntaxfehler: Auftrag fehlerhaft."},
      {"M (4711) GLEIS XB . N2\n", "GLEIS: Syntaxfehler: Auftrag fehlerhaft."},
      {"M (4711) LINIE 3 AUFTRAG XB . N2 HALT\n", "HALT: Syntaxfehler: Undefinierter Auftrag."},
      {"M (4711)\n", "M: Syntaxfehler: Undefinierter Auftrag."},
  };
  for (auto const& [zeile, erwartet] : faelle) {
    fpl.clear(false);
    Error e = runExpectingError(kZuege + zeile);
    EXPECT_EQ(e.token->str() + ": " + e.message, erwartet);
    EXPECT_EQ(zug(4711).liniennummer, "1") << zeile;
  }
}

}  // namespace
