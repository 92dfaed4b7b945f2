// Reading a vehicle library file.
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

#include "external/installation.h"
#include "model/fzg.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"
#include "tokenizer/token.h"

namespace {

TEST(LibraryReader, ReadsVehiclesMergesRepeatedIdsAndFaultsAtTheCommand) {
  Restore<std::string> savedPath{quorvelpath};
  TempDir dir;
  quorvelpath = dir.path().string();  // "/lib.xml" is installation-relative
  Token const command{nullptr, "BIB", 3};
  std::vector<Error> warnungen;
  std::string const unreadable =
      "BIB: Bibliothek konnte nicht geöffnet werden oder ist keine XML-Datei! | /lib.xml: 0"_cp1252;
  std::pair<char const*, std::string> const cases[] = {
      {nullptr, unreadable},  // the missing file comes first
      {"<bibliothek><fahrzeugtemplate>", unreadable},
      {"<?xml version=\"1.0\"?>", "BIB: Bibliothek: Beschädigtes XML! | /lib.xml: 0"_cp1252},
      {"<stelltisch><fahrzeugtemplate id=\"1\"/></stelltisch>",
       "BIB: Datei ist keine Quorvel-Bibliothek! | /lib.xml: 0"_cp1252},
      // A second template of id 1 keeps the name but replaces numbers and flags; a length
      // beyond the millimetres an int holds counts as malformed.
      {R"(<bibliothek>
  <fahrzeugtemplate id="1" name="Lok" achsanzahl="4" laenge="26.4" masse="84" vmax="160"><undocumentedValue group="HasPantograph" value="true"/></fahrzeugtemplate>
  <fahrzeugtemplate id="2" name="Wagen" laenge="0.0005"><undocumentedValue group="PassengerCar" value="True"/><undocumentedValue group="HasPantograph" value="false"/></fahrzeugtemplate>
  <fahrzeugtemplate id="3" laenge="26.4" achsanzahl="4" masse="84" vmax="160"><undocumentedValue group="PassengerCar" value="true"/><undocumentedValue group="HasPantograph" value="true"/></fahrzeugtemplate>
  <fahrzeugtemplate id="5" laenge="3e6"/><fahrzeug id="4" name="anderes Element"/><fahrzeugtemplate id="1" vmax="120"/>
</bibliothek>)",
       "/lib.xml: 1=Lok 120 0 0 0 00; 2=Wagen 0 0 0 0 00; 3= 160 84 26400 4 11; 5= 0 0 0 0 00; 0"},
  };
  // `content` (null: no file) read into a new library: "BIB: fault | " (at the command), the path
  // as written, "id=name vmax masse mm achsanzahl pantograph passenger;" and the warnings.
  for (auto const& [content, expected] : cases) {
    FzgLib lib;
    lib.datei = "/lib.xml";
    if (content) dir.write("lib.xml", content);
    std::ostringstream out;
    try {
      lib.readSTWB(warnungen, &command);
    } catch (Error const& e) {
      out << (e.token == &command ? "BIB: " : "?: ") << e.message << " | ";
    }
    out << lib.datei << ':';
    for (auto const& [id, f] : std::map(lib.fahrzeuge.begin(), lib.fahrzeuge.end()))
      out << ' ' << id << '=' << f.name << ' ' << f.vmax << ' ' << f.masse << ' ' << f.laenge << ' '
          << f.achsanzahl << ' ' << f.hasPantograph << f.passengerCar << ';';
    out << ' ' << warnungen.size();
    EXPECT_EQ(out.str(), expected);
  }
}

}  // namespace
