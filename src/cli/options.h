#pragma once
// The command line of fplc.
#include <variant>

#include "frontend/compile_options.h"

// The options, or the exit status when the program is already done: 0 after
// --help or --version, 2 after a usage error (its message is on stderr).
std::variant<Options, int> parseOptions(int argc, char** argv);
