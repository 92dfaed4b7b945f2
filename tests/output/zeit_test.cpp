#include "output/zeit.h"

#include <gtest/gtest.h>

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

}  // namespace
