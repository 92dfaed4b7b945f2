#include <stdexcept>
#include <string>
#include <utility>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"

namespace {

// Run `name` from Astadt leaves A1 by Ost, enters A2 by W2 at Bstadt, leaves it by
// O2, enters A3 and ends at Cstadt; `a` and `b` are added to the first two stops.
std::string lauf(std::string const& name, std::string const& a, std::string const& b) {
  return "ZL " + name + " {\n XA . N1 H - 8:00" + a + "\n -> A1 . Ost\n <- A2 . W2\n" +
         " XB . N1 H 8:30 8:31 30" + b + "\n -> A2 . O2\n <- A3 . West\n" +
         " XC . N1 H 9:00 - GATTUNG IC\n}\n";
}

// A1 and A2 share one layout file; in A1 Ost allows digits 2, 3, 5, in A2 O2 allows 7.
class DescriberValuesTest : public DefinitionTest {
 protected:
  DescriberValuesTest() {
    quorvelpath = "";
    run("BTR XA Astadt\nBTR XB Bstadt\nBTR XC Cstadt\nAA A1 \"" + anlage +
        "\" {\n Ost 2 3 5\n}\nAA A2 \"" + anlage + "\" {\n O2 7\n}\n" + lauf("Frei", "", "") +
        lauf("Fest", "", " LZ 4") + lauf("Vorzug", " LZ * 3", "") +
        lauf("Gattungen", " GATTUNG RB", " LINIE RE | Nahverkehr 5") +
        "ZL Fremd {\n XA . N1 H - 8:00\n -> A9 . Ost\n XC . N1 H 9:00 -\n}\n"
        "SET Linie S 1\nSET Zuglauf Frei\nZ 1 0:00 tgl\nSET Zuglauf Fest\nZ 2 0:00 tgl\n"
        "SET Zuglauf Vorzug\nZ 3 0:00 tgl\nSET Zuglauf Fremd\nZ 4 0:00 tgl\n"
        "SET Zuglauf Gattungen\nZ 5 0:00 tgl\n"
        "SET Lenkziffer 6\nSET Zuglauf Frei\nZ 6 0:00 tgl\nSET Zuglauf Fest\nZ 7 0:00 tgl\n");
  }

  Zug const* zug(int nummer) {
    for (Zug const& z : fpl.getZuege())
      if (z.nummer == nummer) return &z;
    return nullptr;
  }

  Restore<std::string> pfad{quorvelpath};
  TempDir dir;
  std::string anlage =
      dir.write("anlage.stwa",
                "<stelltisch><einfahrrichtung name='West' id='1'/><einfahrrichtung "
                "name='W2' id='2'/><einfahrrichtung name='Ost' id='3'/>"
                "<einfahrrichtung name='O2' id='4'/></stelltisch>");
};

TEST_F(DescriberValuesTest, RoutingDigitFollowsMarksLayoutsAndOverride) {
  struct {
    int zug;
    char const* bahnhof;
    int ziffer;
  } const faelle[] = {
      {1, "Astadt", 2},   // smallest digit of the direction the run leaves A1 by
      {1, "Bstadt", 7},   // A2's exit; A1's digits exclude 7 and are passed over
      {1, "Cstadt", -1},  // nothing narrows the choice after the last stop
      {2, "Bstadt", 4},   // a fixed digit on the stop wins
      {3, "Astadt", 3},   // preference mark on the stop
      {6, "Astadt", 6},   // the train's own digit when no fixed digit decides
      {7, "Bstadt", 4},
  };
  for (auto const& f : faelle)
    EXPECT_EQ(fpl.calcLenkziffer(zug(f.zug), f.bahnhof), f.ziffer) << f.zug << " " << f.bahnhof;
  try {
    fpl.calcLenkziffer(zug(4), "Astadt");
    ADD_FAILURE() << "unknown layout accepted";
  } catch (std::out_of_range const& e) {
    EXPECT_STREQ(e.what(), "invalid unordered_map<K, T> key");
  }
}

TEST_F(DescriberValuesTest, CategoryAndLineHoldWhereTheRunEntersTheLayout) {
  struct {
    char const* anlage;
    std::pair<std::string, std::string> gattung;
    char const* linie;
  } const faelle[] = {
      {"A1", {"S", ""}, "1"},             // the run starts inside A1: the train's own values
      {"A2", {"RB", ""}, ""},             // a category without a line drops the line
      {"A3", {"RE", "Nahverkehr"}, "5"},  // entered after the change at Bstadt
      {"A4", {"IC", ""}, ""},             // never entered: the values at the end of the run
  };
  for (auto const& f : faelle) {
    SCOPED_TRACE(f.anlage);
    Aussenanlage aa;
    aa.name = f.anlage;
    EXPECT_EQ(Fahrplandefinition::getGattung(aa, zug(5)), f.gattung);
    EXPECT_EQ(Fahrplandefinition::getLinie(aa, zug(5)), f.linie);
  }
}

}  // namespace
