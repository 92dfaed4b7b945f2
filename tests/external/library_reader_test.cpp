// Reading a vehicle library file.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "external/installation.h"
#include "model/fzg.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"
#include "tokenizer/token.h"

namespace {

class LibraryReader : public ::testing::Test {
 protected:
  // The library's path is installation-relative: "/lib.xml" lies in `dir`.
  void SetUp() override {
    quorvelpath = dir.path().string();
    lib.datei = "/lib.xml";
  }

  Restore<std::string> savedPath{quorvelpath};
  TempDir dir;
  Token const command{nullptr, "BIB", 3};
  FzgLib lib;
  std::vector<Error> warnungen;
};

TEST_F(LibraryReader, FaultsNameTheCommand) {
  std::string const unreadable =
      "Bibliothek konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252;
  std::pair<char const*, std::string> const cases[] = {
      {nullptr, unreadable},  // the missing file comes first
      {"<bibliothek><fahrzeugtemplate>", unreadable},
      {"<?xml version=\"1.0\"?>", "Bibliothek: Beschädigtes XML!"_cp1252},
      {"<stelltisch><fahrzeugtemplate id=\"1\"/></stelltisch>",
       "Datei ist keine Quorvel-Bibliothek!"_cp1252},
  };
  for (auto const& [content, message] : cases) {
    if (content) dir.write("lib.xml", content);
    try {
      lib.readSTWB(warnungen, &command);
      ADD_FAILURE() << "no fault for " << message;
    } catch (Error const& e) {
      EXPECT_EQ(std::pair(e.message, e.token), std::pair(message, &command));
    }
  }
  EXPECT_TRUE(lib.fahrzeuge.empty());
}

TEST_F(LibraryReader, ReadsVehiclesAndMergesRepeatedIds) {
  dir.write("lib.xml", R"(<bibliothek>
  <fahrzeugtemplate id="1" name="Lok" achsanzahl="4" laenge="26.4" masse="84" vmax="160">
    <undocumentedValue group="HasPantograph" value="true"/></fahrzeugtemplate>
  <fahrzeugtemplate id="2" name="Wagen" laenge="0.0005">
    <undocumentedValue group="PassengerCar" value="True"/><undocumentedValue group="HasPantograph" value="false"/>
  </fahrzeugtemplate>
  <fahrzeugtemplate id="3" laenge="26.4" achsanzahl="4" masse="84" vmax="160">
    <undocumentedValue group="PassengerCar" value="true"/><undocumentedValue group="HasPantograph" value="true"/>
  </fahrzeugtemplate>
  <fahrzeugtemplate id="5" laenge="3e6"/>
  <fahrzeug id="4" name="anderes Element"/>
  <fahrzeugtemplate id="1" vmax="120"/>
</bibliothek>)");
  lib.readSTWB(warnungen, &command);

  EXPECT_EQ(lib.datei, "/lib.xml");  // kept as written
  EXPECT_TRUE(warnungen.empty());
  ASSERT_EQ(lib.fahrzeuge.size(), 4u);
  // name, vmax, masse, laenge (mm), achsanzahl, hasPantograph, passengerCar
  auto fields = [&](int id) {
    Fzg const& f = lib.fahrzeuge.at(id);
    return std::tuple(f.name, f.vmax, f.masse, f.laenge, f.achsanzahl, f.hasPantograph,
                      f.passengerCar);
  };
  // The second template of id 1 keeps the name but replaces numbers and flags.
  EXPECT_EQ(fields(1), std::tuple("Lok", 120, 0, 0, 0, false, false));
  EXPECT_EQ(fields(2), std::tuple("Wagen", 0, 0, 0, 0, false, false));
  EXPECT_EQ(fields(3), std::tuple("", 160, 84, 26400, 4, true, true));
  // A length beyond the range of millimetres an int holds counts as malformed.
  EXPECT_EQ(fields(5), std::tuple("", 0, 0, 0, 0, false, false));
}

}  // namespace
