#pragma once
#include <string>

// "12:34:56 +1d": a time in seconds since midnight of the reference day.
std::string zeitToString(long long zeit, bool mitSekunden, bool ohneTag);
