// ZLS: run segments and their insertion between the stops of a run.
#include <string>

#include "support/definition_test.h"

namespace {

// Lines 2 and 3; the first line of a test body is line 4.
constexpr char const* kPunkte = "BTR XA Astadt\nBTR XB Bdorf\n";
std::string const kLauf = "ZL R {\nXA . N1 E - 8:00\nXB . N2 E 8:10 8:11 30\n}\n";

class ZlsCommand : public DefinitionTest {
 protected:
  // The entries of run R (stops as their point, inserted ones as "direction@time/token"),
  // or the fault as "line token: message".
  std::string ergebnis(std::string const& body) {
    fpl.clear(false);
    try {
      run(kPunkte + body);
    } catch (Error const& e) {
      return std::to_string(e.token->line()) + " " + e.token->str() + ": " + e.message;
    }
    std::string text;
    for (FplEintrag const& e : fpl.getZLByName().at("R")->eintraege)
      text += (e.isHalt()
                   ? e.bahnhof + e.vzg
                   : e.anlagePunkt + "@" + std::to_string(e.getAnOrAb()) + "/" + e.token->str()) +
              " ";
    return text;
  }
};

TEST_F(ZlsCommand, SegmentsAreInsertedBetweenStopsOrFailWithTheirToken) {
  std::pair<std::string, char const*> const faelle[] = {
      // The current route-book number selects the numbered segment.
      {"ZLS XA XB {\n<- AA1 . Nord\n}\nZLS XA 7 XB {\n-> AA1 . Sued\n}\n"
       "ZL R {\nXA . N1 E - 8:00\nXB . N2 E 8:10 8:11 30\n$ VzG 7\n"
       "XA . N1 E 8:20 8:21 30 WENDE\nXB . N2 E 8:30 -\n}\n",
       "Astadt Nord@28815/8:00 Bdorf7 Astadt Sued@30555/WENDE Bdorf "},
      {"ZLS XA XB {\n<- AA1 . Nord\n}\nZLS XA XB {\n-> AA1 . Ost\n}\n" + kLauf,
       "Astadt Ost@29355/8:00 Bdorf "},  // the later segment replaces the earlier
      {"ZLS XA XB {\n}\n" + kLauf, "Astadt Bdorf "},
      {"ZLS XA XB {\n-> AA1 . Ost\n-> AA1 . Sued\n}\n" + kLauf,
       "9 8:00: Zwei aufeinanderfolgende Ausfahrtzeiten nicht automatisch berechenbar."},
      {"ZLS XA 7 8 {\n}\n", "4 ZLS: ZLS-Kommando erfordert Start- und Ziel-Angabe."},
      {"ZLS XA 7 XB\nBTR XC\n", "4 ZLS: ZLS-Kommando erfordert Datenblock."},
      // A time after the second name starts the next line.
      {"ZLS XA XB {\n<- AA1 . West\n-> AA1 . Ost 8:00\n}\n" + kLauf,
       "6 8:00: Syntaxfehler im Datenblock des ZLS-Kommandos."},
  };
  for (auto const& [body, erwartet] : faelle)
    EXPECT_EQ(ergebnis(body), erwartet) << body;
  // The last, failed segment stays in the list but is not registered.
  ASSERT_EQ(fpl.getSegmente().size(), 1u);
  EXPECT_EQ(fpl.getSegmente().front().eintraege.size(), 3u);
  EXPECT_TRUE(fpl.getSegmenteByKey().empty());
}

}  // namespace
