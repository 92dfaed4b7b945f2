#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

using ZuglaufAngabe = DefinitionTest;

// Hin ends at XB on an open track "*"; Weiter starts there on N2; Stumpf has no arrival at
// its end; Zurueck starts at XA; Ende is one end stop at XB. Points have no long names.
std::string const kLaeufe =
    "BTR XA\nBTR XB\nBTR XC\nZL Ende {\nXB . N2 H 0:10 -\n}\n"
    "ZL Hin {\nXA . N1 H - 0:00\nXB . \"*\" H 0:30 - WENDE\n}\n"
    "ZL Weiter {\nXB . N2 E - 0:00 LZ 4\nXC . N3 H 0:40 - FOLGE ZN +1\n}\n"
    "ZL Stumpf {\nXA . N1 H - 0:00\n}\nZL Zurueck {\nXA . N1 H - 0:00\nXB . N2 H 0:20 -\n}\n";

TEST_F(ZuglaufAngabe, TakesOneNamedRunOrComposesSeveralOrNamesTheFault) {
  auto zeit = [](long long t) { return t == keineZeit ? "-" : std::to_string(t); };
  // "run#id reftime |" ("!": not entered by name), then "kind an ab track lz folge[W]" per stop.
  auto lauf = [&] {
    Zuglauf const& l = *fpl.getZuege().back().zuglauf;
    std::string text = l.name + "#" + std::to_string(l.id) +
                       (fpl.getZLByName().count(l.name) ? " " : "! ") +
                       zeit(fpl.getZuege().back().reftime) + " |";
    for (FplEintrag const& e : l.eintraege)
      text += " " + std::to_string(e.typ) + " " + zeit(e.an) + " " + zeit(e.ab) + " " + e.gleis +
              e.signalart + " " + std::to_string(e.lenkziffer) + " " + e.folge +
              (e.changedirection ? "W;" : ";");
    return text;
  };
  std::string const ungueltig = "Ungültige Fahrtzeit-/Zuglaufangabe."_cp1252;
  std::pair<char const*, std::string> const faelle[] = {
      {"Z 1 (7:00 Weiter)", "Weiter#3 25200 | 3 - 0 N2E 4 ; 4 2400 - N3H -1 +1;"},
      {"Z 1 (Weiter)", "Weiter#3 0 | 3 - 0 N2E 4 ; 4 2400 - N3H -1 +1;"},
      // A part that ends where it starts keeps the run's end.
      {"Z 2 (8:00 Hin 8:35 Ende)", "Hin+Ende#6! 28800 | 3 - 0 N1H -1 ; 4 1800 - N2H -1 W;"},
      {"Z 1 (8:00 Stumpf Weiter)", "z. 23 Weiter: Zugläufe inkompatibel."_cp1252},
      {"Z 1 (8:00 Hin Zurueck)", "z. 23 Zurueck: Zugläufe inkompatibel."_cp1252},
      {"Z 1 (Hin 9:00)", "z. 23 ): " + ungueltig},
      {"SET Zuglauf (Hin , Weiter)", "z. 23 ,: " + ungueltig},
      {"Z 1 (Hin)\nM (1) ZL Hin", "z. 24 Hin: " + ungueltig},
      // The meeting stop: arrival from the first part, departure and track from the second.
      {"Z 1 (8:00 Hin 8:35 Weiter)",
       "Hin+Weiter#6! 28800 | 3 - 0 N1H -1 ; 0 1800 2100 N2E 4 W; 4 4500 - N3H -1 +1;"},
  };
  for (auto const& [body, erwartet] : faelle)
    EXPECT_EQ(outcome(kLaeufe + body, lauf), erwartet) << body;
  // Absurd times of the parts wrap around as 64-bit numbers, both ways.
  std::pair<char const*, std::string> const extreme[] = {
      {"Z 2 (0:00 Hin 2562047788015215:30 Weiter)",
       "Hin+Weiter#6! 0 | 3 - 0 N1H -1 ; 0 1800 9223372036854775800 N2E 4 W; "
       "4 -9223372036854773416 - N3H -1 +1;"},
      {"Z 2 (8:00 Hin 2562047788015215:30:08 Weiter)",
       "Hin+Weiter#6! 28800 | 3 - 0 N1H -1 ; 0 1800 9223372036854747008 N2E 4 W; "
       "4 9223372036854749408 - N3H -1 +1;"},
  };
  for (auto const& [body, erwartet] : extreme)
    EXPECT_EQ(outcome(kLaeufe + body, lauf), erwartet) << body;
  EXPECT_EQ(fpl.getZLByName().at("Hin")->eintraege[1].gleis, "*");  // copied, not changed
}

}  // namespace
