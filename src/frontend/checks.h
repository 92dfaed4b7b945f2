#pragma once
// The front-end's checks beyond the library's own warnings. Each reports a
// warning with its name in `pruefung`; each can be turned off by that name.
#include <list>
#include <set>
#include <string>
#include <vector>

#include "frontend/befund.h"
#include "model/fahrplandefinition.h"

namespace fplc::detail {

// The names of all checks, in the order they run.
std::vector<std::string> const& pruefungsNamen();

// Adds the findings of every check not in `aus` to `befunde`, and folds warnings
// that follow from a mistyped operating point into notes under it. After a fatal
// fault, checks that need the whole definition are left out.
void pruefe(Fahrplandefinition const& fpl, std::vector<Befund>& befunde,
            std::set<std::string> const& aus, bool abgebrochen);

// zeit-aus-fehlender-zeit on its own: times that lie within ten days of "no
// time" were computed from one.
void pruefeFehlendeZeiten(std::list<Zuglauf> const& laeufe, std::vector<Befund>& neu);

}  // namespace fplc::detail
