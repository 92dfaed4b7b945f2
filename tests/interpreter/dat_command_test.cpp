#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"

namespace {

// Included files live in a fresh directory that serves as the installation
// root, so that DAT "/x.fpl" names them.
class DatCommand : public DefinitionTest {
 protected:
  void SetUp() override { quorvelpath = root; }
  void write(std::string const& name, std::string const& body) { dir.write(name, kHeader + body); }
  std::string fault(std::string const& body) {
    fpl.clear(false);
    Error e = runExpectingError(body);
    return fpl.createTokenLocationString(e.token) + ": " + e.message;
  }

  TempDir dir;
  Restore<std::string> savedRoot{quorvelpath};
  std::string root = dir.path().string();
};

TEST_F(DatCommand, RunsTheIncludeInPlaceWithSkipOutputAndLocatesItsTokens) {
  write("inc.fpl", "SET Gattung B\nSET Liniennummer 1\nOUT \"/ausgabe.xml\"\n");
  run("SET Gattung A\nDAT \"/inc.fpl\"\nSET Liniennummer 9", true);
  EXPECT_EQ(fpl.getGattungSetting() + fpl.getLiniennummerSetting(), "B9");  // include first
  EXPECT_TRUE(fpl.getAusgaben().empty());  // skipOutput reached the include
  EXPECT_FALSE(fpl.isPostprocessed());
  EXPECT_EQ(fpl.createTokenLocationString(fpl.getFrontToken()), "test.fpl, z. 1");

  write("inc.fpl", "\nSET Reihung Unbekannt\n");
  fpl.clear(false);
  EXPECT_THROW(run("DAT \"/inc.fpl\"\nSET Gattung A"), std::out_of_range);
  ASSERT_NE(fpl.getCurrentCommand(), nullptr);
  EXPECT_EQ(fpl.createTokenLocationString(fpl.getCurrentCommand()), root + "/inc.fpl, z. 3");
}

TEST_F(DatCommand, ReportsFilesThatCannotBeRead) {
  std::filesystem::create_directory(root + "/ordner");
  dir.write("v2.fpl", "Quorvel FplDef 2\n");
  std::string const offen = "\" konnte nicht geöffnet werden."_cp1252;
  EXPECT_EQ(fault("DAT \"/fehlt.fpl\""), "z. 2: Datei \"" + root + "/fehlt.fpl" + offen);
  EXPECT_EQ(fault("DAT \"/ordner\""), "z. 2: Datei \"" + root + "/ordner" + offen);
  EXPECT_EQ(fault("DAT \"/v2.fpl\""),
            root + "/v2.fpl, z. 1: Keine unterstützte Formatversion."_cp1252);
}

TEST_F(DatCommand, LimitsTheNestingOfIncludes) {
  // f1 includes f2, ... f63 includes f64: 64 levels are allowed.
  for (int i = 1; i <= 64; ++i)
    write("f" + std::to_string(i) + ".fpl",
          i < 64 ? "DAT \"/f" + std::to_string(i + 1) + ".fpl\"\n" : "");
  EXPECT_NO_THROW(run("DAT \"/f1.fpl\""));

  write("f64.fpl", "DAT \"/f64.fpl\"\n");  // includes itself
  EXPECT_EQ(fault("DAT \"/f1.fpl\""),
            root + "/f64.fpl, z. 2: Datei \"" + root +
                "/f64.fpl\" kann nicht eingebunden werden: mehr als 64 verschachtelte "
                "DAT-Kommandos.");
  EXPECT_EQ(fpl.getTokenLists().size(), 65u);

  // The depth count survived the fault: a further include on the same definition works.
  write("f64.fpl", "");
  std::istringstream second("Quorvel FplDef 1\nDAT \"/f63.fpl\"\n");
  fpl.read(second, "zwei.fpl");
  EXPECT_NO_THROW(fpl.execute(true, fpl.getTokenLists().back().get()));
}

}  // namespace
