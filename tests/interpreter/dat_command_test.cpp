#include <sstream>
#include <stdexcept>
#include <string>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"

namespace {

using DatCommand = DefinitionTest;

// The includes live in a temporary installation root (DAT "/x.fpl"); f1 to f64 nest 64 deep.
TEST_F(DatCommand, RunsIncludesInPlaceAndReportsUnreadableOrTooDeeplyNestedOnes) {
  TempDir dir;
  Restore<std::string> savedRoot{quorvelpath};
  std::string const root = quorvelpath = dir.path().string();
  for (int i = 1; i <= 64; ++i)
    dir.write("f" + std::to_string(i) + ".fpl",
              kHeader + (i < 64 ? "DAT \"/f" + std::to_string(i + 1) + ".fpl\"\n"
                                : "SET Gattung B\nSET Liniennummer 1\nOUT \"/ausgabe.xml\"\n"));
  dir.write("selbst.fpl", kHeader + std::string("DAT \"/selbst.fpl\"\n"));
  dir.write("falsch.fpl", kHeader + std::string("\nSET Reihung Unbekannt\n"));
  auto fehler = [&](std::string const& body) {
    fpl.clear(false);
    Error e = runExpectingError(body);
    return fpl.createTokenLocationString(e.token) + ": " + e.message;
  };
  EXPECT_EQ(fehler("DAT \"/fehlt.fpl\""),
            "z. 2: Datei \"" + root + "/fehlt.fpl\" konnte nicht geöffnet werden."_cp1252);
  EXPECT_EQ(fehler("DAT \"/selbst.fpl\""),
            root + "/selbst.fpl, z. 2: Datei \"" + root +
                "/selbst.fpl\" kann nicht eingebunden werden: mehr als 64 verschachtelte "
                "DAT-Kommandos.");
  EXPECT_EQ(fpl.getTokenLists().size(), 65u);
  // The depth count survived the fault: 64 levels work, each include in place, skipping output.
  std::istringstream zwei("Quorvel FplDef 1\nSET Gattung A\nDAT \"/f1.fpl\"\nSET Liniennummer 9");
  fpl.read(zwei, "zwei.fpl");
  fpl.execute(true, fpl.getTokenLists().back().get());
  EXPECT_EQ(fpl.getCurrentCommand(), nullptr);  // none at the top level, also after a fault
  EXPECT_EQ(fpl.getGattungSetting() + fpl.getLiniennummerSetting() + " " +
                std::to_string(fpl.getAusgaben().size()) + (fpl.isPostprocessed() ? " P" : ""),
            "B9 0");
  EXPECT_EQ(fpl.createTokenLocationString(fpl.getFrontToken()), "test.fpl, z. 1");
  // A standard exception in an include is located at the included command.
  fpl.clear(false);
  EXPECT_THROW(run("DAT \"/falsch.fpl\"\nSET Gattung A"), std::out_of_range);
  ASSERT_NE(fpl.getCurrentCommand(), nullptr);
  EXPECT_EQ(fpl.createTokenLocationString(fpl.getCurrentCommand()), root + "/falsch.fpl, z. 3");
}

}  // namespace

namespace {

using DatSource = DefinitionTest;

// An editor hands in its open buffers: DAT reads those and falls back to the disk.
TEST_F(DatSource, IncludesTheTextsTheFrontEndHandsInBeforeTheDisk) {
  TempDir dir;
  Restore<std::string> savedRoot{quorvelpath};
  std::string const root = quorvelpath = dir.path().string();
  dir.write("platte.fpl", kHeader + std::string("SET Gattung Platte\n"));
  std::vector<std::string> gefragt;
  fpl.setDefinitionsQuelle([&](std::string const& pfad) -> std::unique_ptr<std::istream> {
    gefragt.push_back(pfad.substr(root.size()));
    if (pfad != root + "/puffer.fpl") return nullptr;
    return std::make_unique<std::istringstream>(kHeader + std::string("SET Liniennummer 7\n"));
  });
  run("DAT \"/puffer.fpl\"\nDAT \"/platte.fpl\"");
  EXPECT_EQ(fpl.getGattungSetting() + " " + fpl.getLiniennummerSetting(), "Platte 7");
  EXPECT_EQ(gefragt, (std::vector<std::string>{"/puffer.fpl", "/platte.fpl"}));
}

}  // namespace
