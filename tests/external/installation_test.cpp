// Finding the installation root and expanding the path variables of file names.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "external/install_path.h"
#include "external/installation.h"
#include "support/temp_dir.h"

namespace {

TEST(Installation, SearchesTheRootUpwardsFromTheStartingPoint) {
  Restore<std::string> savedPath{quorvelpath};
  Restore<bool> savedDev{quorvel_dev};
  TempDir dir;
  std::string const tmp = dir.path().string();
  quorvelpath.clear(), quorvel_dev = false;
  std::tuple<char const*, char const*, std::string> const steps[] = {
      {"leer/datei", "/leer/datei", "0  0"},
      {"sim/core/configTemplate/basesettings.xml", "/sim", "0  0"},  // search starts above it
      {"sim/fahrplaene/x", "/sim/", "0  0"},  // trailing separators are stripped first
      {"sim/fahrplaene/x", "/sim/fahrplaene/nicht-vorhanden.fpl", "1 " + tmp + "/sim 0"},
      {"sim/stellwerke/_baustelle/suggest_open_config.xml", "/sim/fplc", "1 " + tmp + "/sim 1"},
      {"leer/datei", "/leer/datei", "1 " + tmp + "/sim 1"},  // nothing found: the root stays
      {"core/configTemplate/basesettings.xml", "/sim", "1 " + tmp + " 0"},  // the parent is a root
  };
  for (auto const& [file, start, expected] : steps) {
    dir.write(file, "<x/>");
    bool const found = quorvel_init(tmp + start);  // as "found root dev"
    EXPECT_EQ(std::to_string(found) + " " + quorvelpath + " " + std::to_string(quorvel_dev),
              expected)
        << start;
  }
}

TEST(Installation, ExpandsPathVariables) {
  Restore<std::string> savedPath{quorvelpath};
  std::tuple<char const*, char const*, char const*> const cases[] = {
      {"/opt/sim", "", ""},
      {"/opt/sim", "\\stellwerke\\x.stwa", "/opt/sim/stellwerke/x.stwa"},
      {"/opt/sim", "rel\\x.fpl", "rel/x.fpl"},
      {"/opt/sim", "$(StwDir)x.stwa", "/opt/sim/stellwerke/x.stwa"},
      {"/opt/sim", "$(StwBauDir)x.stwa", "/opt/sim/stellwerke/_baustelle/x.stwa"},
      {"/opt/sim", "$(StwDir)a/$(StwDir)b", "/opt/sim/stellwerke/a/$(StwDir)b"},
      {"/opt/sim", "$(StwDir)$(StwBauDir)", "/opt/sim/stellwerke//opt/sim/stellwerke/_baustelle/"},
      {"/opt/sim", "/foo/$(StwDir)x", "/opt/sim/foo//opt/sim/stellwerke/x"},
      {"/opt/sim", "$(StwDir", "$(StwDir"},
      {"C:\\Sim", "\\foo\\$(StwDir)x", "C:/Sim/foo/C:\\Sim/stellwerke/x"},
      {"", "$(StwDir)x.stwa", "/stellwerke/x.stwa"},
  };
  for (auto const& [root, text, expected] : cases) {
    quorvelpath = root;
    EXPECT_EQ(expandInstallPath(text), expected) << root << " " << text;
  }
}

}  // namespace
