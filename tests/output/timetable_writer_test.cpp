// Whole timetable documents, compared byte for byte with the expected files:
// tests/output/golden/<case>.fpl is the definition, <case>_<layout>.xml the
// document written for that layout. FPLC_UPDATE_GOLDEN=1 first rewrites the
// expected files from the current output.
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
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"

namespace {

std::string const kGolden = std::string(FPLC_SOURCE_DIR) + "/tests/output/golden/";

// Layouts and libraries come from tests/output/data, the installation root here.
class TimetableWriterTest : public DefinitionTest {
 protected:
  TimetableWriterTest() {
    quorvelpath = std::string(FPLC_SOURCE_DIR) + "/tests/output/data";
    quorvel_dev = false;
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

  Restore<std::string> pfad{quorvelpath};
  Restore<bool> dev{quorvel_dev};
};

TEST_F(TimetableWriterTest, WritesTheExpectedDocuments) {
  struct {
    char const* name;
    bool nachbearbeiten;  // post-process as OUT does before writing
    std::vector<std::string> anlagen;
  } const faelle[] = {
      {"anlage_ohne_zuege", true, {"Sued"}}, {"gemeinsames_template", true, {"Nord"}},
      {"signalregel", true, {"Nord"}},       {"eintragsattribute", false, {"Nord"}},
      {"benutzte_vorlagen", true, {"Nord"}}, {"zwei_anlagen", true, {"Nord", "Sued"}},
  };
  for (auto const& f : faelle) {
    fpl.clear(false);
    std::ifstream definition(kGolden + f.name + ".fpl", std::ios::binary);
    fpl.read(definition, std::string(f.name) + ".fpl");
    fpl.execute(true, static_cast<TokenList const*>(nullptr));
    if (f.nachbearbeiten) fpl.postprocess();
    for (std::string const& anlage : f.anlagen) {
      std::string klein = anlage;
      klein[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(klein[0])));
      std::string const datei = kGolden + f.name + "_" + klein + ".xml";
      std::string const xml = dokument(anlage);
      if (std::getenv("FPLC_UPDATE_GOLDEN")) std::ofstream(datei, std::ios::binary) << xml;
      std::ostringstream erwartet;
      erwartet << std::ifstream(datei, std::ios::binary).rdbuf();
      EXPECT_EQ(xml, erwartet.str()) << datei;
    }
  }
}

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
