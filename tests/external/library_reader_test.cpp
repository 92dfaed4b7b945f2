// Reading a vehicle library file.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "external/installation.h"
#include "model/fzg.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"
#include "tokenizer/token.h"

namespace {

namespace fs = std::filesystem;

class LibraryReader : public ::testing::Test {
 protected:
  void SetUp() override {
    dir = fs::temp_directory_path() /
          ("fplc-lib-" +
           std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::create_directories(dir);
    // Library paths are installation-relative here: "/lib.xml" lies in `dir`.
    quorvelpath = dir.string();
  }
  void TearDown() override {
    quorvelpath = savedPath;
    fs::remove_all(dir);
  }

  void write(std::string const& content) { std::ofstream(dir / "lib.xml") << content; }

  fs::path dir;
  std::string savedPath = quorvelpath;
  Token command{nullptr, "BIB", 3};
  FzgLib lib;
  std::vector<Error> warnungen;
};

TEST_F(LibraryReader, FaultsNameTheCommand) {
  struct Case {
    char const* content;  // null: no file at all
    char const* message;
  } const cases[] = {
      {nullptr, "Bibliothek konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252},
      {"<bibliothek><fahrzeugtemplate>",
       "Bibliothek konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252},
      {"<?xml version=\"1.0\"?>", "Bibliothek: Beschädigtes XML!"_cp1252},
      {"<stelltisch><fahrzeugtemplate id=\"1\"/></stelltisch>",
       "Datei ist keine Quorvel-Bibliothek!"_cp1252},
  };
  lib.datei = "/lib.xml";
  for (Case const& c : cases) {
    fs::remove(dir / "lib.xml");
    if (c.content) write(c.content);
    try {
      lib.readSTWB(warnungen, &command);
      ADD_FAILURE() << "no fault for " << (c.content ? c.content : "missing file");
    } catch (Error const& e) {
      EXPECT_EQ(e.message, c.message);
      EXPECT_EQ(e.token, &command);
    }
  }
  EXPECT_TRUE(lib.fahrzeuge.empty());
}

TEST_F(LibraryReader, ReadsVehiclesAndMergesRepeatedIds) {
  write(R"(<bibliothek>
  <fahrzeugtemplate id="1" name="Lok" achsanzahl="4" laenge="26.4" masse="84" vmax="160">
    <undocumentedValue group="HasPantograph" value="true"/>
  </fahrzeugtemplate>
  <fahrzeugtemplate id="2" name="Wagen" laenge="0.0005">
    <undocumentedValue group="PassengerCar" value="True"/>
    <undocumentedValue group="HasPantograph" value="false"/>
  </fahrzeugtemplate>
  <fahrzeugtemplate id="3" laenge="26.4" achsanzahl="4" masse="84" vmax="160">
    <undocumentedValue group="PassengerCar" value="true"/><undocumentedValue group="HasPantograph" value="true"/>
  </fahrzeugtemplate>
  <fahrzeug id="4" name="anderes Element"/>
  <fahrzeugtemplate id="1" vmax="120"/>
</bibliothek>)");
  lib.datei = "/lib.xml";
  lib.readSTWB(warnungen, &command);

  EXPECT_EQ(lib.datei, "/lib.xml");  // kept as written
  EXPECT_TRUE(warnungen.empty());
  ASSERT_EQ(lib.fahrzeuge.size(), 3u);
  struct Expected {
    int id;
    char const* name;
    int vmax, masse, laenge, achsanzahl;
    bool hasPantograph, passengerCar;
  } const expected[] = {
      // The second template of id 1 keeps the name but replaces numbers and flags.
      {1, "Lok", 120, 0, 0, 0, false, false},
      {2, "Wagen", 0, 0, 0, 0, false, false},
      {3, "", 160, 84, 26400, 4, true, true},
  };
  for (Expected const& e : expected) {
    Fzg const& f = lib.fahrzeuge.at(e.id);
    EXPECT_EQ(f.name, e.name) << e.id;
    EXPECT_EQ(f.vmax, e.vmax) << e.id;
    EXPECT_EQ(f.masse, e.masse) << e.id;
    EXPECT_EQ(f.laenge, e.laenge) << e.id;
    EXPECT_EQ(f.achsanzahl, e.achsanzahl) << e.id;
    EXPECT_EQ(f.hasPantograph, e.hasPantograph) << e.id;
    EXPECT_EQ(f.passengerCar, e.passengerCar) << e.id;
  }
}

}  // namespace
