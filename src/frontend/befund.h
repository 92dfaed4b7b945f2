#pragma once
// A diagnostic together with the token it concerns, while the front-end still
// adds notes and checks to it.
#include <string>
#include <vector>

#include "frontend/compile.h"

class Token;

namespace fplc::detail {

struct Befund {
  Diagnose diagnose;
  Token const* token = nullptr;
};

// A diagnostic at `token` (its file, line, column and length), or at the
// definition file without a line when there is no token.
Befund befundAn(Token const* token, std::string const& definition, bool fehler,
                std::string const& meldung);

// The edit distance (insertions, deletions, substitutions, swaps of neighbours)
// of two texts, counted up to `grenze` + 1.
std::size_t editierAbstand(std::string const& a, std::string const& b, std::size_t grenze);

// The candidate nearest to `name` within two edits, other than `name` itself;
// empty when there is none. Ties go to the first in sorted order.
std::string aehnlichsterName(std::string const& name, std::vector<std::string> const& kandidaten);

}  // namespace fplc::detail
