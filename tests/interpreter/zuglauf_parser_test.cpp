// ZL: data blocks of train runs, automatic entry and exit times, run registration.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "support/definition_test.h"

namespace {

// Lines 2 and 3; "ZL R {" is line 4 and the block starts on line 5.
constexpr char const* kPunkte = "BTR XA Astadt\nBTR XB Bdorf\n";
constexpr char const* kEin =
    "Automatische Berechnung der Einfahrtzeit erfordert mindestens einen vorausliegenden Halt oder "
    "eine Durchfahrt.";
constexpr char const* kAus =
    "Automatische Berechnung der Ausfahrtzeit erfordert mindestens einen nachfolgenden Halt oder "
    "eine Durchfahrt.";

std::string zeit(long long t) {
  return t == keineZeit ? "-" : std::to_string(t);
}

// "kind place an ab dwell" per entry, e.g. "3 Astadt.N1.E - 28800 -; ".
std::string verlauf(Zuglauf const& lauf) {
  std::string text;
  for (FplEintrag const& e : lauf.eintraege)
    text += std::to_string(e.typ) + " " +
            (e.isHalt() ? e.bahnhof + "." + e.gleis + "." + e.signalart
                        : e.anlage + "." + e.anlagePunkt) +
            " " + zeit(e.an) + " " + zeit(e.ab) + " " + zeit(e.mindesthaltezeit) + "; ";
  return text;
}

class ZuglaufParser : public DefinitionTest {
 protected:
  std::string lauf(std::string const& block) {
    fpl.clear(false);
    run(kPunkte + ("ZL R {\n" + block + "}\n"));
    return verlauf(fpl.getZL().back());
  }
  // "line token: message" of the fault of `block`.
  std::string fehler(std::string const& block) {
    fpl.clear(false);
    Error e = runExpectingError(kPunkte + ("ZL R " + block + "}\n"));
    return std::to_string(e.token->line()) + " " + e.token->str() + ": " + e.message;
  }
};

TEST_F(ZuglaufParser, BlockFaultsNameTheirTokenAndLine) {
  EXPECT_EQ(fehler("\nBTR XC {\n"), "4 ZL: ZL-Kommando erfordert Datenblock.");
  EXPECT_EQ(fehler("{\nXA N1 E - 8:00\n"),
            "5 XA: Syntaxfehler im Datenblock des ZL-Kommandos oder impliziten Zuglaufs.");
  EXPECT_EQ(fehler("{\nXA . N1 E\nx 8:00\n"),
            "6 x: Syntaxfehler im Datenblock des Zuglaufs: Ankunftszeit fehlt.");
  EXPECT_EQ(fehler("{\nXA . N1 E - y\n"),
            "5 y: Syntaxfehler im Datenblock des Zuglaufs: Abfahrtszeit fehlt.");
  EXPECT_EQ(fehler("{\nXA . N1 E 8:00 8:01\n"),
            "5 8:01: Syntaxfehler im Datenblock des Zuglaufs: Mindesthaltezeit fehlt.");
  EXPECT_EQ(fehler("{\n<- AA1 . West\nXA . N1 E 8:00 -\n"), std::string("5 <-: ") + kEin);
  // An end stop has no departure to start from.
  EXPECT_EQ(fehler("{\nXA . N1 E 8:00 -\n<- AA1 . West\n"), std::string("6 <-: ") + kEin);
  EXPECT_EQ(fehler("{\nXA . N1 E - 8:00\n-> AA1 . Ost\n-> AA1 . Nord\nXB . N2 E 8:10 -\n"),
            "7 ->: Zwei aufeinanderfolgende Ausfahrtzeiten nicht automatisch berechenbar.");
  EXPECT_EQ(fehler("{\nXA . N1 E - 8:00\n-> AA1 . Ost\n"), std::string("4 {: ") + kAus);
  // A stop without any time cannot place the exit before it.
  EXPECT_EQ(fehler("{\nXA . N1 E - 8:00\n-> AA1 . Ost\nXB . N2 E - -\n"),
            std::string("7 XB: ") + kAus);
  EXPECT_THROW(lauf("XA . N1 E 8:00 8:01 99999999999999999999\n"), std::out_of_range);
}

TEST_F(ZuglaufParser, KindsFollowTheDashesAndEndEntriesInTheMiddleStay) {
  EXPECT_EQ(lauf("<- AA1 . West 7:58\nXA . N1 E - 8:00\n-> AA2 . Ost 8:09\n"),
            "1 AA1.West - 28680 -; 0 Astadt.N1.E - 28800 -; 2 AA2.Ost 29340 - -; ");
  EXPECT_EQ(lauf("XA . N1 E - 8:00\nXB . N2 H 8:10 8:11 30\nXA . N1 E - 8:20\nXB . N2 E 8:30 -\n"
                 "XA . N1 E 8:40 8:41 20\n"),
            "3 Astadt.N1.E - 28800 -; 0 Bdorf.N2.H 29400 29460 30; 0 Astadt.N1.E - 30000 -; "
            "4 Bdorf.N2.E 30600 - -; 0 Astadt.N1.E 31200 31260 20; ");
  EXPECT_TRUE(fpl.getWarnungen().empty());
}

TEST_F(ZuglaufParser, AutomaticTimesKeepTheirLeadTimes) {
  EXPECT_EQ(lauf("XA . N1 E - 9:50\n-> AA1 . Ost\nXB . N2 E 10:00 10:01 30\n"),
            "3 Astadt.N1.E - 35400 -; 2 AA1.Ost 35955 - -; 0 Bdorf.N2.E 36000 36060 30; ");
  EXPECT_EQ(lauf("XA . N1 E - 9:50\n-> AA1 . Ost\nXB . N2 D - 10:00\n"),
            "3 Astadt.N1.E - 35400 -; 2 AA1.Ost 35985 - -; 0 Bdorf.N2.D - 36000 -; ");
  EXPECT_EQ(lauf("XA . N1 E 10:00 10:00 30\n<- AA1 . West\n"),
            "0 Astadt.N1.E 36000 36000 30; 1 AA1.West - 36045 -; ");
  EXPECT_EQ(lauf("XA . N1 E - 10:00\n<- AA1 . West\n"),
            "3 Astadt.N1.E - 36000 -; 1 AA1.West - 36015 -; ");
}

TEST_F(ZuglaufParser, RunsAreNumberedAndOnlyFaultlessOnesGetTheirName) {
  runExpectingError(kPunkte + std::string("ZL R {\nXA . N1 E - 8:00\n}\nZL R {\n}\n"
                                          "ZL Q {\nXA . N1 E 8:00 8:01\n}\n"));
  ASSERT_EQ(fpl.getZL().size(), 3u);
  EXPECT_EQ(fpl.getZL().back().id, 3);
  EXPECT_EQ(fpl.getZL().back().eintraege.size(), 1u);  // the faulty entry stays
  EXPECT_EQ(fpl.getZLByName().count("Q"), 0u);
  Zuglauf const* r = fpl.getZLByName().at("R");
  EXPECT_EQ(r->id, 2);  // the later R, an empty block
  EXPECT_TRUE(r->eintraege.empty());
}

}  // namespace
