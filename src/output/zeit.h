#pragma once
#include <string>

#include "../export.h"

// "12:34:56 +1d": a time in seconds since midnight of the reference day.
FPLC_API std::string zeitToString(long long zeit, bool mitSekunden, bool ohneTag);
