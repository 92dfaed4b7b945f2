// Placeholders until train runs, segments and lists are implemented; deleted when they are.
#include "model/fahrplandefinition.h"
void Fahrplandefinition::kommandoZL(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
void Fahrplandefinition::kommandoZLS(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
void Fahrplandefinition::parseZL(Token const* t) { throw Error(t, "noch nicht implementiert"); }
void Fahrplandefinition::parseModifikatoren(FplEintrag&, Token const*& t) { throw Error(t, "noch nicht implementiert"); }
Token const* Fahrplandefinition::parseList(Token const* t, std::vector<unsigned int>&) { throw Error(t, "noch nicht implementiert"); }
