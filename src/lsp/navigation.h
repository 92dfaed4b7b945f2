#pragma once
// Go to definition and the document outline.
#include <cstdint>
#include <string>

#include <nlohmann/json.hpp>

#include "lsp/analysis.h"

namespace fplc::lsp {

// The Location that defines the name at line `zeile`, byte column `spalte` (both
// from 1) of `pfad`, or null.
nlohmann::json definitionAn(Analyse const& analyse, std::string const& pfad, std::uint32_t zeile,
                            std::uint32_t spalte);

// The DocumentSymbols of `pfad`: layouts, operating points, vehicles, formations,
// days, runs, segments and trains.
nlohmann::json symboleVon(Analyse const& analyse, std::string const& pfad);

}  // namespace fplc::lsp
