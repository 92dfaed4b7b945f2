// The commands that declare what trains run on: AUT, BTR, AA, LZ, BIB, FZG, RHG, BIF.
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <stdexcept>
#include <string>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"

using namespace std::string_literals;

namespace {

template <typename Map>
auto sorted(Map const& map) {
  return std::map(map.begin(), map.end());
}

class InfrastructureCommands : public DefinitionTest {
 protected:
  // Absolute temporary paths must stay as they are: no installation root.
  void SetUp() override { quorvelpath.clear(); }

  // The state `body` leaves, its fault, or the type and what() of a standard exception.
  std::string result(std::string const& body) {
    try {
      return outcome(body, [&] { return state(); });
    } catch (std::out_of_range const& e) {
      return "out_of_range: "s + e.what();
    } catch (std::invalid_argument const& e) {
      return "invalid_argument: "s + e.what();
    }
  }

  // Every record made ("KIND ...; "), hash maps sorted, then the warnings. Directions: "key id
  // { connections } digits (hex) [Datei]"; places of a line: "kind ds100 [@]position=km zLINE".
  std::string state() const {
    std::ostringstream out;
    for (auto const& [name, kommentar] : fpl.getAutoren())
      out << "AUT " << name << '/' << kommentar << "; ";
    for (Betriebsstelle const& b : fpl.getBetriebsstellen())
      out << "BTR " << b.ds100 << '/' << b.name << '/' << int(b.fplcat) << "; ";
    for (Aussenanlage const& a : fpl.getAussenanlagen()) {
      out << "AA " << a.name << ' ' << a.suffix << ' ' << a.datei << ' ' << a.betriebsstellen.size()
          << ':';
      for (auto const& [key, r] : sorted(a.fahrtrichtungen))
        out << ' ' << key << ' ' << r.id << ' ' << ::testing::PrintToString(r.anschluesse) << ' '
            << std::hex << r.lenkziffern << std::dec << (r.ausAussenanlage ? " Datei" : "");
      out << "; ";
    }
    for (FzgLib const& l : fpl.getFzgLibs())
      out << "BIB " << l.nummer << ' ' << l.datei << "; ";
    for (auto const& [name, id] : sorted(fpl.getFzgNamen()))
      out << "FZG " << name << ' ' << id.first << '/' << id.second << "; ";
    for (auto const& [name, r] : sorted(fpl.getReihungenByName())) {
      out << "RHG " << name << ' ' << r->id << ':';
      for (std::size_t i = 0; i < r->fahrzeuge.size(); ++i)
        out << ' ' << (r->fahrzeuge[i].gedreht ? "~" : "") << fpl.getFzg(r, i).name << ' '
            << r->fahrzeuge[i].bibliothek << '/' << r->fahrzeuge[i].fahrzeug;
      out << "; ";
    }
    char const* const arten[] = {"*", "Bf", "Hp", "Abzw", "Bk", "Uest", "|"};
    for (auto const& [name, s] : sorted(fpl.getBIF())) {
      out << "BIF " << name << ':';
      for (Strecke::Punkt const& p : s.punkte) {
        Betriebsstelle const* b = p.betriebsstelle;
        out << ' ' << arten[p.art] << ' ' << (b ? b->ds100 : "-")
            << (b && fpl.getBTR().at(b->ds100) != b ? "(Kopie)" : "")
            << (p.hatPosition ? " @" : " ") << p.position << '=' << p.km << " z" << p.token->line()
            << ',';
      }
      for (Strecke::Uebergang const& u : s.uebergaenge)
        out << (u.einfahrt ? " <- " : " -> ") << u.anlage << '.' << u.richtung << " nach "
            << u.nachPunkten << ',';
      out << "; ";
    }
    for (Error const& w : fpl.getWarnungen())
      out << fault(w) << "; ";
    return out.str();
  }

