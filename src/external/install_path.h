#pragma once
// The expansion of path variables in file names written in definitions.
#include <string>

namespace fplc::detail {

// Expands a path as written by an author: installation-relative paths,
// "$(StwDir)", "$(StwBauDir)", backslashes to slashes.
std::string expandInstallPath(std::string const& text);

}  // namespace fplc::detail

// The library's own sources name it unqualified.
using fplc::detail::expandInstallPath;
