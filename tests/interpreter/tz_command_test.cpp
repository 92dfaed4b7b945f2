#include <tinyxml2.h>

#include <stdexcept>
#include <string>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
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
}

// Listed numbers are unsigned: one train per number, keeping the 32-bit pattern,
// and the document shows the numbers as they were written.
TEST_F(TZCommand, WritesListedNumbersBeyondTheSignedRangeUnsigned) {
  Restore<std::string> pfad{quorvelpath};
  quorvelpath = std::string(FPLC_SOURCE_DIR) + "/tests/output/data";
  run("DAT \"/anlagen.fpl\"\nZL Hin {\nXA . A1 A - 8:00\nXC . S1 H 8:20 -\n}\n"
      "SET Zuglauf Hin\nTZ (3000000000 4294967295) 8:00 0:10 Mo\n");
  std::string zuege;
  for (Zug const& z : fpl.getZuege())
    zuege += std::to_string(z.nummer) + "@" + std::to_string(z.reftime) + " ";
  EXPECT_EQ(zuege, "-1294967296@28800 -1@29400 ");
  EXPECT_EQ(fpl.getZuegeByNummer().at("4294967295")->reftime, 29400);

  tinyxml2::XMLDocument doc;
  fpl.write(doc, "T", fpl.getAussenanlagen().front(), "nord.stwa");
  std::string nummern;
  for (auto* zug = doc.RootElement()->FirstChildElement("zug"); zug;
       zug = zug->NextSiblingElement("zug"))
    nummern += std::string(zug->Attribute("nummer")) + " ";
  EXPECT_EQ(nummern, "3000000000 4294967295 ");

  // The numeric and the block form read their numbers as signed, like Z.
  for (char const* text : {"TZ 2147483647 2147483648 1 8:00 0:01", "TZ * {\n2147483648 8:00\n}"}) {
    fpl.clear(false);
    try {
      run(text);
      ADD_FAILURE() << "no exception: " << text;
    } catch (std::out_of_range const& e) {
      EXPECT_STREQ(e.what(), "stoi argument out of range") << text;
    }
  }
}

// The times of a series wrap around as 64-bit numbers instead of overflowing; a
// time that fits a day is untouched.
TEST_F(TZCommand, SeriesStepOfAbsurdTimesWrapsAround) {
  std::pair<char const*, char const*> const faelle[] = {
      {"TZ 1 1 1 2562047788015215:30 1:00", "1@9223372036854775800 "},
      {"TZ 1 3 1 2562047788015215:30 0:00:07",
       "1@9223372036854775800 2@9223372036854775807 3@-9223372036854775802 "},
      {"TZ (1 2) 2562047788015215:30 1:00", "1@9223372036854775800 2@-9223372036854772216 "},
      {"TZ 1 2 1 2562047788015215:30:08 2562047788015215:30",  // from the smallest time
       "1@-9223372036854775808 2@-8 "},
      {"TZ 1 3 1 0:00 2562047788015215:30:08",  // the step is the smallest time
       "1@0 2@-9223372036854775808 3@0 "},
      {"TZ 1 2 1 23:59 0:01", "1@86340 2@86400 "},
  };
  for (auto const& [text, erwartet] : faelle) {
    EXPECT_EQ(outcome(text,
                      [&] {
                        std::string zuege;
                        for (Zug const& z : fpl.getZuege())
                          zuege += std::to_string(z.nummer) + "@" + std::to_string(z.reftime) + " ";
                        return zuege;
                      }),
              erwartet)
        << text;
  }
}

}  // namespace
