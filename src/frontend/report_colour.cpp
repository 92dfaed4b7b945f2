#include "frontend/report_colour.h"

#include <cstring>

bool useColour(Options::Farbe farbe, char const* noColor, char const* term, bool terminal) {
  if (farbe != Options::Farbe::Auto) return farbe == Options::Farbe::Immer;
  if (noColor && *noColor) return false;
  if (term && std::strcmp(term, "dumb") == 0) return false;
  return terminal;
}
