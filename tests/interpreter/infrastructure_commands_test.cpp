// The commands that declare what trains run on: AUT, BTR, AA, LZ, BIB, FZG, RHG, BIF.
#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"

using namespace std::string_literals;

namespace {

using Lines = std::vector<std::string>;

struct Fault {
  std::string body;
  std::string expected;  // as `outcome` describes it
};

class InfrastructureCommands : public DefinitionTest {
 protected:
  // Absolute temporary paths must stay as they are: no installation root.
  void SetUp() override { quorvelpath.clear(); }

  // How `action` ends: "z. LINE: message" for an Error, the type and what() for a
  // standard exception.
  template <typename Action>
  static std::string outcome(Action action) {
    try {
      action();
    } catch (Error const& e) {
      return describe(e);
    } catch (std::out_of_range const& e) {
      return "out_of_range: "s + e.what();
    } catch (std::invalid_argument const& e) {
      return "invalid_argument: "s + e.what();
    }
    return "kein Fehler";
  }

  Lines warnings() const {
    Lines lines;
    for (Error const& w : fpl.getWarnungen())
      lines.push_back(describe(w));
    return lines;
  }

  // "name suffix: " and the layout's directions by key: "key id [connections ] digits (hex)",
  // "Datei" when read from the layout file.
  static std::string richtungen(Aussenanlage const& a) {
    std::ostringstream out;
    out << a.name << ' ' << a.suffix << ':';
    for (auto const& [key, r] : std::map(a.fahrtrichtungen.begin(), a.fahrtrichtungen.end())) {
      out << ' ' << key << ' ' << r.id << " [";
      for (int anschluss : r.anschluesse)
        out << anschluss << ' ';
      out << "] " << std::hex << r.lenkziffern << std::dec << (r.ausAussenanlage ? " Datei;" : ";");
    }
    return out.str();
  }

