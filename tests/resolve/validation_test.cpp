#include <fstream>
#include <string>
#include <vector>

#include "external/installation.h"
#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

// Lines 2 to 5 of every case; its own lines start on line 6.
constexpr char const* kVorspann =
    "BTR XA Astadt\nBTR XB Bstadt\nBTR XC Cstadt\nAA A1 \"$LAYOUT\" { }\n";

// Layout A1 holds the station Astadt and the directions West and Ost.
std::string schreibeAnlage() {
  std::string pfad = ::testing::TempDir() + "validation_a1.stwa";
  std::ofstream(pfad)
      << "<?xml version=\"1.0\"?>\n<stelltisch>\n"
         " <betriebsstelle name=\"Astadt\" id=\"1\"><abbreviation vname=\"ds100\" "
         "value=\"XA\"/></betriebsstelle>\n"
         " <einfahrrichtung name=\"West\" id=\"2\"/>\n <einfahrrichtung name=\"Ost\" id=\"3\"/>\n"
         "</stelltisch>\n";
  return pfad;
}

// Library 1 holds the vehicles 1 to 3.
std::string schreibeBibliothek() {
  std::string pfad = ::testing::TempDir() + "validation_lib.xml";
  std::ofstream(pfad) << "<?xml version=\"1.0\"?>\n<bibliothek>\n"
                         " <fahrzeugtemplate id=\"1\" name=\"Lok\"/>\n <fahrzeugtemplate id=\"2\" "
                         "name=\"Wagen\"/>\n"
                         " <fahrzeugtemplate id=\"3\" name=\"Triebwagen\"/>\n</bibliothek>\n";
  return pfad;
}

// Train 4711 on run Hin ends at Bstadt track N2 at 9:00 with the rule `folge`;
// 4711 is made on line 16, `folgezuege` follow it.
std::string mitFolge(char const* folge, char const* folgezuege) {
  return std::string("ZL Hin {\n XC . N1 H - 8:00\n XB . N2 H 9:00 - FOLGE ZN ") + folge + "\n}\n" +
         "BIB 1 \"$BIB\"\n"
         "FZG Lok 1 1\n"
         "FZG Wagen 1 2\n"
         "RHG R1 Lok Wagen\n"
         "SET Reihung R1\n"
         "SET Zuglauf Hin\n"
         "Z 4711 0:00 tgl\n" +
         folgezuege;
}

struct Pruefung {
  std::string name;
  std::string definition;  // after the preamble, from line 6 on
  std::vector<std::string> warnungen;
};

class ValidationTest : public DefinitionTest {
 protected:
  void SetUp() override {
    altePfad = quorvelpath;
    quorvelpath = "";
    anlage = schreibeAnlage();
    bibliothek = schreibeBibliothek();
  }
  void TearDown() override { quorvelpath = altePfad; }

  std::vector<std::string> pruefe(std::string const& definition) {
    fpl.clear(false);
    std::string text = kVorspann + definition;
    text.replace(text.find("$LAYOUT"), 7, anlage);
    if (auto bib = text.find("$BIB"); bib != std::string::npos) text.replace(bib, 4, bibliothek);
    try {
      run(text);
    } catch (Error const& e) {
      ADD_FAILURE() << describe(e);
      return {};
    }
    std::size_t vorher = fpl.getWarnungen().size();
    fpl.validate();
    std::vector<std::string> texte;
    for (std::size_t i = vorher; i < fpl.getWarnungen().size(); ++i)
      texte.push_back(describe(fpl.getWarnungen()[i]));
    return texte;
  }

  std::string altePfad;
  std::string anlage;
  std::string bibliothek;
};

