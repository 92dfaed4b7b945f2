// Finding the installation root and expanding the path variables of file names.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "external/installation.h"
#include "support/temp_dir.h"

namespace {

// Each test gets a fresh directory tree and leaves the process-wide root as it was.
class Installation : public ::testing::Test {
 protected:
  void SetUp() override {
    quorvelpath.clear();
    quorvel_dev = false;
  }
  void touch(std::string const& relative) { dir.write(relative, "<x/>"); }

  Restore<std::string> savedPath{quorvelpath};
  Restore<bool> savedDev{quorvel_dev};
  TempDir dir;
  std::string const tmp = dir.path().string();
};

TEST_F(Installation, SearchesTheRootUpwardsFromTheStartingPoint) {
  // Nothing found: false, unless an earlier root is set; it stays with its flag.
  EXPECT_FALSE(quorvel_init(tmp + "/leer/datei"));
  quorvelpath = "/frueher";
  quorvel_dev = true;
  EXPECT_TRUE(quorvel_init(tmp + "/leer/datei"));
  EXPECT_EQ(quorvelpath + " " + std::to_string(quorvel_dev), "/frueher 1");
  quorvelpath.clear();
  quorvel_dev = false;

  touch("sim/core/configTemplate/basesettings.xml");
  EXPECT_FALSE(quorvel_init(tmp + "/sim"));   // the search starts above a given root
  EXPECT_FALSE(quorvel_init(tmp + "/sim/"));  // trailing separators are stripped first
  EXPECT_EQ(quorvelpath, "");
  std::filesystem::create_directories(tmp + "/sim/fahrplaene");
  EXPECT_TRUE(quorvel_init(tmp + "/sim/fahrplaene/nicht-vorhanden.fpl"));
  EXPECT_EQ(quorvelpath + " " + std::to_string(quorvel_dev), tmp + "/sim 0");

  touch("sim/stellwerke/_baustelle/suggest_open_config.xml");  // the development marker
  EXPECT_TRUE(quorvel_init(tmp + "/sim/fplc"));
  EXPECT_EQ(quorvelpath + " " + std::to_string(quorvel_dev), tmp + "/sim 1");

  touch("core/configTemplate/basesettings.xml");  // now the parent is a root too
  EXPECT_TRUE(quorvel_init(tmp + "/sim"));
  EXPECT_EQ(quorvelpath, tmp);
}

TEST_F(Installation, ExpandsPathVariables) {
  struct {
    char const *root, *text, *expected;
  } const cases[] = {
      {"/opt/sim", "", ""},
      {"/opt/sim", "a", "a"},
      {"/opt/sim", "/stellwerke/x.stwa", "/opt/sim/stellwerke/x.stwa"},
      {"/opt/sim", "\\stellwerke\\x.stwa", "/opt/sim/stellwerke/x.stwa"},
      {"/opt/sim", "rel\\x.fpl", "rel/x.fpl"},
      {"/opt/sim", "C:\\Sim\\x.stwa", "C:/Sim/x.stwa"},
      {"/opt/sim", "$(StwDir)x.stwa", "/opt/sim/stellwerke/x.stwa"},
      {"/opt/sim", "$(StwBauDir)x.stwa", "/opt/sim/stellwerke/_baustelle/x.stwa"},
      {"/opt/sim", "$(StwDir)a/$(StwDir)b", "/opt/sim/stellwerke/a/$(StwDir)b"},
      {"/opt/sim", "$(StwDir)$(StwBauDir)", "/opt/sim/stellwerke//opt/sim/stellwerke/_baustelle/"},
      {"/opt/sim", "/foo/$(StwDir)x", "/opt/sim/foo//opt/sim/stellwerke/x"},
      {"/opt/sim", "$(StwDir", "$(StwDir"},
      {"C:\\Sim", "\\foo\\$(StwDir)x", "C:/Sim/foo/C:\\Sim/stellwerke/x"},
      {"", "$(StwDir)x.stwa", "/stellwerke/x.stwa"},
  };
  for (auto const& c : cases) {
    quorvelpath = c.root;
    EXPECT_EQ(expandInstallPath(c.text), c.expected) << c.root << " " << c.text;
  }
}

}  // namespace
