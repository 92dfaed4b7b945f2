#pragma once
// What a front-end asks of one compile: the definition, the installation root and
// how far to go. fplc fills it from its command line, the other front-ends from
// their own settings.
#include <optional>
#include <set>
#include <string>

struct Options {
  std::string definition;           // the definition file, exactly as typed
  std::optional<std::string> root;  // --root: the installation root
  bool check = false;               // --check: OUT writes nothing
  bool noValidate = false;          // --no-validate
  bool json = false;                // --json: the report as JSON on stdout
  bool werror = false;              // --werror: warnings make the run fail
  bool quiet = false;               // --quiet: errors only
  // --no-lint: none of the front-end's checks run.
  bool lint = true;
  // -Wno-NAME: the checks turned off one by one.
  std::set<std::string> ohnePruefungen;
  // --color=auto|always|never: colour in the text report.
  enum class Farbe { Auto, Immer, Nie };
  Farbe farbe = Farbe::Auto;
  std::optional<std::string> graph;  // --graph: the folder for the time–distance graphs
  std::string graphDay;              // --graph-day: "Mo" .. "So"
  std::string graphDate;             // --graph-date: "2026-12-01"
  bool confine = false;  // --confine: files only below the root and the definition's folder
};
