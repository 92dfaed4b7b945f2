#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "support/fplc_runner.h"
#include "support/temp_dir.h"

namespace fs = std::filesystem;

namespace {

// Runs the built fplc in a fresh directory that holds the definition files.
using Fplc = FplcRunner;

TEST_F(Fplc, ReportsDiagnosticsAndTimetableFilesWithExitStatus) {
  tmp.write("sim/core/configTemplate/basesettings.xml", "<x/>");
  tmp.write("sim/stellwerke/a.stwa", "<aussenanlage></aussenanlage>");
  tmp.write("sim/inc.fpl", "Quorvel FplDef 1\nXYZ a\n");
  std::string const kopf = "Quorvel FplDef 1\n";
  std::string const redefiniert = kopf + "BTR XA Astadt\nBTR XA Bstadt\n";
  std::string const warnung =
      "test.fpl:3:1: Warnung: Widerspruch: BTR XA redefiniert.\n BTR XA Bstadt\n ^~~\n";
  std::string const out = kopf + "AA A \"/stellwerke/a.stwa\" {\n}\nOUT \"Plan\" ";
  std::string const root = "--root sim ";
  std::string const ohneLint = "--root sim --no-lint ";  // empty layouts get no train
  struct {
    std::string definition, args, ergebnis;  // the result as fplc() gives it
  } const cases[] = {
      {"Quorvel FplDef x\n", "test.fpl",
       "1 |  | test.fpl:1:1: Fehler: Kein gültiger Formatheader vorhanden.\n"
       " Quorvel FplDef x\n ^~~~~~~\n1 Fehler.\n"},
      {kopf + "SET Reihung Unbekannt\n", "test.fpl",
       "1 |  | test.fpl:2:1: Fehler: invalid unordered_map<K, T> key\n SET Reihung Unbekannt\n "
       "^~~\n"
       "  Hinweis: Reihung 'Unbekannt' (z. 2, Spalte 13) ist nicht definiert; erwartet wird ein "
       "RHG Unbekannt vor dieser Zeile.\n1 Fehler.\n"},
      {"", "test.fpl", "1 |  | test.fpl: Fehler: Leere Tokenliste.\n1 Fehler.\n"},
      {kopf, "--root . test.fpl",
       "2 |  | fplc: \".\" ist kein Installationsverzeichnis: "
       "core/configTemplate/basesettings.xml fehlt.\n"},
      {"", "fehlt.fpl", "2 |  | fplc: Definitionsdatei \"fehlt.fpl\" nicht gefunden.\n"},
      {"", ".", "2 |  | fplc: \".\" ist ein Verzeichnis, keine Definitionsdatei.\n"},
      {kopf + "SET Lenkziffer 1\nSET\n", "./test.fpl",
       "1 |  | ./test.fpl:3:1: Fehler: Syntaxfehler: Befehl ohne Argumente.\n SET\n ^~~\n1 "
       "Fehler.\n"},
      {redefiniert, "-q test.fpl", "0 |  | "},  // errors only
      {redefiniert, "-q --werror test.fpl", "1 |  | " + warnung + "1 Warnung.\n"},
      {redefiniert + "DAT \"/inc.fpl\"\n", root + "test.fpl",  // warnings, then the fault
       "1 |  | " + warnung +
           "@/sim/inc.fpl:2:1: Fehler: Unbekanntes Kommando: 'XYZ'.\n XYZ a\n ^~~\n"
           "1 Warnung, 1 Fehler.\n"},
      // A check writes nothing, but resolves successors as OUT would; warnings exit with 0.
      {kopf + "BTR XA A\nBTR XB B\nZL L {\nXA . N1 H - 8:00\nXB . N2 H 9:00 - FOLGE ZN *\n}\n"
              "SET Zuglauf L\nZ 1 0:00 Mo\nOUT P \"/n.xml\"\n",
       root + "-n test.fpl",
       "0 |  | test.fpl:9:1: Warnung: Folgeleistung für Zug 1 am Mo nicht ermittelbar.\n"
       " Z 1 0:00 Mo\n ^\n1 Warnung.\n"},
      {out + "\"/a.xml\"\n", ohneLint + "test.fpl", "0 | @/sim/a.xml\n | "},
      {out + "\"/fehlt/b.xml\"\n", ohneLint + "test.fpl",
       "1 |  | test.fpl: Fehler: Fahrplandatei \"@/sim/fehlt/b.xml\" konnte nicht geschrieben "
       "werden.\n  Hinweis: Verzeichnis existiert nicht.\n1 Fehler.\n"},
      {out + "\"/a.xml\"\n", ohneLint + "--json test.fpl",
       R"(0 | {"ok":true,"diagnostics":[],"outputs":[{"path":"@/sim/a.xml","written":true}]})"
       "\n | "},
      {redefiniert + out.substr(kopf.size()) + "\"/fehlt/b.xml\"\n", ohneLint + "--json test.fpl",
       R"(1 | {"ok":false,"diagnostics":[)"
       R"({"severity":"warning","file":"test.fpl","line":3,"column":1,"message":"Widerspruch: BTR XA redefiniert."},)"
       R"({"severity":"error","file":"test.fpl","line":null,"column":null,)"
       R"("message":"Fahrplandatei \"@/sim/fehlt/b.xml\" konnte nicht geschrieben werden.",)"
       R"("notes":["Verzeichnis existiert nicht."]}],)"
       R"("outputs":[{"path":"@/sim/fehlt/b.xml","written":false}]})"
       "\n | "},
  };
  for (auto const& c : cases) {
    tmp.write("test.fpl", c.definition);
    EXPECT_EQ(fplc(c.args), c.ergebnis) << c.definition << c.args;
  }
  for (char const* args : {"--unbekannt test.fpl", "test.fpl zwei.fpl"})  // usage errors
    EXPECT_EQ(fplc(args).substr(0, 7), "2 |  | ") << args;
  EXPECT_FALSE(fs::exists(dir + "/sim/n.xml"));  // -n writes nothing
  EXPECT_EQ(fplc("--version").substr(0, 9), "0 | fplc ");
}

