#pragma once
// The time–distance graph of one line: its operating points at their kilometre
// positions and every train that runs along it, with the times that trains have
// after post-processing. Texts are UTF-8, ready for SVG and HTML.
#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include "graph/tagesfilter.h"

struct Strecke;
struct Zug;

namespace fplc::graph {

// One place across the graph.
struct Ort {
  enum Art : std::uint8_t { Unbestimmt = 0, Bf = 1, Hp = 2, Abzw = 3, Bk = 4, Uest = 5, Marke = 6 };
  Art art = Unbestimmt;
  std::string kuerzel;   // the operating point's abbreviation; empty for a kilometre mark
  std::string name;      // its long name, or "km 12,0" for a mark
  std::string position;  // as written: "12,0"
  double km = 0.0;
};

// Where the line crosses from one layout into another.
struct Grenze {
  double km = 0.0;
  std::string anlagen;  // the layouts' names, joined by " | "
};

// A train at one place: arrival and departure in seconds since midnight of the
// reference day; equal for a pass.
struct Zeitpunkt {
  std::size_t ort = 0;
  long long an = 0;
  long long ab = 0;
};

struct Fahrt {
  std::int32_t nummer = 0;
  std::string gattung;  // the public category: the part before "|"
  std::string tage;     // the weekday digits of its days of operation: "12345"
  // Pieces of the run along the line; a new piece starts where the run has left
  // the line in between.
  std::vector<std::vector<Zeitpunkt>> abschnitte;
};

struct Bildfahrplan {
  std::string strecke;
  std::vector<Ort> orte;  // the places with a position, in the order of the line
  std::vector<Grenze> grenzen;
  std::vector<Fahrt> fahrten;
  long long beginn = 0;  // full hours covering every drawn time
  long long ende = 0;
  // Why something is missing or the graph is empty, for the reader.
  std::vector<std::string> hinweise;
};

// The longest time a graph spans; later times lie below its end.
inline constexpr long long kMaxZeitspanne = 7 * 86400;

// The public category of a train's category text "RB|Nahverkehr": "RB".
std::string oeffentlicheGattung(std::string const& gattung);

// Builds the graph of `strecke` from the trains that run under `filter`.
Bildfahrplan baueBildfahrplan(Strecke const& strecke, std::list<Zug> const& zuege,
                              Tagesfilter const& filter);

}  // namespace fplc::graph
