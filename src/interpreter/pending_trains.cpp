// Placeholders until the train commands are implemented; deleted when they are.
#include "model/fahrplandefinition.h"
void Fahrplandefinition::kommandoTZ(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
void Fahrplandefinition::kommandoZ(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
void Fahrplandefinition::kommandoM(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
Token const* Fahrplandefinition::parseZLSpec(Token const* t, Zuglauf const**, long long*) { throw Error(t, "noch nicht implementiert"); }
