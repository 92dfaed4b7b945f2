// The generator of synthetic timetables: the same parameters give the same
// files, and the timetable is what its parameters ask for and compiles cleanly.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "external/installation.h"
#include "generator/synthetic_timetable.h"
#include "model/fahrplandefinition.h"
#include "support/temp_dir.h"

namespace {

std::string inhalt(std::filesystem::path const& datei) {
  std::ostringstream text;
  text << std::ifstream(datei, std::ios::binary).rdbuf();
  return text.str();
}

TEST(SyntheticTimetableTest, SameParametersGiveTheSameFiles) {
  TempDir a, b, c;
  fplc::bench::SyntheticTimetable const parameter{500, 4, 0.2, 7};
  auto const definitionA = fplc::bench::writeSyntheticInstallation(a.path(), parameter);
  auto const definitionB = fplc::bench::writeSyntheticInstallation(b.path(), parameter);
  EXPECT_EQ(definitionA, a.path() / "fahrplaene/synthetisch.fpl");
  EXPECT_EQ(inhalt(definitionA), inhalt(definitionB));
  EXPECT_EQ(inhalt(a.path() / "stellwerke/stw3.stwa"), inhalt(b.path() / "stellwerke/stw3.stwa"));
  EXPECT_FALSE(std::filesystem::exists(a.path() / "stellwerke/stw4.stwa"));
  EXPECT_TRUE(std::filesystem::exists(a.path() / "core/configTemplate/basesettings.xml"));
  // Another random state gives another timetable.
  auto const definitionC = fplc::bench::writeSyntheticInstallation(c.path(), {500, 4, 0.2, 8});
  EXPECT_NE(inhalt(definitionA), inhalt(definitionC));
}

TEST(SyntheticTimetableTest, MakesTheTrainsLayoutsAndSuccessorShareAskedFor) {
  Restore<std::string> pfad{quorvelpath};
  for (auto [zuege, anlagen, anteil] :
       {std::tuple(1000, 5, 0.2), std::tuple(3001, 2, 0.5), std::tuple(50, 1, 0.0)}) {
    TempDir ordner;
    auto const definition =
        fplc::bench::writeSyntheticInstallation(ordner.path(), {zuege, anlagen, anteil, 1});
    quorvelpath = ordner.path().string();
    Fahrplandefinition fpl;
    std::istringstream text(inhalt(definition));
    fpl.read(text, definition.string());
    fpl.execute(true, static_cast<TokenList const*>(nullptr));
    int automatisch = 0;
    for (Zug const& zug : fpl.getZuege())
      if (zug.zuglauf->eintraege.back().folge == "*") ++automatisch;
    // One layout is too few for a line between two: the chain has at least two.
    EXPECT_EQ(fpl.getAussenanlagen().size(), static_cast<std::size_t>(std::max(anlagen, 2)));
    ASSERT_EQ(fpl.getZuege().size(), static_cast<std::size_t>(zuege));
    // Whole lines turn or not, so the share is met to within a few percent.
    EXPECT_NEAR(automatisch, anteil * zuege, 0.06 * zuege) << zuege;
    fpl.postprocess();
    fpl.validate();
    // Only the last trains of a day may miss their successor on a weekday.
    EXPECT_LT(fpl.getWarnungen().size(), static_cast<std::size_t>(zuege / 50 + 2)) << zuege;
  }
}

}  // namespace
