#pragma once
// Completion: command keywords at the start of a line, modifiers on stop lines,
// and the names defined before the cursor.
#include <cstdint>
#include <string>

#include <nlohmann/json.hpp>

#include "lsp/analysis.h"

namespace fplc::lsp {

// The CompletionItems for line `zeile` (from 0) of `dokument`, whose text before
// the cursor is `vorCursor` (UTF-8). `analyse` is the document's last compile.
nlohmann::json vervollstaendige(Analyse const& analyse, Dokument const& dokument,
                                std::uint32_t zeile, std::string const& vorCursor);

}  // namespace fplc::lsp
