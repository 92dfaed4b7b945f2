// Absurd times in post-processing, successor search, validation and writing:
// every sum wraps around as a two's-complement 64-bit number, so the results
// are defined (the sanitizer build stops at any overflow) and stay the same.
#include <tinyxml2.h>

#include <string>
#include <utility>

#include "external/installation.h"
#include "support/definition_test.h"
#include "support/temp_dir.h"
#include "tokenizer/cp1252.h"

namespace {

using TimeWrapTest = DefinitionTest;

// "2562047788015215:30:08" is 2^63 seconds, which reads as the smallest time;
// "2562047788015215:30" lies 8 seconds below the largest. Runs through layout
// Nord (Astadt) of tests/output/data to Ehausen, which lies in no layout.
TEST_F(TimeWrapTest, ResolvesChecksAndWritesAbsurdTimesWithoutOverflow) {
  Restore<std::string> pfad{quorvelpath};
  quorvelpath = std::string(FPLC_SOURCE_DIR) + "/tests/output/data";
  std::string const kopf = "DAT \"/anlagen.fpl\"\n";
  auto lauf = [](std::string const& name, std::string const& von, std::string const& bis,
                 std::string const& folge) {
    return "ZL " + name + " {\n XA . N1 H - " + von + "\n XE . N2 H " + bis + " -" + folge +
           "\n}\n";
  };
  auto zug = [](std::string const& lauf, std::string const& zeile) {
    return "SET Zuglauf " + lauf + "\n" + zeile + "\n";
  };
  std::string const rueck = "ZL Rueck {\n XE . N2 H - 0:00\n XA . N1 H 0:30 - FOLGE ZN 1\n}\n";
  // The train's reference time as written, and the successor check of Rueck,
  // which names train 1 and finds it on no day.
  std::string const hoch = "15:00:00 +579025220d; ";
  std::string const tief = "08:29:52 -579025221d; ";
  std::string const keineFolge =
      "z. 14: Folgeleistung für Zug 2 am Mo, Di, Mi, Do, Fr, Sa und So nicht auffindbar (ggf. zu "
      "hoher zeitlicher Abstand).; "_cp1252;
  std::pair<std::string, std::string> const faelle[] = {
      // Day crossing from the smallest time, and written by OUT.
      {lauf("Hin", "2562047788015215:30:08", "0:10", "") + zug("Hin", "Z 1 0:00 tgl"),
       "08:29:52 -579025221d; "},
      // Successor search and checks with a reference time near the largest.
      {lauf("Hin", "0:00", "1:00", " FOLGE ZN *") + rueck +
           zug("Hin", "Z 1 2562047788015215:00 tgl") + zug("Rueck", "Z 2 1:30 tgl"),
       hoch + "02:00:00; " + keineFolge},
      {lauf("Hin", "0:00", "1:00", " FOLGE ZN +1") + rueck +
           zug("Hin", "Z 1 2562047788015215:00 tgl") + zug("Rueck", "Z 2 1:30 tgl"),
       hoch + "02:00:00; " + keineFolge},
      // The same going below the smallest time.
      {lauf("Hin", "0:00", "1:00", " FOLGE ZN *") + rueck +
           zug("Hin", "Z 1 2562047788015215:30:08 tgl") + zug("Rueck", "Z 2 1:30 tgl"),
       tief + "02:00:00; " + keineFolge},
      {lauf("Hin", "0:00", "1:00", " FOLGE ZN +1") + rueck +
           zug("Hin", "Z 1 2562047788015215:30:08 tgl") + zug("Rueck", "Z 2 1:30 tgl"),
       tief + "02:00:00; " + keineFolge},
      // Time checks of validation over the whole range.
      {lauf("Hin", "2562047788015215:30:08", "1:00", "") + zug("Hin", "Z 1 0:00 tgl"),
       "08:29:52 -579025221d; "},
      {lauf("Hin", "1:00", "2562047788015215:30", "") + zug("Hin", "Z 1 0:00 tgl"), "01:00:00; "},
      // Reference times written by OUT, upwards and downwards.
      {lauf("Hin", "0:00", "1:00", "") + zug("Hin", "Z 1 2562047788015215:30"),
       "15:30:00 +579025220d; "},
      {lauf("Hin", "23:00", "2562047788015215:30", "") + zug("Hin", "Z 1 2562047788015215:30:08"),
       "07:29:52 -579025220d; "},
  };
  for (auto const& [text, erwartet] : faelle) {
    std::string ergebnis = outcome(kopf + text, [&] {
      fpl.postprocess();
      std::string zeiten;
      for (Aussenanlage const& aa : fpl.getAussenanlagen()) {
        tinyxml2::XMLDocument doc;
        fpl.write(doc, "Zeiten", aa, aa.name);
        for (auto* z = doc.RootElement()->FirstChildElement(); z; z = z->NextSiblingElement())
          for (auto* k = z->FirstChildElement(); k; k = k->NextSiblingElement())
            if (char const* t = k->Attribute("reftime")) zeiten += std::string(t) + "; ";
      }
      fpl.validate();
      for (Error const& w : fpl.getWarnungen())
        zeiten += describe(w) + "; ";
      return zeiten;
    });
    EXPECT_EQ(ergebnis, erwartet) << text;
  }
}

}  // namespace
