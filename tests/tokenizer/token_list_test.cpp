#include "tokenizer/token_list.h"

#include <stdexcept>

#include "tokenizer/cp1252.h"
#include "tokenizer/tokenizer_test_support.h"

using namespace std::string_literals;

namespace {

// The tokens separated by blanks, each time token with "@" and its seconds.
std::string withTimes(TokenList const& list) {
  std::string shown;
  for (Token const* t = list.front(); t; t = t->next()) {
    shown += (shown.empty() ? "" : " ") + t->str();
    if (t->isTime() || t->time() != keineZeit) shown += "@" + std::to_string(t->time());
  }
  return shown;
}

TEST(TokenList, ReadsAndPreparesLineByLine) {
  struct Case {
    std::string text, tokens;
    std::uint32_t lastLine;
  } const cases[] = {
      {"A->B A-B", "A -> B A - B", 1},
      {"A - > B <\n- C < - >", "A -> B <- C <- >", 2},
      {"10:15 12 : 30 10:15:30 25:99 08:05",
       "10:15@36900 12:30@45000 10:15:30@36930 25:99@95940 08:05@29100", 1},
      {"10:x '10':15 '10'", "10 : x 10 : 15 10", 1},
      {"1'000 a'b' 1'_2 1' x'", "1000 a b 1_2 1  x", 1},
      {"\"x' 'y\" a '' $v_1 2x a/b", "x y a  $v_1 2x a / b", 1},
      {"a\1b\tc", "a b c", 1},
      {"x /* a */ y // z\nw /**/ y */ z /*x*/ y */ v /*", "x y w z v", 2},
      {"\357\273\277a\nb", "a b", 2},
      {"\357\273a", "\357\273a", 1},
      {"\376a \376\376", "a \376\376", 1},
      {"\377\377a", "a", 1},
      {"\376\377\0a\0\r\0\n\0b"s, "a b", 2},
      {"\377\376a\0\r\0\254\40"s, "a \377", 2},
      {"a\r\nb\rc\n\nd", "a b c d", 5},
      {"// x\n// y\r\na /* x\r\ny\n */ b", "a b", 5},
  };
  for (auto const& c : cases) {
    TokenList list;
    readInto(list, c.text, true);
    EXPECT_EQ(withTimes(list), c.tokens) << c.text;
    EXPECT_EQ(list.back()->line(), c.lastLine) << c.text;
  }
  for (auto [text, what] : {std::pair{"99999999999999999999:00", "stoull argument out of range"},
                            std::pair{"1:00:4294967296", "stoul argument out of range"}}) {
    TokenList list;
    readInto(list, text);
    EXPECT_EQ(whatOf<std::out_of_range>([&] { list.prepare(); }), what);
  }
}

TEST(TokenList, UnclosedQuoteNamesTheLastTokenRead) {
  for (auto text : {"A \"B\nC\"", "A 'B", "'x"}) {
    TokenList list;
    Error e = errorOf([&] { readInto(list, text); });
    EXPECT_EQ(e.message, "Ungerade Anzahl Anführungszeichen in einer Zeile."_cp1252);
    EXPECT_EQ(e.token, list.back());
    EXPECT_EQ(list.stringify(), text[0] == 'A' ? "A" : "");
  }
}

TEST(TokenList, BracketFaultsInTheOrderOfTheirChecks) {
  struct Case {
    char const* text;  // one token a line: the line names the token
    std::string message;
    std::uint32_t line;
  } const cases[] = {
      {"(\n]", "Klammern passt nicht zueinander.", 1},
      {"{\n(\n)\n]", "Klammern passt nicht zueinander.", 1},
      {"(\n)\n)", "Zu viele schließende Klammern."_cp1252, 3},
      {"[\n{\n(", "Zu viele öffnende {-Klammern"_cp1252, 2},
      {"[\n(\n(", "Zu viele öffnende (-Klammern"_cp1252, 3},
      {"[\n[\n]\n[", "Zu viele öffnende [-Klammern"_cp1252, 4},
  };
  for (auto const& c : cases) {
    TokenList list;
    Error e = errorOf([&] { readInto(list, c.text, true); });
    EXPECT_EQ(e.message, c.message) << c.text;
    ASSERT_NE(e.token, nullptr);
    EXPECT_EQ(e.token->line(), c.line) << c.text;
  }
}

}  // namespace
