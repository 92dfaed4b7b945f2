#pragma once
// fplc --graph: writes the graphs after a compile and tells the user where.
#include <iosfwd>

#include "frontend/compile.h"

namespace fplc::graph {

// Does nothing without --graph. Hints and faults go to `err`, the index page's
// path to `out` (not under --quiet or --json). False when the graphs could not
// be written, also when the definition stopped with a fatal fault.
bool schreibeGraphenWennGewuenscht(Fahrplandefinition& fpl, Ergebnis const& ergebnis,
                                   Options const& options, std::ostream& out, std::ostream& err);

}  // namespace fplc::graph
