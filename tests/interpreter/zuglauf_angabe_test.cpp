// Run references: a time for the current run, one named run, or a run
// composed of several with its junction rules.
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

// Hin ends at XB on an open track "*"; Weiter starts there on N2; Stumpf has no
// arrival at its end; Zurueck starts at XA; Ende is one end stop at XB. The points
// have no long names: only their abbreviations tell them apart.
std::string const kLaeufe =
    "BTR XA\nBTR XB\nBTR XC\nZL Ende {\nXB . N2 H 0:10 -\n}\n"
    "ZL Hin {\nXA . N1 H - 0:00\nXB . \"*\" H 0:30 - WENDE\n}\n"
    "ZL Weiter {\nXB . N2 E - 0:00 LZ 4\nXC . N3 H 0:40 - FOLGE ZN +1\n}\n"
    "ZL Stumpf {\nXA . N1 H - 0:00\n}\nZL Zurueck {\nXA . N1 H - 0:00\nXB . N2 H 0:20 -\n}\n";

std::string zeit(long long t) {
  return t == keineZeit ? "-" : std::to_string(t);
}

class ZuglaufAngabe : public DefinitionTest {
 protected:
  // "run reftime" of the last train, or the fault as "token: message".
  std::string outcome(std::string const& body) {
    fpl.clear(false);
    try {
      run(kLaeufe + body);
    } catch (Error const& e) {
      return e.token->str() + ": " + e.message;
    }
    return fpl.getZuege().back().zuglauf->name + " " + zeit(fpl.getZuege().back().reftime);
  }
};

TEST_F(ZuglaufAngabe, OneNamedRunTakesTheTimeAsReferenceOrTheFaultNamesItsToken) {
  std::string const ungueltig = "Ungültige Fahrtzeit-/Zuglaufangabe."_cp1252;
  std::pair<char const*, std::string> const faelle[] = {
      {"Z 1 (7:00 Weiter)", "Weiter 25200"},
      {"Z 1 (Weiter)", "Weiter 0"},
      {"Z 1 (8:00 Stumpf Weiter)", "Weiter: Zugläufe inkompatibel."_cp1252},
      {"Z 1 (8:00 Hin Zurueck)", "Zurueck: Zugläufe inkompatibel."_cp1252},
      {"Z 1 (8:00)", "): " + ungueltig},
      {"Z 1 (Hin 9:00)", "): " + ungueltig},
      {"SET Zuglauf (Hin , Weiter)", ",: " + ungueltig},
      {"Z 1 (Hin)\nM (1) ZL Hin", "Hin: " + ungueltig},
  };
  for (auto const& [body, erwartet] : faelle)
    EXPECT_EQ(outcome(body), erwartet) << body;
}

TEST_F(ZuglaufAngabe, ComposedRunJoinsTheMeetingStops) {
  EXPECT_EQ(outcome("Z 1 (8:00 Hin 8:35 Weiter)"), "Hin+Weiter 28800");
  Zuglauf const& lauf = *fpl.getZuege().back().zuglauf;
  EXPECT_EQ(&lauf, &fpl.getZL().back());
  EXPECT_EQ(lauf.id, 6);
  EXPECT_EQ(fpl.getZLByName().count("Hin+Weiter"), 0u);
  // The meeting stop: arrival from the first part, departure, track and changes from the second.
  std::string text;
  for (FplEintrag const& e : lauf.eintraege)
    text += std::to_string(e.typ) + " " + zeit(e.an) + " " + zeit(e.ab) + " " + e.gleis +
            e.signalart + " " + std::to_string(e.lenkziffer) + " " + e.folge +
            (e.changedirection ? "W; " : "; ");
  EXPECT_EQ(text, "3 - 0 N1H -1 ; 0 1800 2100 N2E 4 W; 4 4500 - N3H -1 +1; ");
  EXPECT_EQ(fpl.getZLByName().at("Hin")->eintraege[1].gleis, "*");
  // A part that ends where it starts keeps the run's end.
  EXPECT_EQ(outcome("Z 2 (8:00 Hin 8:35 Ende)"), "Hin+Ende 28800");
  EXPECT_EQ(fpl.getZuege().back().zuglauf->eintraege.back().typ, FplEintrag::Ziel);
}

}  // namespace
