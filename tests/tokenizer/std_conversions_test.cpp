#include "tokenizer/std_conversions.h"

#include <stdexcept>
#include <unordered_map>

#include "tokenizer/tokenizer_test_support.h"

namespace {

template <typename E, typename Action>
std::string whatOf(Action action) {
  return errorOf<E>(action).what();
}

TEST(StdConversions, FailuresCarryTheStandardTexts) {
  using std::invalid_argument, std::out_of_range;
  std::unordered_map<std::string, int> const map{{"a", 1}};
  EXPECT_EQ(whatOf<invalid_argument>([] { toInt("x"); }), "invalid stoi argument");
  EXPECT_EQ(whatOf<out_of_range>([] { toInt("99999999999"); }), "stoi argument out of range");
  EXPECT_EQ(whatOf<invalid_argument>([] { toULong("x"); }), "invalid stoul argument");
  EXPECT_EQ(whatOf<out_of_range>([] { toULong("4294967296"); }), "stoul argument out of range");
  EXPECT_EQ(whatOf<invalid_argument>([] { toULongLong(""); }), "invalid stoull argument");
  EXPECT_EQ(whatOf<out_of_range>([] { toULongLong("18446744073709551616"); }),
            "stoull argument out of range");
  EXPECT_EQ(whatOf<out_of_range>([&] { mapAt(map, std::string("b")); }),
            "invalid unordered_map<K, T> key");
  EXPECT_EQ(toULong("4294967295"), 4294967295UL);
  EXPECT_EQ(toULong("-1"), 4294967295UL);  // negative numbers wrap as with stoul
}

}  // namespace
