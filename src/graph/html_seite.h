#pragma once
// index.html: every graph and the train table on one page that needs no other
// file and no network: inline SVG, CSS and a little script to sort and filter.
#include <string>
#include <vector>

#include "graph/tagesfilter.h"
#include "graph/zugtabelle.h"

namespace fplc::graph {

struct Seite {
  std::string titel;  // the definition file's name, UTF-8
  Tagesfilter filter;
  std::vector<std::string> graphen;   // SVG texts without XML declaration
  std::vector<std::string> strecken;  // the lines' names, as the graphs
  std::vector<Zugzeile> zuege;
  std::vector<std::string> hinweise;  // for the whole page
};

std::string schreibeSeite(Seite const& seite);

// Text for HTML element content and attribute values.
std::string html(std::string const& text);

}  // namespace fplc::graph
