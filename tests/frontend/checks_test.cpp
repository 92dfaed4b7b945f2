// fplc's own checks: each one found where it should be, and silent where not.
#include "frontend/checks.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>

#include "external/installation.h"
#include "frontend/compile.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/token_list.h"

namespace {

namespace fs = std::filesystem;

class ChecksTest : public ::testing::Test {
 protected:
  ChecksTest() : rootGuard(quorvelpath), devGuard(quorvel_dev) {
    fs::create_directories(dir.path() / "stellwerke");
    fs::copy_file(std::string(FPLC_SOURCE_DIR) + "/examples/installation/stellwerke/bergheide.stwa",
                  dir.path() / "stellwerke/bergheide.stwa");
    quorvelpath = dir.path().string();
    quorvel_dev = false;
  }

  // Every finding as "LINE:COLUMN [check] message | note | ...", checks and
  // library warnings alike; the fatal fault as "LINE:COLUMN Fehler: message".
  // `nurPruefungen`: the checks' findings only, without the library's.
  std::string befunde(std::string const& body, Options options = {}, bool nurPruefungen = false) {
    options.definition = "t.fpl";
    options.check = true;
    Fahrplandefinition fpl;
    std::istringstream in("Quorvel FplDef 1\n" + body);
    Ergebnis ergebnis = compile(fpl, in, options);
    std::string text;
    for (Diagnose const& d : ergebnis.diagnosen) {
      if (nurPruefungen && d.pruefung.empty()) continue;
      text += std::to_string(d.zeile.value_or(0)) + ":" + std::to_string(d.spalte.value_or(0));
      text += d.fehler ? " Fehler:" : "";
      if (!d.pruefung.empty()) text += " [" + d.pruefung + "]";
      text += " " + cp1252::toUtf8(d.meldung);
      for (std::string const& n : d.notizen)
        text += " | " + cp1252::toUtf8(n);
      text += "\n";
    }
    return text;
  }

