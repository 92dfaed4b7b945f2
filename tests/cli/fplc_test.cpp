#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace fs = std::filesystem;

namespace {

struct Lauf {
  int status;
  std::string out;
  std::string err;
};

// Runs the built fplc in a fresh directory that holds the definition files.
class Fplc : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::string(FPLC_BINARY).empty()) GTEST_SKIP() << "fplc is not built";
    std::string pattern = (fs::temp_directory_path() / "fplc-cli-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    dir = fs::canonical(pattern).string();
  }
  void TearDown() override {
    if (!dir.empty()) fs::remove_all(dir);
  }
  void writeFile(std::string const& name, std::string const& text) {
    fs::create_directories(fs::path(dir + "/" + name).parent_path());
    std::ofstream(dir + "/" + name, std::ios::binary) << text;
  }
  std::string readFile(std::string const& name) {
    std::ostringstream text;
    text << std::ifstream(dir + "/" + name, std::ios::binary).rdbuf();
    return text.str();
  }
  Lauf fplc(std::string const& args) {
    std::string const command =
        "cd '" + dir + "' && '" FPLC_BINARY "' " + args + " >stdout.txt 2>stderr.txt";
    int const raw = std::system(command.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, readFile("stdout.txt"), readFile("stderr.txt")};
  }

  std::string dir;
};

TEST_F(Fplc, ReportsAsTextWithExitStatus) {
  std::string const redefiniert = "Quorvel FplDef 1\nBTR XA Astadt\nBTR XA Bstadt\n";
  std::string const warnung = "test.fpl:3: Warnung: Widerspruch: BTR XA redefiniert.\n";
  struct Case {
    std::string definition;
    char const* args;
    int status;
    std::string err;
  };
  Case const cases[] = {
      {"Quorvel FplDef x\n", "test.fpl", 1,
       "test.fpl:1: Fehler: Kein gültiger Formatheader vorhanden.\n"},
      {"Quorvel FplDef 1\nSET Reihung Unbekannt\n", "test.fpl", 1,
       "test.fpl:2: Fehler: invalid unordered_map<K, T> key\n"},
      {"", "test.fpl", 1, "test.fpl: Fehler: Leere Tokenliste.\n"},
      {"Quorvel FplDef 1\nSET Lenkziffer 1\nSET\n", "./test.fpl", 1,
       "./test.fpl:3: Fehler: Syntaxfehler: Befehl ohne Argumente.\n"},
      {redefiniert + "XYZ a\n", "test.fpl", 1,
       warnung + "test.fpl:4: Fehler: Unbekanntes Kommando: 'XYZ'.\n"},
      {redefiniert, "test.fpl", 0, warnung},
      {redefiniert, "-W test.fpl", 1, warnung},
      {redefiniert, "-q test.fpl", 0, ""},
      {redefiniert, "-q --werror test.fpl", 1, warnung},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(c.definition + c.args);
    writeFile("test.fpl", c.definition);
    Lauf lauf = fplc(c.args);
    EXPECT_EQ(lauf.status, c.status);
    EXPECT_EQ(lauf.err, c.err);
    EXPECT_EQ(lauf.out, "");
  }
}

TEST_F(Fplc, ReportsAsJson) {
  writeFile("test.fpl", "Quorvel FplDef 1\nBTR XA Astadt\nBTR XA Bstadt\nSET Gattung A | 1\n");
  Lauf lauf = fplc("--json test.fpl");
  EXPECT_EQ(lauf.status, 1);
  EXPECT_EQ(lauf.err, "");
  EXPECT_EQ(
      lauf.out,
      R"({"ok":false,"diagnostics":[)"
      R"({"severity":"warning","file":"test.fpl","line":3,"message":"Widerspruch: BTR XA redefiniert."},)"
      R"({"severity":"error","file":"test.fpl","line":4,"message":"Syntaxfehler: Keine betriebliche Gattung angegeben."}],)"
      R"("outputs":[]})"
      "\n");

  writeFile("test.fpl", "Quorvel FplDef 1\n");
  EXPECT_EQ(fplc("--json test.fpl").out, R"({"ok":true,"diagnostics":[],"outputs":[]})"
                                         "\n");
}

