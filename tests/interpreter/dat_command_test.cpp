#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "external/installation.h"
#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace fs = std::filesystem;

namespace {

// Included files live in a fresh directory that serves as the installation
// root, so that DAT "/x.fpl" names them.
class DatCommand : public DefinitionTest {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "fplc-dat-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    root = pattern;
    savedRoot = quorvelpath;
    quorvelpath = root;
  }
  void TearDown() override {
    quorvelpath = savedRoot;
    fs::remove_all(root);
  }
  void writeFile(std::string const& name, std::string const& body) {
    std::ofstream(root + "/" + name, std::ios::binary) << kHeader << body;
  }

  std::string root;
  std::string savedRoot;
};

TEST_F(DatCommand, RunsTheIncludeInPlaceAndLocatesItsTokens) {
  writeFile("inc.fpl", "SET Gattung B\nSET Liniennummer 1\n");
  run("SET Gattung A\nDAT \"/inc.fpl\"\nSET Liniennummer 9");
  EXPECT_EQ(fpl.getGattungSetting(), "B");
  EXPECT_EQ(fpl.getLiniennummerSetting(), "9");  // the include ran before line 4
  EXPECT_EQ(fpl.createTokenLocationString(fpl.getFrontToken()), "test.fpl, z. 1");

  writeFile("inc.fpl", "\nSET Reihung Unbekannt\n");
  fpl.clear(false);
  EXPECT_THROW(run("DAT \"/inc.fpl\"\nSET Gattung A"), std::out_of_range);
  ASSERT_NE(fpl.getCurrentCommand(), nullptr);
  EXPECT_EQ(fpl.createTokenLocationString(fpl.getCurrentCommand()), root + "/inc.fpl, z. 3");
}

TEST_F(DatCommand, ReportsFilesThatCannotBeRead) {
  fs::create_directory(root + "/ordner");
  std::ofstream(root + "/v2.fpl") << "Quorvel FplDef 2\n";
  std::pair<char const*, std::string> const cases[] = {
      {"/fehlt.fpl", "z. 2: Datei \"" + root + "/fehlt.fpl\" konnte nicht geöffnet werden."_cp1252},
      {"/ordner", "z. 2: Datei \"" + root + "/ordner\" konnte nicht geöffnet werden."_cp1252},
      {"/v2.fpl", "z. 1: Keine unterstützte Formatversion."_cp1252},
  };
  for (auto const& [file, expected] : cases) {
    fpl.clear(false);
    EXPECT_EQ(describe(runExpectingError("DAT \"" + std::string(file) + "\"")), expected);
  }
}

TEST_F(DatCommand, SkipOutputReachesIncludes) {
  writeFile("inc.fpl", "OUT \"/ausgabe.xml\"\n");
  run("DAT \"/inc.fpl\"", true);
  EXPECT_TRUE(fpl.getAusgaben().empty());
  EXPECT_FALSE(fpl.isPostprocessed());
}

TEST_F(DatCommand, LimitsTheNestingOfIncludes) {
  // f1 includes f2, ... f63 includes f64: 64 levels are allowed.
  for (int i = 1; i <= 65; ++i)
    writeFile("f" + std::to_string(i) + ".fpl",
              i < 64 ? "DAT \"/f" + std::to_string(i + 1) + ".fpl\"\n" : "");
  EXPECT_NO_THROW(run("DAT \"/f1.fpl\""));

  writeFile("f64.fpl", "DAT \"/f64.fpl\"\n");  // includes itself
  fpl.clear(false);
  Error e = runExpectingError("DAT \"/f1.fpl\"");
  EXPECT_EQ(
      e.message,
      "Datei \"" + root +
          "/f64.fpl\" kann nicht eingebunden werden: mehr als 64 verschachtelte DAT-Kommandos.");
  EXPECT_EQ(fpl.createTokenLocationString(e.token), root + "/f64.fpl, z. 2");
  EXPECT_EQ(fpl.getTokenLists().size(), 65u);

  // The depth count survived the fault: a further include on the same definition works.
  writeFile("f64.fpl", "");
  std::istringstream second("Quorvel FplDef 1\nDAT \"/f63.fpl\"\n");
  fpl.read(second, "zwei.fpl");
  EXPECT_NO_THROW(fpl.execute(true, fpl.getTokenLists().back().get()));

  fpl.clear(false);
  EXPECT_TRUE(fpl.getTokenLists().empty());
  run("SET Gattung A");
  EXPECT_EQ(fpl.createTokenLocationString(fpl.getFrontToken()), "z. 1");
}

}  // namespace
