// OUT: one timetable file per layout, named from the template and the layout.
#include <tinyxml2.h>

#include <filesystem>
#include <string>
#include <vector>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"

namespace {

namespace fs = std::filesystem;

constexpr char const* kNordUndSued =
    "AA Nord \"/stellwerke/nord.stwa\" _n {\n}\n"
    "AA Sued \"/stellwerke/sued.stwa\" _s {\n}\n";

// Runs each test in an installation of its own, which is also the working
// directory, so that relative layout paths work.
class OutCommandTest : public DefinitionTest {
 protected:
  OutCommandTest() {
    for (char const* anlage :
         {"stellwerke/nord.stwa", "stellwerke/sued.stwa", "stellwerke/nord.xml",
          "w$(AASuffix)/nord.stwa", "alt/b.stwa.bak", "x.stwa"})
      dir.write(anlage, "<stelltisch/>\n");
    for (char const* leer : {"w_n", "aus"})
      fs::create_directory(dir.path() / leer);
    quorvelpath = dir.path().string();
    quorvel_dev = false;
    fs::current_path(dir.path());
  }
  ~OutCommandTest() override { fs::current_path(altesVerzeichnis); }

  // Each file OUT formed, relative to the installation: "!" and the path for a
  // failed save, else the path, the root's name and its layout reference as read back.
  std::vector<std::string> ausgaben() const {
    std::vector<std::string> texte;
    for (Fahrplandefinition::Ausgabe const& a : fpl.getAusgaben()) {
      std::string pfad =
          a.pfad.rfind(quorvelpath, 0) == 0 ? a.pfad.substr(quorvelpath.size()) : a.pfad;
      tinyxml2::XMLDocument doc;
      doc.LoadFile(a.pfad.c_str());
      tinyxml2::XMLElement const* root = doc.FirstChildElement("fahrplan");
      texte.push_back(!a.geschrieben || !root ? "!" + pfad
                                              : pfad + " " + root->Attribute("name") + " " +
                                                    root->Attribute("aussenanlage"));
    }
    return texte;
  }

  Restore<std::string> pfad{quorvelpath};
  Restore<bool> dev{quorvel_dev};
  TempDir dir;
  fs::path altesVerzeichnis = fs::current_path();
};

TEST_F(OutCommandTest, WritesOneFilePerLayoutNamedFromTheTemplate) {
  std::string const nordUndSued = kNordUndSued;
  struct {
    std::string definition;
    std::vector<std::string> ergebnis;  // the files formed, then the fault
  } const faelle[] = {
      {nordUndSued + "OUT Testplan \"$(ThisStwPath)$(AASuffix).xml\"\n",
       {"/stellwerke/nord_n.xml Testplan nord.stwa", "/stellwerke/sued_s.xml Testplan sued.stwa"}},
      // Each variable is replaced once: a second occurrence stays in the name.
      {nordUndSued + "OUT Testplan \"/aus/$(AASuffix)$(AASuffix).xml\"\n",
       {"/aus/_n$(AASuffix).xml Testplan nord.stwa", "/aus/_s$(AASuffix).xml Testplan sued.stwa"}},
      // The layout's directory is put in before the suffix is replaced ...
      {"AA Nord \"/w$(AASuffix)/nord.stwa\" _n {\n}\nOUT Testplan \"$(ThisStwDir)f.xml\"\n",
       {"/w_n/f.xml Testplan nord.stwa"}},
      // ... and the suffix's own text is not expanded again.
      {"AA Nord \"/stellwerke/nord.stwa\" \"$(ThisStwDir)\" {\n}\n"
       "OUT Testplan \"/aus/$(AASuffix).xml\"\n",
       {"/aus/$(ThisStwDir).xml Testplan nord.stwa"}},
      // The path ends before the first ".stwa", wherever it stands.
      {"AA Alt \"/alt/b.stwa.bak\" {\n}\nOUT Testplan \"$(ThisStwPath).xml\"\n",
       {"/alt/b.xml Testplan b.stwa.bak"}},
      {"AA Nord \"$(StwDir)nord.stwa\" {\n}\nOUT Testplan \"$(StwDir)$(AASuffix)x.xml\"\n",
       {"/stellwerke/x.xml Testplan nord.stwa"}},
      // Without a directory the path has no separator and stays as it is.
      {"AA X \"x.stwa\" {\n}\nOUT \"Mein Plan\" \"$(ThisStwPath)-fpl.xml\"\n",
       {"x-fpl.xml Mein Plan x.stwa"}},
      // A layout without a path is skipped; the later layout's file overwrites the earlier.
      {nordUndSued + "AA Leer \"\" {\n}\nOUT Testplan \"/aus/fahrplan.xml\"\n",
       {"/aus/fahrplan.xml Testplan sued.stwa", "/aus/fahrplan.xml Testplan sued.stwa"}},
      // A failed save is recorded and the definition goes on.
      {nordUndSued + "OUT Testplan \"/fehlt/$(AASuffix).xml\"\nAUT Danach\n",
       {"!/fehlt/_n.xml", "!/fehlt/_s.xml"}},
      // A layout that cannot fill a variable stops OUT; the files before it stay.
      {nordUndSued + "AA X \"x.stwa\" {\n}\nOUT Testplan \"$(ThisStwDir)f$(AASuffix).xml\"\n",
       {"/stellwerke/f_n.xml Testplan nord.stwa", "/stellwerke/f_s.xml Testplan sued.stwa",
        "z. 8: $(ThisStwDir)-Ersetzung nicht möglich: Außenanlage liegt nicht in Unterverzeichnis. (OUT)"_cp1252}},
      {"AA X \"/stellwerke/nord.xml\" {\n}\nOUT Testplan \"$(ThisStwPath).xml\"\n",
       {"z. 4: $(ThisStwPath)-Ersetzung nicht möglich: Außenanlage hat falsche Dateiendung. (OUT)"_cp1252}},
  };
  for (auto const& f : faelle) {
    SCOPED_TRACE(f.definition);
    fpl.clear(false);
    std::string fehler;
    try {
      run(f.definition, false);
    } catch (Error const& e) {
      fehler = describe(e) + " (" + e.token->str() + ")";
    }
    std::vector<std::string> ergebnis = ausgaben();
    if (!fehler.empty()) ergebnis.push_back(fehler);
    EXPECT_EQ(ergebnis, f.ergebnis);
    EXPECT_TRUE(fpl.isPostprocessed());
  }
}

TEST_F(OutCommandTest, SkipOutputWritesNothingAndLeavesPostProcessing) {
  run(std::string(kNordUndSued) + "OUT Testplan \"/aus/$(AASuffix).xml\"\n", true);
  EXPECT_TRUE(fpl.getAusgaben().empty());
  EXPECT_FALSE(fpl.isPostprocessed());
  EXPECT_TRUE(fs::is_empty(dir.path() / "aus"));
}

}  // namespace
