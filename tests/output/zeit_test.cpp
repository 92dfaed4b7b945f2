#include "output/zeit.h"

#include <gtest/gtest.h>

namespace {

TEST(ZeitToString, WritesTimeOfDayWithDayOffset) {
  struct {
    long long zeit;
    bool mitSekunden, ohneTag;
    char const* text;
  } const faelle[] = {
      {0, false, false, "00:00"},
      {45296, true, false, "12:34:56"},
      {45296, false, false, "12:34"},  // seconds dropped, not rounded
      {90000, false, false, "01:00 +1d"},
      {90000, false, true, "01:00"},
      {172800, true, false, "00:00:00 +2d"},
      {-60, false, false, "23:59 -1d"},
      {-86400, false, false, "00:00 -1d"},
      {-86401, true, false, "23:59:59 -2d"},
      {4294967295LL, true, false, "06:28:15 +49710d"},
      // day boundaries
      {86399, true, false, "23:59:59"},
      {86400, false, false, "00:00 +1d"},
      {-1, true, false, "23:59:59 -1d"},
  };
  for (auto const& f : faelle)
    EXPECT_EQ(zeitToString(f.zeit, f.mitSekunden, f.ohneTag), f.text) << f.zeit << f.ohneTag;
}

}  // namespace
