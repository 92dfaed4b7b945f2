#pragma once
// Writes the time–distance graphs of a compiled definition: one SVG per line and
// index.html with every graph and the train table.
#include <string>
#include <vector>

#include "graph/tagesfilter.h"

class Fahrplandefinition;

namespace fplc::graph {

struct GraphErgebnis {
  std::string index;                  // the path of index.html; empty when not written
  std::vector<std::string> dateien;   // every file written, index.html last
  std::vector<std::string> hinweise;  // UTF-8, for the user: empty graphs and why
  std::string fehler;                 // UTF-8; set when a file could not be written
};

// Post-processes the definition when no OUT has done so, then writes into
// `verzeichnis` (created when missing). `titel` names the page.
GraphErgebnis schreibeGraphen(Fahrplandefinition& fpl, std::string const& verzeichnis,
                              Tagesfilter const& filter, std::string const& titel);

}  // namespace fplc::graph
