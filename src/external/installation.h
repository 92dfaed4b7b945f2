#pragma once
// The simulator installation: its root directory and the expansion of path
// variables in file names written in definitions.
#include <string>

// The installation root without a trailing separator; empty until found.
extern std::string quorvelpath;
// True when the root holds the development marker file.
extern bool quorvel_dev;

// Searches upwards from the directory that holds `path` for the installation
// root; returns whether `quorvelpath` is set afterwards.
bool quorvel_init(std::string const& path);

// Expands a path as written by an author: installation-relative paths,
// "$(StwDir)", "$(StwBauDir)", backslashes to slashes.
std::string expandInstallPath(std::string const& text);
