#include "graph/graph_cli.h"

#include <filesystem>
#include <ostream>

#include "graph/graph_ausgabe.h"

namespace fplc::graph {

namespace {

Tagesfilter filterAus(Options const& options) {
  if (!options.graphDay.empty())
    if (auto f = wochentagsfilter(options.graphDay)) return *f;
  if (!options.graphDate.empty())
    if (auto f = datumsfilter(options.graphDate)) return *f;
  return {};
}

}  // namespace

bool schreibeGraphenWennGewuenscht(Fahrplandefinition& fpl, Ergebnis const& ergebnis,
                                   Options const& options, std::ostream& out, std::ostream& err) {
  if (!options.graph) return true;
  if (ergebnis.abgebrochen) {
    err << "fplc: Bildfahrplan nicht geschrieben: die Definition ist mit einem Fehler "
           "abgebrochen.\n";
    return false;
  }
  std::string const titel = std::filesystem::path(options.definition).filename().string();
  GraphErgebnis const g = schreibeGraphen(fpl, *options.graph, filterAus(options), titel);
  if (!options.quiet)
    for (std::string const& h : g.hinweise)
      err << "fplc: Bildfahrplan: " << h << '\n';
  if (!g.fehler.empty()) {
    err << "fplc: Bildfahrplan: " << g.fehler << '\n';
    return false;
  }
  if (!options.quiet && !options.json) out << "Bildfahrplan: " << g.index << '\n';
  return true;
}

}  // namespace fplc::graph
