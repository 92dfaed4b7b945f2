#pragma once
// Weekday digits as German text, for messages.
#include <string>

namespace fplc::detail {

// "Mo, Mi und Fr" for the weekday digits "135".
std::string formatWeekdayList(std::string const& weekdays);

}  // namespace fplc::detail

// The library's own sources name it unqualified.
using fplc::detail::formatWeekdayList;
