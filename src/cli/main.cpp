// fplc: the command-line front-end of the timetable compiler.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <new>
#include <string>
#include <variant>
#include <vector>

#include "cli/exit_status.h"
#include "cli/options.h"
#include "external/installation.h"
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

// --confine: the installation root and the folder of the definition file.
std::vector<std::string> confinementFolders(Options const& options) {
  std::error_code ignored;
  std::filesystem::path const definition = std::filesystem::absolute(options.definition, ignored);
  return {quorvelpath, definition.parent_path().string()};
}

int compileDefinition(Options const& options, char const* argv0) {
  std::string problem;
  if (!setUpInstallation(options, argv0, problem)) return failWithUsageProblem(problem);
  std::ifstream file;
  bool const fromStdin = options.definition == "-";
  if (!fromStdin && !openDefinition(options.definition, file, problem))
    return failWithUsageProblem(problem);

  // The model lives until the process ends: the system takes its memory back
  // at once, where freeing it object by object would cost a large compile a
  // twentieth of its time. It stays reachable, so leak checkers stay quiet.
  static Fahrplandefinition& fpl = *new Fahrplandefinition;
  if (options.confine) fpl.setErlaubteVerzeichnisse(confinementFolders(options));
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
  // Whatever escapes ends in a message and exit status 1, not in an abort that
  // leaves the user without a word. The texts are written without allocating.
  try {
    std::variant<Options, int> parsed = parseOptions(argc, argv);
    if (int const* done = std::get_if<int>(&parsed)) return *done;
    return compileDefinition(std::get<Options>(parsed), argc > 0 ? argv[0] : nullptr);
  } catch (std::bad_alloc const&) {
    std::fputs("fplc: nicht genug Speicher\n", stderr);
  } catch (std::exception const& e) {
    std::fputs("fplc: unerwarteter Fehler: ", stderr);
    std::fputs(e.what(), stderr);
    std::fputs("\n", stderr);
  } catch (...) {
    std::fputs("fplc: unerwarteter Fehler\n", stderr);
  }
  return exitStatusFailed;
}
