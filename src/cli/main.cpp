// fplc: the command-line front-end of the timetable compiler.
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <variant>

#include "cli/exit_status.h"
#include "cli/options.h"
#include "frontend/compile.h"
#include "frontend/installation_root.h"
#include "frontend/report.h"
#include "frontend/report_colour.h"
#include "graph/graph_cli.h"

namespace {

int failWithUsageProblem(std::string const& problem) {
  std::cerr << "fplc: " << problem << '\n';
  return exitStatusUsage;
}

int exitStatusOf(Ergebnis const& ergebnis, Options const& options) {
  bool const failed =
      ergebnis.abgebrochen || ergebnis.nichtGeschrieben || (options.werror && ergebnis.warnungen);
  return failed ? exitStatusFailed : exitStatusOk;
}

// --quiet keeps errors only; under --werror warnings count as errors and stay.
void dropWarningsIfQuiet(Ergebnis& ergebnis, Options const& options) {
  if (!options.quiet || options.werror) return;
  std::erase_if(ergebnis.diagnosen, [](Diagnose const& d) { return !d.fehler; });
}

int compileDefinition(Options const& options, char const* argv0) {
  std::string problem;
  if (!setUpInstallation(options, argv0, problem)) return failWithUsageProblem(problem);
  std::ifstream file;
  bool const fromStdin = options.definition == "-";
  if (!fromStdin && !openDefinition(options.definition, file, problem))
    return failWithUsageProblem(problem);

  Fahrplandefinition fpl;
  Ergebnis ergebnis = compile(fpl, fromStdin ? std::cin : file, options);
  bool const graphsWritten =
      fplc::graph::schreibeGraphenWennGewuenscht(fpl, ergebnis, options, std::cout, std::cerr);
  int const status = graphsWritten ? exitStatusOf(ergebnis, options) : exitStatusFailed;
  dropWarningsIfQuiet(ergebnis, options);

  if (options.json) {
    writeJsonReport(std::cout, status == exitStatusOk, ergebnis.diagnosen, ergebnis.ausgaben);
    return status;
  }
  writeTextDiagnostics(std::cerr, ergebnis.diagnosen,
                       TextBericht{useColour(options.farbe, std::getenv("NO_COLOR"),
                                             std::getenv("TERM"), ::isatty(STDERR_FILENO) == 1)});
  if (!options.quiet && !ergebnis.abgebrochen) writeWrittenFiles(std::cout, ergebnis.ausgaben);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  std::variant<Options, int> parsed = parseOptions(argc, argv);
  if (int const* done = std::get_if<int>(&parsed)) return *done;
  return compileDefinition(std::get<Options>(parsed), argc > 0 ? argv[0] : nullptr);
}
