#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "external/installation.h"
#include "support/definition_test.h"

namespace {

// A layout file with one station and two directions.
std::string schreibeAnlage(std::string const& name, std::string const& ds100,
                           std::string const& bahnhof, std::string const& richtung1,
                           std::string const& richtung2) {
  std::string pfad = ::testing::TempDir() + "describer_" + name + ".stwa";
  std::ofstream(pfad) << "<?xml version=\"1.0\"?>\n<stelltisch>\n <betriebsstelle name=\""
                      << bahnhof << "\" id=\"1\"><abbreviation vname=\"ds100\" value=\"" << ds100
                      << "\"/></betriebsstelle>\n <einfahrrichtung name=\"" << richtung1
                      << "\" id=\"2\"/>\n <einfahrrichtung name=\"" << richtung2
                      << "\" id=\"3\"/>\n</stelltisch>\n";
  return pfad;
}

// Astadt lies in A1, Bstadt in A2; the run leaves A1 by Ost (digits 2, 3, 5),
// enters A2 by W2 and leaves it by O2 (digit 7) on its way to Cstadt.
std::string definition() {
  std::string lauf = " <- A2 . W2\n XB . N1 H 8:30 8:31 30";
  return "BTR XA Astadt\nBTR XB Bstadt\nBTR XC Cstadt\n"
         "AA A1 \"" +
         schreibeAnlage("a1", "XA", "Astadt", "West", "Ost") +
         "\" {\n Ost 2 3 5\n}\n"
         "AA A2 \"" +
         schreibeAnlage("a2", "XB", "Bstadt", "W2", "O2") +
         "\" {\n O2 7\n}\n"
         "ZL Frei {\n XA . N1 H - 8:00\n -> A1 . Ost\n" +
         lauf +
         "\n -> A2 . O2\n XC . N1 H 9:00 -\n}\n"
         "ZL Fest {\n XA . N1 H - 8:00\n -> A1 . Ost\n" +
         lauf +
         " LZ 4\n -> A2 . O2\n XC . N1 H 9:00 -\n}\n"
         "ZL Vorzug {\n XA . N1 H - 8:00 LZ * 3\n -> A1 . Ost\n" +
         lauf +
         "\n -> A2 . O2\n XC . N1 H 9:00 -\n}\n"
         "ZL Fremd {\n XA . N1 H - 8:00\n -> A9 . Ost\n XC . N1 H 9:00 -\n}\n"
         "ZL Gattungen {\n XA . N1 H - 8:00 GATTUNG RB\n -> A1 . Ost\n <- A2 . W2\n"
         " XB . N1 H 8:30 8:31 30 LINIE RE | Nahverkehr 5\n -> A2 . O2\n <- A3 . West\n"
         " XC . N1 H 9:00 - GATTUNG IC\n}\n"
         "SET Linie S 1\n"
         "SET Zuglauf Frei\nZ 1 0:00 tgl\nSET Zuglauf Fest\nZ 2 0:00 tgl\nSET Zuglauf Vorzug\nZ 3 "
         "0:00 tgl\n"
         "SET Zuglauf Fremd\nZ 4 0:00 tgl\nSET Zuglauf Gattungen\nZ 5 0:00 tgl\n"
         "SET Lenkziffer 6\nSET Zuglauf Frei\nZ 6 0:00 tgl\nSET Zuglauf Fest\nZ 7 0:00 tgl\n";
}

class DescriberValuesTest : public DefinitionTest {
 protected:
  void SetUp() override {
    altePfad = quorvelpath;
    quorvelpath = "";
    run(definition());
  }
  void TearDown() override { quorvelpath = altePfad; }

  Zug const* zug(int nummer) {
    for (Zug const& z : fpl.getZuege())
      if (z.nummer == nummer) return &z;
    return nullptr;
  }

  std::string altePfad;
};

TEST_F(DescriberValuesTest, RoutingDigitFollowsMarksLayoutsAndOverride) {
  struct Fall {
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
  for (Fall const& f : faelle) {
    SCOPED_TRACE(std::to_string(f.zug) + " " + f.bahnhof);
    EXPECT_EQ(fpl.calcLenkziffer(zug(f.zug), f.bahnhof), f.ziffer);
  }
  try {
    fpl.calcLenkziffer(zug(4), "Astadt");
    ADD_FAILURE() << "unknown layout accepted";
  } catch (std::out_of_range const& e) {
    EXPECT_STREQ(e.what(), "invalid unordered_map<K, T> key");
  }
}

TEST_F(DescriberValuesTest, CategoryAndLineHoldWhereTheRunEntersTheLayout) {
  struct Fall {
    char const* anlage;
    std::pair<std::string, std::string> gattung;
    char const* linie;
  } const faelle[] = {
      {"A1", {"S", ""}, "1"},             // the run starts inside A1: the train's own values
      {"A2", {"RB", ""}, ""},             // a category without a line drops the line
      {"A3", {"RE", "Nahverkehr"}, "5"},  // entered after the change at Bstadt
      {"A4", {"IC", ""}, ""},             // never entered: the values at the end of the run
  };
  for (Fall const& f : faelle) {
    SCOPED_TRACE(f.anlage);
    Aussenanlage aa;
    aa.name = f.anlage;
    EXPECT_EQ(Fahrplandefinition::getGattung(aa, zug(5)), f.gattung);
    EXPECT_EQ(Fahrplandefinition::getLinie(aa, zug(5)), f.linie);
  }
}

}  // namespace
