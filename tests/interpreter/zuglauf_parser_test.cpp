// ZL: data blocks of train runs, automatic entry and exit times, run registration.
#include <stdexcept>
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

// Lines 2 and 3; "ZL R {" is line 4 and the block starts on line 5.
constexpr char const* kPunkte = "BTR XA Astadt\nBTR XB Bdorf\n";

std::string zeit(long long t) {
  return t == keineZeit ? "-" : std::to_string(t);
}

class ZuglaufParser : public DefinitionTest {
 protected:
  // "kind place an ab dwell; " per entry of "ZL R <text>", or the fault as "line token: message".
  std::string lauf(std::string const& text) {
    fpl.clear(false);
    try {
      run(kPunkte + ("ZL R " + text + "}\n"));
    } catch (Error const& e) {
      return std::to_string(e.token->line()) + " " + e.token->str() + ": " + e.message;
    }
    EXPECT_TRUE(fpl.getWarnungen().empty());
    std::string verlauf;
    for (FplEintrag const& e : fpl.getZL().back().eintraege)
      verlauf += std::to_string(e.typ) + " " +
                 (e.isHalt() ? e.bahnhof + "." + e.gleis + "." + e.signalart
                             : e.anlage + "." + e.anlagePunkt) +
                 " " + zeit(e.an) + " " + zeit(e.ab) + " " + zeit(e.mindesthaltezeit) + "; ";
    return verlauf;
  }
};

TEST_F(ZuglaufParser, ReadsKindsTimesAndAutomaticTimesOrNamesTheFaultsLine) {
  std::string const ein =
      "Automatische Berechnung der Einfahrtzeit erfordert mindestens einen vorausliegenden Halt "
      "oder eine Durchfahrt.";
  std::string const aus =
      "Automatische Berechnung der Ausfahrtzeit erfordert mindestens einen nachfolgenden Halt "
      "oder eine Durchfahrt.";
  std::string const daten = "Syntaxfehler im Datenblock des Zuglaufs: ";
  std::string const zn =
      "Syntaxfehler: Zugnummernregel für Wechsel auf Folgeleistung fehlt."_cp1252;
  std::pair<char const*, std::string> const faelle[] = {
      {"{\n<- AA1 . West 7:58\nXA . N1 E - 8:00\n-> AA2 . Ost 8:09\n",
       "1 AA1.West - 28680 -; 0 Astadt.N1.E - 28800 -; 2 AA2.Ost 29340 - -; "},
      // An end entry in the middle stays one.
      {"{\nXA . N1 E - 8:00\nXB . N2 H 8:10 8:11 30\nXA . N1 E - 8:20\nXB . N2 E 8:30 -\n"
       "XA . N1 E 8:40 8:41 20\n",
       "3 Astadt.N1.E - 28800 -; 0 Bdorf.N2.H 29400 29460 30; 0 Astadt.N1.E - 30000 -; "
       "4 Bdorf.N2.E 30600 - -; 0 Astadt.N1.E 31200 31260 20; "},
      {"{\nXA . N1 E - 9:50\n-> AA1 . Ost\nXB . N2 E 10:00 10:01 30\n",
       "3 Astadt.N1.E - 35400 -; 2 AA1.Ost 35955 - -; 0 Bdorf.N2.E 36000 36060 30; "},
      {"{\nXA . N1 E - 9:50\n-> AA1 . Ost\nXB . N2 D - 10:00\n",
       "3 Astadt.N1.E - 35400 -; 2 AA1.Ost 35985 - -; 0 Bdorf.N2.D - 36000 -; "},
      {"{\nXA . N1 E 10:00 10:00 30\n<- AA1 . West\n",
       "0 Astadt.N1.E 36000 36000 30; 1 AA1.West - 36045 -; "},
      {"{\nXA . N1 E - 10:00\n<- AA1 . West\n", "3 Astadt.N1.E - 36000 -; 1 AA1.West - 36015 -; "},
      {"\nBTR XC {\n", "4 ZL: ZL-Kommando erfordert Datenblock."},
      {"{\nXA N1 E - 8:00\n",
       "5 XA: Syntaxfehler im Datenblock des ZL-Kommandos oder impliziten Zuglaufs."},
      {"{\nXA . N1 E\nx 8:00\n", "6 x: " + daten + "Ankunftszeit fehlt."},
      {"{\nXA . N1 E - y\n", "5 y: " + daten + "Abfahrtszeit fehlt."},
      // The block's closing brace is never a modifier's value.
      {"{\nXA . N1 E - 8:00 FOLGE ZN ", "5 }: " + zn},
      {"{\nXA . N1 E - 8:00 FOLGE ZN - ", "5 }: " + zn},
      {"{\nXA . N1 E - 8:00 LINIE RB ", "5 RB: Syntaxfehler: Keine Liniennummer angegeben."},
      {"{\nXA . N1 E 8:00 8:01\n", "5 8:01: " + daten + "Mindesthaltezeit fehlt."},
      {"{\n<- AA1 . West\nXA . N1 E 8:00 -\n", "5 <-: " + ein},
      // An end stop has no departure to start from.
      {"{\nXA . N1 E 8:00 -\n<- AA1 . West\n", "6 <-: " + ein},
      {"{\nXA . N1 E - 8:00\n-> AA1 . Ost\n-> AA1 . Nord\nXB . N2 E 8:10 -\n",
       "7 ->: Zwei aufeinanderfolgende Ausfahrtzeiten nicht automatisch berechenbar."},
      {"{\nXA . N1 E - 8:00\n-> AA1 . Ost\n", "4 {: " + aus},
      // A stop without any time cannot place the exit before it.
      {"{\nXA . N1 E - 8:00\n-> AA1 . Ost\nXB . N2 E - -\n", "7 XB: " + aus},
  };
  for (auto const& [text, erwartet] : faelle)
    EXPECT_EQ(lauf(text), erwartet) << text;
  EXPECT_THROW(lauf("{\nXA . N1 E 8:00 8:01 99999999999999999999\n"), std::out_of_range);
}

TEST_F(ZuglaufParser, RunsAreNumberedAndOnlyFaultlessOnesGetTheirName) {
  EXPECT_EQ(lauf("{\nXA . N1 E - 8:00\n}\nZL R {\n}\nZL Q {\nXA . N1 E 8:00 8:01\n"),
            "10 8:01: Syntaxfehler im Datenblock des Zuglaufs: Mindesthaltezeit fehlt.");
  ASSERT_EQ(fpl.getZL().size(), 3u);
  EXPECT_EQ(fpl.getZL().back().id, 3);
  EXPECT_EQ(fpl.getZL().back().eintraege.size(), 1u);  // the faulty entry stays
  EXPECT_EQ(fpl.getZLByName().count("Q"), 0u);
  Zuglauf const* r = fpl.getZLByName().at("R");
  EXPECT_EQ(r->id, 2);  // the later R, an empty block
  EXPECT_TRUE(r->eintraege.empty());
}

}  // namespace
