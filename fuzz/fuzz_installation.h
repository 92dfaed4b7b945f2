#pragma once
// A temporary copy of the example installation that the fuzz targets read from
// and write into; the definition is confined to it, so that no input reaches
// files elsewhere.
#include <string>

#include "model/fahrplandefinition.h"

namespace fplc::fuzz {

// The root of the copy, made on the first call and removed at exit.
std::string const& installation();

// Writes `size` bytes to `name` inside the installation and returns its path.
std::string writeFile(std::string const& name, char const* data, std::size_t size);

// A definition that reads only inside the installation and stays small.
void confine(Fahrplandefinition& fpl);

// Runs `definition` as fplc does: read, execute with output, post-process,
// validate. The faults the library promises (Error and the two standard
// conversion exceptions) are expected; anything else escapes and is a finding.
void compile(Fahrplandefinition& fpl, std::string const& definition, std::string const& file);

}  // namespace fplc::fuzz