// Standard input, the switches of the checks and colour.
TEST_F(Fplc, ReadsStandardInputAndSwitchesChecksAndColour) {
  tmp.write("test.fpl", "Quorvel FplDef 1\nSET Linie S 7 8 9\n");
  std::string const befund =
      ":2:15: Warnung: Angaben ohne Wirkung: '8 9' wird von SET nicht gelesen. "
      "[ignorierte-angaben]\n SET Linie S 7 8 9\n               ^\n1 Warnung.\n";
  struct {
    std::string args, ergebnis;
  } const cases[] = {
      {"- <test.fpl", "0 |  | <stdin>" + befund},
      {"--color=never test.fpl", "0 |  | test.fpl" + befund},
      {"--no-lint test.fpl", "0 |  | "},
      {"-Wno-ignorierte-angaben test.fpl", "0 |  | "},
      {"-Wno-unbekannt test.fpl",
       "2 |  | fplc: Unbekannte Prüfung \"unbekannt\"; bekannt sind implizit-tippfehler, "
       "folgewarnungen, ignorierte-angaben, vt-naechste-zeile, folge-naechste-zeile, "
       "zeit-aus-fehlender-zeit, anlage-ohne-zug, unbenutzt.\n"},
      {"--color=always test.fpl",
       "0 |  | \x1b[1mtest.fpl:2:15: \x1b[0m\x1b[1;35mWarnung: \x1b[0m\x1b[1mAngaben ohne "
       "Wirkung: '8 9' wird von SET nicht gelesen. [ignorierte-angaben]\x1b[0m\n"
       " SET Linie S 7 8 9\n               \x1b[1;32m^\x1b[0m\n1 Warnung.\n"},
  };
  for (auto const& c : cases)
    EXPECT_EQ(fplc(c.args), c.ergebnis) << c.args;
}

