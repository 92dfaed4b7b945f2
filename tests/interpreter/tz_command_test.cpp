// TZ: clock-face trains in the numeric, list and block forms.
#include <stdexcept>
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

// Eins runs from XA (departure 0:00) to XB (arrival 1:00).
std::string const kStrecke =
    "BTR XA Astadt\nBTR XB Bdorf\nZL Eins {\nXA . N1 H - 0:00\nXB . N2 H 1:00 -\n}\n"
    "ZL Zwei {\nXB . N2 H - 0:00\nXA . N1 H 0:50 -\n}\nSET Zuglauf Eins\n";

using TZCommand = DefinitionTest;

TEST_F(TZCommand, MakesTrainsInTheNumericListAndBlockForms) {
  run(kStrecke + "TZ 100 100 2 8:00 0:30\nTZ 101 105 2 8:00 0:30 Sa\nTZ 7 7 1 9:00 0:10\n" +
      "TZ (201 202) > 10:00 1:00 Sa\nTZ (LISTE 301 301) 8:00 0:15\n" +
      "TZ * Sa {\n401 8:00\n402 > 10:00\n}\n");
  std::string fahrten;  // "number@reftime/days" ("-": no day record)
  for (Zug const& z : fpl.getZuege())
    fahrten += std::to_string(z.nummer) + "@" + std::to_string(z.reftime) + "/" +
               (z.verkehrstag ? z.verkehrstag->days : "-") + " ";
  EXPECT_EQ(fahrten,
            "100@28800/- 101@28800/6 103@30600/6 105@32400/6 7@32400/- 201@32400/6 202@36000/6 "
            "301@28800/- 301@29700/- 401@28800/6 402@32400/6 ");
  // A number given again maps to the newer train; both stay in the list.
  EXPECT_EQ(fpl.getZuegeByNummer().at("301")->reftime, 29700);
}

TEST_F(TZCommand, TrainsKeepTheSettingsOfTheirTime) {
  run(kStrecke + "RHG Doppel\nSET Linie RE 5\nSET Lenkziffer 3\nSET Verspaetungsmodell V1\n" +
      "SET Reihung ~ Doppel\nTZ 1 1 1 8:00 1:00\nSET Linie IC 7\nSET Zuglauf Zwei\n" +
      "SET Lenkziffer 4\nSET Verspaetungsmodell V2\nSET Reihung Doppel\n");
  Zug const& z = fpl.getZuege().front();
  EXPECT_EQ(z.token->str() + " " + z.gattung + " " + z.liniennummer + " " + z.zuglauf->name + " " +
                std::to_string(z.lenkzifferOverride) + " " + z.verspaetungsmodell + " " +
                z.reihung->name + (z.gedreht ? " ~" : ""),
            "TZ RE 5 Eins 3 V1 Doppel ~");
}

TEST_F(TZCommand, FaultsNameTheirToken) {
  std::string const syntax = "Syntaxfehler in Taktzug-Kommando: ";
  std::pair<char const*, std::string> const faelle[] = {
      {"TZ 101 x 2 8:00 0:30\n", "101: " + syntax +
                                     "Erwartet Start- und Endzugnummern sowie Schrittweite als "
                                     "erste drei Argumente."},
      {"TZ 105 101 2 8:00 0:30\n",
       "105: " + syntax + "Startzugnummer muss kleiner als Endzugnummer sein."},
      {"TZ 101 105 2 8:00 x\n",
       "8:00: " + syntax +
           "Erwarte Startzeit und Schrittweite als viertes und fünftes Argument."_cp1252},
      {"TZ 101 105 0 8:00 0:30\n", "0: " + syntax + "Schrittweite muss größer als 0 sein."_cp1252},
      {"TZ 1 100001 1 8:00 0:01\n", "TZ: " + syntax + "Mehr als 100000 Züge."_cp1252},
      {"TZ (1 2) > x 0:30\n", "TZ: TZ-Kommando erwartet Startzeit als zweiten Parameter."},
      {"TZ (1 2) 8:00 x\n",
       "TZ: TZ-Kommando erwartet Schrittweite als Zeit als dritten Parameter."},
      {"TZ * tgl\nBTR XA\n", "TZ: " + syntax + "Datenblock erwartet."},
      {"TZ * {\n401 8:00 402\n}\n",
       "402: " + syntax + "Pärchen aus Zugnummer und Startzeit in Datenblock erwartet."_cp1252},
  };
  for (auto const& [zeile, erwartet] : faelle) {
    fpl.clear(false);
    Error e = runExpectingError(zeile);
    ASSERT_NE(e.token, nullptr) << zeile;
    EXPECT_EQ(e.token->str() + ": " + e.message, erwartet);
  }
  // A listed number beyond the signed range is refused, not wrapped to a negative one;
  // the trains before it stay.
  fpl.clear(false);
  try {
    run("TZ (SCHLEIFE 2147483646 2147483648 1) 8:00 0:01\n");
    ADD_FAILURE() << "no exception";
  } catch (std::out_of_range const& e) {
    EXPECT_STREQ(e.what(), "stoi argument out of range");
  }
  EXPECT_EQ(fpl.getZuege().size(), 2u);
}

}  // namespace
