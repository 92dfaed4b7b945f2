#include <string>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

// Astadt track N1 to Bstadt track N2; the train ends at 9:00 and asks for its
// successor automatically. Lines 2 to 16.
constexpr char const* kHinUndZurueck =
    "BTR XA Astadt\nBTR XB Bstadt\n"
    "ZL Hin {\n XA . N1 H - 8:00\n XB . N2 H 9:00 - FOLGE ZN *\n}\n"
    "ZL Rueck {\n XB . N2 H - 0:00\n XA . N1 H 1:00 -\n}\n"
    "ZL RueckN3 {\n XB . N3 H - 0:00\n XA . N1 H 1:00 -\n}\n"
    "SET Zuglauf Hin\n";

using PostprocessTest = DefinitionTest;

TEST_F(PostprocessTest, ShiftsTimesAcrossMidnightAndSplitsTrainsByTheirSuccessors) {
  std::string const tgl = "Z 4711 0:00 tgl\nSET Zuglauf Rueck\n";  // 4711 on line 17
  std::string const nie =
      "z. 17 Z: Folgeleistung für Zug 4711 am Mo, Di, Mi, Do, Fr, Sa und So nicht ermittelbar.; "_cp1252;
  std::string const ohneMiBisSa =
      "z. 17 Z: Folgeleistung für Zug 4711 am Mi, Do, Fr und Sa nicht ermittelbar.; "_cp1252;
  std::pair<std::string, std::string> const faelle[] = {
      // Times run on across midnight, but a short step back stays.
      {"BTR XC Cstadt\nZL Nacht {\n XA . N1 H - 23:50\n XB . N1 H 0:10 0:12 60\n XC . N1 H 0:20 "
       "-\n}\n"
       "ZL Nacht2 {\n XA . N1 H - 10:00\n XB . N1 H 9:59 -\n}\n",
       "4294967295 85800; 87000 87120; 87600 4294967295; 4294967295 36000; 35940 4294967295; "},
      // Split by number shift: +1 from Monday to Friday, +3 at the weekend.
      {"VT Sommer 1234567 Juni September - -\nZ 4711 0:00 Sommer\nSET Zuglauf Rueck\n"
       "Z 4712 9:30 Mo-Fr\nZ 4714 10:00 (Sa + So)\n",
       "4711 Hin+1#4 +1 Sommer 12345:12345; 4711 Hin+3#5 +3 Sommer 12345 67:67; "},
      // Trains with the same run and shift share one copy.
      {"TZ (4711 4721) 0:00 1:00 tgl\nSET Zuglauf Rueck\nTZ (4713 4723) 9:30 1:00 tgl\n",
       "4711 Hin+2#4 +2 1234567:1234567; 4721 Hin+2#4 +2 1234567:1234567; "},
      // A start at the arrival second is too early; a tie is won by the first listed.
      {tgl + "Z 4712 9:00 tgl\nZ 4713 9:10 tgl\n", "4711 Hin+2#4 +2 1234567:1234567; "},
      {tgl + "Z 4713 9:30 tgl\nZ 4712 9:30 tgl\n", "4711 Hin+2#4 +2 1234567:1234567; "},
      {tgl + "Z 4713 9:40 tgl\nZ 4712 9:30 tgl\n", "4711 Hin+1#4 +1 1234567:1234567; "},
      // On Monday 4712 leaves on Tuesday at 9:30 and 4714 on Monday at 33:30:
      // equally far, so the first listed wins.
      {tgl + "Z 4712 9:30 Di\nZ 4714 33:30 Mo\n",
       "4711 Hin+1#4 +1 1234567 12:12; 4711 Hin+3#5 +3 1234567 12 7:7; " + ohneMiBisSa},
      {tgl + "Z 4714 33:30 Mo\nZ 4712 9:30 Di\n",
       "4711 Hin+3#4 +3 1234567 17:17; 4711 Hin+1#5 +1 2:2; " + ohneMiBisSa},
      // Successor number 0 counts as none; so does a start on another track.
      {tgl + "Z 0 9:30 tgl\n", "4711 1234567:1234567; " + nie},
      {"Z 4711 0:00 tgl\nSET Zuglauf RueckN3\nZ 4712 9:30 tgl\n", "4711 1234567:1234567; " + nie},
      // Sunday followed by Monday's train, Saturday by none.
      {tgl + "Z 4712 9:30 Mo-Fr\n",
       "4711 Hin+1#4 +1 1234567 123457:123457; "
       "z. 17 Z: Folgeleistung für Zug 4711 am Sa nicht ermittelbar.; "_cp1252},
      {tgl + "Z 4710 9:30 tgl\n", "4711 Hin-1#4 -1 1234567:1234567; "},  // negative shift
      // A train without days looks for nothing and keeps no run.
      {"Z 4711 0:00\nSET Zuglauf Rueck\nZ 4712 9:30 tgl\n", "4711; "},
  };
  // The times of the runs named Nacht..., "number run#id rule day-record:days" of
  // every train not on a Rueck run, then every warning, each followed by "; ".
  auto ergebnis = [&] {
    std::string text;
    for (Zuglauf const& lauf : fpl.getZL())
      for (FplEintrag const& e : lauf.eintraege)
        if (lauf.name.rfind("Nacht", 0) == 0)
          text += std::to_string(e.an) + " " + std::to_string(e.ab) + "; ";
    for (Zug const& z : fpl.getZuege()) {
      if (z.zuglauf && z.zuglauf->name.rfind("Rueck", 0) == 0) continue;
      text += std::to_string(z.nummer);
      if (z.zuglauf)
        text += " " + z.zuglauf->name + "#" + std::to_string(z.zuglauf->id) + " " +
                z.zuglauf->eintraege.back().folge;
      if (z.verkehrstag) text += " " + z.verkehrstag->name + ":" + z.verkehrstag->days;
      text += "; ";
    }
    for (Error const& e : fpl.getWarnungen())
      text += fault(e) + "; ";
    return text;
  };
  auto nachbearbeitet = [&] {  // a second postprocess() must change nothing
    fpl.postprocess();
    std::string const erst = ergebnis();
    fpl.postprocess();
    return erst == ergebnis() ? erst : erst + " then " + ergebnis();
  };
  for (auto const& [zuege, erwartet] : faelle)
    EXPECT_EQ(outcome(kHinUndZurueck + zuege, nachbearbeitet), erwartet) << zuege;
}

}  // namespace