// A full disk: the always-full device behind the template, and a file size limit
// of 0 that makes every write to a file fail, with the previous file intact.
TEST_F(Fplc, ReportsATimetableFileThatDidNotFitAsNotWritten) {
  tmp.write("sim/core/configTemplate/basesettings.xml", "<x/>");
  tmp.write("sim/stellwerke/a.stwa", "<aussenanlage></aussenanlage>");
  fs::create_symlink("/dev/full", dir + "/sim/voll.xml");
  std::string const plan = "Quorvel FplDef 1\nAA A \"/stellwerke/a.stwa\" {\n}\nOUT \"Plan\" ";
  tmp.write("voll.fpl", plan + "\"/voll.xml\"\n");
  EXPECT_EQ(fplc("--root sim --no-lint voll.fpl"),
            "1 |  | voll.fpl: Fehler: Fahrplandatei \"@/sim/voll.xml\" konnte nicht geschrieben "
            "werden.\n  Hinweis: kein Platz mehr auf dem Datenträger.\n1 Fehler.\n");

  tmp.write("sim/a.xml", "ALT");
  tmp.write("a.fpl", plan + "\"/a.xml\"\n");
  std::string const begrenzt =
      "cd '" + dir +
      "' && { ( trap '' XFSZ; ulimit -f 0; '" FPLC_BINARY
      "' --root sim --no-lint --json a.fpl; echo \"status $?\" ) | cat; } >aus.txt 2>&1";
  ASSERT_EQ(std::system(begrenzt.c_str()), 0);
  EXPECT_EQ(readFile(dir + "/aus.txt"),
            R"({"ok":false,"diagnostics":[{"severity":"error","file":"a.fpl","line":null,)"
            R"("column":null,"message":"Fahrplandatei \")" +
                dir +
                R"(/sim/a.xml\" konnte nicht geschrieben werden.",)"
                R"("notes":["Datei zu groß für das Dateisystem."]}],)"
                R"("outputs":[{"path":")" +
                dir +
                R"(/sim/a.xml","written":false}]})"
                "\nstatus 1\n");
  EXPECT_EQ(readFile(dir + "/sim/a.xml"), "ALT");
}

// The example installation that `make run` compiles: no warning, no fault, and
// one timetable per layout next to the layout file, byte for byte as in
// tests/cli/golden.
TEST_F(Fplc, CompilesTheExampleInstallationCleanly) {
  fs::copy(std::string(FPLC_SOURCE_DIR) + "/examples/installation", dir + "/inst",
           fs::copy_options::recursive);
  for (char const* layout : {"ahlbach", "bergheide"})
    fs::remove(dir + "/inst/stellwerke/" + layout + "_fahrplan.xml");
  EXPECT_EQ(
      fplc("--root inst inst/fahrplaene/beispiel.fpl"),
      "0 | @/inst/stellwerke/ahlbach_fahrplan.xml\n@/inst/stellwerke/bergheide_fahrplan.xml\n | ");
  for (char const* layout : {"ahlbach", "bergheide"}) {
    std::string const datei = std::string(layout) + "_fahrplan.xml";
    EXPECT_EQ(readFile(dir + "/inst/stellwerke/" + datei),
              readFile(std::string(FPLC_SOURCE_DIR) + "/tests/cli/golden/" + datei))
        << datei;
  }
}

}  // namespace

namespace {

using FplcConfine = Fplc;

// --confine allows the installation root and the definition's folder, nothing else.
TEST_F(FplcConfine, RefusesFilesOutsideTheRootAndTheDefinitionsFolder) {
  tmp.write("sim/core/configTemplate/basesettings.xml", "<x/>");
  tmp.write("aussen.fpl", "Quorvel FplDef 1\nSET Gattung A\n");
  tmp.write("sim/fahrplaene/neben.fpl", "Quorvel FplDef 1\nSET Gattung B\n");
  tmp.write("sim/fahrplaene/t.fpl",
            "Quorvel FplDef 1\nDAT \"/fahrplaene/neben.fpl\"\n"
            "DAT \"/../aussen.fpl\"\n");
  EXPECT_EQ(fplc("--root sim --confine sim/fahrplaene/t.fpl"),
            "1 |  | sim/fahrplaene/t.fpl:3:1: Fehler: Datei \"@/sim/../aussen.fpl\" (aufgelöst "
            "\"@/aussen.fpl\") liegt außerhalb der erlaubten Verzeichnisse \"@/sim\", "
            "\"@/sim/fahrplaene\" und wird nicht verwendet.\n DAT \"/../aussen.fpl\"\n ^~~\n"
            "1 Fehler.\n");
  EXPECT_EQ(fplc("--root sim sim/fahrplaene/t.fpl"), "0 |  | ");
}

}  // namespace