TEST_F(Fplc, NamesIncludedFilesByTheirExpandedPath) {
  writeFile("sim/core/configTemplate/basesettings.xml", "<x/>");
  writeFile("sim/inc.fpl", "Quorvel FplDef 1\nXYZ a\n");
  writeFile("test.fpl", "Quorvel FplDef 1\nDAT \"/inc.fpl\"\n");
  Lauf lauf = fplc("--root sim test.fpl");
  EXPECT_EQ(lauf.status, 1);
  EXPECT_EQ(lauf.err, dir + "/sim/inc.fpl:2: Fehler: Unbekanntes Kommando: 'XYZ'.\n");
}

TEST_F(Fplc, ListsTimetableFilesAndFailsOnOneNotWritten) {
  writeFile("sim/core/configTemplate/basesettings.xml", "<x/>");
  writeFile("sim/stellwerke/a.stwa", "<aussenanlage></aussenanlage>");
  std::string const anlage = "Quorvel FplDef 1\nAA A \"/stellwerke/a.stwa\" {\n}\n";
  writeFile("test.fpl", anlage + "OUT \"Plan\" \"/a.xml\"\n");
  EXPECT_EQ(fplc("--root sim -n test.fpl").out, "");
  EXPECT_FALSE(fs::exists(dir + "/sim/a.xml"));
  Lauf lauf = fplc("--root sim test.fpl");
  EXPECT_EQ(lauf.status, 0);
  EXPECT_EQ(lauf.out, dir + "/sim/a.xml\n");
  EXPECT_TRUE(fs::exists(dir + "/sim/a.xml"));
  EXPECT_EQ(fplc("--root sim -q test.fpl").out, "");

  writeFile("test.fpl", anlage + "OUT \"Plan\" \"/fehlt/b.xml\"\n");
  lauf = fplc("--root sim test.fpl");
  EXPECT_EQ(lauf.status, 1);
  EXPECT_EQ(lauf.err, "test.fpl: Fehler: Fahrplandatei \"" + dir +
                          "/sim/fehlt/b.xml\" konnte nicht geschrieben werden.\n");
  EXPECT_EQ(
      fplc("--root sim --json test.fpl").out,
      R"({"ok":false,"diagnostics":[{"severity":"error","file":"test.fpl","line":null,"message":)"
      R"("Fahrplandatei \")" +
          dir +
          R"(/sim/fehlt/b.xml\" konnte nicht geschrieben werden."}],)"
          R"("outputs":[{"path":")" +
          dir +
          R"(/sim/fehlt/b.xml","written":false}]})"
          "\n");
}

TEST_F(Fplc, RefusesToStartWithExitStatus2) {
  writeFile("test.fpl", "Quorvel FplDef 1\n");
  struct Case {
    char const* args;
    char const* err;  // the start of the message
  };
  Case const cases[] = {
      {"--root . test.fpl", "fplc: \".\" ist kein Installationsverzeichnis"},
      {"fehlt.fpl", "fplc: Definitionsdatei \"fehlt.fpl\" nicht gefunden."},
      {".", "fplc: \".\" ist ein Verzeichnis"},
      {"--unbekannt test.fpl", ""},
      {"test.fpl zwei.fpl", ""},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(c.args);
    Lauf lauf = fplc(c.args);
    EXPECT_EQ(lauf.status, 2);
    EXPECT_EQ(lauf.out, "");
    EXPECT_EQ(lauf.err.rfind(c.err, 0), 0u) << lauf.err;
  }
  EXPECT_EQ(fplc("--version").out.rfind("fplc ", 0), 0u);
}

}  // namespace

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
  std::string const bergheide = readFile("inst/stellwerke/bergheide_fahrplan.xml");
  EXPECT_NE(bergheide.find("<zuglauftemplate id=\"3\" name=\"RB_Hin+1\""), std::string::npos);
  EXPECT_NE(bergheide.find("<zug nummer=\"60001\""), std::string::npos);
}
