#include <string>
#include <vector>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"

namespace {

// Findings are compared as "z. <line>: <message>".
using Befunde = std::vector<std::string>;

class ValidationTest : public DefinitionTest {
 protected:
  ValidationTest() { quorvelpath = ""; }

  // The findings of validate() for `definition`, which starts on line 11.
  Befunde pruefe(std::string const& definition) {
    fpl.clear(false);
    try {
      run(vorspann + definition);
    } catch (Error const& e) {
      return {"unerwartet " + describe(e)};
    }
    std::size_t vorher = fpl.getWarnungen().size();
    fpl.validate();
    Befunde texte;
    for (std::size_t i = vorher; i < fpl.getWarnungen().size(); ++i)
      texte.push_back(describe(fpl.getWarnungen()[i]));
    return texte;
  }

  Restore<std::string> pfad{quorvelpath};
  TempDir dir;
  // Layout A1 holds the station Astadt and the directions West and Ost; library 1
  // the vehicles 1 to 3; formation R1 is the default.
  std::string vorspann =
      "BTR XA Astadt\nBTR XB Bstadt\nBTR XC Cstadt\nAA A1 \"" +
      dir.write("a1.stwa",
                "<stelltisch><betriebsstelle name='Astadt' id='1'><abbreviation vname='ds100' "
                "value='XA'/></betriebsstelle><einfahrrichtung name='West' id='2'/>"
                "<einfahrrichtung name='Ost' id='3'/></stelltisch>") +
      "\" { }\nBIB 1 \"" +
      dir.write("lib.xml",
                "<bibliothek><fahrzeugtemplate id='1' name='Lok'/><fahrzeugtemplate id='2' "
                "name='Wagen'/><fahrzeugtemplate id='3' name='Triebwagen'/></bibliothek>") +
      "\"\nFZG Lok 1 1\nFZG Wagen 1 2\nRHG R1 Lok Wagen\nSET Reihung R1\n";
};

TEST_F(ValidationTest, ChecksTimesLayoutBoundariesAndStopsOfEveryRun) {
  struct {
    char const* eintraege;  // of run L, from line 12 on
    Befunde warnungen;
  } const faelle[] = {
      {" XB . N1 H - 23:50\n XC . N1 H 0:10 -", {}},  // crossing midnight
      {" XB . N1 H - 10:00\n XC . N1 H 9:59 -",
       {"z. 13: Ankunftszeit liegt vor Fahrtzeit an vorangehendem Eintrag."}},
      {" XB . N1 H - 10:00\n XC . N1 H - 9:59\n XB . N2 H 10:30 -",
       {"z. 13: Abfahrtszeit liegt vor Fahrtzeit an vorangehendem Eintrag.",
        "z. 14: Halt mehrfach im Zuglauf."}},
      {" XB . N1 H - 10:00\n XC . N1 H 10:30 10:29 30", {"z. 13: Abfahrtszeit vor Ankunftszeit."}},
      {" XB . N1 H - 5:00\n XC . N1 H 8:01 -", {"z. 12: Zuglaufzeit größer 3 Stunden."_cp1252}},
      {" XB . N1 H - 0:30\n XC . N1 H 4:00 -", {}},    // long, but in the first hour
      {" XB . N1 H - 19:00\n XC . N1 H 23:00 -", {}},  // long, but into the last hour
      {" XB . N1 H - 8:00\n <- A1 . West 8:10\n <- A1 . West 8:20\n XC . N1 H 8:30 -",
       {"z. 14: Mehrfache aufeinanderfolgende Einfahrt in Außenanlage, ohne dass sie zwischenzeitlich verlassen wurde."_cp1252,
        "z. 14: Einfahrt mehrfach im Zuglauf.",
        "z. 15: Zug verlässt Außenanlage 'A1' nicht mehr."_cp1252}},
      {" XB . N1 H - 8:00\n -> A1 . Ost 8:10\n <- A1 . West 8:20\n -> A1 . Ost 8:25\n XC . N1 H "
       "8:30 -",
       {"z. 13: Außenanlage A1 wird verlassen, bevor/ohne dass in sie eingefahren wurde."_cp1252,
        "z. 14: Außenanlage wurde verlassen, bevor in sie eingefahren wird."_cp1252,
        "z. 15: Außenanlage A1 wird verlassen, bevor/ohne dass in sie eingefahren wurde."_cp1252,
        "z. 15: Ausfahrt mehrfach im Zuglauf."}},
      {" XA . N1 H - 8:00\n -> A1 . Ost 8:10\n XC . N1 H 8:30 -", {}},  // starts inside A1
      {" XB . N1 H - 8:00\n <- A1 . West 8:10\n XA . N1 H 8:30 -",      // ends inside A1
       {"z. 11: Zuglauf hat keine ZN-Regel für eine Folgeleistung."_cp1252}},
  };
  for (auto const& f : faelle)
    EXPECT_EQ(pruefe(std::string("ZL L {\n") + f.eintraege + "\n}\n"), f.warnungen) << f.eintraege;
}

TEST_F(ValidationTest, ChecksTheSuccessorOfEveryTrainPerWeekday) {
  std::string const zug = "z. 16: Folgeleistung für Zug 4711 "_cp1252;
  std::string const alle = "Mo, Di, Mi, Do, Fr, Sa und So";
  struct {
    char const* folge;       // rule of train 4711, which ends at Bstadt N2 at 9:00
    char const* nachfolger;  // on run Rueck unless set otherwise
    Befunde warnungen;
  } const faelle[] = {
      {"+ 1", "RHG R2 Wagen Lok\nSET Reihung R2\nZ 4712 9:30 tgl\n", {}},
      {"+ 1",
       "Z 4712 9:30 Mo-Fr\n",
       {zug + "am Sa nicht auffindbar (ggf. zu hoher zeitlicher Abstand)."}},
      {"4712",
       "SET Zuglauf Durch\nZ 4712 9:29 tgl\n",
       {zug + "am " + alle + " ist nicht als beginnender Zug definiert."}},
      {"+ 1",
       "SET Zuglauf Anders\nZ 4712 9:30 tgl\n",
       {zug + "beginnt am " + alle + " an anderem Bahnhof."}},
      {"+ 1",
       "SET Zuglauf Gleis3\nZ 4712 9:30 tgl\n",
       {zug + "beginnt am " + alle + " auf anderem Gleis."}},
      {"+ 1",
       "FZG Tw 1 3\nRHG R2 Tw Tw\nSET Reihung R2\nZ 4712 9:30 Sa\n",
       {zug + "am Mo, Di, Mi, Do und So nicht auffindbar (ggf. zu hoher zeitlicher Abstand).",
        zug + "hat am Fr und Sa eine inkongruente Reihung."}},
      {"- 5", "", {"z. 16: Folgeleistung von Zug 4711, Zug 4706, existiert nicht."}},
  };
  for (auto const& f : faelle) {
    SCOPED_TRACE(f.nachfolger);
    EXPECT_EQ(pruefe(std::string("ZL Hin {\n XC . N1 H - 8:00\n XB . N2 H 9:00 - FOLGE ZN ") +
                     f.folge + "\n}\nSET Zuglauf Hin\nZ 4711 0:00 tgl\n" +
                     "ZL Rueck {\n XB . N2 H - 0:00\n XC . N1 H 1:00 -\n}\n"
                     "ZL Durch {\n XB . N2 H 0:00 0:01 30\n XC . N1 H 1:00 -\n}\n"
                     "ZL Anders {\n XA . N2 H - 0:00\n XC . N1 H 1:00 -\n}\n"
                     "ZL Gleis3 {\n XB . N3 H - 0:00\n XC . N1 H 1:00 -\n}\nSET Zuglauf Rueck\n" +
                     f.nachfolger),
              f.warnungen);
  }
}

}  // namespace
