#include <stdexcept>
#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

using ZuglaufParser = DefinitionTest;

TEST_F(ZuglaufParser, ReadsKindsTimesAndAutomaticTimesOrNamesTheFaultsLine) {
  std::string const punkte = "BTR XA Astadt\nBTR XB Bdorf\nZL R ";  // the block starts on line 5
  auto zeit = [](long long t) { return t == keineZeit ? "-" : std::to_string(t); };
  auto verlauf = [&] {  // "kind place an ab dwell; " per entry of the last run
    std::string text;
    for (FplEintrag const& e : fpl.getZL().back().eintraege)
      text += std::to_string(e.typ) + " " +
              (e.isHalt() ? e.bahnhof + "." + e.gleis + "." + e.signalart
                          : e.anlage + "." + e.anlagePunkt) +
              " " + zeit(e.an) + " " + zeit(e.ab) + " " + zeit(e.mindesthaltezeit) + "; ";
    return text;
  };
  std::string const ein =
      "Automatische Berechnung der Einfahrtzeit erfordert mindestens einen vorausliegenden Halt "
      "oder eine Durchfahrt.";
  std::string const aus =
      "Automatische Berechnung der Ausfahrtzeit erfordert mindestens einen nachfolgenden Halt "
      "oder eine Durchfahrt.";
  std::string const daten = "Syntaxfehler im Datenblock des Zuglaufs: ";
  std::pair<char const*, std::string> const faelle[] = {
      {"{\n<- AA1 . West 7:58\nXA . N1 E - 8:00\n-> AA2 . Ost 8:09\n",
       "1 AA1.West - 28680 -; 0 Astadt.N1.E - 28800 -; 2 AA2.Ost 29340 - -; "},
      {"{\nXA . N1 E - 8:00\nXB . N2 H 8:10 8:11 30\nXA . N1 E - 8:20\nXB . N2 E 8:30 -\n"
       "XA . N1 E 8:40 8:41 20\n",
       "3 Astadt.N1.E - 28800 -; 0 Bdorf.N2.H 29400 29460 30; 0 Astadt.N1.E - 30000 -; "
       "4 Bdorf.N2.E 30600 - -; 0 Astadt.N1.E 31200 31260 20; "},  // an end entry in the middle
      {"{\nXA . N1 E - 9:50\n-> AA1 . Ost\nXB . N2 E 10:00 10:01 30\n",
       "3 Astadt.N1.E - 35400 -; 2 AA1.Ost 35955 - -; 0 Bdorf.N2.E 36000 36060 30; "},
      {"{\nXA . N1 E - 9:50\n-> AA1 . Ost\nXB . N2 D - 10:00\n",
       "3 Astadt.N1.E - 35400 -; 2 AA1.Ost 35985 - -; 0 Bdorf.N2.D - 36000 -; "},
      {"{\nXA . N1 E 10:00 10:00 30\n<- AA1 . West\n",
       "0 Astadt.N1.E 36000 36000 30; 1 AA1.West - 36045 -; "},
      {"{\nXA . N1 E - 10:00\n<- AA1 . West\n", "3 Astadt.N1.E - 36000 -; 1 AA1.West - 36015 -; "},
      {"\nBTR XC {\n", "z. 4 ZL: ZL-Kommando erfordert Datenblock."},
      {"{\nXA N1 E - 8:00\n",
       "z. 5 XA: Syntaxfehler im Datenblock des ZL-Kommandos oder impliziten Zuglaufs."},
      {"{\nXA . N1 E\nx 8:00\n", "z. 6 x: " + daten + "Ankunftszeit fehlt."},
      {"{\nXA . N1 E - y\n", "z. 5 y: " + daten + "Abfahrtszeit fehlt."},
      {"{\nXA . N1 E 8:00 8:01\n", "z. 5 8:01: " + daten + "Mindesthaltezeit fehlt."},
      {"{\nXA . N1 E - 8:00 FOLGE ZN ",  // the rule would be the closing brace
       "z. 5 }: Syntaxfehler im Datenblock des ZL-Kommandos oder impliziten Zuglaufs."},
      {"{\nXA . N1 E - 8:00 LINIE RE ",  // the line number would be the closing brace
       "z. 5 }: Syntaxfehler im Datenblock des ZL-Kommandos oder impliziten Zuglaufs."},
      {"{\nXA . N1 E - 8:00 FOLGE ZN\nXB . N3 E 8:10 -\n",  // the rule is XB, "." a modifier
       "z. 6 .: Syntaxfehler: Undefinierter Auftrag."},
      {"{\n<- AA1 . West\nXA . N1 E 8:00 -\n", "z. 5 <-: " + ein},
      // An end stop in the middle: the marker for no time plus 45 seconds, as written.
      {"{\nXA . N1 E 8:00 -\n<- AA1 . West\n",
       "4 Astadt.N1.E 28800 - -; 1 AA1.West - 4294967340 -; "},
      {"{\nXA . N1 E 1193046:27 1193046:27:30 0\n<- AA1 . West\n",  // the sum is the marker
       "z. 6 <-: " + ein},
      // Absurd times wrap around as 64-bit numbers, upwards and downwards.
      {"{\nXA . N1 E - 2562047788015215:30\n<- AA1 . West\n",
       "3 Astadt.N1.E - 9223372036854775800 -; 1 AA1.West - -9223372036854775801 -; "},
      {"{\nXA . N1 E 2562047788015215:30 2562047788015215:30 0\n<- AA1 . West\n",
       "0 Astadt.N1.E 9223372036854775800 9223372036854775800 0; "
       "1 AA1.West - -9223372036854775771 -; "},
      {"{\nXA . N1 E - 8:00\n-> AA1 . Ost\nXB . N2 E 2562047788015215:30:08 -\n",
       "3 Astadt.N1.E - 28800 -; 2 AA1.Ost 9223372036854775763 - -; "
       "4 Bdorf.N2.E -9223372036854775808 - -; "},
      {"{\nXA . N1 E - 8:00\n-> AA1 . Ost\nXB . N2 E - 2562047788015215:30:08\n",
       "3 Astadt.N1.E - 28800 -; 2 AA1.Ost 9223372036854775793 - -; "
       "0 Bdorf.N2.E - -9223372036854775808 -; "},
      {"{\nXA . N1 E - 8:00\n-> AA1 . Ost\n-> AA1 . Nord\nXB . N2 E 8:10 -\n",
       "z. 7 ->: Zwei aufeinanderfolgende Ausfahrtzeiten nicht automatisch berechenbar."},
      {"{\nXA . N1 E - 8:00\n-> AA1 . Ost\n", "z. 4 {: " + aus},
      // A stop without times: the marker for no time minus 15 seconds, as written.
      {"{\nXA . N1 E - 8:00\n-> AA1 . Ost\nXB . N2 E - -\n",
       "3 Astadt.N1.E - 28800 -; 2 AA1.Ost 4294967280 - -; 4 Bdorf.N2.E - - -; "},
  };
  try {
    run(punkte + "{\nXA . N1 E 8:00 8:01 99999999999999999999\n}\n");
    ADD_FAILURE() << "no exception";
  } catch (std::out_of_range const& e) {
    EXPECT_STREQ(e.what(), "stoul argument out of range");
  }
  for (auto const& [text, erwartet] : faelle)
    EXPECT_EQ(outcome(punkte + text + "}\n", verlauf), erwartet) << text;
  // Any bracket pair holds a block.
  EXPECT_EQ(outcome(punkte + "(\nXA . N1 E - 8:00\n)\n", verlauf), "3 Astadt.N1.E - 28800 -; ");

  // Runs are numbered; one that failed keeps its entries so far, but not its name.
  std::string const laeufe = "{\nXA . N1 E - 8:00\n}\nZL R {\n}\nZL Q {\nXA . N1 E 8:00 8:01\n}\n";
  EXPECT_EQ(outcome(punkte + laeufe, verlauf),
            "z. 10 8:01: Syntaxfehler im Datenblock des Zuglaufs: Mindesthaltezeit fehlt.");

  std::string nummern;  // "id:entries" per run, "=" where its name leads to it
  for (Zuglauf const& z : fpl.getZL())
    nummern += std::to_string(z.id) + ":" + std::to_string(z.eintraege.size()) +
               (fpl.getZLByName().count(z.name) && fpl.getZLByName().at(z.name) == &z ? "= " : " ");
  EXPECT_EQ(nummern, "1:1 2:0= 3:1 ");
}

}  // namespace
