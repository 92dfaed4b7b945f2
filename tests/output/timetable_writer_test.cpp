// Whole timetable documents, compared byte for byte with tests/output/golden:
// <case>.fpl is the definition, <case>_<layout>.xml the document written for that
// layout. FPLC_UPDATE_GOLDEN=1 first rewrites the expected files from the output.
#include <tinyxml2.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/tokenizer_test_support.h"

namespace {

using TimetableWriterTest = DefinitionTest;

TEST_F(TimetableWriterTest, WritesTheExpectedDocumentsOrNamesAnUnknownDirection) {
  Restore<std::string> pfad{quorvelpath};
  Restore<bool> dev{quorvel_dev};
  std::string const golden = std::string(FPLC_SOURCE_DIR) + "/tests/output/golden/";
  quorvelpath = std::string(FPLC_SOURCE_DIR) + "/tests/output/data";  // layouts and libraries
  quorvel_dev = false;
  // The document as OUT saves it for the layout `name`.
  auto dokument = [&](std::string const& name) -> std::string {
    for (Aussenanlage const& aa : fpl.getAussenanlagen()) {
      if (aa.name != name) continue;
      tinyxml2::XMLDocument doc(true, tinyxml2::PRESERVE_WHITESPACE);
      fpl.write(doc, "Testfahrplan", aa, std::filesystem::path(aa.datei).filename().string());
      tinyxml2::XMLPrinter printer(nullptr, false);
      doc.Print(&printer);
      return printer.CStr();
    }
    return "keine Außenanlage " + name;
  };
  // Each case, whether OUT's post-processing precedes, and its layouts.
  for (auto [name, nachbearbeiten, anlagen] :
       {std::tuple("anlage_ohne_zuege", true, "Sued"),
        std::tuple("gemeinsames_template", true, "Nord"), std::tuple("signalregel", true, "Nord"),
        std::tuple("eintragsattribute", false, "Nord"),
        std::tuple("benutzte_vorlagen", true, "Nord"),
        std::tuple("zwei_anlagen", true, "Nord Sued")}) {
    fpl.clear(false);
    std::ifstream definition(golden + name + ".fpl", std::ios::binary);
    fpl.read(definition, std::string(name) + ".fpl");
    fpl.execute(true, static_cast<TokenList const*>(nullptr));
    if (nachbearbeiten) fpl.postprocess();
    std::istringstream namen(anlagen);
    for (std::string anlage; namen >> anlage;) {
      std::string const xml = dokument(anlage);
      anlage[0] += 'a' - 'A';
      std::string const datei = golden + name + "_" + anlage + ".xml";
      if (std::getenv("FPLC_UPDATE_GOLDEN")) std::ofstream(datei, std::ios::binary) << xml;
      std::ostringstream erwartet;
      erwartet << std::ifstream(datei, std::ios::binary).rdbuf();
      EXPECT_EQ(xml, erwartet.str()) << datei;
    }
  }
  fpl.clear(false);
  run("DAT \"/anlagen.fpl\"\nZL Hin {\n XA . S1 H - 8:00\n -> Nord . Nordost\n"
      " XE . F1 H 8:20 -\n}\nSET Zuglauf Hin\nZ 1 0:00\n");
  EXPECT_EQ(fault(errorOf([&] { dokument("Nord"); })),
            "z. 5 ->: Fahrtrichtung Nordost ist in Außenanlage Nord nicht definiert."_cp1252);
}

}  // namespace
