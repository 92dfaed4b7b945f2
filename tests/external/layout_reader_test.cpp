// Reading a layout file: operating points, directions and signal flags.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "model/aussenanlage.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"
#include "tokenizer/token.h"

namespace {

namespace fs = std::filesystem;

class LayoutReader : public ::testing::Test {
 protected:
  void SetUp() override {
    dir = fs::temp_directory_path() /
          ("fplc-stwa-" +
           std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::create_directories(dir);
  }
  void TearDown() override { fs::remove_all(dir); }

  // Writes `content` to a file and reads it into `anlage`.
  void read(std::string const& file, std::string const& content) {
    anlage.datei = (dir / file).string();
    std::ofstream(anlage.datei) << content;
    anlage.readSTWA(punkte, byDs100, richtungen, warnungen, &command);
  }

  fs::path dir;
  Token command{nullptr, "AA", 4};
  Aussenanlage anlage;
  std::list<Betriebsstelle> punkte;
  std::unordered_map<std::string, Betriebsstelle*> byDs100;
  std::unordered_map<std::string, Aussenanlage::Fahrtrichtung> richtungen;
  std::vector<Error> warnungen;
};

TEST_F(LayoutReader, FaultsNameTheCommandAndAddNothing) {
  struct Case {
    char const* content;  // null: no file at all
    char const* message;
  } const cases[] = {
      {nullptr, "Außenanlage konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252},
      {"<stelltisch><betriebsstelle></stelltisch>",
       "Außenanlage konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252},
      {"<?xml version=\"1.0\"?>\n<!-- leer -->\n", "Außenanlage: Beschädigtes XML!"_cp1252},
      {"<fahrplan><betriebsstelle name=\"A\"><abbreviation vname=\"ds100\" "
       "value=\"XA\"/></betriebsstelle></fahrplan>",
       "Datei ist keine Quorvel-Außenanlage!"_cp1252},
  };
  for (Case const& c : cases) {
    anlage.datei = (dir / "fault.stwa").string();
    fs::remove(anlage.datei);
    if (c.content) std::ofstream(anlage.datei) << c.content;
    try {
      anlage.readSTWA(punkte, byDs100, richtungen, warnungen, &command);
      ADD_FAILURE() << "no fault for " << (c.content ? c.content : "missing file");
    } catch (Error const& e) {
      EXPECT_EQ(e.message, c.message);
      EXPECT_EQ(e.token, &command);
    }
  }
  EXPECT_TRUE(punkte.empty());
  EXPECT_TRUE(anlage.betriebsstellen.empty());
}

TEST_F(LayoutReader, ReadsPointsKindsDirectionsAndSignalFlags) {
  read("a.stwa", R"(<aussenanlage>
  <signal betriebsstelle="10" stationforlengthless="1" hauptsignaltyp="1"/>
  <betriebsstelle name="Astadt" id="10">
    <abbreviation vname="fplcat" value="7"/><abbreviation vname="ds100" value="XA"/>
    <abbreviation vname="fplcat" value="2a"/><abbreviation vname="fplcat" value="9"/>
  </betriebsstelle>
  <betriebsstelle name="Bdorf" id="11"><abbreviation vname="ds100" value="XB"/><abbreviation vname="fplcat" value="7"/></betriebsstelle>
  <betriebsstelle name="Cweiler" id="12"><abbreviation vname="ds100" value="XC"/><abbreviation vname="fplcat" value="4"/></betriebsstelle>
  <betriebsstelle name="Dhausen" id="13"><abbreviation vname="ds100" value="XD"/><abbreviation vname="fplcat" value=""/></betriebsstelle>
  <betriebsstelle name="Abzw Ost" id="14"><abbreviation vname="DS100" value="XO"/></betriebsstelle>
  <bahnsteig name="Egal" id="15"/>
  <signal betriebsstelle="11" stationforlengthless="ja"/>
  <signal betriebsstelle="12" hauptsignaltyp="ja" stationforlengthless=""/>
  <signal betriebsstelle="99" hauptsignaltyp="ja"/>
  <einfahrrichtung name="von Norden" id="3">
    <abbreviation vname="zuglinor_RiA" value="N1"/><abbreviation vname="zuglinor_RiA" value="Nord"/>
    <anschluss id="1"/><anschluss id="2"/>
  </einfahrrichtung>
  <einfahrrichtung name="Sued" id="4"><anschluss id="5"/></einfahrrichtung>
  <einfahrrichtung id="6"><anschluss id="7"/></einfahrrichtung>
</aussenanlage>)");

  EXPECT_TRUE(warnungen.empty());
  ASSERT_EQ(punkte.size(), 4u);  // the point without a "ds100" abbreviation makes none
  struct Expected {
    char const* ds100;
    char const* name;
    int fplcat;
  } const expected[] = {
      {"XA", "Astadt", 1}, {"XB", "Bdorf", 2}, {"XC", "Cweiler", 0}, {"XD", "Dhausen", 0}};
  for (Expected const& e : expected) {
    ASSERT_TRUE(byDs100.count(e.ds100)) << e.ds100;
    EXPECT_EQ(byDs100.at(e.ds100)->name, e.name);
    EXPECT_EQ(byDs100.at(e.ds100)->fplcat, e.fplcat) << e.ds100;
  }

  struct Info {
    char const* name;
    int id;
    bool stationforlengthless, hauptsignaltyp;
  } const infos[] = {{"Astadt", 10, false, false},  // its signal came before it
                     {"Bdorf", 11, true, false},
                     {"Cweiler", 12, false, true},
                     {"Dhausen", 13, false, false},
                     {"Abzw Ost", 14, false, false}};
  EXPECT_EQ(anlage.betriebsstellen.size(), 5u);
  for (Info const& i : infos) {
    ASSERT_TRUE(anlage.betriebsstellen.count(i.name)) << i.name;
    auto const& info = anlage.betriebsstellen.at(i.name);
    EXPECT_EQ(info.id, i.id);
    EXPECT_EQ(info.stationforlengthless, i.stationforlengthless) << i.name;
    EXPECT_EQ(info.hauptsignaltyp, i.hauptsignaltyp) << i.name;
  }

  ASSERT_EQ(richtungen.size(), 2u);          // the one without key nor name is skipped
  auto const& nord = richtungen.at("Nord");  // the last "zuglinor_RiA" decides
  EXPECT_EQ(nord.name, "Nord");
  EXPECT_EQ(nord.id, 3);
  EXPECT_EQ(nord.anschluesse, (std::vector<int>{1, 2}));
  EXPECT_EQ(nord.lenkziffern, 0xFFFF);
  EXPECT_TRUE(nord.ausAussenanlage);
  EXPECT_EQ(richtungen.at("Sued").anschluesse, (std::vector<int>{5}));
}

TEST_F(LayoutReader, SecondFileKeepsKnownPointsAndCollectsConnections) {
  Betriebsstelle& declared = punkte.emplace_back();  // as by "BTR XB Bdorf"
  declared.ds100 = "XB";
  declared.name = "Bdorf";
  byDs100["XB"] = &declared;

  read("a.stwa", R"(<stelltisch>
  <betriebsstelle name="Astadt" id="1"><abbreviation vname="ds100" value="XA"/></betriebsstelle>
  <betriebsstelle name="Bdorf" id="2"><abbreviation vname="ds100" value="XB"/><abbreviation vname="fplcat" value="1"/></betriebsstelle>
  <einfahrrichtung name="Nord" id="3"><anschluss id="1"/></einfahrrichtung>
</stelltisch>)");
  read("b.stwa", R"(<stelltisch>
  <betriebsstelle name="Astadt" id="5"><abbreviation vname="ds100" value="XA"/><abbreviation vname="fplcat" value="1"/></betriebsstelle>
  <betriebsstelle name="A-Stadt" id="6"><abbreviation vname="ds100" value="XA"/></betriebsstelle>
  <betriebsstelle name="Astadt Hbf" id="7"><abbreviation vname="ds100" value="XA"/></betriebsstelle>
  <einfahrrichtung name="Nord" id="8"><anschluss id="4"/></einfahrrichtung>
</stelltisch>)");

  ASSERT_EQ(warnungen.size(), 2u);  // one per differing occurrence
  for (Error const& w : warnungen) {
    EXPECT_EQ(w.message, "Widerspruch: Außenanlage definiert XA anders."_cp1252);
    EXPECT_EQ(w.token, &command);
  }
  EXPECT_EQ(punkte.size(), 2u);
  EXPECT_EQ(byDs100.at("XA")->name, "Astadt");
  EXPECT_EQ(byDs100.at("XA")->fplcat, 0);  // known before the second file: no kind from it
  EXPECT_EQ(byDs100.at("XB")->fplcat, 0);  // declared before: no kind from the layout
  EXPECT_EQ(richtungen.at("Nord").anschluesse, (std::vector<int>{1, 4}));
  EXPECT_EQ(richtungen.at("Nord").id, 8);
  EXPECT_EQ(anlage.betriebsstellen.at("Astadt").id, 5);
}

}  // namespace
