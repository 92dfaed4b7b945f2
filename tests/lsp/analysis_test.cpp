#include "lsp/analysis.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace fplc::lsp {
namespace {

TEST(Analysis, FindsLinesAsTheLibraryCountsThem) {
  Analyse analyse;
  analyse.texte["plan.fpl"] = quelltext("a\r\nb\nc\rd", Kodierung::Utf8);
  EXPECT_EQ(analyse.texte["plan.fpl"].zeilenAnfaenge, (std::vector<std::size_t>{0, 3, 5, 7}));
  std::vector<std::string> lines;
  for (std::uint32_t n = 0; n <= 5; ++n)
    lines.emplace_back(analyse.zeile("plan.fpl", n).first);
  EXPECT_EQ(lines, (std::vector<std::string>{"", "a", "b", "c", "d", ""}));
}

}  // namespace
}  // namespace fplc::lsp
