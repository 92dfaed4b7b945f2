// M: modifications of listed trains, with and without a condition on days.
#include <iterator>
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

// 4711 (daily) and 4712 (Saturdays) share the run Eins from XA to XB, both on track N1
// and both points without a long name; 5000 has no run.
std::string const kZuege =
    "BTR XA\nBTR XB\nRHG Doppel\nZL Eins {\nXA . N1 H - 0:00\nXB . N1 H 1:00 -\n}\n"
    "ZL Zwei {\nXB . N2 H - 0:00\nXA . N1 H 0:50 -\n}\n"
    "Z 5000 8:00\nSET Zuglauf Eins\nSET Linie RB 1\nZ 4711 8:00 tgl\nZ 4712 9:00 Sa\n";

// "track folge/category routing-digit [W]" of every entry.
std::string halte(Zuglauf const* lauf) {
  std::string text;
  for (FplEintrag const& e : lauf->eintraege)
    text += e.gleis + " " + e.folge + "/" + e.gattung + " " + std::to_string(e.lenkziffer) +
            (e.changedirection ? " W; " : "; ");
  return text;
}

class MCommand : public DefinitionTest {
 protected:
  Zug const& zug(int nummer) { return *fpl.getZuegeByNummer().at(std::to_string(nummer)); }
  // "category line run#id reftime days [~]formation" of every train `nummer`, in list order.
  std::string zuege(int nummer) {
    std::string text;
    for (Zug const& z : fpl.getZuege())
      if (z.nummer == nummer)
        text += z.gattung + " " + z.liniennummer + " " +
                (z.zuglauf ? z.zuglauf->name + "#" + std::to_string(z.zuglauf->id) : "-") + " " +
                std::to_string(z.reftime) + " " + (z.verkehrstag ? z.verkehrstag->days : "-") +
                " " + (z.gedreht ? "~" : "") + (z.reihung ? z.reihung->name : "-") + "; ";
    return text;
  }
};

TEST_F(MCommand, TrainValuesChangeForListedTrainsOnTheConditionsDays) {
  run(kZuege + "M (4711) GATTUNG RE | Nv LINIE 5 RHG ~ Doppel\nM (4712) ZL (10:00 Zwei)\n" +
      "M (4711 4712 5000) (WENN VT (Sa + So)) GATTUNG WE\n");
  // 4711 is split: the unmodified train keeps the other days, in a record made from its own.
  EXPECT_EQ(zuege(4711), "RE|Nv 5 Eins#1 28800 12345 ~Doppel; WE 5 Eins#1 28800 67 ~Doppel; ");
  EXPECT_EQ(std::next(fpl.getZuege().begin())->verkehrstag->name, "1234567 12345");
  // 4712 runs only on the condition's days; 5000 on no day at all.
  EXPECT_EQ(zuege(4712), "WE 1 Zwei#2 36000 6 -; ");
  EXPECT_EQ(zuege(5000), "  - 28800 - -; ");
}

TEST_F(MCommand, RunChangesGoToOneSharedCopy) {
  run(kZuege + "M (4711 4712) FOLGE ZN + 1 GLEIS XA . N1 N3 AUFTRAG XB . N1 LZ * 4 GATTUNG IC\n" +
      "M (4712) WENDE GATTUNG EC LZ 3 RHG Doppel\n");
  // A category after AUFTRAG changes at that stop, not the train's own category.
  EXPECT_EQ(zuege(4711), "RB 1 Eins_M#3 28800 1234567 -; ");
  // Stops are told apart by the point's abbreviation: only XA's track changed.
  EXPECT_EQ(halte(zug(4711).zuglauf), "N3 / -1; N1 +1/IC 14; ");
  // 4712 shared the copy, then got a copy of it for its reversal; WENDE and LZ end
  // where the next modification starts.
  EXPECT_EQ(zuege(4712), "EC 1 Eins_M_M#4 32400 6 Doppel; ");
  EXPECT_EQ(halte(zug(4712).zuglauf), "N3 / -1; N1 +1/IC 3 W; ");
  EXPECT_EQ(halte(fpl.getZLByName().at("Eins")), "N1 / -1; N1 / -1; ");
}

TEST_F(MCommand, ModificationsThatMatchNothingAreWarnings) {
  run(kZuege + "M (4711 9999 5000) GLEIS XA . N7 N3 FOLGE ZN 815\nM (5000) WENDE\n");
  std::string texte;
  for (Error const& w : fpl.getWarnungen())
    texte += w.token->str() + ": " + w.message + "\n";
  EXPECT_EQ(texte,
            "GLEIS: Modifikation von GLEIS konnte bei Zug 4711 nicht angewandt werden.\n"
            "M: Zug 9999 nicht gefunden.\n"
            "GLEIS: Modifikation von GLEIS konnte bei Zug 5000 nicht angewandt werden.\n"
            "FOLGE: Modifikation der ZN-Regel konnte auf Zug 5000 nicht angewandt werden.\n"
            "WENDE: Modifikation von WENDE konnte bei Zug 5000 nicht angewandt werden.\n");
  EXPECT_EQ(zug(4711).zuglauf->eintraege[1].folge, "815");
}

TEST_F(MCommand, FaultsNameTheirTokenAndChangeNothing) {
  std::string const bedingung = "(: Syntaxfehler: Syntax für Bedingung falsch."_cp1252;
  std::string const zn =
      "Syntaxfehler: Zugnummernregel für Wechsel auf Folgeleistung fehlt."_cp1252;
  std::string const auftrag = "Syntaxfehler: Auftrag fehlerhaft.";
  std::pair<char const*, std::string> const faelle[] = {
      {"M 4711 GATTUNG X\n", "M: Syntaxfehler: M-Kommando erwartet Liste."},
      {"M (4711) (WENN Sa) GATTUNG X\n", bedingung},
      {"M (4711) (WENN VT Sa So) GATTUNG X\n", bedingung},
      {"M (4711) GATTUNG\n", "GATTUNG: Syntaxfehler: Keine Gattung angegeben."},
      {"M (4711) LINIE\n", "LINIE: Syntaxfehler: Keine Liniennummer angegeben."},
      {"M (4711) FOLGE 5\n", "5: " + zn},
      {"M (4711) FOLGE ZN + x\n", "+: " + zn},
      {"M (4711) ZL 8:00\n", std::string("8:00: ") + "Ungültige Fahrtzeit-/Zuglaufangabe."_cp1252},
      {"M (4711) AUFTRAG XB N2 WENDE\n", "AUFTRAG: " + auftrag},
      {"M (4711) GLEIS XB . N2\n", "GLEIS: " + auftrag},
      {"M (4711) LINIE 3 AUFTRAG XB . N2 HALT\n", "HALT: Syntaxfehler: Undefinierter Auftrag."},
      {"M (4711)\n", "M: Syntaxfehler: Undefinierter Auftrag."},
  };
  for (auto const& [zeile, erwartet] : faelle) {
    fpl.clear(false);
    Error e = runExpectingError(kZuege + zeile);
    ASSERT_NE(e.token, nullptr) << zeile;
    EXPECT_EQ(e.token->str() + ": " + e.message, erwartet);
    EXPECT_EQ(zug(4711).liniennummer, "1") << zeile;
  }
}

}  // namespace
