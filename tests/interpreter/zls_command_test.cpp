#include <string>

#include "support/definition_test.h"

namespace {

using ZlsCommand = DefinitionTest;

TEST_F(ZlsCommand, SegmentsAreInsertedBetweenStopsOrFailWithTheirToken) {
  std::string const lauf = "ZL R {\nXA . N1 E - 8:00\nXB . N2 E 8:10 8:11 30\n}\n";
  // "place/token" per entry of R, "direction@time" when inserted; VzG 7 selects "XA 7 XB".
  auto eintraege = [&] {
    std::string text;
    for (FplEintrag const& e : fpl.getZLByName().at("R")->eintraege)
      text +=
          (e.isHalt() ? e.bahnhof + e.vzg : e.anlagePunkt + "@" + std::to_string(e.getAnOrAb())) +
          "/" + e.token->str() + " ";
    return text;
  };
  std::pair<std::string, char const*> const faelle[] = {
      {"ZLS XA XB {\n<- AA1 . Nord\n}\nZLS XA 7 XB {\n-> AA1 . Sued\n}\n"
       "ZL R {\nXA . N1 E - 8:00\nXB . N2 E 8:10 8:11 30\n$ VzG 7\n"
       "XA . N1 E 8:20 8:21 30 WENDE\nXB . N2 E 8:30 -\n}\n",
       "Astadt/XA Nord@28815/8:00 Bdorf7/XB Astadt/XA Sued@30555/WENDE Bdorf/XB "},
      {"ZLS XA XB {\n<- AA1 . Nord\n}\nZLS XA XB {\n-> AA1 . Ost\n}\n" + lauf,
       "Astadt/XA Ost@29355/8:00 Bdorf/XB "},  // the later segment replaces the earlier
      {"ZLS XA XB {\n}\n" + lauf, "Astadt/XA Bdorf/XB "},
      {"ZLS XA XB {\n-> AA1 . Ost\n-> AA1 . Sued\n}\n" + lauf,
       "z. 9 8:00: Zwei aufeinanderfolgende Ausfahrtzeiten nicht automatisch berechenbar."},
      {"ZLS XA 7 8 {\n}\n", "z. 4 ZLS: ZLS-Kommando erfordert Start- und Ziel-Angabe."},
      {"ZLS XA 7 XB\nBTR XC\n", "z. 4 ZLS: ZLS-Kommando erfordert Datenblock."},
      // A time after the second name starts the next line.
      {"ZLS XA XB {\n<- AA1 . West\n-> AA1 . Ost 8:00\n}\n" + lauf,
       "z. 6 8:00: Syntaxfehler im Datenblock des ZLS-Kommandos."},
  };
  for (auto const& [body, erwartet] : faelle)  // the points are lines 2 and 3
    EXPECT_EQ(outcome("BTR XA Astadt\nBTR XB Bdorf\n" + body, eintraege), erwartet) << body;
  // The last, failed segment stays in the list but is not registered.
  ASSERT_EQ(fpl.getSegmente().size(), 1u);
  EXPECT_EQ(fpl.getSegmente().front().eintraege.size(), 3u);
  EXPECT_TRUE(fpl.getSegmenteByKey().empty());
}

}  // namespace
