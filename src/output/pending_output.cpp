// Placeholders until the output is implemented; deleted when it is.
#include "model/fahrplandefinition.h"
#include "output/zeit.h"
std::string zeitToString(long long, bool, bool) { return {}; }
void Fahrplandefinition::write(tinyxml2::XMLDocument&, std::string const&, Aussenanlage const&, std::string const&) const {}
void Fahrplandefinition::kommandoOUT(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
