#pragma once
// What a front-end asks of one compile: the definition, the installation root and
// how far to go. fplc fills it from its command line, the other front-ends from
// their own settings.
#include <optional>
#include <string>

struct Options {
  std::string definition;           // the definition file, exactly as typed
  std::optional<std::string> root;  // --root: the installation root
  bool check = false;               // --check: OUT writes nothing
  bool noValidate = false;          // --no-validate
  bool json = false;                // --json: the report as JSON on stdout
  bool werror = false;              // --werror: warnings make the run fail
  bool quiet = false;               // --quiet: errors only
  bool confine = false;             // --confine: files only below the root and the definition's folder
};
