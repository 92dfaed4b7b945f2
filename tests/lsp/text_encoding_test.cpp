#include "lsp/text_encoding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace fplc::lsp {
namespace {

TEST(TextEncoding, ConvertsColumnsBetweenBytesAndUtf16Units) {
  struct Case {
    std::string line;
    Kodierung kodierung;
    std::uint32_t bytes;
    std::uint32_t units;
  };
  std::vector<Case> const cases = {
      {"abc", Kodierung::Utf8, 2, 2},
      {"äbc", Kodierung::Utf8, 2, 1},                // ä is two bytes, one unit
      {"€x", Kodierung::Utf8, 3, 1},                 // € is three bytes
      {"\xF0\x9F\x9A\x82x", Kodierung::Utf8, 4, 2},  // outside the BMP: two units
      {"\xE4\x62\x63", Kodierung::Cp1252, 1, 1},     // Windows-1252: one byte, one unit
      {"ab", Kodierung::Utf8, 5, 5},                 // past the end: one unit per byte
  };
  for (Case const& c : cases) {
    EXPECT_EQ(utf16Offset(c.line, c.bytes, c.kodierung), c.units) << c.line;
    EXPECT_EQ(byteOffset(c.line, c.units, c.kodierung), c.bytes) << c.line;
  }
}

TEST(TextEncoding, ConvertsEditorTextToWindows1252) {
  EXPECT_EQ(utf8ToCp1252("Gräfenhain €"),
            "Gr\xE4"
            "fenhain \x80");
  EXPECT_EQ(utf8ToCp1252("\xE2\x86\x92"), "?");  // an arrow is not in the code page
  EXPECT_TRUE(isUtf8("Gräfenhain"));
  EXPECT_FALSE(
      isUtf8("Gr\xE4"
             "fenhain"));
  EXPECT_FALSE(isUtf8("\xED\xA0\x80"));  // a surrogate
}

TEST(TextEncoding, FindsLinesWhateverTheLineEnd) {
  std::string const text = "a\r\nb\nc\rd";
  EXPECT_EQ(lineOf(text, 0), "a");
  EXPECT_EQ(lineOf(text, 1), "b");
  EXPECT_EQ(lineOf(text, 2), "c");
  EXPECT_EQ(lineOf(text, 3), "d");
  EXPECT_EQ(lineOf(text, 4), "");
}

TEST(TextEncoding, MapsFileUrisToPathsAndBack) {
  EXPECT_EQ(pathOfUri("file:///a%20b/c.fpl"), "/a b/c.fpl");
  EXPECT_EQ(pathOfUri("file://localhost/x"), "/x");
  EXPECT_EQ(pathOfUri("untitled:1"), "");
  EXPECT_EQ(pathOfUri("file:///bad%2"), "/bad%2");
  EXPECT_EQ(uriOfPath("/a b/Gr\xC3\xA4"
                      "fe.fpl"),
            "file:///a%20b/Gr%C3%A4fe.fpl");
}

}  // namespace
}  // namespace fplc::lsp
