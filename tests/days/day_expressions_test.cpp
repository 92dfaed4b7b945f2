#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <tuple>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

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
  // Executes a "VT" text: "days|from|to|include|exclude" of S, "*from|to" of the template, the
  // warnings; else an inline expression: "days @n" (n: last token). Faults: "@n z. LINE TOK: msg".
  std::string parse(std::string const& text) {
    Token const* first = tokens(text);
    auto at = [&](Token const* t) {
      int n = 0;
      for (Token const* p = first; p && p != t; p = p->next())
        ++n;
      return t ? "@" + std::to_string(n) : std::string("@-");
    };
    try {
      if (!text.starts_with("VT")) {
        Verkehrstag const* vt = nullptr;
        Token const* last = fpl.parseInlineVT(first, &vt);
        return vt->days + " " + at(last);
      }
      fpl.execute(true, fpl.getTokenLists().back().get());
      Verkehrstag const& s = *fpl.getVTByName().at("S");
      std::string out = s.days + "|" + s.from + "|" + s.to + "|" + s.include + "|" + s.exclude +
                        " *" + fpl.getDefaultVT().from + "|" + fpl.getDefaultVT().to;
      for (Error const& w : fpl.getWarnungen())
        out += "; " + fault(w);
      return out;
    } catch (Error const& e) {
      return at(e.token) + " " + fault(e);
    }
  }
};

std::string nested(int depth, std::string const& inner) {
  return std::string(depth, '(') + inner + std::string(depth, ')');
}

TEST_F(DayExpressionTest, ExpressionsAndVTLinesGiveTheirDaysOrFaultAtTheirToken) {
  std::pair<std::string, std::string> const rows[] = {
      {"tgl", "1234567 @0"},
      {"(Mo + Mo)", "1 @4"},
      {"So-Mo", "17 @2"},
      {"Fr-Mo", "1567 @2"},
      {"Mi-Mi", "3 @2"},
      {"(Mo-Mi, Fr)", "1235 @6"},
      {"(Mo+\n Do)", "14 @4"},
      {"Mo\n-Fr", "1 @0"},
      {nested(32, "Mo"), "1 @64"},
      {"(Sa " + nested(20000, "Di") + ")", "6 @40003"},  // a group that is no operand
      {"Xyz", "@0 z. 2 Xyz: Verkehrstag Xyz nicht definiert."},
      {"Sommer-Fr", "@0 z. 2 Sommer: Verkehrstag Sommer nicht definiert."},
      {"(Mo - 5)", "@2 z. 2 -: Syntaxfehler in implizitem Verkehrstag."},
      {"Mo-", "@1 z. 2 -: Syntaxfehler in implizitem Verkehrstag."},
      {"Mo -\nFr", "@1 z. 2 -: Syntaxfehler in implizitem Verkehrstag."},  // Fr: next command
      {"tgl-Fr", "@1 z. 2 -: Ungültige Argumente in implizitem Verkehrstag."_cp1252},
      {"(Mo, )", "@3 z. 2 ): Ungültige Verkehrstags-Angabe."_cp1252},
      {"", "@- ohne Token: Ungültige Verkehrstags-Angabe."_cp1252},
      {nested(33, "Mo"), "@32 z. 2 (: Verkehrstags-Angabe zu tief verschachtelt."},
      // The validity fields come from the days' line only; "-" leaves one empty.
      {"VT S 12345 a b c d", "12345|a|b|c|d *|"},
      {"VT S 1 a - c -", "1|a||c| *|"},
      {"VT S 1 a\nVT T 1 x y", "1|a||| *|"},
      {"VT S 1\nVT S 2", "2|||| *|"},
      {"VT * a b\nVT * c\nVT S 1 01.05.2024 x", "1|01|.|05|. *c|"},  // surplus passed over
      {"VT S 1238", "@2 z. 2 1238: Wochentage müssen als Ziffern angegeben werden."_cp1252},
      {"VT S '1'", "@2 z. 2 1: Wochentage müssen als Ziffern angegeben werden."_cp1252},
      // The days are the token after the name, on the next line when the line ends.
      {"VT Werktag\nZ 1 8:00 tgl",
       "@2 z. 3 Z: Wochentage müssen als Ziffern angegeben werden."_cp1252},
      {"VT\nVT T 1", "@2 z. 3 T: Wochentage müssen als Ziffern angegeben werden."_cp1252},
      {"VT S", "@1 z. 2 S: Wochentage müssen als Ziffern angegeben werden."_cp1252},
  };
  for (auto const& [text, expected] : rows)
    EXPECT_EQ(parse(text), expected) << text.substr(0, 30);
  Token const* so = tokens("(Mo-Mi, Fr) So-Mo");  // masks
  EXPECT_EQ(
      std::tuple(fpl.calcVTValue(so), fpl.calcVTValue(so->tokAt(7)), fpl.calcVTValue(so->tokAt(8))),
      std::tuple(23u, 64u, 65u));
}

// Each record as "name/id/basis key": expressions of one mask under one template share one.
TEST_F(DayExpressionTest, RecordsAreSharedNamedAndNumbered) {
  run("VT Sommer 67 a b c d\n");
  std::string got;
  for (char const* text : {"Sommer-Fr", "Mo-Fr", "(Fr, Mo-Do)"})
    got += parse(text) + "; ";
  got += fpl.createVT_weak(fpl.getVTByName().at("Sommer"), 21)->name + "; ";
  tokens("VT * 20240101 20241231\n", true);  // a new template: a new record
  got += parse("Mo-Fr") + ";";
  for (Verkehrstag const& vt : fpl.getVerkehrstage())
    got += " " + vt.name + "/" + std::to_string(vt.id) + "/" + vt.getBasisindex();
  EXPECT_EQ(got,
            "67 @0; 12345 @2; 12345 @6; Sommer 135; 12345 @2; Sommer/1/a*b*d*c 12345/2/*** "
            "Sommer 135/3/a*b*d*c 12345/4/20240101*20241231**");
}

}  // namespace
