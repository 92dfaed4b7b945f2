#include "output/zeit.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace {

TEST(ZeitToString, WritesTimeOfDayWithDayOffset) {
  EXPECT_EQ(zeitToString(0, false, false), "00:00");
  EXPECT_EQ(zeitToString(45296, true, false), "12:34:56");
  EXPECT_EQ(zeitToString(45296, false, false), "12:34");  // seconds dropped, not rounded
  EXPECT_EQ(zeitToString(90000, false, false), "01:00 +1d");
  EXPECT_EQ(zeitToString(90000, false, true), "01:00");
  EXPECT_EQ(zeitToString(172800, true, false), "00:00:00 +2d");
  EXPECT_EQ(zeitToString(-60, false, false), "23:59 -1d");
  EXPECT_EQ(zeitToString(-86400, false, false), "00:00 -1d");
  EXPECT_EQ(zeitToString(-86401, true, false), "23:59:59 -2d");
  EXPECT_EQ(zeitToString(4294967295LL, true, false), "06:28:15 +49710d");
  EXPECT_EQ(zeitToString(86399, true, false), "23:59:59");  // the last second of the day
  EXPECT_EQ(zeitToString(86400, false, false), "00:00 +1d");
  EXPECT_EQ(zeitToString(-1, true, false), "23:59:59 -1d");
}

// The extremes of the time type: no overflow, and the day count is the signed
// 32-bit remainder of the true one.
TEST(ZeitToString, WritesTheExtremesOfTheTimeType) {
  std::pair<long long, char const*> const faelle[] = {
      {std::numeric_limits<long long>::max(), "15:30:07 +579025220d"},
      {std::numeric_limits<long long>::min(), "08:29:52 -579025221d"},
      {9223372036854775800LL, "15:30:00 +579025220d"},
      {2147483647LL * 86400, "00:00:00 +2147483647d"},
      {2147483648LL * 86400, "00:00:00 -2147483648d"},  // one day more wraps around
      {-2147483648LL * 86400, "00:00:00 -2147483648d"},
      {-2147483648LL * 86400 - 1, "23:59:59 +2147483647d"},
  };
  for (auto const& [zeit, erwartet] : faelle)
    EXPECT_EQ(zeitToString(zeit, true, false), erwartet) << zeit;
  EXPECT_EQ(zeitToString(std::numeric_limits<long long>::min(), false, true), "08:29");
}

}  // namespace
