#pragma once
// Hover texts: what a train command makes, the stops of a run, the weekdays of a
// day expression.
#include <cstdint>
#include <string>

#include <nlohmann/json.hpp>

#include "lsp/analysis.h"

namespace fplc::lsp {

// The Hover at line `zeile`, byte column `spalte` (both from 1) of `pfad`, or null.
nlohmann::json hoverAn(Analyse const& analyse, std::string const& pfad, std::uint32_t zeile,
                       std::uint32_t spalte);

// "Mo, Di und Fr" for the weekday bit mask 0b10011.
std::string wochentageVon(unsigned maske);

}  // namespace fplc::lsp
