#include "frontend/report_colour.h"

#include <gtest/gtest.h>

namespace {

TEST(Colour, TerminalAndEnvironmentDecideUnlessColorIsGiven) {
  using F = Options::Farbe;
  struct {
    F farbe;
    char const* noColor;
    char const* term;
    bool terminal, farbig;
  } const faelle[] = {
      {F::Auto, nullptr, "xterm", true, true}, {F::Auto, nullptr, "xterm", false, false},
      {F::Auto, "1", "xterm", true, false},    {F::Auto, "", "xterm", true, true},
      {F::Auto, nullptr, "dumb", true, false}, {F::Auto, nullptr, nullptr, true, true},
      {F::Immer, "1", "dumb", false, true},    {F::Nie, nullptr, "xterm", true, false},
  };
  for (auto const& f : faelle)
    EXPECT_EQ(useColour(f.farbe, f.noColor, f.term, f.terminal), f.farbig)
        << static_cast<int>(f.farbe) << " " << (f.noColor ? f.noColor : "-") << " "
        << (f.term ? f.term : "-") << " " << f.terminal;
}

}  // namespace
