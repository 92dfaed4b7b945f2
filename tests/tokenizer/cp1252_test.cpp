#include "tokenizer/cp1252.h"

#include <gtest/gtest.h>

namespace {

TEST(Cp1252, LiteralsAndDisplay) {
  EXPECT_STREQ("ü"_cp1252, "\xFC");
  EXPECT_STREQ("ß"_cp1252, "\xDF");
  EXPECT_STREQ("€"_cp1252, "\x80");
  std::pair<char const*, char const*> const cases[] = {
      {"\xFC", "ü"},
      {"\x80", "€"},
      {"aüb€", "aüb€"},
      {"\xC3"
       "a",
       "Ãa"},
      {"\x81", "\xC2\x81"},
  };
  for (auto const& [text, utf8] : cases)
    EXPECT_EQ(cp1252::toUtf8(text), utf8) << text;
}

}  // namespace
