#include "graph/html_seite.h"

#include <gtest/gtest.h>

#include <string>

#include "support/definition_test.h"

namespace fplc::graph {
namespace {

using HtmlSeiteTest = DefinitionTest;

// 101 runs over midnight and is followed by 102; 102 has no successor; 103 lost
// its run because no successor was found for it.
constexpr char const* kZuege =
    "BTR XA Astadt\nBTR XB \"Bad Bdorf\"\n"
    "VT Winter 12345 \"13.12.2026\" \"11.12.2027\" - \"24.12.2026\"\n"
    "ZL Hin {\n XA . N1 H - 23:40\n XB . N1 H 0:10 - FOLGE ZN +1\n}\n"
    "ZL Rueck {\n XB . N1 H - 1:00\n XA . N1 H 1:30 -\n}\n"
    "ZL Weiter {\n XA . N1 H - 5:00\n XB . N2 H 5:30 - FOLGE ZN *\n}\n"
    "SET Linie RE | IRE 7\n"
    "Z 101 (0:00 Hin) Winter\nZ 102 (0:00 Rueck) (Sa + So)\nZ 103 (0:00 Weiter) tgl\n";

TEST_F(HtmlSeiteTest, ListsEveryTrainWithDaysStopsAndSuccessor) {
  run(kZuege);
  fpl.postprocess();
  Seite seite;
  seite.titel = "plan <1>.fpl";
  seite.zuege = zugtabelle(fpl.getZuege());
  std::string const text = schreibeSeite(seite);
  char const* const zeilen[] = {
      "<tr data-nummer=\"101\" data-gattung=\"RE\" data-tage=\"12345\"><td data-sort=\"101\">101"
      "</td><td data-sort=\"RE | IRE\">RE | IRE</td><td data-sort=\"7\">7</td><td "
      "data-sort=\"12345\">Mo, Di, Mi, Do und Fr; 13.12.2026 – 11.12.2027; ohne 24.12.2026</td>"
      "<td data-sort=\"85200\">Astadt 23:40</td><td data-sort=\"87000\">Bad Bdorf 00:10 +1d</td>"
      "<td data-sort=\"102\">102</td></tr>\n",
      "<tr data-nummer=\"102\" data-gattung=\"RE\" data-tage=\"67\"><td data-sort=\"102\">102</td>"
      "<td data-sort=\"RE | IRE\">RE | IRE</td><td data-sort=\"7\">7</td><td data-sort=\"67\">Sa "
      "und So</td><td data-sort=\"3600\">Bad Bdorf 01:00</td><td data-sort=\"5400\">Astadt "
      "01:30</td><td data-sort=\"\"></td></tr>\n",
      "<tr data-nummer=\"103\" data-gattung=\"RE\" data-tage=\"1234567\"><td "
      "data-sort=\"103\">103</td><td data-sort=\"RE | IRE\">RE | IRE</td><td "
      "data-sort=\"7\">7</td><td data-sort=\"1234567\">Mo, Di, Mi, Do, Fr, Sa und So</td><td "
      "data-sort=\"0\">ohne Zuglauf</td><td data-sort=\"0\"></td><td data-sort=\"\"></td></tr>",
      "<title>Bildfahrplan plan &lt;1&gt;.fpl</title>",
      "Gezeichnet sind alle Züge, ohne Tagesfilter",
      "<option value=\"RE\">RE</option>",
  };
  for (char const* zeile : zeilen)
    EXPECT_NE(text.find(zeile), std::string::npos) << zeile;
}

TEST_F(HtmlSeiteTest, NamesTheDayItDrawsAndPresetsTheDayFilter) {
  Seite seite;
  seite.filter = *wochentagsfilter("Sa");
  std::string const text = schreibeSeite(seite);
  EXPECT_NE(text.find("Gezeichnet sind die Züge, die am Sa verkehren."), std::string::npos);
  EXPECT_NE(text.find("<option value=\"6\" selected>Sa</option>"), std::string::npos);
  // The page needs nothing from outside.
  EXPECT_EQ(text.find("src="), std::string::npos);
  EXPECT_EQ(text.find("href="), std::string::npos);
  EXPECT_EQ(text.find("http"), std::string::npos);
}

}  // namespace
}  // namespace fplc::graph