  Restore<std::string> savedPath{quorvelpath};
  Restore<bool> savedDev{quorvel_dev};
  TempDir dir;
  std::string const layout = dir.write("a.stwa", R"(<stelltisch>
  <betriebsstelle name="Astadt" id="10"><abbreviation vname="ds100" value="XA"/><abbreviation vname="fplcat" value="1"/></betriebsstelle>
  <betriebsstelle name="Bdorf" id="11"><abbreviation vname="ds100" value="XB"/><abbreviation vname="fplcat" value="7"/></betriebsstelle>
  <einfahrrichtung name="von Norden" id="3"><abbreviation vname="zuglinor_RiA" value="Nord"/><anschluss id="1"/><anschluss id="2"/></einfahrrichtung>
  <einfahrrichtung name="Sued" id="4"><anschluss id="5"/></einfahrrichtung>
</stelltisch>)");
  std::string const other = dir.write("b.stwa", R"(<stelltisch>
  <betriebsstelle name="Cweiler" id="12"><abbreviation vname="ds100" value="XC"/></betriebsstelle>
  <einfahrrichtung name="Nord" id="3"><anschluss id="9"/></einfahrrichtung>
</stelltisch>)");
  std::string const aa = "AA Astadt \"" + layout + "\" ";
  std::string const lib = dir.write("lib.xml", R"(<bibliothek>
  <fahrzeugtemplate id="1" name="Lok"/><fahrzeugtemplate id="2" name="Wagen"/>
</bibliothek>)");
  std::string const bib = "BIB 7 \"" + lib + "\"\n";
};

TEST_F(InfrastructureCommands, MakeTheirRecordsOrFaultAtTheirToken) {
  std::string const points = "BTR XA/Astadt/1; BTR XB/Bdorf/2; ";
  std::string const unused = "Fahrtrichtung aus Außenanlage bleibt unbenutzt: "_cp1252;
  std::string const aaBlock = "Syntaxfehler im Datenblock des AA-Kommandos";
  std::string const bifBlock = "BIF-Kommando mit fehlerhaftem Datenblock.";
  std::string const unknownKey = "out_of_range: invalid unordered_map<K, T> key";
  quorvel_dev = false;
  std::pair<std::string, std::string> const rows[] = {
      // Comments and names only from their own line; only another name warns, the first stays.
      {"AUT Meier \"erste Fassung\"\nAUT Schulze\nBTR XA Astadt\nBTR XA Astadt\nBTR XC\nBTR XC\n"
       "BTR XA Bstadt\nBTR XA\n",
       "AUT Meier/erste Fassung; AUT Schulze/; BTR XA/Astadt/0; BTR XC//0; z. 8 BTR: Widerspruch: "
       "BTR XA redefiniert.; z. 9 BTR: Widerspruch: BTR XA redefiniert.; "},
      // Each layout keeps its own directions; LZ without directions reports unused ones.
      {aa + "S1 {\n  Nord 2 1 2\n  Gleis5 ( 101 102 ) 3\n  Gleis6 ( 103\n  104 ) \n}\n" +
           "AA Bstadt \"" + layout + "\"\n{ }\nLZ Astadt Sued 4 3\n" +
           "ZL R {\n XA . N1 H - 10:00\n -> Bstadt . Nord\n XB . N2 H 10:10 -\n}\n" +
           "LZ Astadt\nLZ Bstadt\n",
       points + "AA Astadt S1 " + layout +
           " 2: Gleis5 1 { 101, 102 } 8 Gleis6 2 { 103, 104 } ffff Nord 3 { 1, 2 } 6 Datei"
           " Sued 4 { 5 } 18 Datei; AA Bstadt  " +
           layout + " 2: Nord 3 { 1, 2 } ffff Datei Sued 4 { 5 } ffff Datei; z. 16 LZ: " + unused +
           "Nord.; z. 16 LZ: " + unused + "Sued.; z. 17 LZ: " + unused + "Sued.; "},
      // Loaded again: one record; connections collected, all routing digits set again.
      {aa + "S1 {\n Nord 1\n}\nAA Astadt \"" + other + "\" {}\n",
       points + "BTR XC/Cweiler/0; AA Astadt S1 " + other +
           " 3: Nord 3 { 1, 2, 9 } ffff Datei Sued 4 { 5 } ffff Datei; "},
      {bib + "FZG Lok 7 1\nFZG Wagen 7 1\nFZG Wagen 7 2\nRHG Leer\nRHG Zug Lok ~ Wagen Wagen\n",
       "BIB 7 " + lib +
           "; FZG Lok 7/1; FZG Wagen 7/2; RHG Leer 1:; RHG Zug 2: Lok 7/1 ~Wagen 7/2 Wagen 7/2; "},
      // The first kind given to a point wins; an unknown point is made once, with a warning.
      {"BTR XA Astadt\nBTR XB Bdorf\nBIF KBS100 {\n  Bf XA 0,0\n  -> Astadt . Nord\n"
       "  Hp XB - 1 , 25\n  * XC\n  | 12,5\n  <- Bstadt . West\n  Uest XA\n * XC\n}\n"
       "BIF KBS200\n{\n}\n",
       "BTR XA/Astadt/1; BTR XB/Bdorf/2; BTR XC//0; BIF KBS100: Bf XA @0,0=0 z5, "
       "Hp XB @-1,25=-1.25 z7, * XC =0 z8, | - @12,5=12.5 z9, Uest XA =0 z11, * XC =0 z12, "
       "-> Astadt.Nord nach 1, <- Bstadt.West nach 4,; BIF KBS200:; "
       "z. 8 XC: Betriebsstelle XC implizit generiert.; "},
      {aa + "\nBTR XA\n", "z. 2 AA: AA-Kommando erfordert Datenblock."},
      {aa + "{\n Nord 1 x\n}\n", "z. 3 x: " + aaBlock + ": Lenkziffer ist keine Zahl."},
      {aa + "{\n Nord\n}\n", "z. 3 Nord: " + aaBlock + "."},
      {aa + "{\n 5 1\n}\n", "z. 3 5: " + aaBlock + "."},
      {aa + "{\n Nord 10\n}\n", "z. 3 Nord: " + aaBlock + "."},
      {aa + "{\n Nord 99999999999\n}\n", "z. 3 Nord: " + aaBlock + "."},
      {aa + "{\n G ( 99999999999 )\n}\n", "z. 3 G: " + aaBlock + "."},
      {aa + "{\n G ( )\n}\n", "z. 3 G: " + aaBlock + "."},
      {aa + "{\n West 1\n}\n",
       "z. 3 West: "s + "Unbekannte Fahrtrichtung West in Außenanlage Astadt."_cp1252},
      {aa + "{\n Sued ( 1 )\n}\n", "z. 3 Sued: Fahrtrichtung bereits definiert: Sued."},
      {"LZ\nBTR XA\n", "z. 2 LZ: Syntaxfehler im LZ-Kommando."},
      {"LZ Xstadt Nord 1\n", "z. 2 Xstadt: "s + "Unbekannte Außenanlage: Xstadt."_cp1252},
      {aa + "{}\nLZ Astadt Nord\n", "z. 3 LZ: Syntaxfehler im LZ-Kommando."},
      {aa + "{}\nLZ Astadt Nord 1 12\n", "z. 3 12: Syntaxfehler im LZ-Kommando."},
      {aa + "{}\nLZ Astadt Nord 99999999999\n", "z. 3 99999999999: Syntaxfehler im LZ-Kommando."},
      {aa + "{}\nLZ Astadt Nord x\n",
       "z. 3 x: Syntaxfehler im LZ-Kommando: Lenkziffer ist keine Zahl."},
      {"BIB x \"/lib.xml\"\n", "invalid_argument: invalid stoul argument"},
      {"BIB 99999999999999999999999 \"/lib.xml\"\n", "out_of_range: stoul argument out of range"},
      {bib + "FZG Lok 7 x\n", "z. 3 Lok: Syntaxfehler im FZG-Kommando."},
      {bib + "FZG Lok 7\nBTR XA\n", "z. 3 Lok: Syntaxfehler im FZG-Kommando."},
      {bib + "FZG Lok 7 9\n", "z. 3 9: Unbekanntes Fahrzeug."},
      {bib + "FZG Lok 8 1\n", "z. 3 1: Unbekanntes Fahrzeug."},
      {bib + "FZG Lok 7 1\nRHG Zug Lok ~ Wagen\n", unknownKey},
      {"BIF L\nBTR XA\n", "z. 2 BIF: BIF-Kommando ohne Datenblock."},
      {"BIF L {\n Bf XA 1 , 5 x\n}\n", "z. 3 Bf: " + bifBlock},
      {"BIF L {\n Bf\n XA\n}\n", "z. 3 Bf: " + bifBlock},
      {"BIF L {\n Zz XA\n}\n", "z. 3 Zz: " + bifBlock},
      {"BIF L {\n | 5\n}\n", "z. 3 |: " + bifBlock},
      {"BIF L {\n -> Astadt Nord\n}\n", "z. 3 ->: " + bifBlock},
  };
  for (auto const& [body, expected] : rows)
    EXPECT_EQ(result(body), expected) << body;
  quorvel_dev = true;  // in development an unknown point is a fault
  EXPECT_EQ(result("BIF L {\n * XA\n}\n"), unknownKey);
}

}  // namespace
