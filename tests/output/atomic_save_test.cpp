// Timetable files are replaced only by completely written ones.
#include "output/atomic_save.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <tinyxml2.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>

#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using fplc::detail::speichereVollstaendig;

std::string lies(fs::path const& datei) {
  std::ostringstream text;
  text << std::ifstream(datei, std::ios::binary).rdbuf();
  return text.str();
}

// The files of a folder, by name.
std::string inhalt(fs::path const& ordner) {
  std::set<std::string> namen;
  for (auto const& e : fs::directory_iterator(ordner))
    namen.insert(e.path().filename().string());
  std::string text;
  for (std::string const& n : namen)
    text += n + " ";
  return text;
}

class AtomicSaveTest : public ::testing::Test {
 protected:
  AtomicSaveTest() {
    doc.Parse("<fahrplan name=\"P\"><zug nummer=\"1\"/>\n</fahrplan>");
    alt = dir.write("plan.xml", "ALT");
  }
  TempDir dir;
  tinyxml2::XMLDocument doc{true, tinyxml2::PRESERVE_WHITESPACE};
  fplc::detail::Drucken dokument = [this](tinyxml2::XMLPrinter& printer) { doc.Print(&printer); };
  std::string alt;
};

TEST_F(AtomicSaveTest, WritesTheBytesOfSaveFileAndLeavesNoTemporaryFile) {
  std::string const vergleich = (dir.path() / "vergleich.xml").string();
  ASSERT_EQ(doc.SaveFile(vergleich.c_str(), false), tinyxml2::XML_SUCCESS);
  ::chmod(alt.c_str(), 0640);
  EXPECT_EQ(speichereVollstaendig(dokument, alt), 0);
  EXPECT_EQ(lies(alt), lies(vergleich));
  EXPECT_EQ(inhalt(dir.path()), "plan.xml vergleich.xml ");
  EXPECT_EQ(fs::status(alt).permissions(), fs::perms(0640));  // the old file's mode stays
}

TEST_F(AtomicSaveTest, AFailedSaveKeepsTheOldFileAndTellsWhy) {
  EXPECT_EQ(speichereVollstaendig(dokument, (dir.path() / "fehlt/plan.xml").string()), ENOENT);
  // The always-full device is written in place, never replaced.
  fs::create_symlink("/dev/full", dir.path() / "voll.xml");
  EXPECT_EQ(speichereVollstaendig(dokument, (dir.path() / "voll.xml").string()), ENOSPC);
  EXPECT_EQ(speichereVollstaendig(dokument, "/dev/full"), ENOSPC);
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
  EXPECT_EQ(inhalt(dir.path()), "plan.xml voll.xml ");
  EXPECT_EQ(lies(alt), "ALT");
}

TEST_F(AtomicSaveTest, ALinkStaysALinkToTheNewFile) {
  fs::create_directory(dir.path() / "echt");
  std::string const ziel = dir.write("echt/plan.xml", "ALT");
  fs::create_symlink(ziel, dir.path() / "link.xml");
  EXPECT_EQ(speichereVollstaendig(dokument, (dir.path() / "link.xml").string()), 0);
  EXPECT_TRUE(fs::is_symlink(dir.path() / "link.xml"));
  EXPECT_NE(lies(ziel).find("<zug nummer=\"1\"/>"), std::string::npos);
}

TEST_F(AtomicSaveTest, ARunInterruptedBeforeTheRenameLeavesTheOldFile) {
  auto unterbrochen = [&](std::string const&) { ::raise(SIGKILL); };
  EXPECT_EXIT(speichereVollstaendig(dokument, alt, unterbrochen),
              ::testing::KilledBySignal(SIGKILL), "");
  EXPECT_EQ(lies(alt), "ALT");
  // An exception at that point leaves it too, and takes the temporary file away.
  auto fehler = [](std::string const& temporaer) {
    EXPECT_TRUE(fs::is_regular_file(temporaer));
    throw std::runtime_error("unterbrochen");
  };
  EXPECT_THROW(speichereVollstaendig(dokument, alt, fehler), std::runtime_error);
  EXPECT_EQ(lies(alt), "ALT");
  EXPECT_EQ(inhalt(dir.path()).substr(0, 1), ".");  // only the killed run's file is left
  for (auto const& e : fs::directory_iterator(dir.path()))
    if (e.path().filename().string()[0] == '.') fs::remove(e.path());
  EXPECT_THROW(speichereVollstaendig(dokument, alt, fehler), std::runtime_error);
  EXPECT_EQ(inhalt(dir.path()), "plan.xml ");
}

// The text is printed straight into the temporary file: a fault while
// printing leaves the old file and no temporary file, and where no file can be
// made the text is still printed, so that its fault is not hidden.
TEST_F(AtomicSaveTest, AFaultWhilePrintingKeepsTheOldFile) {
  auto fehlerhaft = [](tinyxml2::XMLPrinter& printer) {
    printer.OpenElement("fahrplan");
    throw std::runtime_error("Fehler im Fahrplan");
  };
  EXPECT_THROW(speichereVollstaendig(fehlerhaft, alt), std::runtime_error);
  EXPECT_THROW(speichereVollstaendig(fehlerhaft, (dir.path() / "fehlt/plan.xml").string()),
               std::runtime_error);
  EXPECT_THROW(speichereVollstaendig(fehlerhaft, "/dev/full"), std::runtime_error);
  EXPECT_THROW(fplc::detail::speichereNicht(fehlerhaft, ENXIO), std::runtime_error);
  EXPECT_EQ(lies(alt), "ALT");
  EXPECT_EQ(inhalt(dir.path()), "plan.xml ");
  int gedruckt = 0;
  EXPECT_EQ(fplc::detail::speichereNicht([&](tinyxml2::XMLPrinter&) { ++gedruckt; }, ENXIO), ENXIO);
  EXPECT_EQ(gedruckt, 1);
}

}  // namespace
