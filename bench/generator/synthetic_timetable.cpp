// Writes a synthetic installation: a chain of layouts and a definition whose
// lines run between neighbouring layouts. See synthetic_timetable.h.
#include "generator/synthetic_timetable.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace fplc::bench {
namespace {

// A small random generator with a fixed algorithm (splitmix64), so that the
// files do not depend on the standard library's distributions.
class Zufall {
 public:
  explicit Zufall(std::uint64_t zustand) : zustand(zustand) {}
  std::uint64_t naechste() {
    std::uint64_t z = (zustand += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  // A number from `von` to `bis`, both included.
  int zwischen(int von, int bis) {
    return von + static_cast<int>(naechste() % static_cast<std::uint64_t>(bis - von + 1));
  }

 private:
  std::uint64_t zustand;
};

constexpr int kGleise = 8;  // platform tracks P1..P8 of every main station

std::string uhrzeit(int minuten) {
  std::ostringstream text;
  text << minuten / 60 << ':' << (minuten % 60 < 10 ? "0" : "") << minuten % 60;
  return text.str();
}

void schreibe(std::filesystem::path const& datei, std::string const& inhalt) {
  std::filesystem::create_directories(datei.parent_path());
  std::ofstream(datei, std::ios::binary) << inhalt;
}

std::string anlage(int i) {
  return "Stw" + std::to_string(i);
}

// The layout of interlocking i: main station, halt and block post, the
// directions West and Ost.
std::string stellwerk(int i) {
  std::string const n = std::to_string(i);
  std::ostringstream xml;
  xml << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      << "<stelltisch name=\"" << anlage(i) << "\" version=\"3\">\n"
      << "  <betriebsstelle name=\"Bf" << n << "\" id=\"1\">\n"
      << "    <abbreviation vname=\"ds100\" value=\"X" << n << "A\"/>\n"
      << "    <abbreviation vname=\"fplcat\" value=\"1\"/>\n  </betriebsstelle>\n"
      << "  <betriebsstelle name=\"Hp" << n << "\" id=\"2\">\n"
      << "    <abbreviation vname=\"ds100\" value=\"X" << n << "H\"/>\n"
      << "    <abbreviation vname=\"fplcat\" value=\"7\"/>\n  </betriebsstelle>\n"
      << "  <betriebsstelle name=\"Bk" << n << "\" id=\"3\">\n"
      << "    <abbreviation vname=\"ds100\" value=\"X" << n << "B\"/>\n"
      << "    <abbreviation vname=\"fplcat\" value=\"5\"/>\n  </betriebsstelle>\n"
      << "  <signal id=\"300\" name=\"A\" betriebsstelle=\"1\" hauptsignaltyp=\"true\"/>\n";
  for (int g = 1; g <= kGleise; ++g)
    xml << "  <signal id=\"" << 300 + g << "\" name=\"P" << g
        << "\" betriebsstelle=\"1\" stationforlengthless=\"true\"/>\n";
  xml << "  <signal id=\"320\" name=\"F\" betriebsstelle=\"2\" stationforlengthless=\"true\"/>\n"
      << "  <signal id=\"330\" name=\"Bk1\" betriebsstelle=\"3\" hauptsignaltyp=\"true\"/>\n"
      << "  <einfahrrichtung name=\"von/nach Westen\" id=\"10\">\n"
      << "    <abbreviation vname=\"zuglinor_RiA\" value=\"West\"/>\n"
      << "    <anschluss id=\"11\"/>\n    <anschluss id=\"12\"/>\n  </einfahrrichtung>\n"
      << "  <einfahrrichtung name=\"von/nach Osten\" id=\"20\">\n"
      << "    <abbreviation vname=\"zuglinor_RiA\" value=\"Ost\"/>\n"
      << "    <anschluss id=\"21\"/>\n    <anschluss id=\"22\"/>\n  </einfahrrichtung>\n"
      << "</stelltisch>\n";
  return xml.str();
}

std::string bibliothek() {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<bibliothek name=\"Synthetische Fahrzeuge\">\n"
         "  <fahrzeugtemplate id=\"1\" name=\"E-Lok\" achsanzahl=\"4\" laenge=\"19.5\" "
         "masse=\"84\" vmax=\"160\"/>\n"
         "  <fahrzeugtemplate id=\"2\" name=\"Triebwagen\" achsanzahl=\"6\" laenge=\"56.3\" "
         "masse=\"120\" vmax=\"140\"/>\n"
         "  <fahrzeugtemplate id=\"10\" name=\"Wagen 2. Klasse\" achsanzahl=\"4\" "
         "laenge=\"26.4\" masse=\"44\" vmax=\"160\"/>\n"
         "  <fahrzeugtemplate id=\"11\" name=\"Steuerwagen\" achsanzahl=\"4\" laenge=\"26.8\" "
         "masse=\"48\" vmax=\"160\"/>\n"
         "</bibliothek>\n";
}

// The infrastructure part of the definition: operating points (those of the
// layouts and one outside station west and east of each), layouts, library,
// vehicles, formations and day records.
std::string infrastruktur(int layouts) {
  std::ostringstream text;
  text << "Quorvel FplDef 1\n"
       << "// Synthetischer Fahrplan: " << layouts << " Stellwerke in einer Kette.\n"
       << "AUT \"Generator\" \"synthetischer Fahrplan\"\n";
  for (int i = 0; i < layouts; ++i) {
    std::string const n = std::to_string(i);
    text << "BTR X" << n << "A Bf" << n << "\nBTR X" << n << "H Hp" << n << "\nBTR X" << n << "B Bk"
         << n << "\nBTR Y" << n << " West" << n << "\nBTR Z" << n << " Ost" << n << "\n";
  }
  for (int i = 0; i < layouts; ++i)
    text << "AA " << anlage(i) << " \"$(StwDir)stw" << i << ".stwa\" S" << i << " {\n}\n";
  text << "BIB 1 \"$(StwDir)bibliothek/fahrzeuge.xml\"\n"
       << "FZG Lok 1 1\nFZG Tw 1 2\nFZG Wg 1 10\nFZG Stw 1 11\n"
       << "RHG Wendezug Lok Wg Wg Stw\nRHG Triebzug Tw\nRHG Doppel Tw Tw\n"
       << "VT * \"13.12.2026\" \"11.12.2027\"\n"
       << "VT Werktags 12345 \"13.12.2026\" \"11.12.2027\" - \"24.12.2026\"\n"
       << "VT Wochenende 67 \"13.12.2026\" \"11.12.2027\"\n";
  return text.str();
}

// One line between the main stations of layouts a and a+1, both directions.
struct Linie {
  int nummer;
  int a;
  int gleis;
  bool wendet;   // turns at both ends, finding its successor automatically
  int fahrzeit;  // minutes from main station to main station
};

// The run from west to east (hin) or back, as ZL text.
std::string zuglauf(Linie const& l, bool hin) {
  std::string const a = std::to_string(l.a), b = std::to_string(l.a + 1);
  std::string const von = hin ? a : b, nach = hin ? b : a;
  std::string const gleis = " . P" + std::to_string(l.gleis);
  std::string const vonRichtung = hin ? "Ost" : "West", nachRichtung = hin ? "West" : "Ost";
  int const vor = l.wendet ? 0 : 6;  // minutes from the outside station
  int const d = l.fahrzeit;
  std::ostringstream text;
  text << "ZL L" << l.nummer << (hin ? "H" : "R") << " {\n";
  if (!l.wendet)
    text << " " << (hin ? "Y" : "Z") << von << " . G1 H - 0:00\n <- Stw" << von << " . "
         << nachRichtung << "\n X" << von << "A" << gleis << " H " << uhrzeit(vor) << " "
         << uhrzeit(vor + 1) << " 30\n";
  else
    text << " X" << von << "A" << gleis << " H - 0:00\n";
  text << " X" << von << "H . F H " << uhrzeit(vor + 4) << " " << uhrzeit(vor + 5) << " 20\n"
       << " -> Stw" << von << " . " << vonRichtung << " " << uhrzeit(vor + d / 2) << "\n"
       << " <- Stw" << nach << " . " << nachRichtung << " " << uhrzeit(vor + d / 2) << "\n"
       << " X" << nach << "B . Bk1 B - " << uhrzeit(vor + d / 2 + 3) << "\n";
  if (l.wendet)
    text << " X" << nach << "A" << gleis << " H " << uhrzeit(d) << " - WENDE FOLGE ZN *\n";
  else
    text << " X" << nach << "A" << gleis << " H " << uhrzeit(vor + d) << " " << uhrzeit(vor + d + 1)
         << " 30\n -> Stw" << nach << " . " << vonRichtung << "\n " << (hin ? "Z" : "Y") << nach
         << " . G1 H " << uhrzeit(vor + d + 8) << " -\n";
  text << "}\n";
  return text.str();
}

// Clock-face series of one line: per day group a series each way.
struct Serienplan {
  std::ostringstream text;
  int naechsteNummer = 10000;
  int zuege = 0;

  void serie(Linie const& l, bool hin, int anzahl, int start, int takt, char const* tage) {
    int const erste = naechsteNummer + (hin ? 1 : 2);
    text << "SET Zuglauf L" << l.nummer << (hin ? "H" : "R") << "\n"
         << "TZ " << erste << " " << erste + 2 * (anzahl - 1) << " 2 " << uhrzeit(start) << " "
         << uhrzeit(takt) << " " << tage << "\n";
    zuege += anzahl;
  }
};

}  // namespace

std::filesystem::path writeSyntheticInstallation(std::filesystem::path const& folder,
                                                 SyntheticTimetable const& parameters) {
  int const layouts = std::max(2, parameters.layouts);
  Zufall zufall(parameters.randomState);
  schreibe(folder / "core/configTemplate/basesettings.xml",
           "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<basesettings/>\n");
  for (int i = 0; i < layouts; ++i)
    schreibe(folder / "stellwerke" / ("stw" + std::to_string(i) + ".stwa"), stellwerk(i));
  schreibe(folder / "stellwerke/bibliothek/fahrzeuge.xml", bibliothek());

  std::ostringstream laeufe;
  Serienplan plan;
  char const* const reihungen[] = {"Wendezug", "Triebzug", "Doppel"};
  int wendendeZuege = 0;
  for (int nummer = 0; plan.zuege < parameters.trains; ++nummer) {
    int const rest = parameters.trains - plan.zuege;
    // Trains per series and day group; the last line takes what is left.
    bool const taeglich = zufall.zwischen(0, 2) == 0;
    int const anzahl = std::min(zufall.zwischen(8, 24), taeglich ? rest / 2 : rest / 4);
    Linie l{nummer, nummer % (layouts - 1), 1 + (nummer / (layouts - 1)) % kGleise, false,
            zufall.zwischen(14, 30)};
    int const zuegeDerLinie = anzahl < 1 ? rest : (taeglich ? 2 : 4) * anzahl;
    // A line turns when that brings the share of turning trains closer to the
    // one asked for.
    l.wendet = wendendeZuege + zuegeDerLinie / 2.0 <=
               parameters.successorShare * (plan.zuege + zuegeDerLinie);
    if (l.wendet) wendendeZuege += zuegeDerLinie;
    laeufe << zuglauf(l, true) << zuglauf(l, false);

    // Lines that turn on one track share a formation, so that a successor
    // found there is congruent.
    plan.text << "SET Linie RB | Nahverkehr " << 10 + nummer % 90 << "\n"
              << "SET Reihung " << reihungen[l.gleis % 3] << "\n";
    // The return run leaves a few minutes after the arrival, so that the
    // turnaround finds it; through lines start at any minute.
    int const start = zufall.zwischen(4 * 60, 7 * 60 + 59);
    int const zurueck = l.wendet ? start + l.fahrzeit + zufall.zwischen(4, 15)
                                 : zufall.zwischen(4 * 60, 7 * 60 + 59);
    auto serienpaar = [&](int n, int takt, char const* tage) {
      plan.serie(l, true, n, start, takt, tage);
      plan.serie(l, false, n, zurueck, takt, tage);
      plan.naechsteNummer += 2 * n;
    };
    if (anzahl < 1) {  // one or two trains left
      plan.serie(l, true, 1, start, 60, "tgl");
      if (rest > 1) plan.serie(l, false, 1, zurueck, 60, "tgl");
      plan.naechsteNummer += 2;
    } else if (taeglich) {
      serienpaar(anzahl, 60, "tgl");
    } else {
      serienpaar(anzahl, 30 + 30 * zufall.zwischen(0, 1), "Werktags");
      serienpaar(anzahl, 60 + 60 * zufall.zwischen(0, 1), "Wochenende");
    }
  }
  std::filesystem::path const definition = folder / "fahrplaene/synthetisch.fpl";
  schreibe(definition, infrastruktur(layouts) + laeufe.str() + plan.text.str() +
                           "OUT \"Synthetisch\" \"$(ThisStwPath)_fahrplan.xml\"\n");
  return definition;
}

}  // namespace fplc::bench
