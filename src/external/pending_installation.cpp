// Placeholders until the installation functions are implemented; deleted when they are.
#include <stdexcept>
#include "external/installation.h"
std::string quorvelpath;
bool quorvel_dev = false;
bool quorvel_init(std::string const&) { throw std::logic_error("noch nicht implementiert"); }
std::string expandInstallPath(std::string const& text) { return text; }
