#include <string>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"

namespace {

// Run L from line 12 on.
std::string lauf(std::string const& eintraege) {
  return "ZL L {\n" + eintraege + "\n}\n";
}

// Train 4711 on line 16 ends at Bstadt N2 at 9:00 with the successor rule `regel`;
// `nachfolger` follows on run Rueck unless it sets another.
std::string folge(std::string const& nachfolger, std::string const& regel = "+ 1") {
  return "ZL Hin {\n XC . N1 H - 8:00\n XB . N2 H 9:00 - FOLGE ZN " + regel +
         "\n}\nSET Zuglauf Hin\nZ 4711 0:00 tgl\n"
         "ZL Rueck {\n XB . N2 H - 0:00\n XC . N1 H 1:00 -\n}\n"
         "ZL Durch {\n XB . N2 H 0:00 0:01 30\n XC . N1 H 1:00 -\n}\n"
         "ZL Anders {\n XA . N2 H - 0:00\n XC . N1 H 1:00 -\n}\n"
         "ZL Gleis3 {\n XB . N3 H - 0:00\n XC . N1 H 1:00 -\n}\nSET Zuglauf Rueck\n" +
         nachfolger;
}

using ValidationTest = DefinitionTest;

// Every run, then the successor of every train per weekday.
TEST_F(ValidationTest, WarnsOfEveryFindingAtItsToken) {
  Restore<std::string> pfad{quorvelpath};
  quorvelpath = "";
  TempDir dir;
  // Layout A1: Astadt, West and Ost; library 1: vehicles 1 to 3; formation R1.
  std::string const vorspann =
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
  auto befunde = [&] {  // the definition gives no warnings, validate() all of them
    fpl.validate();
    std::string texte;
    for (Error const& e : fpl.getWarnungen())
      texte += fault(e) + "\n";
    return texte;
  };
  std::string const zug = "z. 16 Z: Folgeleistung für Zug 4711 "_cp1252;
  std::string const alle = "Mo, Di, Mi, Do, Fr, Sa und So";
  std::pair<std::string, std::string> const faelle[] = {
      {lauf(" XB . N1 H - 23:50\n XC . N1 H 0:10 -"), ""},   // crossing midnight
      {lauf(" XB . N1 H - 0:30\n XC . N1 H 4:00 -"), ""},    // long, but in the first hour
      {lauf(" XB . N1 H - 19:00\n XC . N1 H 23:00 -"), ""},  // long, but into the last hour
      {lauf(" XA . N1 H - 8:00\n -> A1 . Ost 8:10\n XC . N1 H 8:30 -"), ""},  // starts inside A1
      {lauf(" XB . N1 H - 10:00\n XC . N1 H 9:59 -\n XC . N2 H - 9:58\n XB . N2 H 10:30 10:29 30"),
       "z. 13 XC: Ankunftszeit liegt vor Fahrtzeit an vorangehendem Eintrag.\n"
       "z. 14 XC: Abfahrtszeit liegt vor Fahrtzeit an vorangehendem Eintrag.\n"
       "z. 14 XC: Halt mehrfach im Zuglauf.\n"
       "z. 15 XB: Abfahrtszeit vor Ankunftszeit.\n"
       "z. 15 XB: Halt mehrfach im Zuglauf.\n"},
      {lauf(" XB . N1 H - 5:00\n XC . N1 H 8:01 -"),
       "z. 12 XB: Zuglaufzeit größer 3 Stunden.\n"_cp1252},
      {lauf(" XB . N1 H - 8:00\n <- A1 . West 8:10\n <- A1 . West 8:20\n XC . N1 H 8:30 -"),
       "z. 14 <-: Mehrfache aufeinanderfolgende Einfahrt in Außenanlage, ohne dass sie "
       "zwischenzeitlich verlassen wurde.\n"
       "z. 14 <-: Einfahrt mehrfach im Zuglauf.\n"
       "z. 15 XC: Zug verlässt Außenanlage 'A1' nicht mehr.\n"_cp1252},
      {lauf(" XB . N1 H - 8:00\n -> A1 . Ost 8:10\n <- A1 . West 8:20\n -> A1 . Ost 8:25\n"
            " XC . N1 H 8:30 -"),
       "z. 13 ->: Außenanlage A1 wird verlassen, bevor/ohne dass in sie eingefahren wurde.\n"
       "z. 14 <-: Außenanlage wurde verlassen, bevor in sie eingefahren wird.\n"
       "z. 15 ->: Außenanlage A1 wird verlassen, bevor/ohne dass in sie eingefahren wurde.\n"
       "z. 15 ->: Ausfahrt mehrfach im Zuglauf.\n"_cp1252},
      {lauf(" XB . N1 H - 8:00\n <- A1 . West 8:10\n XA . N1 H 8:30 -"),  // ends inside A1
       "z. 11 {: Zuglauf hat keine ZN-Regel für eine Folgeleistung.\n"_cp1252},
      {folge("RHG R2 Wagen Lok\nSET Reihung R2\nZ 4712 9:30 tgl\n"), ""},
      {folge("SET Zuglauf Durch\nZ 4712 9:29 tgl\n", "4712"),
       zug + "am " + alle + " ist nicht als beginnender Zug definiert.\n"},
      {folge("SET Zuglauf Anders\nZ 4712 9:30 tgl\n"),
       zug + "beginnt am " + alle + " an anderem Bahnhof.\n"},
      {folge("SET Zuglauf Gleis3\nZ 4712 9:30 tgl\n"),
       zug + "beginnt am " + alle + " auf anderem Gleis.\n"},
      {folge("FZG Tw 1 3\nRHG R2 Tw Tw\nSET Reihung R2\nZ 4712 9:30 Sa\n"),
       zug + "am Mo, Di, Mi, Do und So nicht auffindbar (ggf. zu hoher zeitlicher Abstand).\n" +
           zug + "hat am Fr und Sa eine inkongruente Reihung.\n"},
      {folge("", "- 5"), "z. 16 Z: Folgeleistung von Zug 4711, Zug 4706, existiert nicht.\n"},
  };
  for (auto const& [definition, erwartet] : faelle)
    EXPECT_EQ(outcome(vorspann + definition, befunde), erwartet) << definition;
}

}  // namespace
