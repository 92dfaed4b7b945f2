// Whole timetable documents, compared byte for byte with the expected files:
// tests/output/golden/<case>.fpl is the definition, <case>_<layout>.xml the
// document written for that layout. FPLC_UPDATE_GOLDEN=1 rewrites the expected
// files from the current output instead of comparing.
#include <tinyxml2.h>

#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "external/installation.h"
#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

std::string const kGolden = std::string(FPLC_SOURCE_DIR) + "/tests/output/golden/";

std::string leseDatei(std::string const& pfad) {
  std::ifstream in(pfad, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// Layouts and libraries come from tests/output/data, the installation root here.
class TimetableWriterTest : public DefinitionTest {
 protected:
  void SetUp() override {
    alterPfad = quorvelpath;
    alterDev = quorvel_dev;
    quorvelpath = std::string(FPLC_SOURCE_DIR) + "/tests/output/data";
    quorvel_dev = false;
  }
  void TearDown() override {
    quorvelpath = alterPfad;
    quorvel_dev = alterDev;
  }

  // The document as OUT saves it for the layout `name`.
  std::string dokument(std::string const& name) {
    for (Aussenanlage const& aa : fpl.getAussenanlagen()) {
      if (aa.name != name) continue;
      tinyxml2::XMLDocument doc(true, tinyxml2::PRESERVE_WHITESPACE);
      fpl.write(doc, "Testfahrplan", aa, std::filesystem::path(aa.datei).filename().string());
      tinyxml2::XMLPrinter printer(nullptr, false);
      doc.Print(&printer);
      return printer.CStr();
    }
    return "keine Außenanlage " + name;
  }

 private:
  std::string alterPfad;
  bool alterDev = false;
};

struct GoldenFall {
  char const* name;
  bool nachbearbeiten;  // post-process as OUT does before writing
  std::vector<std::string> anlagen;
};

void PrintTo(GoldenFall const& f, std::ostream* out) {
  *out << f.name;
}

class TimetableGoldenTest : public TimetableWriterTest,
                            public ::testing::WithParamInterface<GoldenFall> {};

TEST_P(TimetableGoldenTest, WritesTheExpectedDocument) {
  GoldenFall const& f = GetParam();
  std::ifstream definition(kGolden + f.name + ".fpl", std::ios::binary);
  fpl.read(definition, std::string(f.name) + ".fpl");
  fpl.execute(true, static_cast<TokenList const*>(nullptr));
  if (f.nachbearbeiten) fpl.postprocess();
  for (std::string const& anlage : f.anlagen) {
    std::string klein = anlage;
    for (char& c : klein)
      c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    std::string const datei = kGolden + f.name + "_" + klein + ".xml";
    std::string const xml = dokument(anlage);
    if (std::getenv("FPLC_UPDATE_GOLDEN"))
      std::ofstream(datei, std::ios::binary) << xml;
    else
      EXPECT_EQ(xml, leseDatei(datei)) << datei;
  }
}

INSTANTIATE_TEST_SUITE_P(Golden, TimetableGoldenTest,
                         ::testing::Values(GoldenFall{"anlage_ohne_zuege", true, {"Sued"}},
                                           GoldenFall{"gemeinsames_template", true, {"Nord"}},
                                           GoldenFall{"signalregel", true, {"Nord"}},
                                           GoldenFall{"eintragsattribute", false, {"Nord"}},
                                           GoldenFall{"benutzte_vorlagen", true, {"Nord"}},
                                           GoldenFall{"zwei_anlagen", true, {"Nord", "Sued"}}),
                         [](auto const& info) { return std::string(info.param.name); });

TEST_F(TimetableWriterTest, UnknownDirectionOfTheLayoutIsAFault) {
  run("DAT \"/anlagen.fpl\"\nZL Hin {\n XA . S1 H - 8:00\n -> Nord . Nordost\n"
      " XE . F1 H 8:20 -\n}\nSET Zuglauf Hin\nZ 1 0:00\n");
  try {
    dokument("Nord");
    ADD_FAILURE() << "no Error thrown";
  } catch (Error const& e) {
    EXPECT_EQ(describe(e), "z. 5: " + std::string("Fahrtrichtung Nordost ist in Außenanlage "
                                                  "Nord nicht definiert."_cp1252));
  }
}

}  // namespace
