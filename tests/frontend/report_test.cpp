// The reports of a compile, byte for byte: text without and with colour, JSON.
#include "frontend/report.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <sstream>
#include <string>

#include "external/installation.h"
#include "frontend/compile.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

// An installation with the example's layout Bergheide; the definition is "t.fpl".
class ReportTest : public ::testing::Test {
 protected:
  ReportTest() : rootGuard(quorvelpath), devGuard(quorvel_dev) {
    dir.write("core/configTemplate/basesettings.xml", "<x/>");
    fs::create_directory(dir.path() / "stellwerke");
    fs::copy_file(std::string(FPLC_SOURCE_DIR) + "/examples/installation/stellwerke/bergheide.stwa",
                  dir.path() / "stellwerke/bergheide.stwa");
  }

  struct Berichte {
    std::string text, farbig, json;
  };

  Berichte berichte(std::string const& definition, bool mitInstallation = true) {
    quorvelpath = mitInstallation ? dir.path().string() : "";
    quorvel_dev = false;
    Options options;
    options.definition = "t.fpl";
    options.check = true;
    Fahrplandefinition fpl;
    std::istringstream in(definition);
    Ergebnis ergebnis = compile(fpl, in, options);
    std::ostringstream text, farbig, json;
    writeTextDiagnostics(text, ergebnis.diagnosen);
    writeTextDiagnostics(farbig, ergebnis.diagnosen, TextBericht{true});
    writeJsonReport(json, !ergebnis.abgebrochen, ergebnis.diagnosen, ergebnis.ausgaben);
    return {ohneOrt(text.str()), ohneOrt(farbig.str()), ohneOrt(json.str())};
  }

  std::string ohneOrt(std::string text) const {
    std::string const ort = dir.path().string();
    for (std::size_t i; (i = text.find(ort)) != std::string::npos;)
      text.replace(i, ort.size(), "@");
    return text;
  }

  TempDir dir;
  Restore<std::string> rootGuard;
  Restore<bool> devGuard;
};

std::string const kopf = "Quorvel FplDef 1\n";

