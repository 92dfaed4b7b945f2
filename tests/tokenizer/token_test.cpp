#include "tokenizer/token.h"

#include "tokenizer/cp1252.h"
#include "tokenizer/tokenizer_test_support.h"

namespace {

TEST(TokenMatch, PatternsAgainstTokenChains) {
  struct Case {
    char const *tokens, *pattern;
    bool matches;
  } const cases[] = {
      {"a - b", "a -| b", true},  {"a b", "a -| b", true},     {"5 x", "%num%|- x", true},
      {"- x", "%num%|- x", true}, {"y x", "%num%|- x", false}, {"a c", "a !!b", true},
      {"a", "a !!b", true},       {"a b", "a !!b", false},     {"ab", "a|ab", true},
      {"a", "ab|x", false},       {"ab", "a", false},          {"Hp x", "Bf|Hp|Abzw  x", true},
      {"y", "|x y", false},       {"y", "x| y", true},         {"x", "%time%| x", true},
      {"x", "%num%", false},      {"Bf", "%name%", true},      {"'12'", "%name%", true},
      {"12", "%name%", false},    {"12", "%num%", true},       {"'||'", "%oror%", true},
      {"|", "%or%", true},        {"|", "%oror%", false},      {"{", "%any%", true},
      {"% x", "% x", true},       {"a", "a b", false},         {"", "", true},
      {"", "!!x", true},          {"", "x|", false},           {"a c d", "a !!b d", true},
  };
  for (auto const& c : cases) {
    TokenList list;
    readInto(list, c.tokens);
    EXPECT_EQ(Token::Match(list.front(), c.pattern), c.matches) << c.tokens << " ~ " << c.pattern;
  }
  TokenList list;
  readInto(list, "a b");
  Error e = errorOf([&] { Token::Match(list.front(), "a %bool%"); });
  EXPECT_EQ(e.message, "Unerwartetes Suchmuster (interner Fehler).");
  EXPECT_EQ(e.token, list.back());
}

TEST(TokenType, Classification) {
  auto type = [](std::string const& text, long long time = keineZeit, bool hardcoded = false) {
    Token tok(nullptr, text, 1);
    tok.time(time);
    tok.setHardcodename(hardcoded);
    return tok.getType();
  };
  for (std::string text : {"12a", "-5", "-", ""})
    EXPECT_EQ(type(text), Token::Other) << text;
  for (std::string text : {"-x", "über"_cp1252})
    EXPECT_EQ(type(text), Token::Name) << text;
  EXPECT_EQ(type("1200"), Token::Number);
  EXPECT_EQ(type("1200", 4294967294LL), Token::Time);
  EXPECT_EQ(type("12", keineZeit, true), Token::HardcodedName);
}

// Navigation along links and offsets, then deletion, which clears the partner's
// link and moves the list's end.
TEST(TokenNavigation, WalksLinksAndDeletes) {
  TokenList list;
  readInto(list, "a ( b ) c", true);
  Token* a = list.front();
  EXPECT_EQ(list.back()->tokAt(-4), a);
  EXPECT_EQ(a->tokAt(5), nullptr);
  EXPECT_EQ(a->linkAt(1), a->tokAt(3));
  EXPECT_EQ(a->strAt(2), "b");
  EXPECT_EQ(a->strAt(100), "");
  Error e = errorOf([&] { a->linkAt(100); });
  EXPECT_EQ(e.message, "Token::linkAt() mit ungueltigem Wert aufgerufen (interner Fehler).");
  EXPECT_EQ(e.token, a);
  Token* open = a->next();
  open->deleteNext(2);
  EXPECT_EQ(open->link(), nullptr);
  EXPECT_EQ(open->next()->prev(), open);
  EXPECT_EQ(list.stringify(), "a ( c");
  a->deleteNext(10);
  EXPECT_EQ(list.back(), a);
  EXPECT_EQ(a->next(), nullptr);
}

}  // namespace

namespace {

// Tokens of one character share their text; changing one leaves the others as they were.
TEST(TokenSharing, ChangingOneTokenOfACharacterLeavesTheOthersAlone) {
  Token minus{nullptr, "-", 1}, andererMinus{nullptr, "-", 2};
  Token eins{nullptr, "1", 1}, andereEins{nullptr, "1", 1};
  Token x{nullptr, "x", 1}, anderesX{nullptr, "x", 1};
  minus.str("->");
  eins.time(60);
  x.setHardcodename(true);
  Token kopie = eins;
  eins.str("2");
  auto zeige = [](Token const& t) {
    return t.str() + "/" + std::to_string(t.getType()) + "/" + std::to_string(t.time());
  };
  EXPECT_EQ(zeige(minus) + " " + zeige(andererMinus), "->/4/4294967295 -/4/4294967295");
  EXPECT_EQ(zeige(eins) + " " + zeige(kopie) + " " + zeige(andereEins),
            "2/3/60 1/3/60 1/0/4294967295");
  EXPECT_EQ(zeige(x) + " " + zeige(anderesX), "x/2/4294967295 x/1/4294967295");
}

}  // namespace
