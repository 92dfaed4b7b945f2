#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/tokenizer_test_support.h"

namespace {

class DayExpressionTest : public DefinitionTest {
 protected:
  // Reads one more file; returns its first token after the header (line 2).
  Token const* tokens(std::string const& text, bool execute = false) {
    std::istringstream in(kHeader + text);
    fpl.read(in, "weiter.fpl");
    if (execute) fpl.execute(true, fpl.getTokenLists().back().get());
    return fpl.getTokenLists().back()->front()->tokAt(3);
  }
  Verkehrstag const* inlineVT(Token const* t) {
    Verkehrstag const* vt = nullptr;
    fpl.parseInlineVT(t, &vt);
    return vt;
  }
};

std::string nested(int depth, std::string const& inner) {
  return std::string(depth, '(') + inner + std::string(depth, ')');
}

TEST_F(DayExpressionTest, InlineExpressionsGiveTheirWeekdaysAndLastToken) {
  struct {
    std::string text;
    char const* days;
    int last;
  } const rows[] = {
      {"tgl", "1234567", 0},
      {"(Mo + Mo)", "1", 4},
      {"So-Mo", "17", 2},
      {"Fr-Mo", "1567", 2},
      {"Mi-Mi", "3", 2},
      {"Mo-Fr", "12345", 2},
      {"(Mo-Mi, Fr)", "1235", 6},
      {"(Sa + (Mo, (Di)))", "126", 10},
      {"(Mo+\n Do)", "14", 4},
      {"Mo\n-Fr", "1", 0},
      {nested(32, "Mo"), "1", 64},
      {"(Sa " + nested(20000, "Di") + ")", "6", 40003},  // a group that is no operand
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.text.substr(0, 30));
    Token const* first = tokens(row.text);
    Verkehrstag const* vt = nullptr;
    EXPECT_EQ(fpl.parseInlineVT(first, &vt), first->tokAt(row.last));
    EXPECT_EQ(vt->days, row.days);
  }
  Token const* so = tokens("(Mo-Mi, Fr) So-Mo");
  EXPECT_EQ(fpl.calcVTValue(so), 23u);
  EXPECT_EQ(fpl.calcVTValue(so->tokAt(7)), 64u);
  EXPECT_EQ(fpl.calcVTValue(so->tokAt(8)), 65u);
}

// Texts that start with "VT" are executed as commands, the others read as
// inline expressions; the token is counted from the first token of the text.
TEST_F(DayExpressionTest, FaultsNameTheirToken) {
  std::string const ziffern = "Wochentage müssen als Ziffern angegeben werden."_cp1252;
  struct {
    std::string text;
    std::string message;
    int token;  // -1: none
  } const rows[] = {
      {"Xyz", "Verkehrstag Xyz nicht definiert."_cp1252, 0},
      {"Sommer-Fr", "Verkehrstag Sommer nicht definiert."_cp1252, 0},
      {"(Mo +\nXyz)", "Verkehrstag Xyz nicht definiert."_cp1252, 3},
      {"(Mo - 5)", "Syntaxfehler in implizitem Verkehrstag."_cp1252, 2},
      {"Mo-", "Syntaxfehler in implizitem Verkehrstag."_cp1252, 1},
      {"Mo -\nFr", "Syntaxfehler in implizitem Verkehrstag."_cp1252, 1},  // Fr: next command
      {"tgl-Fr", "Ungültige Argumente in implizitem Verkehrstag."_cp1252, 1},
      {"(Mo, )", "Ungültige Verkehrstags-Angabe."_cp1252, 3},
      {"5", "Ungültige Verkehrstags-Angabe."_cp1252, 0},
      {nested(33, "Mo"), "Verkehrstags-Angabe zu tief verschachtelt."_cp1252, 32},
      {"", "Ungültige Verkehrstags-Angabe."_cp1252, -1},
      {"VT S Mo", ziffern, 2},
      {"VT S 1238", ziffern, 2},
      {"VT S '1'", ziffern, 2},
      {"VT S\nVT T 1", ziffern, 1},
      {"VT\nVT T 1", ziffern, 0},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.text.substr(0, 30));
    Token const* first = tokens(row.text);
    Error const e = errorOf([&] {
      if (row.text.starts_with("VT"))
        fpl.execute(true, fpl.getTokenLists().back().get());
      else
        inlineVT(first);
    });
    EXPECT_EQ(e.message, row.message);
    EXPECT_EQ(e.token, row.token < 0 ? nullptr : first->tokAt(row.token));
  }
}

TEST_F(DayExpressionTest, RecordsAreSharedNamedAndNumbered) {
  run("VT Sommer 67 a b c d\n");
  Verkehrstag const* sommer = fpl.getVTByName().at("Sommer");
  EXPECT_EQ(inlineVT(tokens("Sommer-Fr")), sommer);
  Verkehrstag const* range = inlineVT(tokens("Mo-Fr"));
  EXPECT_EQ(inlineVT(tokens("(Fr, Mo-Do)")), range);
  Verkehrstag const* split = fpl.createVT_weak(sommer, 21);
  tokens("VT * 20240101 20241231\n", true);
  Verkehrstag const* later = inlineVT(tokens("Mo-Fr"));
  EXPECT_NE(later, range);
  auto summary = [](Verkehrstag const* vt) {
    return vt->name + "/" + std::to_string(vt->id) + "/" + vt->getBasisindex();
  };
  EXPECT_EQ(summary(sommer), "Sommer/1/a*b*d*c");
  EXPECT_EQ(summary(range), "12345/2/***");
  EXPECT_EQ(summary(split), "Sommer 135/3/a*b*d*c");
  EXPECT_EQ(summary(later), "12345/4/20240101*20241231**");
}

TEST_F(DayExpressionTest, VTLinesTakeTheirFieldsFromTheirOwnLine) {
  struct {
    char const* body;
    char const* fields;  // days|from|to|include|exclude of S
  } const rows[] = {
      {"VT S 12345 a b c d", "12345|a|b|c|d"},
      {"VT S 7 - b", "7||b||"},
      {"VT S 1 a - c -", "1|a||c|"},
      {"VT S 1 a\nVT T 1 x y", "1|a|||"},
      {"VT S 1\nVT S 2", "2||||"},
  };
  for (auto const& row : rows) {
    tokens(row.body, true);
    Verkehrstag const& s = *fpl.getVTByName().at("S");
    EXPECT_EQ(s.days + "|" + s.from + "|" + s.to + "|" + s.include + "|" + s.exclude, row.fields);
  }
  EXPECT_TRUE(fpl.getWarnungen().empty());
  tokens("VT * a b\nVT * c\nVT S 1 01.05.2024 x", true);
  EXPECT_EQ(fpl.getDefaultVT().from + "|" + fpl.getDefaultVT().to, "c|");
  ASSERT_EQ(fpl.getWarnungen().size(), 1u);
  EXPECT_EQ(fpl.getWarnungen()[0].message,
            "Überzählige Angaben in VT-Zeile werden ignoriert."_cp1252);
  EXPECT_EQ(fpl.getWarnungen()[0].token->str(), "2024");
}

}  // namespace
