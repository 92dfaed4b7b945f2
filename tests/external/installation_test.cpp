#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "external/installation.h"

namespace fs = std::filesystem;

namespace {

// Each test gets a fresh directory tree and leaves the process-wide root as it was.
class Installation : public ::testing::Test {
 protected:
  void SetUp() override {
    savedPath = quorvelpath;
    savedDev = quorvel_dev;
    quorvelpath.clear();
    quorvel_dev = false;
    std::string pattern = (fs::temp_directory_path() / "fplc-inst-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    tmp = fs::canonical(pattern).string();
  }
  void TearDown() override {
    fs::remove_all(tmp);
    quorvelpath = savedPath;
    quorvel_dev = savedDev;
  }
  // `relative` never starts with "/": the file always lands below `tmp`.
  void touch(std::string const& relative) {
    fs::path file = tmp + "/" + relative;
    fs::create_directories(file.parent_path());
    std::ofstream(file) << "<x/>";
  }

  std::string tmp;
  std::string savedPath;
  bool savedDev = false;
};

TEST_F(Installation, FindsTheRootAboveAFileInsideIt) {
  touch("sim/core/configTemplate/basesettings.xml");
  fs::create_directories(tmp + "/sim/fahrplaene");
  EXPECT_TRUE(quorvel_init(tmp + "/sim/fahrplaene/nicht-vorhanden.fpl"));
  EXPECT_EQ(quorvelpath, tmp + "/sim");
  EXPECT_FALSE(quorvel_dev);
}

TEST_F(Installation, SetsTheDevelopmentFlagFromItsMarker) {
  touch("sim/core/configTemplate/basesettings.xml");
  touch("sim/stellwerke/_baustelle/suggest_open_config.xml");
  EXPECT_TRUE(quorvel_init(tmp + "/sim/fplc"));
  EXPECT_TRUE(quorvel_dev);
}

TEST_F(Installation, StartsAboveAGivenRootDirectory) {
  touch("sim/core/configTemplate/basesettings.xml");
  EXPECT_FALSE(quorvel_init(tmp + "/sim"));
  EXPECT_FALSE(quorvel_init(tmp + "/sim/"));  // trailing separators are stripped first
  EXPECT_EQ(quorvelpath, "");

  touch("core/configTemplate/basesettings.xml");  // now the parent is a root too
  EXPECT_TRUE(quorvel_init(tmp + "/sim"));
  EXPECT_EQ(quorvelpath, tmp);
}

TEST_F(Installation, KeepsAnEarlierRootWhenNothingIsFound) {
  EXPECT_FALSE(quorvel_init(tmp + "/leer/datei"));
  quorvelpath = "/frueher";
  quorvel_dev = true;
  EXPECT_TRUE(quorvel_init(tmp + "/leer/datei"));
  EXPECT_EQ(quorvelpath, "/frueher");
  EXPECT_TRUE(quorvel_dev);
}

TEST_F(Installation, ExpandsPathVariables) {
  struct Case {
    char const* root;
    char const* text;
    char const* expected;
  };
  Case const cases[] = {
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
  for (Case const& c : cases) {
    SCOPED_TRACE(std::string(c.root) + " " + c.text);
    quorvelpath = c.root;
    EXPECT_EQ(expandInstallPath(c.text), c.expected);
  }
}

}  // namespace
