#pragma once
// Notes that explain what the library's fixed texts cannot: which name was not
// found, which path was tried, which times a warning is about. The library's
// messages stay as they are; notes are added beside them.
#include <vector>

#include "frontend/befund.h"
#include "model/fahrplandefinition.h"

namespace fplc::detail {

// The times involved, under each time warning of the validation.
void ergaenzeZeitNotizen(Fahrplandefinition const& fpl, std::vector<Befund>& befunde);

// Under the fatal fault: the name a standard-library look-up missed (when
// `standardFehler`), or the path of a layout or library that could not be opened.
void ergaenzeFehlerNotizen(Fahrplandefinition const& fpl, Befund& fatal, bool standardFehler);

// "z. 12, Spalte 5" for a token.
std::string ortText(Token const* token);

}  // namespace fplc::detail
