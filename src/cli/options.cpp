#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "cli/exit_status.h"
#include "frontend/checks.h"
#include "graph/tagesfilter.h"

#ifndef FPLC_VERSION
#define FPLC_VERSION "unknown"
#endif

namespace {

void describeGraphOptions(CLI::App& app, Options& options) {
  CLI::Option* graph =
      app.add_option("--graph", options.graph,
                     "Write time-distance graphs (one SVG per BIF line) and index.html into DIR")
          ->option_text("DIR");
  CLI::Validator const wochentag(
      [](std::string& text) {
        return fplc::graph::wochentagsfilter(text)
                   ? ""
                   : "Wochentag Mo, Di, Mi, Do, Fr, Sa oder So erwartet, nicht \"" + text + "\"";
      },
      "Mo..So");
  CLI::Validator const datum(
      [](std::string& text) {
        return fplc::graph::datumsfilter(text)
                   ? ""
                   : "Datum JJJJ-MM-TT ab 1970 erwartet, nicht \"" + text + "\"";
      },
      "JJJJ-MM-TT");
  CLI::Option* day = app.add_option("--graph-day", options.graphDay,
                                    "Draw only the trains running on this weekday (Mo..So)")
                         ->check(wochentag)
                         ->needs(graph);
  app.add_option(
         "--graph-date", options.graphDate,
         "Draw only the trains running on this date, matched by weekday as the library does")
      ->check(datum)
      ->needs(graph)
      ->excludes(day);
}

std::string checkList() {
  std::string list;
  for (std::string const& name : fplc::detail::pruefungsNamen())
    list += (list.empty() ? "" : ", ") + name;
  return list;
}

// Takes every -Wno-NAME out of the arguments, since CLI11 knows -W as a flag.
// Returns false after an unknown check name.
bool takeCheckSwitches(int argc, char** argv, std::vector<char*>& rest, Options& options) {
  std::string const prefix = "-Wno-";
  auto const& names = fplc::detail::pruefungsNamen();
  for (int i = 0; i < argc; ++i) {
    std::string const arg = argv[i];
    if (i == 0 || arg.rfind(prefix, 0) != 0) {
      rest.push_back(argv[i]);
      continue;
    }
    std::string const name = arg.substr(prefix.size());
    if (std::find(names.begin(), names.end(), name) == names.end()) {
      std::cerr << "fplc: Unbekannte Prüfung \"" << name << "\"; bekannt sind " << checkList()
                << ".\n";
      return false;
    }
    options.ohnePruefungen.insert(name);
  }
  return true;
}

void describeOptions(CLI::App& app, Options& options) {
  app.add_option("-r,--root", options.root,
                 "Installation root; it must hold core/configTemplate/basesettings.xml. "
                 "Without it the root is searched from the definition file, then from fplc itself.")
      ->option_text("DIR");
  app.add_flag("-n,--check", options.check,
               "Execute without writing timetable files (OUT writes nothing)");
  app.add_flag("--no-validate", options.noValidate, "Do not run the validation");
  app.add_flag("--json", options.json, "Print the report on stdout as JSON");
  app.add_flag("-W,--werror", options.werror, "Warnings make the exit status 1");
  app.add_flag("-q,--quiet", options.quiet, "Print errors only");
  app.add_flag("!--no-lint", options.lint, "Turn off all of fplc's own checks");
  app.add_option("--color", options.farbe, "Colour in the text report: auto, always or never")
      ->transform(CLI::CheckedTransformer(
          std::map<std::string, Options::Farbe>{{"auto", Options::Farbe::Auto},
                                                {"always", Options::Farbe::Immer},
                                                {"never", Options::Farbe::Nie}}))
      ->option_text("WHEN");
  describeGraphOptions(app, options);
  app.add_flag("--confine", options.confine,
               "Read and write files only inside the installation root and the folder of the "
               "definition file (after resolving .. and symbolic links)");
  app.set_version_flag("-V,--version", std::string("fplc ") + FPLC_VERSION);
  app.add_option("DEFINITION", options.definition,
                 "The timetable definition file; - reads it from standard input")
      ->required();
  app.footer("-Wno-NAME turns off the check NAME: " + checkList() + ".");
}

}  // namespace

std::variant<Options, int> parseOptions(int argc, char** argv) {
  CLI::App app{"fplc: compiles a timetable definition into the simulator's timetable files.",
               "fplc"};
  Options options;
  describeOptions(app, options);
  std::vector<char*> rest;
  if (!takeCheckSwitches(argc, argv, rest, options)) return exitStatusUsage;
  try {
    app.parse(static_cast<int>(rest.size()), rest.data());
  } catch (CLI::Success const& done) {  // --help, --version
    return app.exit(done);
  } catch (CLI::ParseError const& usage) {
    app.exit(usage);
    return exitStatusUsage;
  }
  return options;
}
