// ZLS: run segments and their insertion between the stops of a run.
#include <gtest/gtest.h>

#include <string>

#include "support/definition_test.h"

namespace {

// Lines 2 and 3; the first line of a test body is line 4.
constexpr char const* kPunkte = "BTR XA Astadt\nBTR XB Bdorf\n";
constexpr char const* kLauf = "ZL R {\nXA . N1 E - 8:00\nXB . N2 E 8:10 8:11 30\n}\n";

class ZlsCommand : public DefinitionTest {
 protected:
  // Stops as their point, inserted entries as "direction@time".
  std::string verlauf(std::string const& body) {
    fpl.clear(false);
    run(kPunkte + body);
    std::string text;
    for (FplEintrag const& e : fpl.getZLByName().at("R")->eintraege)
      text += (e.isHalt()
                   ? e.bahnhof + e.vzg
                   : e.anlagePunkt + "@" + std::to_string(e.getAnOrAb()) + "/" + e.token->str()) +
              " ";
    return text;
  }
  std::string fehler(std::string const& body) {
    fpl.clear(false);
    Error e = runExpectingError(kPunkte + body);
    return std::to_string(e.token->line()) + " " + e.token->str() + ": " + e.message;
  }
};

TEST_F(ZlsCommand, FaultsNameTheirTokenAndAFaultySegmentIsNotRegistered) {
  EXPECT_EQ(fehler("ZLS XA 7 8 {\n}\n"), "4 ZLS: ZLS-Kommando erfordert Start- und Ziel-Angabe.");
  EXPECT_EQ(fehler("ZLS XA 7 XB\nBTR XC\n"), "4 ZLS: ZLS-Kommando erfordert Datenblock.");
  // A time after the second name starts the next line.
  EXPECT_EQ(fehler("ZLS XA XB {\n<- AA1 . West\n-> AA1 . Ost 8:00\n}\n" + std::string(kLauf)),
            "6 8:00: Syntaxfehler im Datenblock des ZLS-Kommandos.");
  ASSERT_EQ(fpl.getSegmente().size(), 1u);
  EXPECT_EQ(fpl.getSegmente().front().eintraege.size(), 3u);
  EXPECT_TRUE(fpl.getSegmenteByKey().empty());
}

TEST_F(ZlsCommand, CurrentRouteBookNumberSelectsTheNumberedSegment) {
  EXPECT_EQ(verlauf("ZLS XA XB {\n<- AA1 . Nord\n}\nZLS XA 7 XB {\n-> AA1 . Sued\n}\n"
                    "ZL R {\nXA . N1 E - 8:00\nXB . N2 E 8:10 8:11 30\n$ VzG 7\n"
                    "XA . N1 E 8:20 8:21 30 WENDE\nXB . N2 E 8:30 -\n}\n"),
            "Astadt Nord@28815/8:00 Bdorf7 Astadt Sued@30555/WENDE Bdorf ");
}

TEST_F(ZlsCommand, LaterSegmentReplacesAndEmptySegmentAddsNothing) {
  EXPECT_EQ(
      verlauf("ZLS XA XB {\n<- AA1 . Nord\n}\nZLS XA XB {\n-> AA1 . Ost\n}\n" + std::string(kLauf)),
      "Astadt Ost@29355/8:00 Bdorf ");
  EXPECT_EQ(fpl.getSegmente().size(), 2u);
  EXPECT_EQ(verlauf("ZLS XA XB {\n}\n" + std::string(kLauf)), "Astadt Bdorf ");
}

TEST_F(ZlsCommand, TwoExitsInASegmentFailTheRunThatUsesIt) {
  EXPECT_EQ(fehler("ZLS XA XB {\n-> AA1 . Ost\n-> AA1 . Sued\n}\n" + std::string(kLauf)),
            "9 8:00: Zwei aufeinanderfolgende Ausfahrtzeiten nicht automatisch berechenbar.");
}

}  // namespace
