// Reading a layout file: operating points, directions and signal flags.
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

#include "model/aussenanlage.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"
#include "tokenizer/token.h"

namespace {

TEST(LayoutReader, ReadsPointsDirectionsAndSignalFlagsAcrossFilesOrFaultsAtTheCommand) {
  TempDir dir;
  Token const command{nullptr, "AA", 4};
  Aussenanlage anlage;
  std::list<Betriebsstelle> punkte{{"XE", "Edorf"}};  // as by "BTR XE Edorf"
  std::unordered_map<std::string, Betriebsstelle*> byDs100{{"XE", &punkte.back()}};
  decltype(anlage.fahrtrichtungen) richtungen;
  std::vector<Error> warnungen;
  std::string const none = " | 1: XE Edorf 0; | |";
  std::string const points = " XA Astadt 1; XB Bdorf 2; XC Cweiler 0; XD Dhausen 0; XE Edorf 0;";
  std::string const contradiction = " | AA: Widerspruch: Außenanlage definiert XA anders."_cp1252;
  std::string const unreadable =
      "AA: Außenanlage konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252 + none;
  std::pair<char const*, std::string> const files[] = {
      {nullptr, unreadable},  // the missing file comes first
      {"<stelltisch><betriebsstelle></stelltisch>", unreadable},
      {"<?xml version=\"1.0\"?>", "AA: Außenanlage: Beschädigtes XML!"_cp1252 + none},
      {R"(<fahrplan><betriebsstelle name="A"><abbreviation vname="ds100" value="XA"/></betriebsstelle></fahrplan>)",
       "AA: Datei ist keine Quorvel-Außenanlage!"_cp1252 + none},
      // "fplcat" 2a, 7, 4, ""; no point without "ds100"; last "zuglinor_RiA" decides; signal first.
      {R"(<aussenanlage><signal betriebsstelle="10" stationforlengthless="1" hauptsignaltyp="1"/>
  <betriebsstelle name="Astadt" id="10"><abbreviation vname="fplcat" value="7"/><abbreviation vname="ds100" value="XA"/><abbreviation vname="fplcat" value="2a"/><abbreviation vname="fplcat" value="9"/></betriebsstelle>
  <betriebsstelle name="Bdorf" id="11"><abbreviation vname="ds100" value="XB"/><abbreviation vname="fplcat" value="7"/></betriebsstelle>
  <betriebsstelle name="Cweiler" id="12"><abbreviation vname="ds100" value="XC"/><abbreviation vname="fplcat" value="4"/></betriebsstelle>
  <betriebsstelle name="Dhausen" id="13"><abbreviation vname="ds100" value="XD"/><abbreviation vname="fplcat" value=""/></betriebsstelle>
  <betriebsstelle name="Abzw Ost" id="14"><abbreviation vname="DS100" value="XO"/></betriebsstelle><bahnsteig name="Egal" id="15"/>
  <betriebsstelle name="Edorf" id="16"><abbreviation vname="ds100" value="XE"/><abbreviation vname="fplcat" value="1"/></betriebsstelle>
  <signal betriebsstelle="11" stationforlengthless="ja"/><signal betriebsstelle="99" hauptsignaltyp="ja"/><signal betriebsstelle="12" hauptsignaltyp="ja" stationforlengthless=""/>
  <einfahrrichtung name="von Norden" id="3"><abbreviation vname="zuglinor_RiA" value="N1"/><abbreviation vname="zuglinor_RiA" value="Nord"/><anschluss id="1"/><anschluss id="2"/></einfahrrichtung>
  <einfahrrichtung name="Sued" id="4"><anschluss id="5"/></einfahrrichtung><einfahrrichtung id="6"><anschluss id="7"/></einfahrrichtung>
</aussenanlage>)",
       " | 5:" + points +
           " | Abzw Ost 14 00; Astadt 10 00; Bdorf 11 10; Cweiler 12 01; Dhausen 13 00;"
           " Edorf 16 00; | Nord=Nord 3 { 1, 2 } ffff 1; Sued=Sued 4 { 5 } ffff 1;"},
      // A warning per other name; the first name and kind stay; connections are collected.
      {R"(<stelltisch>
  <betriebsstelle name="Astadt" id="5"><abbreviation vname="ds100" value="XA"/></betriebsstelle>
  <betriebsstelle name="A-Stadt" id="6"><abbreviation vname="ds100" value="XA"/></betriebsstelle>
  <betriebsstelle name="Astadt Hbf" id="7"><abbreviation vname="ds100" value="XA"/></betriebsstelle>
  <betriebsstelle name="Dhausen" id="17"><abbreviation vname="ds100" value="XD"/><abbreviation vname="fplcat" value="1"/></betriebsstelle>
  <einfahrrichtung name="Nord" id="8"><anschluss id="4"/></einfahrrichtung></stelltisch>)",
       contradiction + contradiction + " | 5:" + points +
           " | A-Stadt 6 00; Abzw Ost 14 00; Astadt 5 00; Astadt Hbf 7 00; Bdorf 11 10;"
           " Cweiler 12 01; Dhausen 17 00; Edorf 16 00; | Nord=Nord 8 { 1, 2, 4 } ffff 1;"
           " Sued=Sued 4 { 5 } ffff 1;"},
  };
  // Read in turn into one definition: "AA: fault" (at the command) | warnings | points: ds100 name
  // fplcat; | layout's: name id flags; | directions: key=name id { connections } digits file;
  for (auto const& [content, expected] : files) {
    anlage.datei = content ? dir.write("a.stwa", content) : (dir.path() / "a.stwa").string();
    std::ostringstream out;
    try {
      anlage.readSTWA(punkte, byDs100, richtungen, warnungen, &command);
    } catch (Error const& e) {
      out << (e.token == &command ? "AA: " : "?: ") << e.message;
    }
    for (Error const& w : warnungen)
      out << " | " << (w.token == &command ? "AA: " : "?: ") << w.message;
    out << " | " << punkte.size() << ':';
    for (auto const& [ds100, b] : std::map(byDs100.begin(), byDs100.end()))
      out << ' ' << ds100 << ' ' << b->name << ' ' << int(b->fplcat) << ';';
    out << " |";
    for (auto const& [name, i] :
         std::map(anlage.betriebsstellen.begin(), anlage.betriebsstellen.end()))
      out << ' ' << name << ' ' << i.id << ' ' << i.stationforlengthless << i.hauptsignaltyp << ';';
    out << " |";
    for (auto const& [key, r] : std::map(richtungen.begin(), richtungen.end()))
      out << ' ' << key << '=' << r.name << ' ' << r.id << ' '
          << ::testing::PrintToString(r.anschluesse) << ' ' << std::hex << r.lenkziffern << std::dec
          << ' ' << r.ausAussenanlage << ';';
    EXPECT_EQ(out.str(), expected);
  }
}

}  // namespace

