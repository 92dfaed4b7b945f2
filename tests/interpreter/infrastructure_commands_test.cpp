// The commands that declare what trains run on: AUT, BTR, AA, LZ, BIB, FZG, RHG, BIF.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "external/installation.h"
#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

using namespace std::string_literals;

namespace {

namespace fs = std::filesystem;

// Restores an installation global when the test ends.
template <typename T>
class Restore {
 public:
  explicit Restore(T& value) : ref(value), saved(value) {}
  ~Restore() { ref = saved; }

 private:
  T& ref;
  T saved;
};

class InfrastructureCommands : public DefinitionTest {
 protected:
  void SetUp() override {
    dir = fs::temp_directory_path() /
          ("fplc-infra-" +
           std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::create_directories(dir);
    // Absolute temporary paths must stay as they are.
    quorvelpath.clear();
  }
  void TearDown() override { fs::remove_all(dir); }

  std::string write(std::string const& name, std::string const& content) {
    fs::path path = dir / name;
    std::ofstream(path) << content;
    return path.string();
  }

  // A layout with XA (station), XB (halt), directions Nord (connections 1, 2) and Sued.
  std::string layout() {
    return write("a.stwa", R"(<stelltisch>
  <betriebsstelle name="Astadt" id="10"><abbreviation vname="ds100" value="XA"/><abbreviation vname="fplcat" value="1"/></betriebsstelle>
  <betriebsstelle name="Bdorf" id="11"><abbreviation vname="ds100" value="XB"/><abbreviation vname="fplcat" value="7"/></betriebsstelle>
  <einfahrrichtung name="von Norden" id="3"><abbreviation vname="zuglinor_RiA" value="Nord"/><anschluss id="1"/><anschluss id="2"/></einfahrrichtung>
  <einfahrrichtung name="Sued" id="4"><anschluss id="5"/></einfahrrichtung>
</stelltisch>)");
  }

  std::string library() {
    return write("lib.xml", R"(<bibliothek>
  <fahrzeugtemplate id="1" name="Lok"/><fahrzeugtemplate id="2" name="Wagen"/>
</bibliothek>)");
  }

  Aussenanlage const& anlage(std::string const& name) {
    for (Aussenanlage const& aa : fpl.getAussenanlagen())
      if (aa.name == name) return aa;
    throw std::logic_error("no layout " + name);
  }

  Restore<std::string> savedPath{quorvelpath};
  Restore<bool> savedDev{quorvel_dev};
  fs::path dir;
};

TEST_F(InfrastructureCommands, AuthorsTakeTheirCommentOnlyFromTheirLine) {
  run("AUT Meier \"erste Fassung\"\nAUT Schulze\nBTR XA\n");
  using Paar = std::pair<std::string, std::string>;
  EXPECT_EQ(fpl.getAutoren(), (std::vector<Paar>{{"Meier", "erste Fassung"}, {"Schulze", ""}}));
}

TEST_F(InfrastructureCommands, RedeclaringAPointWarnsOnlyWhenTheNameDiffers) {
  // Same name twice, both empty twice: silent. Another name, then none: two warnings.
  run("BTR XA Astadt\nBTR XA Astadt\nBTR XC\nBTR XC\nBTR XA Bstadt\nBTR XA\n");
  ASSERT_EQ(fpl.getWarnungen().size(), 2u);
  EXPECT_EQ(describe(fpl.getWarnungen()[0]), "z. 6: Widerspruch: BTR XA redefiniert.");
  EXPECT_EQ(describe(fpl.getWarnungen()[1]), "z. 7: Widerspruch: BTR XA redefiniert.");
  EXPECT_EQ(fpl.getWarnungen()[0].token->str(), "BTR");
  EXPECT_EQ(fpl.getBetriebsstellen().size(), 2u);
  EXPECT_EQ(fpl.getBTR().at("XA")->name, "Astadt");  // the first declaration keeps its name
}

TEST_F(InfrastructureCommands, UndeclaredPointIsMadeWithWarningOutsideDevelopment) {
  quorvel_dev = false;
  run("BTR XA Astadt\n");
  Token xa(nullptr, "XA", 7), xz(nullptr, "XZ", 8);
  EXPECT_EQ(fpl.getBTR_weak(&xa), fpl.getBTR().at("XA"));
  Betriebsstelle* made = fpl.getBTR_weak(&xz);
  EXPECT_EQ(made->ds100, "XZ");
  EXPECT_EQ(made->name, "");
  EXPECT_EQ(fpl.getBTR().at("XZ"), made);
  ASSERT_EQ(fpl.getWarnungen().size(), 1u);
  EXPECT_EQ(describe(fpl.getWarnungen()[0]), "z. 8: Betriebsstelle XZ implizit generiert.");
  EXPECT_EQ(fpl.getBTR_weak(&xz), made);  // once made, it is known
  EXPECT_EQ(fpl.getWarnungen().size(), 1u);
}

TEST_F(InfrastructureCommands, UndeclaredPointFailsTheLookUpInDevelopment) {
  quorvel_dev = true;
  run("BTR XA Astadt\n");
  Token xa(nullptr, "XA", 7), xz(nullptr, "XZ", 8);
  EXPECT_EQ(fpl.getBTR_weak(&xa), fpl.getBTR().at("XA"));
  try {
    fpl.getBTR_weak(&xz);
    FAIL() << "no exception";
  } catch (std::out_of_range const& e) {
    EXPECT_STREQ(e.what(), "invalid unordered_map<K, T> key");
  }
  EXPECT_EQ(fpl.getBTR().count("XZ"), 0u);
  EXPECT_TRUE(fpl.getWarnungen().empty());
}

// Runs each definition on a fresh definition and expects its fault.
#define EXPECT_FAULTS(cases)                                           \
  for (auto const& c : cases) {                                        \
    fpl.clear(false);                                                  \
    EXPECT_EQ(describe(runExpectingError(c.body)), c.fault) << c.body; \
  }

struct Fault {
  std::string body;
  std::string fault;
};

TEST_F(InfrastructureCommands, LayoutTakesSuffixDigitsAndOwnDirections) {
  std::string const path = layout();
  run("AA Astadt \"" + path +
      "\" S1 {\n  Nord 2 1 2\n  Gleis5 ( 101 102 ) 3\n  Gleis6 ( 103\n  104 ) \n}\n" +
      "AA Bstadt \"" + path + "\"\n{ }\n");
  Aussenanlage const& a = anlage("Astadt");
  EXPECT_EQ(a.datei, path);
  EXPECT_EQ(a.suffix, "S1");
  EXPECT_EQ(fpl.getBTR().at("XA")->fplcat, 1);
  EXPECT_EQ(a.fahrtrichtungen.at("Nord").lenkziffern, 0b110);
  EXPECT_EQ(a.fahrtrichtungen.at("Sued").lenkziffern, 0xFFFF);
  auto const& g5 = a.fahrtrichtungen.at("Gleis5");
  EXPECT_EQ(g5.anschluesse, (std::vector<int>{101, 102}));
  EXPECT_EQ(g5.lenkziffern, 0b1000);
  EXPECT_EQ(g5.id, 1);
  EXPECT_FALSE(g5.ausAussenanlage);
  auto const& g6 = a.fahrtrichtungen.at("Gleis6");
  EXPECT_EQ(g6.anschluesse, (std::vector<int>{103, 104}));
  EXPECT_EQ(g6.lenkziffern, 0xFFFF);
  EXPECT_EQ(g6.id, 2);
  // Each layout keeps its own directions; the suffix is only read from the command's line.
  Aussenanlage const& b = anlage("Bstadt");
  EXPECT_EQ(b.suffix, "");
  EXPECT_EQ(b.fahrtrichtungen.size(), 2u);
  EXPECT_EQ(b.fahrtrichtungen.at("Nord").lenkziffern, 0xFFFF);
  EXPECT_TRUE(fpl.getWarnungen().empty());
}

TEST_F(InfrastructureCommands, LayoutLoadedAgainStaysOneRecord) {
  std::string const path = layout();
  std::string const other = write("b.stwa", R"(<stelltisch>
  <betriebsstelle name="Cweiler" id="12"><abbreviation vname="ds100" value="XC"/></betriebsstelle>
  <einfahrrichtung name="Nord" id="3"><anschluss id="9"/></einfahrrichtung>
</stelltisch>)");
  run("AA Astadt \"" + path + "\" S1 {\n Nord 1\n}\nAA Astadt \"" + other + "\" {}\n");
  ASSERT_EQ(fpl.getAussenanlagen().size(), 1u);
  Aussenanlage const& a = anlage("Astadt");
  EXPECT_EQ(a.datei, other);
  EXPECT_EQ(a.suffix, "S1");
  EXPECT_EQ(a.betriebsstellen.size(), 3u);
  EXPECT_EQ(a.fahrtrichtungen.at("Nord").anschluesse, (std::vector<int>{1, 2, 9}));
  EXPECT_EQ(a.fahrtrichtungen.at("Nord").lenkziffern, 0xFFFF);  // the file sets all digits again
}

TEST_F(InfrastructureCommands, LayoutFaults) {
  std::string const aa = "AA Astadt \"" + layout() + "\" ";
  Fault const cases[] = {
      {aa + "\nBTR XA\n", "z. 2: AA-Kommando erfordert Datenblock."},
      {aa + "S1 S2 {}\n", "z. 2: AA-Kommando erfordert Datenblock."},
      {aa + "{\n Nord 1 x\n}\n",
       "z. 3: Syntaxfehler im Datenblock des AA-Kommandos: Lenkziffer ist keine Zahl."},
      {aa + "{\n G ( 1 ) y\n}\n",
       "z. 3: Syntaxfehler im Datenblock des AA-Kommandos: Lenkziffer ist keine Zahl."},
      {aa + "{\n Nord\n}\n", "z. 3: Syntaxfehler im Datenblock des AA-Kommandos."},
      {aa + "{\n 5 1\n}\n", "z. 3: Syntaxfehler im Datenblock des AA-Kommandos."},
      {aa + "{\n Nord 10\n}\n", "z. 3: Syntaxfehler im Datenblock des AA-Kommandos."},
      {aa + "{\n G ( 1 x )\n}\n", "z. 3: Syntaxfehler im Datenblock des AA-Kommandos."},
      {aa + "{\n G ( )\n}\n", "z. 3: Syntaxfehler im Datenblock des AA-Kommandos."},
      {aa + "{\n West 1\n}\n",
       "z. 3: "s + "Unbekannte Fahrtrichtung West in Außenanlage Astadt."_cp1252},
      {aa + "{\n Sued ( 1 )\n}\n", "z. 3: Fahrtrichtung bereits definiert: Sued."},
  };
  EXPECT_FAULTS(cases);
}

TEST_F(InfrastructureCommands, RoutingDigitsSetAfterLoadingAndUnusedDirectionsReported) {
  std::string const path = layout();
  run("AA Astadt \"" + path + "\" {\n G ( 1 )\n}\nAA Bstadt \"" + path +
      "\" {}\nLZ Astadt Nord 4 3\n" +
      "ZL R {\n XA . N1 H - 10:00\n -> Bstadt . Nord\n XB . N2 H 10:10 -\n}\nLZ Astadt\nLZ "
      "Bstadt\n");
  EXPECT_EQ(anlage("Astadt").fahrtrichtungen.at("Nord").lenkziffern, 0b11000);
  EXPECT_EQ(anlage("Bstadt").fahrtrichtungen.at("Nord").lenkziffern, 0xFFFF);
  std::vector<std::string> warnings;
  for (Error const& w : fpl.getWarnungen())
    warnings.push_back(describe(w));
  std::string const unused = "Fahrtrichtung aus Außenanlage bleibt unbenutzt: "_cp1252;
  EXPECT_EQ(warnings,
            (std::vector<std::string>{"z. 12: " + unused + "Nord.", "z. 12: " + unused + "Sued.",
                                      "z. 13: " + unused + "Sued."}));

  Fault const cases[] = {
      {"LZ\nBTR XA\n", "z. 2: Syntaxfehler im LZ-Kommando."},
      {"LZ Xstadt Nord 1\n", "z. 2: "s + "Unbekannte Außenanlage: Xstadt."_cp1252},
      {"AA Astadt \"" + path + "\" {}\nLZ Astadt Nord\n", "z. 3: Syntaxfehler im LZ-Kommando."},
      {"AA Astadt \"" + path + "\" {}\nLZ Astadt Nord 1 12\n",
       "z. 3: Syntaxfehler im LZ-Kommando."},
      {"AA Astadt \"" + path + "\" {}\nLZ Astadt Nord x\n",
       "z. 3: Syntaxfehler im LZ-Kommando: Lenkziffer ist keine Zahl."},
  };
  EXPECT_FAULTS(cases);
}

TEST_F(InfrastructureCommands, LibrariesVehiclesAndFormations) {
  std::string const lib = library();
  run("BIB 7 \"" + lib +
      "\"\nFZG Lok 7 1\nFZG Wagen 7 1\nFZG Wagen 7 2\nRHG Leer\nRHG Zug Lok ~ Wagen Wagen\n");
  ASSERT_EQ(fpl.getFzgLibs().size(), 1u);
  EXPECT_EQ(fpl.getFzgLibs()[0].nummer, 7);
  EXPECT_EQ(fpl.getFzgLibs()[0].datei, lib);
  EXPECT_EQ(fpl.getFzgNamen().at("Wagen"),
            (std::pair<int, int>{7, 2}));  // a name given again is replaced
  Reihung const* zug = fpl.getReihungenByName().at("Zug");
  EXPECT_EQ(fpl.getReihungenByName().at("Leer")->id, 1u);
  EXPECT_EQ(zug->id, 2u);
  ASSERT_EQ(zug->fahrzeuge.size(), 3u);
  EXPECT_EQ(zug->fahrzeuge[0].fzg, "Lok");
  EXPECT_FALSE(zug->fahrzeuge[0].gedreht);
  EXPECT_TRUE(zug->fahrzeuge[1].gedreht);
  EXPECT_FALSE(zug->fahrzeuge[2].gedreht);
  EXPECT_EQ(zug->fahrzeuge[2].fahrzeug, 2);
  EXPECT_EQ(fpl.getFzg(zug, 1).name, "Wagen");
}

TEST_F(InfrastructureCommands, LibraryVehicleAndFormationFaults) {
  std::string const bib = "BIB 7 \"" + library() + "\"\n";
  Fault const cases[] = {
      {bib + "FZG Lok 7 x\n", "z. 3: Syntaxfehler im FZG-Kommando."},
      {bib + "FZG Lok x 1\n", "z. 3: Syntaxfehler im FZG-Kommando."},
      {bib + "FZG Lok 7\nBTR XA\n", "z. 3: Syntaxfehler im FZG-Kommando."},
      {bib + "FZG Lok 7 9\n", "z. 3: Unbekanntes Fahrzeug."},
      {bib + "FZG Lok 8 1\n", "z. 3: Unbekanntes Fahrzeug."},
  };
  EXPECT_FAULTS(cases);
  fpl.clear(false);
  EXPECT_EQ(runExpectingError(bib + "FZG Lok 7 9\n").token->str(), "9");

  struct Thrown {
    std::string body;
    std::string what;
  } const exceptions[] = {
      {"BIB x \"/lib.xml\"\n", "invalid stoul argument"},
      {"BIB 99999999999999999999999 \"/lib.xml\"\n", "stoul argument out of range"},
      {bib + "FZG Lok 7 1\nRHG Zug Lok ~ Wagen\n", "invalid unordered_map<K, T> key"},
  };
  for (Thrown const& c : exceptions) {
    fpl.clear(false);
    try {
      run(c.body);
      ADD_FAILURE() << c.body;
    } catch (std::exception const& e) {
      EXPECT_EQ(e.what(), c.what);
    }
  }
}

TEST_F(InfrastructureCommands, LineKeepsPointsPositionsAndTransitions) {
  quorvel_dev = false;
  run("BTR XA Astadt\nBTR XB Bdorf\nBIF KBS100 {\n"
      "  Bf XA 0,0\n  -> Astadt . Nord\n  Hp XB - 1 , 25\n  * XC\n  | 12,5\n  <- Bstadt . West\n  "
      "Uest XA\n}\n"
      "BIF KBS200\n{\n}\n");
  Strecke const& s = fpl.getBIF().at("KBS100");
  EXPECT_EQ(s.name, "KBS100");
  struct Expected {
    Strecke::Punkt::Art art;
    char const* ds100;  // null: a kilometre mark
    char const* position;
    double km;
    std::uint32_t line;
  } const expected[] = {{Strecke::Punkt::Bf, "XA", "0,0", 0.0, 5},
                        {Strecke::Punkt::Hp, "XB", "-1,25", -1.25, 7},
                        {Strecke::Punkt::Unbestimmt, "XC", "", 0.0, 8},
                        {Strecke::Punkt::Marke, nullptr, "12,5", 12.5, 9},
                        {Strecke::Punkt::Uest, "XA", "", 0.0, 11}};
  ASSERT_EQ(s.punkte.size(), std::size(expected));
  for (std::size_t i = 0; i < s.punkte.size(); ++i) {
    Strecke::Punkt const& p = s.punkte[i];
    EXPECT_EQ(p.art, expected[i].art) << i;
    EXPECT_EQ(p.betriebsstelle, expected[i].ds100 ? fpl.getBTR().at(expected[i].ds100) : nullptr)
        << i;
    EXPECT_EQ(p.hatPosition, *expected[i].position != 0) << i;
    EXPECT_EQ(p.position, expected[i].position) << i;
    EXPECT_DOUBLE_EQ(p.km, expected[i].km) << i;
    EXPECT_EQ(p.token->line(), expected[i].line) << i;
  }
  ASSERT_EQ(s.uebergaenge.size(), 2u);
  EXPECT_FALSE(s.uebergaenge[0].einfahrt);
  EXPECT_EQ(s.uebergaenge[0].anlage, "Astadt");
  EXPECT_EQ(s.uebergaenge[0].richtung, "Nord");
  EXPECT_EQ(s.uebergaenge[0].nachPunkten, 1u);
  EXPECT_TRUE(s.uebergaenge[1].einfahrt);
  EXPECT_EQ(s.uebergaenge[1].nachPunkten, 4u);
  // The first kind given wins; an unknown point is made with a warning.
  EXPECT_EQ(fpl.getBTR().at("XA")->fplcat, 1);
  EXPECT_EQ(fpl.getBTR().at("XB")->fplcat, 2);
  EXPECT_EQ(fpl.getBTR().at("XC")->fplcat, 0);
  ASSERT_EQ(fpl.getWarnungen().size(), 1u);
  EXPECT_EQ(describe(fpl.getWarnungen()[0]), "z. 8: Betriebsstelle XC implizit generiert.");
  EXPECT_TRUE(fpl.getBIF().at("KBS200").punkte.empty());
}

TEST_F(InfrastructureCommands, LineFaults) {
  std::string const bad = "BIF-Kommando mit fehlerhaftem Datenblock.";
  Fault const cases[] = {
      {"BIF L\nBTR XA\n", "z. 2: BIF-Kommando ohne Datenblock."},
      {"BIF L {\n Bf XA 1 , 5 x\n}\n", "z. 3: " + bad},
      {"BIF L {\n Bf XA Hp XB\n}\n", "z. 3: " + bad},
      {"BIF L {\n Bf\n XA\n}\n", "z. 3: " + bad},
      {"BIF L {\n Zz XA\n}\n", "z. 3: " + bad},
      {"BIF L {\n | 5\n}\n", "z. 3: " + bad},
      {"BIF L {\n -> Astadt Nord\n}\n", "z. 3: " + bad},
  };
  EXPECT_FAULTS(cases);
}

TEST_F(InfrastructureCommands, ExampleInstallationLoadsWithoutWarnings) {
  quorvelpath = std::string(FPLC_SOURCE_DIR) + "/examples/installation";
  quorvel_dev = false;
  std::string const path = quorvelpath + "/fahrplaene/beispiel.fpl";
  std::ifstream in(path);
  ASSERT_TRUE(in) << path;
  fpl.read(in, path);
  fpl.execute(true, static_cast<TokenList const*>(nullptr));
  for (Error const& w : fpl.getWarnungen())
    ADD_FAILURE() << describe(w) << " " << w.message;
  Aussenanlage const& ahlbach = anlage("Ahlbach");
  EXPECT_TRUE(ahlbach.betriebsstellen.at("Ahlbach").stationforlengthless);
  EXPECT_TRUE(ahlbach.betriebsstellen.at("Ahlbach").hauptsignaltyp);
  EXPECT_FALSE(ahlbach.fahrtrichtungen.at("Nordkopf").ausAussenanlage);
  EXPECT_EQ(anlage("Bergheide").suffix, "BH");
  EXPECT_EQ(fpl.getBTR().at("XHK")->fplcat, 4);  // the block post's kind comes from the line
  EXPECT_EQ(fpl.getFzgLibs().at(0).fahrzeuge.size(), 5u);
  EXPECT_EQ(fpl.getBIF().at("KBS_412").punkte.size(), 7u);
}

}  // namespace
