// Placeholders until the infrastructure commands are implemented; deleted when they are.
#include "model/fahrplandefinition.h"
void Fahrplandefinition::kommandoAA(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
void Fahrplandefinition::kommandoLZ(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
void Fahrplandefinition::kommandoBIB(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
void Fahrplandefinition::kommandoFZG(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
void Fahrplandefinition::kommandoRHG(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
void Fahrplandefinition::kommandoBIF(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
