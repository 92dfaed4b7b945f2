// OUT: one timetable file per layout, named from the template and the layout.
#include <tinyxml2.h>

#include <filesystem>
#include <string>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"

namespace {

namespace fs = std::filesystem;

// An installation of its own, also the working directory for relative layout paths.
class OutCommandTest : public DefinitionTest {
 protected:
  OutCommandTest() {
    for (char const* anlage :
         {"stellwerke/nord.stwa", "stellwerke/sued.stwa", "stellwerke/nord.xml",
          "w$(AASuffix)/nord.stwa", "alt/b.stwa.bak", "x.stwa"})
      dir.write(anlage, "<stelltisch/>\n");
    for (char const* leer : {"w_n", "aus", "leer"})
      fs::create_directory(dir.path() / leer);
    quorvelpath = dir.path().string();
    quorvel_dev = false;
    fs::current_path(dir.path());
  }
  ~OutCommandTest() override { fs::current_path(altesVerzeichnis); }

  // Runs `definition`: each file OUT formed, relative to the installation, with the
  // root's name and layout reference read back ("!" and the path if not saved),
  // then the fault; led by "unbearbeitet" when not post-processed.
  std::string ausgaben(std::string const& definition, bool skipOutput = false) {
    fpl.clear(false);
    std::string text, fehler;
    try {
      run(definition, skipOutput);
    } catch (Error const& e) {
      fehler = fault(e);
    }
    for (Fahrplandefinition::Ausgabe const& a : fpl.getAusgaben()) {
      std::string pfad =
          a.pfad.rfind(quorvelpath, 0) == 0 ? a.pfad.substr(quorvelpath.size()) : a.pfad;
      tinyxml2::XMLDocument doc;
      doc.LoadFile(a.pfad.c_str());
      tinyxml2::XMLElement const* root = doc.FirstChildElement("fahrplan");
      text += !a.geschrieben || !root
                  ? "!" + pfad
                  : pfad + " " + root->Attribute("name") + " " + root->Attribute("aussenanlage");
      text += "; ";
    }
    return (fpl.isPostprocessed() ? "" : "unbearbeitet; ") + text + fehler;
  }

  Restore<std::string> pfad{quorvelpath};
  Restore<bool> dev{quorvel_dev};
  TempDir dir;
  fs::path altesVerzeichnis = fs::current_path();
};

TEST_F(OutCommandTest, WritesOneFilePerLayoutNamedFromTheTemplate) {
  std::string const nordUndSued =
      "AA Nord \"/stellwerke/nord.stwa\" _n { }\nAA Sued \"/stellwerke/sued.stwa\" _s { }\n";
  std::pair<std::string, std::string> const faelle[] = {
      // Each variable is replaced once: a second occurrence stays in the name.
      {nordUndSued + "OUT P \"$(ThisStwPath)$(AASuffix)$(AASuffix).xml\"\n",
       "/stellwerke/nord_n$(AASuffix).xml P nord.stwa; /stellwerke/sued_s$(AASuffix).xml P "
       "sued.stwa; "},
      // The layout's directory is put in before the suffix is replaced, and the
      // suffix's own text is not expanded again.
      {"AA Nord \"/w$(AASuffix)/nord.stwa\" _n { }\nOUT P \"$(ThisStwDir)f.xml\"\n",
       "/w_n/f.xml P nord.stwa; "},
      {"AA Nord \"/stellwerke/nord.stwa\" \"$(ThisStwDir)\" { }\nOUT P \"/aus/$(AASuffix).xml\"\n",
       "/aus/$(ThisStwDir).xml P nord.stwa; "},
      // The path ends before the first ".stwa", wherever it stands.
      {"AA Alt \"/alt/b.stwa.bak\" { }\nOUT P \"$(ThisStwPath).xml\"\n",
       "/alt/b.xml P b.stwa.bak; "},
      {"AA Nord \"$(StwDir)nord.stwa\" { }\nOUT P \"$(StwDir)$(AASuffix)x.xml\"\n",
       "/stellwerke/x.xml P nord.stwa; "},
      // Without a directory the path has no separator and stays as it is.
      {"AA X \"x.stwa\" { }\nOUT \"Mein Plan\" \"$(ThisStwPath)-fpl.xml\"\n",
       "x-fpl.xml Mein Plan x.stwa; "},
      // A layout without a path is skipped; the later layout's file overwrites the earlier.
      {nordUndSued + "AA Leer \"\" { }\nOUT P \"/aus/fahrplan.xml\"\n",
       "/aus/fahrplan.xml P sued.stwa; /aus/fahrplan.xml P sued.stwa; "},
      // A failed save is recorded and the definition goes on.
      {nordUndSued + "OUT P \"/fehlt/$(AASuffix).xml\"\nAUT Danach\n",
       "!/fehlt/_n.xml; !/fehlt/_s.xml; "},
      // A layout that cannot fill a variable stops OUT; the files before it stay.
      {nordUndSued + "AA X \"x.stwa\" { }\nOUT P \"$(ThisStwDir)f$(AASuffix).xml\"\n",
       "/stellwerke/f_n.xml P nord.stwa; /stellwerke/f_s.xml P sued.stwa; z. 5 OUT: "
       "$(ThisStwDir)-Ersetzung nicht möglich: Außenanlage liegt nicht in Unterverzeichnis."_cp1252},
      {"AA X \"/stellwerke/nord.xml\" { }\nOUT P \"$(ThisStwPath).xml\"\n",
       "z. 3 OUT: $(ThisStwPath)-Ersetzung nicht möglich: Außenanlage hat falsche Dateiendung."_cp1252},
  };
  for (auto const& [definition, erwartet] : faelle)
    EXPECT_EQ(ausgaben(definition), erwartet) << definition;
  // Skipping output writes nothing and leaves post-processing to later.
  EXPECT_EQ(ausgaben(nordUndSued + "OUT P \"/leer/$(AASuffix).xml\"\n", true), "unbearbeitet; ");
  EXPECT_TRUE(fs::is_empty(dir.path() / "leer"));
}

}  // namespace
