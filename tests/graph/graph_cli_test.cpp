#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "support/fplc_runner.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

// fplc with --root sim, an installation holding only its marker file.
class FplcGraph : public FplcRunner {
 protected:
  void SetUp() override { tmp.write("sim/core/configTemplate/basesettings.xml", "<x/>"); }
  std::string fplc(std::string const& args) { return FplcRunner::fplc("--root sim " + args); }
};

constexpr char const* kPlan =
    "Quorvel FplDef 1\nBTR XA Astadt\nBTR XB Bdorf\n"
    "BIF Hauptbahn {\n Bf XA 0,0\n Bf XB 5,0\n}\nBIF \"Neben bahn\" {\n Bf XA\n Bf XB\n}\n"
    "ZL AB {\n XA . N1 H - 8:00\n XB . N1 H 8:10 -\n}\nZ 1 (0:00 AB) Mo-Fr\n";

TEST_F(FplcGraph, WritesGraphsAndSaysWhatItCouldNotDraw) {
  tmp.write("plan.fpl", kPlan);
  tmp.write("kaputt.fpl", "Quorvel FplDef 1\nXYZ\n");
  tmp.write("datei", "");
  // Without OUT nothing has post-processed the trains: the graphs do, and report it.
  tmp.write("ohne_out.fpl", std::string(kPlan) +
                                "ZL Weiter {\n XA . N2 H - 9:00\n XB . N2 H 9:10 - FOLGE ZN *\n}\n"
                                "Z 5 (0:00 Weiter) tgl\n");
  std::string const keinePosition =
      "fplc: Bildfahrplan: Strecke Neben bahn: Die Strecke hat keine Betriebsstelle mit "
      "Kilometerangabe: ohne sie lässt sich kein Bildfahrplan zeichnen.\n";
  struct {
    std::string args, ergebnis;
  } const faelle[] = {
      {"--check --graph g plan.fpl", "0 | Bildfahrplan: g/index.html\n | " + keinePosition},
      {"--check --graph g --graph-date 2026-12-05 plan.fpl",
       "0 | Bildfahrplan: g/index.html\n | "
       "fplc: Bildfahrplan: Strecke Hauptbahn: Kein Zug dieser Strecke verkehrt am Sa, "
       "05.12.2026 (an anderen Tagen: 1).\n" +
           keinePosition +
           "fplc: Bildfahrplan: Der Tagesfilter am Sa, 05.12.2026 trifft auf keiner Strecke "
           "einen Zug.\n"},
      {"--check --quiet --graph g plan.fpl", "0 |  | "},
      {"--no-validate --graph g ohne_out.fpl",
       "0 | Bildfahrplan: g/index.html\n | fplc: Bildfahrplan: ohne_out.fpl:21: Warnung: "
       "Folgeleistung für Zug 5 am Mo, Di, Mi, Do, Fr, Sa und So nicht ermittelbar.\n" +
           keinePosition},
      {"--check --graph g kaputt.fpl",
       "1 |  | fplc: Bildfahrplan nicht geschrieben: die Definition ist mit einem Fehler "
       "abgebrochen.\nkaputt.fpl:2:1: Fehler: Syntaxfehler: Befehl ohne Argumente.\n XYZ\n ^~~\n1 "
       "Fehler.\n"},
      {"--check --graph datei plan.fpl",
       "1 |  | "
       "fplc: Bildfahrplan: Verzeichnis \"datei\" für den Bildfahrplan kann nicht angelegt "
       "werden.\n"},
      {"--check --graph-day Mo plan.fpl",
       "2 |  | --graph-day requires --graph\nRun with --help for more information.\n"},
      {"--check --graph g --graph-day Montag plan.fpl",
       "2 |  | --graph-day: Wochentag Mo, Di, Mi, Do, Fr, Sa oder So erwartet, nicht "
       "\"Montag\"\nRun with --help for more information.\n"},
      {"--check --graph g --graph-date 2026-02-30 plan.fpl",
       "2 |  | --graph-date: Datum JJJJ-MM-TT ab 1970 erwartet, nicht \"2026-02-30\"\nRun "
       "with --help for more information.\n"},
  };
  for (auto const& f : faelle)
    EXPECT_EQ(fplc(f.args), f.ergebnis) << f.args;

  // Each line gets its file, the empty one too; the page holds both.
  fplc("--check --graph g plan.fpl");
  EXPECT_NE(readFile(dir + "/g/strecke-Hauptbahn.svg").find("data-nummer=\"1\""),
            std::string::npos);
  EXPECT_NE(readFile(dir + "/g/strecke-Neben_bahn.svg").find("keine Betriebsstelle"),
            std::string::npos);
  std::string const seite = readFile(dir + "/g/index.html");
  EXPECT_NE(seite.find("data-strecke=\"Hauptbahn\""), std::string::npos);
  EXPECT_NE(seite.find("data-strecke=\"Neben bahn\""), std::string::npos);
}

}  // namespace
