#include "graph/bildfahrplan.h"

#include <gtest/gtest.h>

#include <string>

#include "graph/svg_writer.h"
#include "support/definition_test.h"

namespace fplc::graph {
namespace {

constexpr char const* kPunkte = "BTR XA Astadt\nBTR XB Bdorf\nBTR XC Cstadt\nBTR XD Dorf\n";
constexpr char const* kLaeufe =
    "ZL AB {\n XA . N1 H - 8:00\n XB . N1 H 8:10 -\n}\n"
    "ZL CD {\n XC . N1 H - 9:00\n XD . N1 H 9:10 -\n}\n";

using BildfahrplanTest = DefinitionTest;

// What a graph holds: its trains with their times, then why it holds no more.
std::string beschreibe(Bildfahrplan const& bild) {
  std::string text;
  for (Fahrt const& f : bild.fahrten) {
    text += std::to_string(f.nummer) + ":";
    for (auto const& abschnitt : f.abschnitte) {
      text += " [";
      for (Zeitpunkt const& z : abschnitt)
        text += bild.orte[z.ort].kuerzel + " " + std::to_string(z.an) + "-" + std::to_string(z.ab) +
                ";";
      text += "]";
    }
    text += " | ";
  }
  for (std::string const& h : bild.hinweise)
    text += h + " | ";
  return text;
}

TEST_F(BildfahrplanTest, ExplainsEveryGraphThatStaysEmptyOrIncomplete) {
  struct {
    std::string definition;
    char const* tag;  // the weekday filter, or null for every train
    std::string ergebnis;
  } const faelle[] = {
      // A line without positions cannot place anything.
      {"BIF L {\n Bf XA\n Bf XB\n}\nZ 1 (0:00 AB) tgl", nullptr,
       "Die Strecke hat keine Betriebsstelle mit Kilometerangabe: ohne sie lässt sich kein "
       "Bildfahrplan zeichnen. | "},
      // Kilometre marks alone are no positions of operating points.
      {"BIF L {\n Bf XA\n | 1,0\n}\nZ 1 (0:00 AB) tgl", nullptr,
       "Die Strecke hat keine Betriebsstelle mit Kilometerangabe: ohne sie lässt sich kein "
       "Bildfahrplan zeichnen. | "},
      // Points at one kilometre stand on one line; the trains are still drawn.
      {"BIF L {\n Bf XA 2,5\n Bf XB 2,5\n}\nZ 1 (0:00 AB) tgl", nullptr,
       "1: [XA 28800-28800;XB 29400-29400;] | Alle Betriebsstellen liegen bei demselben "
       "Kilometer: der Bildfahrplan hat keine Breite. | "},
      // A point listed twice is drawn where it comes first.
      {"BIF L {\n Bf XA 0,0\n Bf XB 5,0\n Bf XA 9,0\n}\nZ 1 (0:00 AB) tgl", nullptr,
       "1: [XA 28800-28800;XB 29400-29400;] | Mehrfach in der Strecke, gezeichnet an der ersten "
       "Stelle: XA. | "},
      // No train runs over two of its points.
      {"BIF L {\n Bf XA 0,0\n Bf XC 5,0\n}\nZ 1 (0:00 AB) tgl\nZ 2 (0:00 CD) tgl", nullptr,
       "Kein Zug berührt zwei Betriebsstellen dieser Strecke. | "},
      // The day filter matches none of its trains.
      {"BIF L {\n Bf XA 0,0\n Bf XB 5,0\n}\nZ 1 (0:00 AB) Mo-Fr\nZ 3 (1:00 AB) Mo", "Sa",
       "Kein Zug dieser Strecke verkehrt am Sa (an anderen Tagen: 2). | "},
      {"BIF L {\n Bf XA 0,0\n Bf XB 5,0\n}\nZ 1 (0:00 AB) Mo-Fr\nZ 3 (1:00 AB) Mo", "Mo",
       "1: [XA 28800-28800;XB 29400-29400;] | 3: [XA 32400-32400;XB 33000-33000;] | "},
      // A point without position is left out and named; the train is drawn without it.
      {"BIF L {\n Bf XA 0,0\n Bf XB\n Bf XC 5,0\n}\n"
       "ZL ABC {\n XA . N1 H - 8:00\n XB . N1 H 8:10 8:11 30\n XC . N1 H 8:20 -\n}\n"
       "Z 1 (0:00 ABC) tgl",
       nullptr,
       "1: [XA 28800-28800;XC 30000-30000;] | Ohne Kilometerangabe, nicht gezeichnet: XB. | "},
      // A stop off the line splits the path; times go on over midnight.
      {"BIF L {\n Bf XA 0,0\n Bf XB 5,0\n}\n"
       "ZL Aus {\n XA . N1 H - 23:50\n XC . N1 H 23:55 23:56 30\n XB . N1 H 0:05 -\n}\n"
       "Z 1 (0:00 Aus) tgl",
       nullptr, "1: [XA 85800-85800;] [XB 86700-86700;] | "},
      // Absurd reference times span far more than a week: the graph stops after seven days.
      {"BIF L {\n Bf XA 0,0\n Bf XB 5,0\n}\nZ 1 (0:00 AB) tgl\nZ 2 (99999999:00 AB) tgl", nullptr,
       "1: [XA 28800-28800;XB 29400-29400;] | 2: [XA 360000025200-360000025200;XB "
       "360000025800-360000025800;] | Die Fahrten überspannen mehr als 7 Tage; gezeichnet sind "
       "die ersten 7 Tage. | "},
  };
  for (auto const& f : faelle) {
    std::string const ergebnis = outcome(kPunkte + std::string(kLaeufe) + f.definition, [&] {
      fpl.postprocess();
      Tagesfilter const filter = f.tag ? *wochentagsfilter(f.tag) : Tagesfilter{};
      Bildfahrplan const bild = baueBildfahrplan(fpl.getBIF().at("L"), fpl.getZuege(), filter);
      // The picture says the same as the model, and writing it never fails.
      std::string const svg = schreibeSvg(bild, {}, true);
      for (std::string const& h : bild.hinweise)
        EXPECT_NE(svg.find(h), std::string::npos) << h;
      return beschreibe(bild);
    });
    EXPECT_EQ(ergebnis, f.ergebnis) << f.definition;
  }
}

TEST_F(BildfahrplanTest, MarksLayoutBoundariesOnKilometreMarksOrHalfwayBetweenPoints) {
  run(std::string(kPunkte) +
      "BIF L {\n Bf XA 0,0\n <- West . Ost\n Bf XB 4,0\n -> West . Ost\n | 6,5\n"
      " <- Ost . West\n Bf XC 9,0\n}\n");
  Bildfahrplan const bild = baueBildfahrplan(fpl.getBIF().at("L"), fpl.getZuege(), {});
  ASSERT_EQ(bild.grenzen.size(), 2u);
  EXPECT_EQ(bild.grenzen[0].km, 2.0);
  EXPECT_EQ(bild.grenzen[0].anlagen, "West");
  EXPECT_EQ(bild.grenzen[1].km, 6.5);
  EXPECT_EQ(bild.grenzen[1].anlagen, "West | Ost");
}

}  // namespace
}  // namespace fplc::graph
