#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "support/temp_dir.h"

namespace fs = std::filesystem;

namespace {

struct Lauf {
  int status;
  std::string out, err;
};

std::string readFile(std::string const& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

// Runs the built fplc in a fresh directory that holds the definition files.
class Fplc : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::string(FPLC_BINARY).empty()) GTEST_SKIP() << "fplc is not built";
  }
  Lauf fplc(std::string const& args) {
    std::string const command =
        "cd '" + dir + "' && '" FPLC_BINARY "' " + args + " >stdout.txt 2>stderr.txt";
    int const raw = std::system(command.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, readFile(dir + "/stdout.txt"),
            readFile(dir + "/stderr.txt")};
  }

  TempDir tmp;
  std::string const dir = tmp.path().string();
};

TEST_F(Fplc, ReportsDiagnosticsAndTimetableFilesWithExitStatus) {
  tmp.write("sim/core/configTemplate/basesettings.xml", "<x/>");
  tmp.write("sim/stellwerke/a.stwa", "<aussenanlage></aussenanlage>");
  tmp.write("sim/inc.fpl", "Quorvel FplDef 1\nXYZ a\n");
  std::string const redefiniert = "Quorvel FplDef 1\nBTR XA Astadt\nBTR XA Bstadt\n";
  std::string const warnung = "test.fpl:3: Warnung: Widerspruch: BTR XA redefiniert.\n";
  std::string const out = "Quorvel FplDef 1\nAA A \"/stellwerke/a.stwa\" {\n}\nOUT \"Plan\" ";
  std::string const fehlt = dir + "/sim/fehlt/b.xml";
  std::string const nichtGeschrieben =
      "Fahrplandatei \\\"" + fehlt + "\\\" konnte nicht geschrieben werden.";
  struct Case {
    std::string definition, args;
    int status;
    std::string out, err;
  } const cases[] = {
      {"Quorvel FplDef x\n", "test.fpl", 1, "",
       "test.fpl:1: Fehler: Kein gültiger Formatheader vorhanden.\n"},
      {"Quorvel FplDef 1\nSET Reihung Unbekannt\n", "test.fpl", 1, "",
       "test.fpl:2: Fehler: invalid unordered_map<K, T> key\n"},
      {"", "test.fpl", 1, "", "test.fpl: Fehler: Leere Tokenliste.\n"},
      {"Quorvel FplDef 1\n", "--root . test.fpl", 2, "",
       "fplc: \".\" ist kein Installationsverzeichnis: core/configTemplate/basesettings.xml "
       "fehlt.\n"},
      {"", "fehlt.fpl", 2, "", "fplc: Definitionsdatei \"fehlt.fpl\" nicht gefunden.\n"},
      {"", ".", 2, "", "fplc: \".\" ist ein Verzeichnis, keine Definitionsdatei.\n"},
      {"Quorvel FplDef 1\nSET Lenkziffer 1\nSET\n", "./test.fpl", 1, "",
       "./test.fpl:3: Fehler: Syntaxfehler: Befehl ohne Argumente.\n"},
      {redefiniert + "XYZ a\n", "test.fpl", 1, "",
       warnung + "test.fpl:4: Fehler: Unbekanntes Kommando: 'XYZ'.\n"},
      {redefiniert, "test.fpl", 0, "", warnung},
      {redefiniert, "-W test.fpl", 1, "", warnung},
      {redefiniert, "-q test.fpl", 0, "", ""},
      {redefiniert, "-q --werror test.fpl", 1, "", warnung},
      {"Quorvel FplDef 1\nDAT \"/inc.fpl\"\n", "--root sim test.fpl", 1, "",
       dir + "/sim/inc.fpl:2: Fehler: Unbekanntes Kommando: 'XYZ'.\n"},
      {out + "\"/n.xml\"\n", "--root sim -n test.fpl", 0, "", ""},
      // A check resolves successor services as OUT would, and reports the same.
      {"Quorvel FplDef 1\nBTR XA A\nBTR XB B\nZL L {\nXA . N1 H - 8:00\n"
       "XB . N2 H 9:00 - FOLGE ZN *\n}\nSET Zuglauf L\nZ 1 0:00 Mo\nOUT P \"/n.xml\"\n",
       "--root sim -n test.fpl", 0, "",
       "test.fpl:9: Warnung: Folgeleistung für Zug 1 am Mo nicht ermittelbar.\n"},
      {out + "\"/a.xml\"\n", "--root sim test.fpl", 0, dir + "/sim/a.xml\n", ""},
      {out + "\"/a.xml\"\n", "--root sim -q test.fpl", 0, "", ""},
      {out + "\"/fehlt/b.xml\"\n", "--root sim test.fpl", 1, "",
       "test.fpl: Fehler: Fahrplandatei \"" + fehlt + "\" konnte nicht geschrieben werden.\n"},
      {redefiniert + "SET Gattung A | 1\n", "--json test.fpl", 1,
       R"({"ok":false,"diagnostics":[)"
       R"({"severity":"warning","file":"test.fpl","line":3,"message":"Widerspruch: BTR XA redefiniert."},)"
       R"({"severity":"error","file":"test.fpl","line":4,"message":"Syntaxfehler: Keine betriebliche Gattung angegeben."}],)"
       R"("outputs":[]})"
       "\n",
       ""},
      {out + "\"/a.xml\"\n", "--root sim --json test.fpl", 0,
       R"({"ok":true,"diagnostics":[],"outputs":[{"path":")" + dir +
           R"(/sim/a.xml","written":true}]})"
           "\n",
       ""},
      {out + "\"/fehlt/b.xml\"\n", "--root sim --json test.fpl", 1,
       R"({"ok":false,"diagnostics":[{"severity":"error","file":"test.fpl","line":null,"message":")" +
           nichtGeschrieben + R"("}],"outputs":[{"path":")" + fehlt +
           R"(","written":false}]})"
           "\n",
       ""},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(c.definition + c.args);
    tmp.write("test.fpl", c.definition);
    Lauf lauf = fplc(c.args);
    EXPECT_EQ(lauf.status, c.status);
    EXPECT_EQ(lauf.out, c.out);
    EXPECT_EQ(lauf.err, c.err);
  }
  EXPECT_FALSE(fs::exists(dir + "/sim/n.xml"));  // -n writes nothing
  EXPECT_TRUE(fs::exists(dir + "/sim/a.xml"));
  for (char const* args : {"--unbekannt test.fpl", "test.fpl zwei.fpl"}) {
    Lauf lauf = fplc(args);
    EXPECT_EQ(lauf.status, 2) << args;
    EXPECT_EQ(lauf.out, "") << args;
  }
  EXPECT_EQ(fplc("--version").out.rfind("fplc ", 0), 0u);
}

// The example installation that `make run` compiles: no warning, no fault, and
// one timetable per layout next to the layout file.
TEST_F(Fplc, CompilesTheExampleInstallationCleanly) {
  fs::copy(std::string(FPLC_SOURCE_DIR) + "/examples/installation", dir + "/inst",
           fs::copy_options::recursive);
  for (char const* layout : {"ahlbach", "bergheide"})
    fs::remove(dir + "/inst/stellwerke/" + layout + "_fahrplan.xml");
  Lauf lauf = fplc("--root inst inst/fahrplaene/beispiel.fpl");
  EXPECT_EQ(lauf.status, 0);
  EXPECT_EQ(lauf.err, "");
  EXPECT_EQ(lauf.out, dir + "/inst/stellwerke/ahlbach_fahrplan.xml\n" + dir +
                          "/inst/stellwerke/bergheide_fahrplan.xml\n");
  std::string const bergheide = readFile(dir + "/inst/stellwerke/bergheide_fahrplan.xml");
  EXPECT_NE(bergheide.find("<zuglauftemplate id=\"3\" name=\"RB_Hin+1\""), std::string::npos);
  EXPECT_NE(bergheide.find("<zug nummer=\"60001\""), std::string::npos);
}

}  // namespace
