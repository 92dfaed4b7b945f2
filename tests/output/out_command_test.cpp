// OUT: one timetable file per layout, named from the template and the layout.
#include <tinyxml2.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "external/installation.h"
#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

namespace fs = std::filesystem;

std::string const kDaten = std::string(FPLC_SOURCE_DIR) + "/tests/output/data";

constexpr char const* kNordUndSued =
    "AA Nord \"/stellwerke/nord.stwa\" _n {\n}\n"
    "AA Sued \"/stellwerke/sued.stwa\" _s {\n}\n";

// Runs each test in an installation of its own under the temporary directory,
// which is also the working directory, so that relative layout paths work.
class OutCommandTest : public DefinitionTest {
 protected:
  void SetUp() override {
    alterPfad = quorvelpath;
    alterDev = quorvel_dev;
    altesVerzeichnis = fs::current_path();
    wurzel = fs::temp_directory_path() /
             ("fplc-out-" + std::to_string(::getpid()) + "-" +
              ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(wurzel);
    for (char const* dir : {"stellwerke", "w$(AASuffix)", "w_n", "alt", "aus"})
      fs::create_directories(wurzel / dir);
    fs::path const nord = fs::path(kDaten) / "stellwerke/nord.stwa";
    fs::copy_file(nord, wurzel / "stellwerke/nord.stwa");
    fs::copy_file(nord, wurzel / "stellwerke/nord.xml");
    fs::copy_file(nord, wurzel / "w$(AASuffix)/nord.stwa");
    fs::copy_file(nord, wurzel / "alt/b.stwa.bak");
    fs::copy_file(nord, wurzel / "x.stwa");
    fs::copy_file(fs::path(kDaten) / "stellwerke/sued.stwa", wurzel / "stellwerke/sued.stwa");
    quorvelpath = wurzel.string();
    quorvel_dev = false;
    fs::current_path(wurzel);
  }
  void TearDown() override {
    fs::current_path(altesVerzeichnis);
    fs::remove_all(wurzel);
    quorvelpath = alterPfad;
    quorvel_dev = alterDev;
  }

  // The files OUT formed, relative to the installation, with "!" for a failed save.
  std::vector<std::string> ausgaben() const {
    std::vector<std::string> pfade;
    for (Fahrplandefinition::Ausgabe const& a : fpl.getAusgaben()) {
      std::string pfad =
          a.pfad.rfind(quorvelpath, 0) == 0 ? a.pfad.substr(quorvelpath.size()) : a.pfad;
      pfade.push_back(a.geschrieben ? pfad : "!" + pfad);
    }
    return pfade;
  }

  // The root's name and layout reference of a written file.
  std::string kopf(std::string const& relativ) const {
    tinyxml2::XMLDocument doc;
    if (doc.LoadFile((wurzel.string() + relativ).c_str()) != tinyxml2::XML_SUCCESS)
      return "(fehlt)";
    tinyxml2::XMLElement const* root = doc.FirstChildElement("fahrplan");
    return std::string(root->Attribute("name")) + " " + root->Attribute("aussenanlage");
  }

  fs::path wurzel;

 private:
  std::string alterPfad;
  bool alterDev = false;
  fs::path altesVerzeichnis;
};

struct NamensFall {
  char const* anlagen;
  char const* vorlage;
  std::vector<std::string> dateien;
};

TEST_F(OutCommandTest, NamesOneFilePerLayoutFromTheTemplate) {
  NamensFall const faelle[] = {
      {kNordUndSued,
       "$(ThisStwPath)$(AASuffix).xml",
       {"/stellwerke/nord_n.xml", "/stellwerke/sued_s.xml"}},
      {kNordUndSued,
       "$(ThisStwDir)fpl$(AASuffix).xml",
       {"/stellwerke/fpl_n.xml", "/stellwerke/fpl_s.xml"}},
      // Each variable is replaced once: a second occurrence stays in the name.
      {kNordUndSued,
       "/aus/$(AASuffix)$(AASuffix).xml",
       {"/aus/_n$(AASuffix).xml", "/aus/_s$(AASuffix).xml"}},
      // The layout's directory is put in before the suffix is replaced ...
      {"AA Nord \"/w$(AASuffix)/nord.stwa\" _n {\n}\n", "$(ThisStwDir)f.xml", {"/w_n/f.xml"}},
      // ... and the suffix's own text is not expanded again.
      {"AA Nord \"/stellwerke/nord.stwa\" \"$(ThisStwDir)\" {\n}\n",
       "/aus/$(AASuffix).xml",
       {"/aus/$(ThisStwDir).xml"}},
      // The path ends before the first ".stwa", wherever it stands.
      {"AA Alt \"/alt/b.stwa.bak\" {\n}\n", "$(ThisStwPath).xml", {"/alt/b.xml"}},
      {"AA Nord \"$(StwDir)nord.stwa\" {\n}\n", "$(StwDir)$(AASuffix)x.xml", {"/stellwerke/x.xml"}},
  };
  for (NamensFall const& f : faelle) {
    SCOPED_TRACE(f.vorlage);
    fpl.clear(false);
    run(std::string(f.anlagen) + "OUT Testplan \"" + f.vorlage + "\"\n", false);
    EXPECT_EQ(ausgaben(), f.dateien);
    for (std::string const& datei : f.dateien)
      EXPECT_NE(kopf(datei), "(fehlt)") << datei;
  }
}

TEST_F(OutCommandTest, RefersToTheLayoutByItsFileName) {
  run(std::string(kNordUndSued) +
          "AA X \"x.stwa\" {\n}\nOUT \"Mein Plan\" \"$(ThisStwPath)-fpl.xml\"\n",
      false);
  EXPECT_EQ(kopf("/stellwerke/nord-fpl.xml"), "Mein Plan nord.stwa");
  EXPECT_EQ(kopf("/stellwerke/sued-fpl.xml"), "Mein Plan sued.stwa");
  // Without a directory the path has no separator and stays as it is.
  EXPECT_EQ(kopf("/x-fpl.xml"), "Mein Plan x.stwa");
}

TEST_F(OutCommandTest, FailsWhereALayoutCannotFillAVariable) {
  struct Fall {
    char const* anlage;
    char const* vorlage;
    std::string meldung;
  } const faelle[] = {
      {"AA X \"x.stwa\" {\n}\n", "$(ThisStwDir)f.xml",
       "$(ThisStwDir)-Ersetzung nicht möglich: Außenanlage liegt nicht in Unterverzeichnis."_cp1252},
      {"AA X \"/stellwerke/nord.xml\" {\n}\n", "$(ThisStwPath).xml",
       "$(ThisStwPath)-Ersetzung nicht möglich: Außenanlage hat falsche Dateiendung."_cp1252},
  };
  for (Fall const& f : faelle) {
    SCOPED_TRACE(f.vorlage);
    fpl.clear(false);
    // Nord comes first and its file stays written.
    Error e = runExpectingError("AA Nord \"/stellwerke/nord.stwa\" {\n}\n" + std::string(f.anlage) +
                                    "\nOUT Testplan \"" + f.vorlage + "\"\n",
                                false);
    EXPECT_EQ(describe(e), "z. 7: " + f.meldung);
    EXPECT_EQ(e.token->str(), "OUT");
    EXPECT_EQ(ausgaben().size(), 1u);
  }
}

TEST_F(OutCommandTest, SkipsLayoutsWithoutPathAndOverwritesASharedName) {
  run(std::string(kNordUndSued) + "AA Leer \"\" {\n}\nOUT Testplan \"/aus/fahrplan.xml\"\n", false);
  EXPECT_EQ(ausgaben(), (std::vector<std::string>{"/aus/fahrplan.xml", "/aus/fahrplan.xml"}));
  // The later layout's timetable is what stays.
  EXPECT_EQ(kopf("/aus/fahrplan.xml"), "Testplan sued.stwa");
}

TEST_F(OutCommandTest, RecordsAFailedSaveAndGoesOn) {
  run(std::string(kNordUndSued) + "OUT Testplan \"/fehlt/$(AASuffix).xml\"\nAUT Danach\n", false);
  EXPECT_EQ(ausgaben(), (std::vector<std::string>{"!/fehlt/_n.xml", "!/fehlt/_s.xml"}));
  EXPECT_EQ(fpl.getAutoren().size(), 1u);
  EXPECT_TRUE(fpl.isPostprocessed());
}

TEST_F(OutCommandTest, SkipOutputWritesNothingAndLeavesPostProcessing) {
  run(std::string(kNordUndSued) + "OUT Testplan \"/aus/$(AASuffix).xml\"\n", true);
  EXPECT_TRUE(fpl.getAusgaben().empty());
  EXPECT_FALSE(fpl.isPostprocessed());
  EXPECT_TRUE(fs::is_empty(wurzel / "aus"));
}

}  // namespace
