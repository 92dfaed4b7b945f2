#include <iterator>
#include <stdexcept>
#include <string>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
#include "tokenizer/tokenizer_test_support.h"

namespace {

// Run `name` from Astadt leaves A1 by Ost, enters A2 by W2 at Bstadt, leaves it by
// O2, enters A3 and ends at Cstadt; `a` and `b` are added to the first two stops.
std::string lauf(std::string const& name, std::string const& a, std::string const& b) {
  return "ZL " + name + " {\n XA . N1 H - 8:00" + a + "\n -> A1 . Ost\n <- A2 . W2\n" +
         " XB . N1 H 8:30 8:31 30" + b + "\n -> A2 . O2\n <- A3 . West\n" +
         " XC . N1 H 9:00 - GATTUNG IC\n}\n";
}

using DescriberValuesTest = DefinitionTest;

// A1 and A2 share one layout file; in A1 Ost allows digits 2, 3, 5, in A2 O2 allows 7.
TEST_F(DescriberValuesTest, RoutingDigitsCategoriesAndLinesAlongTheRun) {
  Restore<std::string> pfad{quorvelpath};
  quorvelpath = "";
  TempDir dir;
  std::string const anlage =
      dir.write("anlage.stwa",
                "<stelltisch><einfahrrichtung name='West' id='1'/><einfahrrichtung "
                "name='W2' id='2'/><einfahrrichtung name='Ost' id='3'/>"
                "<einfahrrichtung name='O2' id='4'/></stelltisch>");
  run("BTR XA Astadt\nBTR XB Bstadt\nBTR XC Cstadt\nAA A1 \"" + anlage +
      "\" {\n Ost 2 3 5\n}\nAA A2 \"" + anlage + "\" {\n O2 7\n}\n" + lauf("Frei", "", "") +
      lauf("Fest", "", " LZ 4") + lauf("Vorzug", " LZ * 3", "") +
      lauf("Gattungen", " GATTUNG RB", " LINIE RE | Nahverkehr 5") +
      "ZL Fremd {\n XA . N1 H - 8:00\n -> A9 . Ost\n XC . N1 H 9:00 -\n}\n"
      "SET Linie S 1\nSET Zuglauf Frei\nZ 1 0:00 tgl\nSET Zuglauf Fest\nZ 2 0:00 tgl\n"
      "SET Zuglauf Vorzug\nZ 3 0:00 tgl\nSET Zuglauf Fremd\nZ 4 0:00 tgl\n"
      "SET Zuglauf Gattungen\nZ 5 0:00 tgl\n"
      "SET Lenkziffer 6\nSET Zuglauf Frei\nZ 6 0:00 tgl\nSET Zuglauf Fest\nZ 7 0:00 tgl\n");
  auto zug = [&](int nummer) { return &*std::next(fpl.getZuege().begin(), nummer - 1); };
  auto ziffer = [&](int nummer, char const* bahnhof) {
    return fpl.calcLenkziffer(zug(nummer), bahnhof);
  };
  EXPECT_EQ(ziffer(1, "Astadt"), 2);   // smallest digit of the direction the run leaves A1 by
  EXPECT_EQ(ziffer(1, "Bstadt"), 7);   // A2's exit; A1's digits exclude 7 and are passed over
  EXPECT_EQ(ziffer(1, "Cstadt"), -1);  // nothing narrows the choice after the last stop
  EXPECT_EQ(ziffer(2, "Bstadt"), 4);   // a fixed digit on the stop wins
  EXPECT_EQ(ziffer(3, "Astadt"), 3);   // preference mark on the stop
  EXPECT_EQ(ziffer(6, "Astadt"), 6);   // the train's own digit when no fixed digit decides
  EXPECT_EQ(ziffer(7, "Bstadt"), 4);
  EXPECT_STREQ(errorOf<std::out_of_range>([&] { ziffer(4, "Astadt"); }).what(),
               "invalid unordered_map<K, T> key");  // a layout the definition does not name
  // Category and line hold where the run enters the layout: inside A1 from the start,
  // A2 (a category without a line drops the line), A3 after the change at Bstadt, and
  // A4, never entered, takes the values at the end of the run.
  std::string werte;
  for (char const* name : {"A1", "A2", "A3", "A4"}) {
    Aussenanlage aa;
    aa.name = name;
    auto const [oeffentlich, betrieblich] = Fahrplandefinition::getGattung(aa, zug(5));
    werte +=
        oeffentlich + "|" + betrieblich + " " + Fahrplandefinition::getLinie(aa, zug(5)) + "; ";
  }
  EXPECT_EQ(werte, "S| 1; RB| ; RE|Nahverkehr 5; IC| ; ");
}

}  // namespace