TEST_F(ValidationTest, RunsAreCheckedForTimesBoundariesAndStops) {
  Pruefung const faelle[] = {
      {"midnight crossing", "ZL L {\n XB . N1 H - 23:50\n XC . N1 H 0:10 -\n}\n", {}},
      {"arrival before previous time",
       "ZL L {\n XB . N1 H - 10:00\n XC . N1 H 9:59 -\n}\n",
       {"z. 8: Ankunftszeit liegt vor Fahrtzeit an vorangehendem Eintrag."}},
      {"departure before previous time",
       "ZL L {\n XB . N1 H - 10:00\n XC . N1 H - 9:59\n XB . N2 H 10:30 -\n}\n",
       {"z. 8: Abfahrtszeit liegt vor Fahrtzeit an vorangehendem Eintrag.",
        "z. 9: Halt mehrfach im Zuglauf."}},
      {"departure before arrival",
       "ZL L {\n XB . N1 H - 10:00\n XC . N1 H 10:30 10:29 30\n}\n",
       {"z. 8: Abfahrtszeit vor Ankunftszeit."}},
      {"over three hours",
       "ZL L {\n XB . N1 H - 5:00\n XC . N1 H 8:01 -\n}\n",
       {"z. 7: Zuglaufzeit größer 3 Stunden."_cp1252}},
      {"long run in the first hour", "ZL L {\n XB . N1 H - 0:30\n XC . N1 H 4:00 -\n}\n", {}},
      {"long run into the last hour", "ZL L {\n XB . N1 H - 19:00\n XC . N1 H 23:00 -\n}\n", {}},
      {"entered twice",
       "ZL L {\n XB . N1 H - 8:00\n <- A1 . West 8:10\n <- A1 . West 8:20\n XC . N1 H 8:30 -\n}\n",
       {"z. 9: Mehrfache aufeinanderfolgende Einfahrt in Außenanlage, ohne dass sie zwischenzeitlich verlassen wurde."_cp1252,
        "z. 9: Einfahrt mehrfach im Zuglauf.",
        "z. 10: Zug verlässt Außenanlage 'A1' nicht mehr."_cp1252}},
      {"left before entered",
       "ZL L {\n XB . N1 H - 8:00\n -> A1 . Ost 8:10\n <- A1 . West 8:20\n -> A1 . Ost 8:25\n XC . "
       "N1 H 8:30 -\n}\n",
       {"z. 8: Außenanlage A1 wird verlassen, bevor/ohne dass in sie eingefahren wurde."_cp1252,
        "z. 9: Außenanlage wurde verlassen, bevor in sie eingefahren wird."_cp1252,
        "z. 10: Außenanlage A1 wird verlassen, bevor/ohne dass in sie eingefahren wurde."_cp1252,
        "z. 10: Ausfahrt mehrfach im Zuglauf."}},
      {"starting inside the layout may leave it",
       "ZL L {\n XA . N1 H - 8:00\n -> A1 . Ost 8:10\n XC . N1 H 8:30 -\n}\n",
       {}},
      {"ending inside the layout needs a successor rule",
       "ZL L {\n XB . N1 H - 8:00\n <- A1 . West 8:10\n XA . N1 H 8:30 -\n}\n",
       {"z. 6: Zuglauf hat keine ZN-Regel für eine Folgeleistung."_cp1252}},
  };
  for (Pruefung const& f : faelle) {
    SCOPED_TRACE(f.name);
    EXPECT_EQ(pruefe(f.definition), f.warnungen);
  }
}

TEST_F(ValidationTest, SuccessorsAreCheckedPerWeekday) {
  std::string const zug = "z. 16: Folgeleistung für Zug 4711 "_cp1252;
  std::string const alle = "Mo, Di, Mi, Do, Fr, Sa und So";
  std::string const rueck = "SET Zuglauf Rueck\n";
  std::string const laeufe =
      "ZL Rueck {\n XB . N2 H - 0:00\n XC . N1 H 1:00 -\n}\n"
      "ZL Durch {\n XB . N2 H 0:00 0:01 30\n XC . N1 H 1:00 -\n}\n"
      "ZL Anders {\n XA . N2 H - 0:00\n XC . N1 H 1:00 -\n}\n"
      "ZL Gleis3 {\n XB . N3 H - 0:00\n XC . N1 H 1:00 -\n}\n";
  Pruefung const faelle[] = {
      {"fitting successor",
       mitFolge("+ 1", "RHG R2 Wagen Lok\nSET Reihung R2\n") + laeufe + rueck + "Z 4712 9:30 tgl\n",
       {}},
      {"missing on Saturday",
       mitFolge("+ 1", "") + laeufe + rueck + "Z 4712 9:30 Mo-Fr\n",
       {zug + "am Sa nicht auffindbar (ggf. zu hoher zeitlicher Abstand)."}},
      {"not starting",
       mitFolge("4712", "") + laeufe + "SET Zuglauf Durch\nZ 4712 9:29 tgl\n",
       {zug + "am " + alle + " ist nicht als beginnender Zug definiert."}},
      {"other station",
       mitFolge("+ 1", "") + laeufe + "SET Zuglauf Anders\nZ 4712 9:30 tgl\n",
       {zug + "beginnt am " + alle + " an anderem Bahnhof."}},
      {"other track",
       mitFolge("+ 1", "") + laeufe + "SET Zuglauf Gleis3\nZ 4712 9:30 tgl\n",
       {zug + "beginnt am " + alle + " auf anderem Gleis."}},
      {"incongruent formation",
       mitFolge("+ 1", "FZG Tw 1 3\nRHG R2 Tw Tw\nSET Reihung R2\n") + laeufe + rueck +
           "Z 4712 9:30 Sa\n",
       {zug + "am Mo, Di, Mi, Do und So nicht auffindbar (ggf. zu hoher zeitlicher Abstand).",
        zug + "hat am Fr und Sa eine inkongruente Reihung."}},
      {"no such train",
       mitFolge("- 5", "") + laeufe,
       {"z. 16: Folgeleistung von Zug 4711, Zug 4706, existiert nicht."}},
  };
  for (Pruefung const& f : faelle) {
    SCOPED_TRACE(f.name);
    EXPECT_EQ(pruefe(f.definition), f.warnungen);
  }
}

}  // namespace
