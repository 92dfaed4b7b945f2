// TZ: clock-face trains in the numeric, list and block forms; trains keep the
// settings that were current when they were made.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

// Eins runs from XA (departure 0:00) to XB (arrival 1:00).
std::string const kStrecke =
    "BTR XA Astadt\nBTR XB Bdorf\nZL Eins {\nXA . N1 H - 0:00\nXB . N2 H 1:00 -\n}\n"
    "ZL Zwei {\nXB . N2 H - 0:00\nXA . N1 H 0:50 -\n}\nSET Zuglauf Eins\n";

using Fahrten = std::vector<std::pair<int, long long>>;

class TZCommand : public DefinitionTest {
 protected:
  // (number, reference time) of every train, in list order.
  Fahrten fahrten() {
    Fahrten result;
    for (Zug const& z : fpl.getZuege())
      result.emplace_back(z.nummer, z.reftime);
    return result;
  }
  std::string tage(char const* nummer) {
    Verkehrstag const* vt = fpl.getZuegeByNummer().at(nummer)->verkehrstag;
    return vt ? vt->days : "keine";
  }
};

TEST_F(TZCommand, NumericFormCountsUpToTheLastNumber) {
  run(kStrecke + "TZ 100 100 2 8:00 0:30\nTZ 101 105 2 8:00 0:30 tgl\nTZ 7 7 1 9:00 0:10\n");
  EXPECT_EQ(fahrten(),
            (Fahrten{{100, 28800}, {101, 28800}, {103, 30600}, {105, 32400}, {7, 32400}}));
  EXPECT_EQ(tage("100") + " " + tage("103"), "keine 1234567");
}

TEST_F(TZCommand, ListAndBlockFormsReadArrivalTimes) {
  run(kStrecke + "TZ (201 202) > 10:00 1:00 Sa\nTZ (LISTE 301 301) 8:00 0:15\n" +
      "TZ * tgl {\n401 8:00\n402 > 10:00\n}\n");
  EXPECT_EQ(
      fahrten(),
      (Fahrten{
          {201, 32400}, {202, 36000}, {301, 28800}, {301, 29700}, {401, 28800}, {402, 32400}}));
  EXPECT_EQ(tage("202") + " " + tage("301") + " " + tage("402"), "6 keine 1234567");
  // A number given again maps to the newer train; both stay in the list.
  EXPECT_EQ(fpl.getZuegeByNummer().at("301")->reftime, 29700);
}

TEST_F(TZCommand, TrainsKeepTheSettingsOfTheirTime) {
  run(kStrecke + "RHG Doppel\nSET Linie RE 5\nSET Lenkziffer 3\nSET Verspaetungsmodell V1\n" +
      "SET Reihung ~ Doppel\nTZ 1 1 1 8:00 1:00\nSET Linie IC 7\nSET Zuglauf Zwei\n" +
      "SET Lenkziffer 4\nSET Reihung Doppel\nZ 2 9:00\n");
  auto werte = [&](char const* nummer) {
    Zug const& z = *fpl.getZuegeByNummer().at(nummer);
    return z.token->str() + " " + z.gattung + " " + z.liniennummer + " " + z.zuglauf->name + " " +
           std::to_string(z.lenkzifferOverride) + " " + z.verspaetungsmodell + " " +
           z.reihung->name + (z.gedreht ? " ~" : "");
  };
  EXPECT_EQ(werte("1"), "TZ RE 5 Eins 3 V1 Doppel ~");
  EXPECT_EQ(werte("2"), "Z IC 7 Zwei 4 V1 Doppel");
}

TEST_F(TZCommand, FaultsNameTheirToken) {
  std::pair<char const*, std::string> const faelle[] = {
      {"TZ 101 x 2 8:00 0:30\n",
       "101: Syntaxfehler in Taktzug-Kommando: Erwartet Start- und Endzugnummern sowie "
       "Schrittweite als erste drei Argumente."},
      {"TZ 105 101 2 8:00 0:30\n",
       "105: Syntaxfehler in Taktzug-Kommando: Startzugnummer muss kleiner als Endzugnummer sein."},
      {"TZ 101 105 2 8:00 x\n",
       "8:00: Syntaxfehler in Taktzug-Kommando: Erwarte Startzeit und Schrittweite als viertes "
       "und fünftes Argument."_cp1252},
      {"TZ 101 105 0 8:00 0:30\n",
       "0: Syntaxfehler in Taktzug-Kommando: Schrittweite muss größer als 0 sein."_cp1252},
      {"TZ (1 2) > x 0:30\n", "TZ: TZ-Kommando erwartet Startzeit als zweiten Parameter."},
      {"TZ (1 2) 8:00 x\n",
       "TZ: TZ-Kommando erwartet Schrittweite als Zeit als dritten Parameter."},
      {"TZ * tgl\nBTR XA\n", "TZ: Syntaxfehler in Taktzug-Kommando: Datenblock erwartet."},
      {"TZ * {\n401 8:00 402\n}\n",
       "402: Syntaxfehler in Taktzug-Kommando: Pärchen aus Zugnummer und Startzeit in Datenblock "
       "erwartet."_cp1252},
  };
  for (auto const& [zeile, erwartet] : faelle) {
    fpl.clear(false);
    Error e = runExpectingError(zeile);
    EXPECT_EQ(e.token->str() + ": " + e.message, erwartet);
  }
}

}  // namespace
