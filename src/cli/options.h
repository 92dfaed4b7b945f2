#pragma once
// The command line of fplc.
#include <optional>
#include <string>
#include <variant>

struct Options {
  std::string definition;           // the definition file, exactly as typed
  std::optional<std::string> root;  // --root: the installation root
  bool check = false;               // --check: OUT writes nothing
  bool noValidate = false;          // --no-validate
  bool json = false;                // --json: the report as JSON on stdout
  bool werror = false;              // --werror: warnings make the run fail
  bool quiet = false;               // --quiet: errors only
};

// The options, or the exit status when the program is already done: 0 after
// --help or --version, 2 after a usage error (its message is on stderr).
std::variant<Options, int> parseOptions(int argc, char** argv);