TEST_F(ReportTest, TextAndJsonReportsPointAtTheTokenAndExplain) {
  struct {
    char const* fall;
    std::string definition;
    bool mitInstallation;
    char const* text;
    char const* json;
  } const faelle[] = {
      {"mistyped operating point",
       kopf + "BTR XAB Ahlbach\nBTR XBH Bergheide\nAA Bergheide \"$(StwDir)bergheide.stwa\" {\n}\n"
              "ZL L {\nXAB . N1 H - 0:00\n<- Bergheide . Ahlbach 0:10\nXBJ . P1 H 0:25 -\n}\n"
              "Z 1 (8:00 L) Mo\nOUT P \"x.xml\"\n",
       true,
       R"(t.fpl:9:1: Warnung: Betriebsstelle XBJ implizit generiert.
 XBJ . P1 H 0:25 -
 ^~~
  Hinweis: 1 Folgewarnung (z. 9), zuerst: Zug verlässt Außenanlage 'Bergheide' nicht mehr. -Wno-folgewarnungen zeigt sie einzeln.
t.fpl:9:1: Warnung: Betriebsstelle XBJ ist nicht deklariert: meinten Sie XBH? [implizit-tippfehler]
 XBJ . P1 H 0:25 -
 ^~~
2 Warnungen.
)",
       R"({"ok":true,"diagnostics":[{"severity":"warning","file":"t.fpl","line":9,"column":1,"message":"Betriebsstelle XBJ implizit generiert.","notes":["1 Folgewarnung (z. 9), zuerst: Zug verlässt Außenanlage 'Bergheide' nicht mehr. -Wno-folgewarnungen zeigt sie einzeln."]},{"severity":"warning","file":"t.fpl","line":9,"column":1,"message":"Betriebsstelle XBJ ist nicht deklariert: meinten Sie XBH?","check":"implizit-tippfehler"}],"outputs":[]}
)"},
      {"ignored tokens", kopf + "SET Linie S 7 8 9\n", true,
       R"(t.fpl:2:15: Warnung: Angaben ohne Wirkung: '8 9' wird von SET nicht gelesen. [ignorierte-angaben]
 SET Linie S 7 8 9
               ^
1 Warnung.
)",
       R"({"ok":true,"diagnostics":[{"severity":"warning","file":"t.fpl","line":2,"column":15,"message":"Angaben ohne Wirkung: '8 9' wird von SET nicht gelesen.","check":"ignorierte-angaben"}],"outputs":[]}
)"},
      {"unknown run name",
       kopf + "BTR XA A\nZL Nordlinie2 {\nXA . N1 H - 8:00\n}\n"
              "Z 1 (8:00 Nordlinie) Mo\n",
       true,
       R"(t.fpl:6:1: Fehler: invalid unordered_map<K, T> key
 Z 1 (8:00 Nordlinie) Mo
 ^
  Hinweis: Zuglauf 'Nordlinie' (z. 6, Spalte 11) ist nicht definiert; erwartet wird ein ZL Nordlinie vor dieser Zeile. Meinten Sie Nordlinie2?
1 Fehler.
)",
       R"({"ok":false,"diagnostics":[{"severity":"error","file":"t.fpl","line":6,"column":1,"message":"invalid unordered_map<K, T> key","notes":["Zuglauf 'Nordlinie' (z. 6, Spalte 11) ist nicht definiert; erwartet wird ein ZL Nordlinie vor dieser Zeile. Meinten Sie Nordlinie2?"]}],"outputs":[]}
)"},
      {"missing layout file", kopf + "AA X \"$(StwDir)fehlt.stwa\" {\n}\n", true,
       R"(t.fpl:2:1: Fehler: Außenanlage konnte nicht geöffnet werden oder ist keine XML-Datei!
 AA X "$(StwDir)fehlt.stwa" {
 ^~
  Hinweis: Gesucht wurde "@/stellwerke/fehlt.stwa"; die Datei existiert nicht.
  Hinweis: Installationsverzeichnis: "@".
1 Fehler.
)",
       R"({"ok":false,"diagnostics":[{"severity":"error","file":"t.fpl","line":2,"column":1,"message":"Außenanlage konnte nicht geöffnet werden oder ist keine XML-Datei!","notes":["Gesucht wurde \"@/stellwerke/fehlt.stwa\"; die Datei existiert nicht.","Installationsverzeichnis: \"@\"."]}],"outputs":[]}
)"},
      {"missing layout file without installation", kopf + "AA X \"/fehlt.stwa\" {\n}\n", false,
       R"(t.fpl:2:1: Fehler: Außenanlage konnte nicht geöffnet werden oder ist keine XML-Datei!
 AA X "/fehlt.stwa" {
 ^~
  Hinweis: Gesucht wurde "/fehlt.stwa"; die Datei existiert nicht.
  Hinweis: Kein Installationsverzeichnis gefunden: Pfade wie $(StwDir) sind nicht aufgelöst; --root gibt es an.
1 Fehler.
)",
       nullptr},
      {"time warning",
       kopf + "BTR XA A\nBTR XB B\nZL L {\n  XA . N1 H - 8:00\n\tXB . N2 H 7:50 7:55 30\n}\n"
              "Z 1 (0:00 L) Mo\n",
       true,
       "t.fpl:6:2: Warnung: Ankunftszeit liegt vor Fahrtzeit an vorangehendem Eintrag.\n"
       " \tXB . N2 H 7:50 7:55 30\n"
       " \t^~\n"
       "  Hinweis: Zeiten von B: an 07:50:00, ab 07:55:00.\n"
       "  Hinweis: Vorangehender Eintrag A (z. 5, Spalte 3): ab 08:00:00.\n"
       "1 Warnung.\n",
       R"({"ok":true,"diagnostics":[{"severity":"warning","file":"t.fpl","line":6,"column":2,"message":"Ankunftszeit liegt vor Fahrtzeit an vorangehendem Eintrag.","notes":["Zeiten von B: an 07:50:00, ab 07:55:00.","Vorangehender Eintrag A (z. 5, Spalte 3): ab 08:00:00."]}],"outputs":[]}
)"},
      {"repeated warning",
       kopf + "BTR XA A\nBTR XB B\nZL L {\nXA . N1 H - 0:10\n"
              "XB . N2 H 0:05 - FOLGE ZN *\n}\nZL R {\nXB . N2 H - 0:00\nXA . N1 H 0:30 -\n}\n"
              "Z 1 (8:00 L) (Mo, Di)\nZ 2 (9:00 R) Mo\nZ 3 (9:30 R) Di\nOUT P \"x.xml\"\n",
       true,
       R"(t.fpl:6:1: Warnung: Ankunftszeit liegt vor Fahrtzeit an vorangehendem Eintrag. (3-mal)
 XB . N2 H 0:05 - FOLGE ZN *
 ^~
  Hinweis: Zeiten von B: an 00:05:00.
  Hinweis: Vorangehender Eintrag A (z. 5, Spalte 1): ab 00:10:00.
3 Warnungen.
)",
       nullptr},
  };
  std::regex const farbe("\x1b\\[[0-9;]*m");
  for (auto const& f : faelle) {
    Berichte const b = berichte(f.definition, f.mitInstallation);
    EXPECT_EQ(b.text, f.text) << f.fall;
    // Colour only adds escapes around the same text.
    EXPECT_EQ(std::regex_replace(b.farbig, farbe, ""), f.text) << f.fall;
    EXPECT_NE(b.farbig, b.text) << f.fall;
    if (f.json) {
      EXPECT_EQ(b.json, f.json) << f.fall;
    }
  }
}

TEST_F(ReportTest, JsonKeepsEveryRepeatedWarning) {
  std::string const json = berichte(kopf + "BTR XA A\nBTR XA B\nBTR XA C\n").json;
  EXPECT_EQ(
      json,
      R"({"ok":true,"diagnostics":[)"
      R"({"severity":"warning","file":"t.fpl","line":3,"column":1,"message":"Widerspruch: BTR XA redefiniert."},)"
      R"({"severity":"warning","file":"t.fpl","line":4,"column":1,"message":"Widerspruch: BTR XA redefiniert."}],"outputs":[]})"
      "\n");
}

TEST_F(ReportTest, ColouredReportMarksSeverityLocationAndCaret) {
  Berichte const b = berichte(kopf + "SET Linie S 7 8 9\n");
  EXPECT_EQ(b.farbig,
            "\x1b[1mt.fpl:2:15: \x1b[0m\x1b[1;35mWarnung: \x1b[0m\x1b[1mAngaben ohne Wirkung: "
            "'8 9' wird von SET nicht gelesen. [ignorierte-angaben]\x1b[0m\n"
            " SET Linie S 7 8 9\n"
            "               \x1b[1;32m^\x1b[0m\n"
            "1 Warnung.\n");
}

}  // namespace
