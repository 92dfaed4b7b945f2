// Placeholders until resolution and validation are implemented; deleted when they are.
#include "model/fahrplandefinition.h"
void Fahrplandefinition::postprocess() {}
void Fahrplandefinition::validate() {}
signed char Fahrplandefinition::calcLenkziffer(Zug const*, std::string const&) const { return -1; }
signed char Fahrplandefinition::calcLenkziffer(Zug const*, Aussenanlage const*, std::string const&) const { return -1; }
std::pair<std::string, std::string> Fahrplandefinition::getGattung(Aussenanlage const&, Zug const*) { return {}; }
std::string Fahrplandefinition::getLinie(Aussenanlage const&, Zug const*) { return {}; }
Zug const* Zug::getFolgeleistung(std::list<Zug> const&, long long, long long*) const { return nullptr; }
