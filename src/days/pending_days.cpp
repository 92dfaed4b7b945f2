// Placeholders until the days of operation are implemented; deleted when they are.
#include "model/fahrplandefinition.h"
bool Verkehrstag::Match(long long) const { return false; }
bool Verkehrstag::MatchVortag(long long) const { return false; }
bool Verkehrstag::MatchFolgetag(long long) const { return false; }
bool Verkehrstag::MatchWochentag(char) const { return false; }
bool Verkehrstag::MatchWochentagDanach(char) const { return false; }
unsigned char Verkehrstag::getValue() const { return 0; }
std::string Verkehrstag::getBasisindex() const { return {}; }
std::string formatWeekdayList(std::string const&) { return {}; }
void Fahrplandefinition::kommandoVT(Token const* cmd, bool) { throw Error(cmd, "noch nicht implementiert"); }
unsigned Fahrplandefinition::calcVTValue(Token const* t) const { throw Error(t, "noch nicht implementiert"); }
unsigned Fahrplandefinition::calcVTValue(Token const* t, unsigned) const { throw Error(t, "noch nicht implementiert"); }
Verkehrstag const* Fahrplandefinition::createVT_weak(Verkehrstag const*, unsigned) { throw Error(nullptr, "noch nicht implementiert"); }
Token const* Fahrplandefinition::parseInlineVT(Token const* t, Verkehrstag const**) { throw Error(t, "noch nicht implementiert"); }