  Restore<std::string> savedPath{quorvelpath};
  Restore<bool> savedDev{quorvel_dev};
  TempDir dir;
  // XA (station), XB (halt), directions Nord (connections 1, 2) and Sued.
  std::string const layout = dir.write("a.stwa", R"(<stelltisch>
  <betriebsstelle name="Astadt" id="10"><abbreviation vname="ds100" value="XA"/><abbreviation vname="fplcat" value="1"/></betriebsstelle>
  <betriebsstelle name="Bdorf" id="11"><abbreviation vname="ds100" value="XB"/><abbreviation vname="fplcat" value="7"/></betriebsstelle>
  <einfahrrichtung name="von Norden" id="3"><abbreviation vname="zuglinor_RiA" value="Nord"/><anschluss id="1"/><anschluss id="2"/></einfahrrichtung>
  <einfahrrichtung name="Sued" id="4"><anschluss id="5"/></einfahrrichtung>
</stelltisch>)");
  std::string const aa = "AA Astadt \"" + layout + "\" ";
  std::string const lib = dir.write("lib.xml", R"(<bibliothek>
  <fahrzeugtemplate id="1" name="Lok"/><fahrzeugtemplate id="2" name="Wagen"/>
</bibliothek>)");
  std::string const bib = "BIB 7 \"" + lib + "\"\n";
};

TEST_F(InfrastructureCommands, AuthorsTakeTheirCommentOnlyFromTheirLine) {
  run("AUT Meier \"erste Fassung\"\nAUT Schulze\nBTR XA\n");
  using Paar = std::pair<std::string, std::string>;
  EXPECT_EQ(fpl.getAutoren(), (std::vector<Paar>{{"Meier", "erste Fassung"}, {"Schulze", ""}}));
}

TEST_F(InfrastructureCommands, RedeclaringAPointWarnsOnlyWhenTheNameDiffers) {
  // Same name twice, both empty twice: silent. Another name, then none: two warnings.
  run("BTR XA Astadt\nBTR XA Astadt\nBTR XC\nBTR XC\nBTR XA Bstadt\nBTR XA\n");
  EXPECT_EQ(warnings(), (Lines{"z. 6: Widerspruch: BTR XA redefiniert.",
                               "z. 7: Widerspruch: BTR XA redefiniert."}));
  EXPECT_EQ(fpl.getWarnungen()[0].token->str(), "BTR");
  EXPECT_EQ(fpl.getBetriebsstellen().size(), 2u);
  EXPECT_EQ(fpl.getBTR().at("XA")->name, "Astadt");  // the first declaration keeps its name
}

TEST_F(InfrastructureCommands, UndeclaredPointIsMadeWithWarningOutsideDevelopmentOnly) {
  run("BTR XA Astadt\n");
  Token xa(nullptr, "XA", 7), xz(nullptr, "XZ", 8);
  quorvel_dev = true;
  EXPECT_EQ(fpl.getBTR_weak(&xa), fpl.getBTR().at("XA"));
  EXPECT_EQ(outcome([&] { fpl.getBTR_weak(&xz); }),
            "out_of_range: invalid unordered_map<K, T> key");
  EXPECT_EQ(fpl.getBTR().count("XZ"), 0u);
  EXPECT_TRUE(fpl.getWarnungen().empty());

  quorvel_dev = false;
  Betriebsstelle* made = fpl.getBTR_weak(&xz);
  EXPECT_EQ(made->ds100 + "|" + made->name, "XZ|");
  EXPECT_EQ(fpl.getBTR().at("XZ"), made);
  EXPECT_EQ(fpl.getBTR_weak(&xz), made);  // once made, it is known: no second warning
  EXPECT_EQ(warnings(), Lines{"z. 8: Betriebsstelle XZ implizit generiert."});
}

TEST_F(InfrastructureCommands, LayoutsTakeSuffixDigitsOwnDirectionsAndReportUnusedOnes) {
  run(aa + "S1 {\n  Nord 2 1 2\n  Gleis5 ( 101 102 ) 3\n  Gleis6 ( 103\n  104 ) \n}\n" +
      "AA Bstadt \"" + layout + "\"\n{ }\nLZ Astadt Sued 4 3\n" +
      "ZL R {\n XA . N1 H - 10:00\n -> Bstadt . Nord\n XB . N2 H 10:10 -\n}\n" +
      "LZ Astadt\nLZ Bstadt\n");
  EXPECT_EQ(fpl.getAussenanlagen().front().datei, layout);
  EXPECT_EQ(richtungen(fpl.getAussenanlagen().front()),
            "Astadt S1: Gleis5 1 [101 102 ] 8; Gleis6 2 [103 104 ] ffff;"
            " Nord 3 [1 2 ] 6 Datei; Sued 4 [5 ] 18 Datei;");
  // Each layout keeps its own directions; the suffix is only read from the command's line.
  EXPECT_EQ(richtungen(fpl.getAussenanlagen().back()),
            "Bstadt : Nord 3 [1 2 ] ffff Datei; Sued 4 [5 ] ffff Datei;");
  std::string const unused = "Fahrtrichtung aus Außenanlage bleibt unbenutzt: "_cp1252;
  EXPECT_EQ(warnings(), (Lines{"z. 16: " + unused + "Nord.", "z. 16: " + unused + "Sued.",
                               "z. 17: " + unused + "Sued."}));
}

TEST_F(InfrastructureCommands, LayoutLoadedAgainStaysOneRecord) {
  std::string const other = dir.write("b.stwa", R"(<stelltisch>
  <betriebsstelle name="Cweiler" id="12"><abbreviation vname="ds100" value="XC"/></betriebsstelle>
  <einfahrrichtung name="Nord" id="3"><anschluss id="9"/></einfahrrichtung>
</stelltisch>)");
  run(aa + "S1 {\n Nord 1\n}\nAA Astadt \"" + other + "\" {}\n");
  ASSERT_EQ(fpl.getAussenanlagen().size(), 1u);
  Aussenanlage const& a = fpl.getAussenanlagen().front();
  EXPECT_EQ(a.datei, other);
  EXPECT_EQ(a.betriebsstellen.size(), 3u);
  // The connections are collected; the file sets all routing digits again.
  EXPECT_EQ(richtungen(a), "Astadt S1: Nord 3 [1 2 9 ] ffff Datei; Sued 4 [5 ] ffff Datei;");
}

TEST_F(InfrastructureCommands, LibrariesVehiclesAndFormations) {
  run(bib + "FZG Lok 7 1\nFZG Wagen 7 1\nFZG Wagen 7 2\nRHG Leer\nRHG Zug Lok ~ Wagen Wagen\n");
  ASSERT_EQ(fpl.getFzgLibs().size(), 1u);
  EXPECT_EQ(std::to_string(fpl.getFzgLibs()[0].nummer) + " " + fpl.getFzgLibs()[0].datei,
            "7 " + lib);
  EXPECT_EQ(fpl.getFzgNamen().at("Wagen"), (std::pair<int, int>{7, 2}));  // the later one wins
  Reihung const* zug = fpl.getReihungenByName().at("Zug");
  EXPECT_EQ(std::pair(fpl.getReihungenByName().at("Leer")->id, zug->id), std::pair(1u, 2u));
  std::string plaetze;
  for (Reihung::Platz const& p : zug->fahrzeuge)
    plaetze += (p.gedreht ? "~" : "") + p.fzg + " " + std::to_string(p.bibliothek) + "/" +
               std::to_string(p.fahrzeug) + ", ";
  EXPECT_EQ(plaetze, "Lok 7/1, ~Wagen 7/2, Wagen 7/2, ");
  EXPECT_EQ(fpl.getFzg(zug, 1).name, "Wagen");
}

TEST_F(InfrastructureCommands, LineKeepsPointsPositionsAndTransitions) {
  quorvel_dev = false;
  run("BTR XA Astadt\nBTR XB Bdorf\nBIF KBS100 {\n  Bf XA 0,0\n  -> Astadt . Nord\n"
      "  Hp XB - 1 , 25\n  * XC\n  | 12,5\n  <- Bstadt . West\n  Uest XA\n}\nBIF KBS200\n{\n}\n");
  Strecke const& s = fpl.getBIF().at("KBS100");
  // Each place as "kind ds100/fplcat @position=km zLINE" ("-": no point, no "@": no position);
  // the first kind given to a point wins.
  char const* const arten[] = {"*", "Bf", "Hp", "Abzw", "Bk", "Uest", "|"};
  Lines punkte;
  for (Strecke::Punkt const& p : s.punkte) {
    Betriebsstelle const* b = p.betriebsstelle;
    std::ostringstream out;
    out << arten[p.art] << ' ';
    if (b)
      out << b->ds100 << '/' << int(b->fplcat)
          << (fpl.getBTR().at(b->ds100) == b ? " " : "(Kopie) ");
    else
      out << "- ";
    out << (p.hatPosition ? "@" : "") << p.position << '=' << p.km << " z" << p.token->line();
    punkte.push_back(out.str());
  }
  EXPECT_EQ(punkte, (Lines{"Bf XA/1 @0,0=0 z5", "Hp XB/2 @-1,25=-1.25 z7", "* XC/0 =0 z8",
                           "| - @12,5=12.5 z9", "Uest XA/1 =0 z11"}));
  Lines uebergaenge;
  for (Strecke::Uebergang const& u : s.uebergaenge)
    uebergaenge.push_back((u.einfahrt ? "<- " : "-> ") + u.anlage + "." + u.richtung + " nach " +
                          std::to_string(u.nachPunkten));
  EXPECT_EQ(uebergaenge, (Lines{"-> Astadt.Nord nach 1", "<- Bstadt.West nach 4"}));
  // An unknown point is made with a warning.
  EXPECT_EQ(warnings(), Lines{"z. 8: Betriebsstelle XC implizit generiert."});
  EXPECT_TRUE(fpl.getBIF().at("KBS200").punkte.empty());
}

TEST_F(InfrastructureCommands, FaultsCarryTheirLine) {
  std::string const aaBlock = "z. 3: Syntaxfehler im Datenblock des AA-Kommandos";
  std::string const bifBlock = "z. 3: BIF-Kommando mit fehlerhaftem Datenblock.";
  std::string const noDigit = "Lenkziffer ist keine Zahl.";
  for (Fault const& c : {
           Fault{aa + "\nBTR XA\n", "z. 2: AA-Kommando erfordert Datenblock."},
           {aa + "S1 S2 {}\n", "z. 2: AA-Kommando erfordert Datenblock."},
           {aa + "{\n Nord 1 x\n}\n", aaBlock + ": " + noDigit},
           {aa + "{\n G ( 1 ) y\n}\n", aaBlock + ": " + noDigit},
           {aa + "{\n Nord\n}\n", aaBlock + "."},
           {aa + "{\n 5 1\n}\n", aaBlock + "."},
           {aa + "{\n Nord 10\n}\n", aaBlock + "."},
           {aa + "{\n Nord 99999999999\n}\n", aaBlock + "."},
           {aa + "{\n G ( 99999999999 )\n}\n", aaBlock + "."},
           {aa + "{\n G ( 1 x )\n}\n", aaBlock + "."},
           {aa + "{\n G ( )\n}\n", aaBlock + "."},
           {aa + "{\n West 1\n}\n",
            "z. 3: "s + "Unbekannte Fahrtrichtung West in Außenanlage Astadt."_cp1252},
           {aa + "{\n Sued ( 1 )\n}\n", "z. 3: Fahrtrichtung bereits definiert: Sued."},
           {"LZ\nBTR XA\n", "z. 2: Syntaxfehler im LZ-Kommando."},
           {"LZ Xstadt Nord 1\n", "z. 2: "s + "Unbekannte Außenanlage: Xstadt."_cp1252},
           {aa + "{}\nLZ Astadt Nord\n", "z. 3: Syntaxfehler im LZ-Kommando."},
           {aa + "{}\nLZ Astadt Nord 1 12\n", "z. 3: Syntaxfehler im LZ-Kommando."},
           {aa + "{}\nLZ Astadt Nord 99999999999\n", "z. 3: Syntaxfehler im LZ-Kommando."},
           {aa + "{}\nLZ Astadt Nord x\n", "z. 3: Syntaxfehler im LZ-Kommando: " + noDigit},
           {"BIB x \"/lib.xml\"\n", "invalid_argument: invalid stoul argument"},
           {"BIB 99999999999999999999999 \"/lib.xml\"\n",
            "out_of_range: stoul argument out of range"},
           {bib + "FZG Lok 7 x\n", "z. 3: Syntaxfehler im FZG-Kommando."},
           {bib + "FZG Lok x 1\n", "z. 3: Syntaxfehler im FZG-Kommando."},
           {bib + "FZG Lok 7\nBTR XA\n", "z. 3: Syntaxfehler im FZG-Kommando."},
           {bib + "FZG Lok 7 9\n", "z. 3: Unbekanntes Fahrzeug."},
           {bib + "FZG Lok 8 1\n", "z. 3: Unbekanntes Fahrzeug."},
           {bib + "FZG Lok 7 1\nRHG Zug Lok ~ Wagen\n",
            "out_of_range: invalid unordered_map<K, T> key"},
           {"BIF L\nBTR XA\n", "z. 2: BIF-Kommando ohne Datenblock."},
           {"BIF L {\n Bf XA 1 , 5 x\n}\n", bifBlock},
           {"BIF L {\n Bf XA Hp XB\n}\n", bifBlock},
           {"BIF L {\n Bf\n XA\n}\n", bifBlock},
           {"BIF L {\n Zz XA\n}\n", bifBlock},
           {"BIF L {\n | 5\n}\n", bifBlock},
           {"BIF L {\n -> Astadt Nord\n}\n", bifBlock},
       }) {
    fpl.clear(false);
    EXPECT_EQ(outcome([&] { run(c.body); }), c.expected) << c.body;
  }
  fpl.clear(false);
  EXPECT_EQ(runExpectingError(bib + "FZG Lok 7 9\n").token->str(), "9");  // the unknown id
}

}  // namespace