namespace {

// A signal sets its flag on the first point of its id in the map's order; a
// point entered again under its name moves to its new id, also for points read
// from an earlier file of the same layout.
TEST(LayoutReader, SignalsFindThePointOfTheirIdAfterItsLatestEntry) {
  TempDir dir;
  Token const command{nullptr, "AA", 4};
  Aussenanlage anlage;
  std::list<Betriebsstelle> punkte;
  std::unordered_map<std::string, Betriebsstelle*> byDs100;
  decltype(anlage.fahrtrichtungen) richtungen;
  std::vector<Error> warnungen;
  anlage.datei = dir.write("a.stwa", R"(<aussenanlage>
  <betriebsstelle name="A" id="5"/><betriebsstelle name="B" id="5"/><betriebsstelle name="C" id="7"/>
  </aussenanlage>)");
  anlage.readSTWA(punkte, byDs100, richtungen, warnungen, &command);
  anlage.datei = dir.write("b.stwa", R"(<aussenanlage>
  <betriebsstelle name="C" id="9"/><signal betriebsstelle="7" hauptsignaltyp="1"/>
  <signal betriebsstelle="9" stationforlengthless="1"/><signal betriebsstelle="5" hauptsignaltyp="1"/>
  <betriebsstelle name="A" id="6"/><signal betriebsstelle="5" stationforlengthless="1"/>
  </aussenanlage>)");
  anlage.readSTWA(punkte, byDs100, richtungen, warnungen, &command);

  // Of A and B (both 5 when the first id-5 signal came), the first in the map's order.
  std::string ersteMit5;
  for (auto const& [name, info] : anlage.betriebsstellen)
    if (name == "A" || name == "B") {
      ersteMit5 = name;
      break;
    }
  std::string flags;
  for (auto const& [name, i] :
       std::map(anlage.betriebsstellen.begin(), anlage.betriebsstellen.end()))
    flags += name + std::to_string(i.id) + ":" + std::to_string(i.stationforlengthless) +
             std::to_string(i.hauptsignaltyp) + " ";
  // A was entered again (flags reset) after the first id-5 signal; the second one finds only B.
  EXPECT_EQ(flags, ersteMit5 == "A" ? "A6:00 B5:10 C9:10 " : "A6:00 B5:11 C9:10 ");
}

}  // namespace
