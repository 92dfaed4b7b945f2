// Reading a layout file: operating points, directions and signal flags.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <tuple>

#include "model/aussenanlage.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"
#include "tokenizer/token.h"

namespace {

class LayoutReader : public ::testing::Test {
 protected:
  // Reads `content` as the layout file `name` (a missing file for null).
  void read(std::string const& name, char const* content) {
    anlage.datei = content ? dir.write(name, content) : (dir.path() / name).string();
    anlage.readSTWA(punkte, byDs100, richtungen, warnungen, &command);
  }

  // "ds100 name kind; " of each of the definition's points.
  std::string points() const {
    std::string out;
    for (auto const& [ds100, b] : std::map(byDs100.begin(), byDs100.end()))
      out += ds100 + " " + b->name + " " + std::to_string(b->fplcat) + "; ";
    return out;
  }

  TempDir dir;
  Token const command{nullptr, "AA", 4};
  Aussenanlage anlage;
  std::list<Betriebsstelle> punkte;
  std::unordered_map<std::string, Betriebsstelle*> byDs100;
  std::unordered_map<std::string, Aussenanlage::Fahrtrichtung> richtungen;
  std::vector<Error> warnungen;
};

TEST_F(LayoutReader, FaultsNameTheCommandAndAddNothing) {
  std::string const unreadable =
      "Außenanlage konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252;
  std::pair<char const*, std::string> const cases[] = {
      {nullptr, unreadable},
      {"<stelltisch><betriebsstelle></stelltisch>", unreadable},
      {"<?xml version=\"1.0\"?>\n<!-- leer -->\n", "Außenanlage: Beschädigtes XML!"_cp1252},
      {"<fahrplan><betriebsstelle name=\"A\"><abbreviation vname=\"ds100\" "
       "value=\"XA\"/></betriebsstelle></fahrplan>",
       "Datei ist keine Quorvel-Außenanlage!"_cp1252},
  };
  for (auto const& [content, message] : cases) {  // the missing file comes first
    try {
      read("fault.stwa", content);
      ADD_FAILURE() << "no fault for " << message;
    } catch (Error const& e) {
      EXPECT_EQ(std::pair(e.message, e.token), std::pair(message, &command));
    }
  }
  EXPECT_TRUE(punkte.empty());
  EXPECT_TRUE(anlage.betriebsstellen.empty());
}

TEST_F(LayoutReader, ReadsPointsDirectionsAndSignalFlagsAcrossFiles) {
  punkte.push_back({"XE", "Edorf"});  // as by "BTR XE Edorf"
  byDs100["XE"] = &punkte.back();
  read("a.stwa", R"(<aussenanlage>
  <signal betriebsstelle="10" stationforlengthless="1" hauptsignaltyp="1"/>
  <betriebsstelle name="Astadt" id="10"><abbreviation vname="fplcat" value="7"/><abbreviation vname="ds100" value="XA"/>
    <abbreviation vname="fplcat" value="2a"/><abbreviation vname="fplcat" value="9"/></betriebsstelle>
  <betriebsstelle name="Bdorf" id="11"><abbreviation vname="ds100" value="XB"/><abbreviation vname="fplcat" value="7"/></betriebsstelle>
  <betriebsstelle name="Cweiler" id="12"><abbreviation vname="ds100" value="XC"/><abbreviation vname="fplcat" value="4"/></betriebsstelle>
  <betriebsstelle name="Dhausen" id="13"><abbreviation vname="ds100" value="XD"/><abbreviation vname="fplcat" value=""/></betriebsstelle>
  <betriebsstelle name="Abzw Ost" id="14"><abbreviation vname="DS100" value="XO"/></betriebsstelle>
  <betriebsstelle name="Edorf" id="16"><abbreviation vname="ds100" value="XE"/><abbreviation vname="fplcat" value="1"/></betriebsstelle>
  <bahnsteig name="Egal" id="15"/>
  <signal betriebsstelle="11" stationforlengthless="ja"/><signal betriebsstelle="99" hauptsignaltyp="ja"/>
  <signal betriebsstelle="12" hauptsignaltyp="ja" stationforlengthless=""/>
  <einfahrrichtung name="von Norden" id="3"><abbreviation vname="zuglinor_RiA" value="N1"/>
    <abbreviation vname="zuglinor_RiA" value="Nord"/><anschluss id="1"/><anschluss id="2"/></einfahrrichtung>
  <einfahrrichtung name="Sued" id="4"><anschluss id="5"/></einfahrrichtung>
  <einfahrrichtung id="6"><anschluss id="7"/></einfahrrichtung>
</aussenanlage>)");

  EXPECT_TRUE(warnungen.empty());
  // No point without a "ds100" abbreviation; "fplcat" 2a, 7, 4, "" and none for a known point.
  EXPECT_EQ(punkte.size(), 5u);
  EXPECT_EQ(points(), "XA Astadt 1; XB Bdorf 2; XC Cweiler 0; XD Dhausen 0; XE Edorf 0; ");
  // Signal flags: id, stationforlengthless, hauptsignaltyp; Astadt's signal came before it.
  std::string infos;
  for (auto const& [name, i] :
       std::map(anlage.betriebsstellen.begin(), anlage.betriebsstellen.end()))
    infos += name + " " + std::to_string(i.id) + " " + std::to_string(i.stationforlengthless) +
             std::to_string(i.hauptsignaltyp) + "; ";
  EXPECT_EQ(
      infos,
      "Abzw Ost 14 00; Astadt 10 00; Bdorf 11 10; Cweiler 12 01; Dhausen 13 00; Edorf 16 00; ");
  // The last "zuglinor_RiA" decides; the direction without key nor name is skipped.
  ASSERT_EQ(richtungen.size(), 2u);
  auto const& nord = richtungen.at("Nord");
  EXPECT_EQ(
      std::tuple(nord.name, nord.id, nord.anschluesse, nord.lenkziffern, nord.ausAussenanlage),
      std::tuple("Nord", 3, std::vector<int>{1, 2}, 0xFFFF, true));
  EXPECT_EQ(richtungen.at("Sued").anschluesse, (std::vector<int>{5}));

  read("b.stwa", R"(<stelltisch>
  <betriebsstelle name="Astadt" id="5"><abbreviation vname="ds100" value="XA"/></betriebsstelle>
  <betriebsstelle name="A-Stadt" id="6"><abbreviation vname="ds100" value="XA"/></betriebsstelle>
  <betriebsstelle name="Astadt Hbf" id="7"><abbreviation vname="ds100" value="XA"/></betriebsstelle>
  <betriebsstelle name="Dhausen" id="17"><abbreviation vname="ds100" value="XD"/><abbreviation vname="fplcat" value="1"/></betriebsstelle>
  <einfahrrichtung name="Nord" id="8"><anschluss id="4"/></einfahrrichtung>
</stelltisch>)");
  ASSERT_EQ(warnungen.size(), 2u);  // one per differing occurrence
  for (Error const& w : warnungen)
    EXPECT_EQ(
        std::pair(w.message, w.token),
        std::pair(std::string("Widerspruch: Außenanlage definiert XA anders."_cp1252), &command));
  // The first name wins; a point known before the file takes no kind from it.
  EXPECT_EQ(points(), "XA Astadt 1; XB Bdorf 2; XC Cweiler 0; XD Dhausen 0; XE Edorf 0; ");
  EXPECT_EQ(punkte.size(), 5u);
  EXPECT_EQ(std::pair(nord.id, nord.anschluesse), std::pair(8, std::vector<int>{1, 2, 4}));
  EXPECT_EQ(anlage.betriebsstellen.at("Astadt").id, 5);
}

}  // namespace
