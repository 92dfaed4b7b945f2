#pragma once
// Chooses the simulator installation that path variables expand against.
#include <string>

#include "frontend/compile_options.h"

// With --root, checks the directory for the installation marker and takes it;
// otherwise searches from the definition file, then from the fplc executable,
// and goes on with an empty root when nothing is found. Returns false with a
// message in `problem` when --root names no installation.
bool setUpInstallation(Options const& options, char const* argv0, std::string& problem);
