#pragma once
// Whether the text report is coloured.
#include "frontend/compile_options.h"

// --color=always or never decides; auto colours a terminal, unless NO_COLOR is
// set to a non-empty value or TERM is "dumb". `noColor` and `term` are the
// variables' values, null when unset.
bool useColour(Options::Farbe farbe, char const* noColor, char const* term, bool terminal);
