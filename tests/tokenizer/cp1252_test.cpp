#include "tokenizer/cp1252.h"

#include <gtest/gtest.h>

namespace {

TEST(Cp1252, LiteralsAndDisplay) {
  EXPECT_STREQ("üß€"_cp1252, "\xFC\xDF\x80");
  // Valid UTF-8 sequences are kept, every other byte is read as Windows-1252.
  std::pair<char const*, char const*> const cases[] = {
      {"\xFC", "ü"}, {"\x80", "€"}, {"aüb€", "aüb€"}, {"\xC3z", "Ãz"}, {"\x81", "\xC2\x81"}};
  for (auto const& [text, utf8] : cases)
    EXPECT_EQ(cp1252::toUtf8(text), utf8) << text;
}

}  // namespace
