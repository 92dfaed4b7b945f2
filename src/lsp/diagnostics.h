#pragma once
// The findings of a compile as the protocol's diagnostics, per file.
#include <map>
#include <string>

#include <nlohmann/json.hpp>

#include "lsp/analysis.h"

namespace fplc::lsp {

// The diagnostics of every file that has findings, by URI; the compiled
// document is always present, with an empty list when it has none.
std::map<std::string, nlohmann::json> diagnosenJeDatei(Analyse const& analyse);

// A protocol position (line from 0, UTF-16 column) of a library place (line and
// byte column from 1).
nlohmann::json position(Analyse const& analyse, std::string const& datei, std::uint32_t zeile,
                        std::uint32_t spalte);

}  // namespace fplc::lsp