  TempDir dir;
  Restore<std::string> rootGuard;
  Restore<bool> devGuard;
};

std::string const zweiPunkte = "BTR XA Astadt\nBTR XBH Bergheide\n";
std::string const lauf = "ZL L {\nXA . N1 H - 8:00\nXBH . N2 H 9:00 -\n}\n";
std::string const bergheide = "AA Bergheide \"$(StwDir)bergheide.stwa\" {\n}\n";

TEST_F(ChecksTest, EachCheckFindsItsCaseAndOnlyThat) {
  struct {
    char const* fall;
    std::string body, befunde;
    bool nurPruefungen = true;
  } const faelle[] = {
      // implizit-tippfehler
      {"typo of a declared point", zweiPunkte + "ZL L {\nXA . N1 H - 8:00\nXBJ . N2 H 9:00 -\n}\n",
       "6:1 Betriebsstelle XBJ implizit generiert.\n"
       "6:1 [implizit-tippfehler] Betriebsstelle XBJ ist nicht deklariert: meinten Sie XBH?\n"
       "4:4 [unbenutzt] Zuglauf L wird nirgends verwendet.\n",
       false},
      {"typo of a layout's station",
       bergheide + "ZL L {\nBergheid . N1 H - 8:00\n}\nZ 1 (0:00 L) Mo\n",
       "5:1 Betriebsstelle Bergheid implizit generiert.\n"
       "5:1 [implizit-tippfehler] Betriebsstelle Bergheid ist nicht deklariert: meinten Sie "
       "Bergheide?\n",
       false},
      {"implicit point far from any name",
       zweiPunkte + "ZL L {\nXQQQ . N1 H - 8:00\n}\nZ 1 (0:00 L) Mo\n",
       "5:1 Betriebsstelle XQQQ implizit generiert.\n", false},
      // folgewarnungen: knock-ons of a typo fold under it; of a far name they stay
      {"knock-on warnings folded",
       zweiPunkte + bergheide +
           "ZL L {\nXA . N1 H - 0:00\n<- Bergheide . Ahlbach 0:10\nXBJ . P1 H 0:25 - FOLGE ZN "
           "*\n}\n"
           "SET Zuglauf L\nTZ 1 3 2 8:00 1:00 Mo\nOUT P \"x.xml\"\n",
       "9:1 Betriebsstelle XBJ implizit generiert. | 3 Folgewarnungen (z. 9, 12), zuerst: "
       "Folgeleistung für Zug 1 am Mo nicht ermittelbar. -Wno-folgewarnungen zeigt sie einzeln.\n"
       "9:1 [implizit-tippfehler] Betriebsstelle XBJ ist nicht deklariert: meinten Sie XBH?\n"
       "4:4 [anlage-ohne-zug] Außenanlage Bergheide bekommt in keinem OUT einen Zug: ihr Fahrplan "
       "bleibt leer.\n",
       false},
      {"knock-on warnings of a far name stay",
       zweiPunkte + bergheide +
           "ZL L {\nXA . N1 H - 0:00\n<- Bergheide . Ahlbach 0:10\nXQQQ . P1 H 0:25 -\n}\n"
           "Z 1 (8:00 L) Mo\n",
       "9:1 Betriebsstelle XQQQ implizit generiert.\n"
       "9:1 Zug verlässt Außenanlage 'Bergheide' nicht mehr.\n",
       false},
      // zeit-aus-fehlender-zeit: an entry time from a stop without departure
      {"a time computed from a missing one",
       zweiPunkte + "ZL L {\nXA . N1 H 8:00 -\n<- XB . C\n}\nZ 1 (0:00 L) Mo\n",
       "6:1 [zeit-aus-fehlender-zeit] Zeit aus einer fehlenden Zeit berechnet: 4294967340 liegt "
       "weit außerhalb eines Tages. | Die Zeit ist \"keine Zeit\" (4294967295) plus 45 Sekunden; "
       "dem Eintrag davor oder danach fehlt eine Zeit.\n"},
      {"an entry time computed from a real one",
       zweiPunkte + "ZL L {\nXA . N1 H 8:00 8:05\n<- XB . C\n}\nZ 1 (0:00 L) Mo\n", ""},
      // ignorierte-angaben
      {"surplus words of SET", "SET Linie S 7 8 9\nSET Reihung ~ R x\n",
       "2:15 [ignorierte-angaben] Angaben ohne Wirkung: '8 9' wird von SET nicht gelesen.\n"
       "3:17 [ignorierte-angaben] Angaben ohne Wirkung: 'x' wird von SET nicht gelesen.\n"
       "3:1 Fehler: invalid unordered_map<K, T> key | Reihung 'R' (z. 3, Spalte 15) ist nicht "
       "definiert; erwartet wird ein RHG R vor dieser Zeile.\n",
       false},
      {"a number out of range has no name note", zweiPunkte + lauf + "Z 99999999999 (8:00 L) Mo\n",
       "8:1 Fehler: stoi argument out of range\n", false},
      {"a weekday is no run name", zweiPunkte + lauf + "Z 1 (8:00 Lauf) Mo\n",
       "8:1 Fehler: invalid unordered_map<K, T> key | Zuglauf 'Lauf' (z. 8, Spalte 11) ist nicht "
       "definiert; erwartet wird ein ZL Lauf vor dieser Zeile.\n",
       false},
      {"surplus words of OUT", "OUT P \"x.xml\" y\n",
       "2:15 [ignorierte-angaben] Angaben ohne Wirkung: 'y' wird von OUT nicht gelesen.\n"},
      {"a name in two words", "BTR XB Berg heide\nBTR XC \"Cam Berg\"\n",
       "2:13 [ignorierte-angaben] Angaben ohne Wirkung: 'heide' wird von BTR nicht gelesen.\n"},
      {"days without parentheses", zweiPunkte + lauf + "Z 1 (0:00 L) Sa+So\n",
       "8:16 [ignorierte-angaben] Angaben ohne Wirkung: '+ So'. Ein Tagesausdruck wie Sa+So "
       "braucht Klammern: (Sa+So).\n"},
      {"complete lines",
       zweiPunkte + lauf + "SET Linie S 7\nZ 1 (0:00 L) (Sa+So)\nZ 2 (1:00 L) Mo-Fr\n", ""},
      // vt-naechste-zeile
      {"days of VT on the next line", "VT Werktag\n12345\n",
       "2:4 [vt-naechste-zeile] VT Werktag hat keine Wochentage auf seiner Zeile: '12345' aus z. "
       "3, Spalte 1 wird dafür gelesen.\n"},
      {"days of VT on its line",
       "VT Werktag 12345\nVT * \"1.1.2027\" \"2.1.2027\"\nSET Zuglauf (0:00 Werktag)\n", ""},
      // folge-naechste-zeile
      {"FOLGE ZN at the end of the line",
       zweiPunkte +
           "ZL L {\nXA . N1 H - 8:00\nXBH . N2 H 9:00 - FOLGE ZN\n4711\n}\nZ 1 (0:00 L) Mo\n",
       "6:25 [folge-naechste-zeile] FOLGE ZN ohne Regel auf der Zeile: '4711' aus z. 7, Spalte 1 "
       "wird als Regel gelesen.\n"},
      {"FOLGE ZN as a command of its own", "FOLGE ZN\nBTR XA A\n", ""},
      {"FOLGE ZN with its rule",
       zweiPunkte +
           "ZL L {\nXA . N1 H - 8:00\nXBH . N2 H 9:00 - FOLGE ZN 4711\n}\nZ 1 (0:00 L) Mo\n"
           "Z 4711 (9:10 L) Mo\n",
       ""},
      // anlage-ohne-zug
      {"layout without a train",
       zweiPunkte + bergheide + "ZL L {\nXA . N1 H - 8:00\n}\nZ 1 (0:00 L) Mo\nOUT P \"x.xml\"\n",
       "4:4 [anlage-ohne-zug] Außenanlage Bergheide bekommt in keinem OUT einen Zug: ihr Fahrplan "
       "bleibt leer.\n"},
      {"layout with a train",
       zweiPunkte + bergheide + lauf +
           "Z 1 (0:00 L) Mo\n"
           "ZL B {\nXBH . N2 H - 9:00\n-> Bergheide . Ahlbach\nXA . N1 H 9:30 -\n}\n"
           "Z 2 (0:00 B) Mo\nOUT P \"x.xml\"\n",
       ""},
      // unbenutzt
      {"unused records",
       zweiPunkte + "VT Werktag 12345\nVT Sonntag 7\nZLS XA XBH {\n}\n" + lauf +
           "ZL M {\nXA . N1 H - 8:00\n}\nZ 1 (0:00 L) Werktag\n",
       "5:4 [unbenutzt] Verkehrstag Sonntag wird nirgends verwendet.\n"
       "12:4 [unbenutzt] Zuglauf M wird nirgends verwendet.\n"
       "6:5 [unbenutzt] Zuglaufsegment XA XBH wird in keinen Zuglauf eingesetzt.\n"},
  };
  for (auto const& f : faelle)
    EXPECT_EQ(befunde(f.body, {}, f.nurPruefungen), f.befunde) << f.fall;
}

TEST_F(ChecksTest, ChecksAreSwitchedOffOneByOneOrAllTogether) {
  std::string const body = "SET Linie S 7 8 9\nVT Werktag\n12345\n";
  std::string const vt =
      "3:4 [vt-naechste-zeile] VT Werktag hat keine Wochentage auf seiner Zeile: '12345' aus z. "
      "4, Spalte 1 wird dafür gelesen.\n";
  std::string const angaben =
      "2:15 [ignorierte-angaben] Angaben ohne Wirkung: '8 9' wird von SET nicht gelesen.\n";
  EXPECT_EQ(befunde(body, {}, true), angaben + vt);
  Options ohneAngaben;
  ohneAngaben.ohnePruefungen = {"ignorierte-angaben"};
  EXPECT_EQ(befunde(body, ohneAngaben, true), vt);
  Options ohneLint;
  ohneLint.lint = false;
  EXPECT_EQ(befunde(body, ohneLint, true), "");
}

TEST_F(ChecksTest, TimesComputedFromAMissingTimeAreFoundOncePerEntry) {
  TokenList tokens;
  std::istringstream text("<- A . B\n-> A . C\nXA . N1 H 8:00 -\n");
  tokens.read(text, "t.fpl");
  Token const* einfahrt = tokens.front();
  Token const* ausfahrt = einfahrt->tokAt(4);
  std::list<Zuglauf> laeufe(2);
  for (Zuglauf& lauf : laeufe) {  // a copy of a run shares its tokens
    lauf.eintraege.resize(3);
    lauf.eintraege[0].ab = keineZeit + 45;
    lauf.eintraege[0].token = einfahrt;
    lauf.eintraege[1].an = keineZeit - 15;
    lauf.eintraege[1].token = ausfahrt;
    lauf.eintraege[2].an = 8 * 3600;
    lauf.eintraege[2].ab = 86400 * 3;
    lauf.eintraege[2].token = ausfahrt->tokAt(4);
  }
  std::vector<fplc::detail::Befund> befunde;
  fplc::detail::pruefeFehlendeZeiten(laeufe, befunde);
  ASSERT_EQ(befunde.size(), 2u);
  EXPECT_EQ(befunde[0].token, einfahrt);
  EXPECT_EQ(
      cp1252::toUtf8(befunde[0].diagnose.meldung),
      "Zeit aus einer fehlenden Zeit berechnet: 4294967340 liegt weit außerhalb eines Tages.");
  EXPECT_EQ(befunde[0].diagnose.notizen,
            std::vector<std::string>{"Die Zeit ist \"keine Zeit\" (4294967295) plus 45 Sekunden; "
                                     "dem Eintrag davor oder danach fehlt eine Zeit."});
  EXPECT_EQ(befunde[1].token, ausfahrt);
  EXPECT_EQ(befunde[1].diagnose.pruefung, "zeit-aus-fehlender-zeit");
  EXPECT_NE(befunde[1].diagnose.notizen.at(0).find("minus 15 Sekunden"), std::string::npos);
}

TEST(EditDistance, CountsInsertionsDeletionsSubstitutionsAndSwaps) {
  using fplc::detail::aehnlichsterName;
  using fplc::detail::editierAbstand;
  EXPECT_EQ(editierAbstand("XBH", "XBJ", 2), 1u);
  EXPECT_EQ(editierAbstand("XBH", "XHB", 2), 1u);
  EXPECT_EQ(editierAbstand("XBH", "XBHO", 2), 1u);
  EXPECT_EQ(editierAbstand("XBH", "XQQQ", 2), 3u);
  EXPECT_EQ(editierAbstand("", "ABCDEFG", 2), 3u);
  EXPECT_EQ(aehnlichsterName("XBJ", {"XBHO", "XBH", "XAB"}), "XBH");
  EXPECT_EQ(aehnlichsterName("XBH", {"XBH"}), "");
  EXPECT_EQ(aehnlichsterName("ABC", {"XYZ"}), "");
}

}  // namespace
