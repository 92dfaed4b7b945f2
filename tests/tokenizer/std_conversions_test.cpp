#include "tokenizer/std_conversions.h"

#include <gtest/gtest.h>

#include <functional>
#include <unordered_map>

namespace {

TEST(StdConversions, FailuresCarryTheStandardTexts) {
  std::unordered_map<std::string, int> map{{"a", 1}};
  std::pair<std::function<void()>, char const*> const cases[] = {
      {[] { toInt("x"); }, "invalid stoi argument"},
      {[] { toInt("99999999999"); }, "stoi argument out of range"},
      {[] { toULong("x"); }, "invalid stoul argument"},
      {[] { toULong("4294967296"); }, "stoul argument out of range"},
      {[] { toULongLong(""); }, "invalid stoull argument"},
      {[] { toULongLong("18446744073709551616"); }, "stoull argument out of range"},
      {[&] { mapAt(map, std::string("b")); }, "invalid unordered_map<K, T> key"},
  };
  for (auto const& [convert, what] : cases) {
    try {
      convert();
      ADD_FAILURE() << what;
    } catch (std::logic_error const& e) {  // invalid_argument and out_of_range
      EXPECT_STREQ(e.what(), what);
    }
  }
  EXPECT_EQ(toULong("4294967295"), 4294967295UL);
  EXPECT_EQ(toULong("-1"), 4294967295UL);
  EXPECT_EQ(mapAt(map, std::string("a")), 1);
}

}  // namespace
