#pragma once
// Writes a time–distance graph as SVG: places across at their kilometre
// positions, time downwards at two pixels per minute.
#include <map>
#include <set>
#include <string>

#include "graph/bildfahrplan.h"

namespace fplc::graph {

// The colour of each public category; one table for every graph and the page.
using Farben = std::map<std::string, std::string>;
Farben farbenFuer(std::set<std::string> const& gattungen);

// The drawing area, in pixels: where the plot starts and how wide it is.
struct SvgMasse {
  static constexpr double links = 80;     // left of the plot: hour labels
  static constexpr double oben = 160;     // above the plot: names and codes
  static constexpr double breite = 720;   // the plot, from the first to the last kilometre
  static constexpr double legende = 200;  // right of the plot: the legend
  static constexpr double sekundenProPixel = 30;
};

// The SVG text; with `eigenstaendig` it begins with an XML declaration, as a file
// does, else it is ready to be placed inside an HTML page.
std::string schreibeSvg(Bildfahrplan const& bild, Farben const& farben, bool eigenstaendig);

}  // namespace fplc::graph
