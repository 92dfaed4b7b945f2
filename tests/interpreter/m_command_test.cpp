#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

// 4711 (daily) and 4712 (Sa) share Eins, XA N1 to XB N1 (no long names); 5000 has no run.
std::string const kZuege =
    "BTR XA\nBTR XB\nRHG Doppel\nZL Eins {\nXA . N1 H - 0:00\nXB . N1 H 1:00 -\n}\n"
    "ZL Zwei {\nXB . N2 H - 0:00\nXA . N1 H 0:50 -\n}\n"
    "Z 5000 8:00\nSET Zuglauf Eins\nSET Linie RB 1\nZ 4711 8:00 tgl\nZ 4712 9:00 Sa\n";

// "track folge/category routing-digit [W]," per stop.
std::string halte(Zuglauf const* lauf) {
  std::string text;
  for (FplEintrag const& e : lauf ? lauf->eintraege : std::vector<FplEintrag>())
    text += " " + e.gleis + " " + e.folge + "/" + e.gattung + " " + std::to_string(e.lenkziffer) +
            (e.changedirection ? " W," : ",");
  return text;
}

// "category line run#id reftime days [~]formation: stops;" of every train `nummer`.
std::string zuege(Fahrplandefinition const& fpl, int nummer) {
  std::string text;
  for (Zug const& z : fpl.getZuege())
    if (z.nummer == nummer)
      text += z.gattung + " " + z.liniennummer + " " +
              (z.zuglauf ? z.zuglauf->name + "#" + std::to_string(z.zuglauf->id) : "-") + " " +
              std::to_string(z.reftime) + " " + (z.verkehrstag ? z.verkehrstag->days : "-") + " " +
              (z.gedreht ? "~" : "") + (z.reihung ? z.reihung->name : "-") + ":" +
              halte(z.zuglauf) + "; ";
  return text;
}

using MCommand = DefinitionTest;

TEST_F(MCommand, ChangesListedTrainsOnTheConditionsDaysInCopiesOfRunsOrWarnsOrFails) {
  run(kZuege + "M (4711) GATTUNG RE | Nv LINIE 5 RHG ~ Doppel\nM (4712) ZL (10:00 Zwei)\n" +
      "M (4711 4712 5000) (WENN VT (Sa + So)) GATTUNG WE\n");
  // 4711 is split: the unmodified train keeps the other days, in a record made from its own.
  EXPECT_EQ(zuege(fpl, 4711) + zuege(fpl, 4712) + zuege(fpl, 5000),
            "RE|Nv 5 Eins#1 28800 12345 ~Doppel: N1 / -1, N1 / -1,; "
            "WE 5 Eins#1 28800 67 ~Doppel: N1 / -1, N1 / -1,; "
            "WE 1 Zwei#2 36000 6 -: N2 / -1, N1 / -1,;   - 28800 - -:; ");
  EXPECT_EQ((++fpl.getZuege().begin())->verkehrstag->name, "1234567 12345");

  // A category after AUFTRAG applies at that stop; stops are told apart by abbreviation. 4712
  // shares the copy, then gets its own for WENDE; WENDE and LZ end at the next modification.
  fpl.clear(false);
  run(kZuege + "M (4711 4712) FOLGE ZN + 1 GLEIS XA . N1 N3 AUFTRAG XB . N1 LZ * 4 GATTUNG IC\n" +
      "M (4712) WENDE GATTUNG EC LZ 3 RHG Doppel\n");
  EXPECT_EQ(zuege(fpl, 4711) + zuege(fpl, 4712) + halte(fpl.getZLByName().at("Eins")),
            "RB 1 Eins_M#3 28800 1234567 -: N3 / -1, N1 +1/IC 14,; "
            "EC 1 Eins_M_M#4 32400 6 Doppel: N3 / -1, N1 +1/IC 3 W,;  N1 / -1, N1 / -1,");

  fpl.clear(false);
  run(kZuege + "M (4711 9999 5000) GLEIS XA . N7 N3 FOLGE ZN 815\nM (5000) WENDE\n");
  std::string texte = zuege(fpl, 4711);
  for (Error const& w : fpl.getWarnungen())
    texte += "\n" + fault(w);
  EXPECT_EQ(texte,
            "RB 1 Eins_M#3 28800 1234567 -: N1 / -1, N1 815/ -1,; \n"
            "z. 18 GLEIS: Modifikation von GLEIS konnte bei Zug 4711 nicht angewandt werden.\n"
            "z. 18 M: Zug 9999 nicht gefunden.\n"
            "z. 18 GLEIS: Modifikation von GLEIS konnte bei Zug 5000 nicht angewandt werden.\n"
            "z. 18 FOLGE: Modifikation der ZN-Regel konnte auf Zug 5000 nicht angewandt werden.\n"
            "z. 19 WENDE: Modifikation von WENDE konnte bei Zug 5000 nicht angewandt werden.");

  // Faults name their token and change nothing.
  std::string const bedingung = "(: Syntaxfehler: Syntax für Bedingung falsch."_cp1252;
  std::string const zn =
      "Syntaxfehler: Zugnummernregel für Wechsel auf Folgeleistung fehlt."_cp1252;
  std::pair<char const*, std::string> const faelle[] = {
      {"M 4711 GATTUNG X", "M: Syntaxfehler: M-Kommando erwartet Liste."},
      {"M (4711) (WENN Sa) GATTUNG X", bedingung},
      {"M (4711) (WENN VT Sa So) GATTUNG X", bedingung},
      {"M (4711) GATTUNG", "GATTUNG: Syntaxfehler: Keine Gattung angegeben."},
      {"M (4711) LINIE", "LINIE: Syntaxfehler: Keine Liniennummer angegeben."},
      {"M (4711) FOLGE 5", "5: " + zn},
      {"M (4711) FOLGE ZN + x", "+: " + zn},
      {"M (4711) ZL 8:00", "8:00: Ungültige Fahrtzeit-/Zuglaufangabe."_cp1252},
      {"M (4711) AUFTRAG XB N2 WENDE", "AUFTRAG: Syntaxfehler: Auftrag fehlerhaft."},
      {"M (4711)", "M: Syntaxfehler: Undefinierter Auftrag."},
      {"M (4711) LINIE 3 AUFTRAG XB . N2 HALT", "HALT: Syntaxfehler: Undefinierter Auftrag."},
  };
  for (auto const& [zeile, erwartet] : faelle)  // the M command is line 18
    EXPECT_EQ(outcome(kZuege + zeile, [] { return std::string(); }), "z. 18 " + erwartet);
  EXPECT_EQ(fpl.getZuegeByNummer().at("4711")->liniennummer, "1");  // not LINIE 3
}

}  // namespace

namespace {

using MCommandIndex = DefinitionTest;

// A number listed twice meets the part split off by its first listing, right
// after the train it came from: GLEIS then finds N1 gone and says so.
TEST_F(MCommandIndex, ANumberListedAgainFindsThePartsSplitOffBefore) {
  run(kZuege + "M (4711 4711) (WENN VT (Sa + So)) GLEIS XA . N1 N3\n");
  std::string texte = zuege(fpl, 4711);
  for (Error const& w : fpl.getWarnungen())
    texte += "\n" + fault(w);
  EXPECT_EQ(texte,
            "RB 1 Eins#1 28800 12345 -: N1 / -1, N1 / -1,; "
            "RB 1 Eins_M#3 28800 67 -: N3 / -1, N1 / -1,; \n"
            "z. 18 GLEIS: Modifikation von GLEIS konnte bei Zug 4711 nicht angewandt werden.");
}

}  // namespace
