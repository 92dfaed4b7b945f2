// Placeholders until SET and DAT are implemented; deleted when they are.
#include "model/fahrplandefinition.h"
void Fahrplandefinition::kommandoSET(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
void Fahrplandefinition::kommandoDAT(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
