#include <stdexcept>
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

using TZCommand = DefinitionTest;

TEST_F(TZCommand, MakesTrainsInEachFormWithTheSettingsOfTheirTimeOrNamesTheFault) {
  run("BTR XA\nBTR XB\nZL Eins {\nXA . N1 H - 0:00\nXB . N2 H 1:00 -\n}\nZL Zwei {\n}\nRHG Doppel\n"
      "SET Zuglauf Eins\nSET Linie RE 5\nSET Lenkziffer 3\nSET Verspaetungsmodell V1\n"
      "SET Reihung ~ Doppel\nTZ 100 100 2 8:00 0:30\nTZ 101 105 2 8:00 0:30 Sa\n"
      "TZ (201 202) > 10:00 1:00 Sa\nTZ (LISTE 301 301) 8:00 0:15\nTZ * Sa {\n401 8:00\n"
      "402 > 10:00\n}\nSET Linie IC 7\nSET Zuglauf Zwei\nSET Lenkziffer 4\n"
      "SET Verspaetungsmodell V2\nSET Reihung Doppel\n");
  std::string fahrten;  // "number@reftime/days" ("-": no day record)
  for (Zug const& z : fpl.getZuege())
    fahrten += std::to_string(z.nummer) + "@" + std::to_string(z.reftime) + "/" +
               (z.verkehrstag ? z.verkehrstag->days : "-") + " ";
  EXPECT_EQ(fahrten,
            "100@28800/- 101@28800/6 103@30600/6 105@32400/6 201@32400/6 202@36000/6 "
            "301@28800/- 301@29700/- 401@28800/6 402@32400/6 ");
  EXPECT_EQ(fpl.getZuegeByNummer().at("301")->reftime, 29700);  // the newer of the two
  Zug const& z = fpl.getZuege().back();                         // made before the settings changed
  EXPECT_EQ(z.token->str() + " " + z.gattung + z.liniennummer + " " + z.zuglauf->name +
                std::to_string(z.lenkzifferOverride) + z.verspaetungsmodell +
                (z.gedreht ? "~" : "") + z.reihung->name,
            "TZ RE5 Eins3V1~Doppel");

  std::string const tz = "Syntaxfehler in Taktzug-Kommando: ";
  std::pair<char const*, std::string> const faelle[] = {
      {"TZ 101 x 2 8:00 0:30", "z. 2 101: " + tz +
                                   "Erwartet Start- und Endzugnummern sowie Schrittweite als "
                                   "erste drei Argumente."},
      {"TZ 105 101 2 8:00 0:30",
       "z. 2 105: " + tz + "Startzugnummer muss kleiner als Endzugnummer sein."},
      {"TZ 101 105 2 8:00 x",
       "z. 2 8:00: " + tz +
           "Erwarte Startzeit und Schrittweite als viertes und fünftes Argument."_cp1252},
      {"TZ 101 105 0 8:00 0:30", "z. 2 0: " + tz + "Schrittweite muss größer als 0 sein."_cp1252},
      {"TZ 1 100001 1 8:00 0:01", "z. 2 TZ: " + tz + "Mehr als 100000 Züge."_cp1252},
      {"TZ (1 2) > x 0:30", "z. 2 TZ: TZ-Kommando erwartet Startzeit als zweiten Parameter."},
      {"TZ (1 2) 8:00 x",
       "z. 2 TZ: TZ-Kommando erwartet Schrittweite als Zeit als dritten Parameter."},
      {"TZ * tgl\nBTR XA", "z. 2 TZ: " + tz + "Datenblock erwartet."},
      {"TZ * {\n401 8:00 402\n}",
       "z. 3 402: " + tz + "Pärchen aus Zugnummer und Startzeit in Datenblock erwartet."_cp1252},
  };
  for (auto const& [zeile, erwartet] : faelle)
    EXPECT_EQ(outcome(zeile, [] { return std::string("kein Fehler"); }), erwartet) << zeile;
  // A listed number beyond the signed range is refused, not wrapped; earlier trains stay.
  fpl.clear(false);
  try {
    run("TZ (SCHLEIFE 2147483646 2147483648 1) 8:00 0:01");
    ADD_FAILURE() << "no exception";
  } catch (std::out_of_range const& e) {
    EXPECT_STREQ(e.what(), "stoi argument out of range");
  }
  EXPECT_EQ(fpl.getZuege().size(), 2u);
}

}  // namespace
