#pragma once
// The simulator installation: its root directory, found once for all definitions.
#include <string>

#include "../export.h"

// The installation root without a trailing separator; empty until found.
extern FPLC_API std::string quorvelpath;
// True when the root holds the development marker file.
extern FPLC_API bool quorvel_dev;

// Searches upwards from the directory that holds `path` for the installation
// root; returns whether `quorvelpath` is set afterwards.
FPLC_API bool quorvel_init(std::string const& path);
