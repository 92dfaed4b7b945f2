#include "tokenizer/token_list.h"

#include <stdexcept>

#include "tokenizer/cp1252.h"
#include "tokenizer/tokenizer_test_support.h"

using namespace std::string_literals;

namespace {

// The tokens read and prepared, separated by blanks (each time token with "@" and
// its seconds), then " | " and the last token's line, or the fault that stopped
// reading or preparing: "z. LINE TOKEN: message" or the standard exception's text.
std::string lexed(std::string const& text) {
  TokenList list;
  std::string ende;
  try {
    readInto(list, text, true);
    ende = std::to_string(list.back()->line());
  } catch (Error const& e) {
    ende = (e.token ? "z. " + std::to_string(e.token->line()) + " " + e.token->str() : "-") + ": " +
           e.message;
  } catch (std::out_of_range const& e) {
    ende = e.what();
  }
  std::string shown;
  for (Token const* t = list.front(); t; t = t->next())
    shown += t->str() +
             (t->isTime() || t->time() != keineZeit ? "@" + std::to_string(t->time()) : "") + " ";
  return shown + "| " + ende;
}

TEST(TokenList, ReadsAndPreparesLineByLine) {
  std::string const zuViele = "Zu viele öffnende "_cp1252,
                    passt = "Klammern passt nicht zueinander.";
  std::string const quote = "Ungerade Anzahl Anführungszeichen in einer Zeile."_cp1252;
  std::pair<std::string, std::string> const cases[] = {
      {"A->B A-B", "A -> B A - B | 1"},
      {"A - > B <\n- C < - >", "A -> B <- C <- > | 2"},
      {"10:15 12 : 30 10:15:30 25:99 08:05",
       "10:15@36900 12:30@45000 10:15:30@36930 25:99@95940 08:05@29100 | 1"},
      {"10:x '10':15 '10'", "10 : x 10 : 15 10 | 1"},
      {"1'000 a'b' 1'_2 1' x'", "1000 a b 1_2 1  x | 1"},
      {"\"x' 'y\" a '' $v_1 2x a/b", "x y a  $v_1 2x a / b | 1"},
      {"a\1b\tc", "a b c | 1"},
      {"x /* a */ y // z\nw /**/ y */ z /*x*/ y */ v /*", "x y w z v | 2"},
      {"\357\273\277a\nb", "a b | 2"},
      {"\357\273a", "\357\273a | 1"},
      {"\376a \376\376", "a \376\376 | 1"},
      {"\377\377a", "a | 1"},
      {"\376\377\0a\0\r\0\n\0b"s, "a b | 2"},
      {"\377\376a\0\r\0\254\40"s, "a \377 | 2"},
      {"a\r\nb\rc\n\nd", "a b c d | 5"},
      {"// x\n// y\r\na /* x\r\ny\n */ b", "a b | 5"},
      {"99999999999999999999:00", "99999999999999999999 : 00 | stoull argument out of range"},
      {"1:00:4294967296", "1 : 00 : 4294967296 | stoul argument out of range"},
      // The tokens of the line before an unclosed quote are dropped.
      {"A \"B\nC\"", "A | z. 1 A: " + quote},
      {"A 'B", "A | z. 1 A: " + quote},
      {"'x", "| -: " + quote},
      // Bracket faults in the order of their checks; one token a line.
      {"(\n]", "( ] | z. 1 (: " + passt},
      {"{\n(\n)\n]", "{ ( ) ] | z. 1 {: " + passt},
      {"(\n)\n)", "( ) ) | z. 3 ): "s + "Zu viele schließende Klammern."_cp1252},
      {"[\n{\n(", "[ { ( | z. 2 {: " + zuViele + "{-Klammern"},
      {"[\n(\n(", "[ ( ( | z. 3 (: " + zuViele + "(-Klammern"},
      {"[\n[\n]\n[", "[ [ ] [ | z. 4 [: " + zuViele + "[-Klammern"},
  };
  for (auto const& [text, tokens] : cases)
    EXPECT_EQ(lexed(text), tokens) << text;
}

}  // namespace

namespace {

// Each token as LINE:COLUMN:TEXT after reading and preparing.
std::string positions(std::string const& text) {
  TokenList list;
  readInto(list, text, true);
  std::string shown;
  for (Token const* t = list.front(); t; t = t->next())
    shown += std::to_string(t->line()) + ":" + std::to_string(t->column()) + ":" + t->str() + " ";
  return shown;
}

TEST(TokenList, TokensKnowTheColumnOfTheirFirstCharacter) {
  std::pair<std::string, std::string> const cases[] = {
      {"ZL Nord {\n  A . 1 H 8:00 -\n}",
       "1:1:ZL 1:4:Nord 1:9:{ 2:3:A 2:5:. 2:7:1 2:9:H 2:11:8:00 2:16:- 3:1:} "},
      // Merged arrows and times keep the first part's column.
      {"  - > B\t12 : 30:15", "1:3:-> 1:7:B 1:9:12:30:15 "},
      // Comments, quotes, separators and line ends of every kind count as characters.
      {"a /* x */ 'q r' 1'000\r\nb\rc", "1:1:a 1:11:q r 1:17:1000 2:1:b 3:1:c "},
      {"x/**/y\n /* a\nb */ z", "1:1:x 3:6:z "},
      {"\357\273\277ab cd", "1:1:ab 1:4:cd "},
      {"\377\376a\0 \0b\0"s, "1:1:a 1:3:b "},
      {"\344\366 x", "1:1:\344\366 1:4:x "},
  };
  for (auto const& [text, shown] : cases)
    EXPECT_EQ(positions(text), shown) << text;
}

}  // namespace
