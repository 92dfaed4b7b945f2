#include "graph/svg_writer.h"

#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <fstream>
#include <sstream>
#include <string>

#include "support/definition_test.h"

namespace fplc::graph {
namespace {

// A line of 12 km, Astadt at 0, Bdorf at 3, Cstadt at 12: the plot's 720 pixels
// from x 80 give x = 80 + 60 * km. Three trains: 101 over midnight, 103 with a
// dwell in Bdorf, 202 the other way.
constexpr char const* kDreiZuege =
    "BTR XA Astadt\nBTR XB Bdorf\nBTR XC Cstadt\n"
    "BIF L {\n Bf XA 0,0\n Hp XB 3,0\n Bf XC 12,0\n}\n"
    "ZL Nacht {\n XA . N1 H - 23:40\n XB . F B - 23:55\n XC . N1 H 0:10 -\n}\n"
    "ZL Halt {\n XA . N2 H - 22:00\n XB . F H 22:10 22:14 20\n XC . N2 H 22:30 -\n}\n"
    "ZL Rueck {\n XC . N1 H - 23:00\n XA . N1 H 23:30 -\n}\n"
    "Z 101 (0:00 Nacht) tgl RB\nZ 103 (0:00 Halt) Mo-Fr RE\nZ 202 (0:00 Rueck) tgl RB\n";

std::string golden(std::string const& name) {
  std::ifstream in(std::string(FPLC_SOURCE_DIR) + "/tests/graph/golden/" + name, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

class SvgWriterTest : public DefinitionTest {
 protected:
  std::string svg(std::string const& body, Tagesfilter const& filter = {}) {
    run(body);
    fpl.postprocess();
    Bildfahrplan const bild = baueBildfahrplan(fpl.getBIF().at("L"), fpl.getZuege(), filter);
    return schreibeSvg(bild, farbenFuer({"RB", "RE"}), true);
  }
};

TEST_F(SvgWriterTest, DrawsThreeTrainsOfASmallLineAsTheGoldenFile) {
  std::string const text = svg(kDreiZuege);
  if (std::getenv("FPLC_UPDATE_GOLDEN"))
    std::ofstream(std::string(FPLC_SOURCE_DIR) + "/tests/graph/golden/drei_zuege.svg",
                  std::ios::binary)
        << text;
  EXPECT_EQ(text, golden("drei_zuege.svg"));
}

// Time runs down from 22:00 at y 160, one pixel for 30 seconds: y = 160 + (t - 22:00) / 30.
TEST_F(SvgWriterTest, PlacesTrainsAtTheirKilometresAndTimes) {
  tinyxml2::XMLDocument doc;
  ASSERT_EQ(doc.Parse(svg(kDreiZuege).c_str()), tinyxml2::XML_SUCCESS);
  struct {
    char const* nummer;
    char const* gattung;
    char const* d;
  } const erwartet[] = {
      // 101: 23:40 in Astadt (y 360), passing Bdorf 23:55 (y 390), Cstadt 0:10 next day (y 420).
      {"101", "RB", "M80 360 L260 390 L800 420"},
      // 103: 22:00 (y 160), Bdorf 22:10 to 22:14 (y 180 to 188, vertical), Cstadt 22:30 (y 220).
      {"103", "RE", "M80 160 L260 180 L260 188 L800 220"},
      // 202: from Cstadt 23:00 (y 280) back to Astadt 23:30 (y 340).
      {"202", "RB", "M800 280 L80 340"},
  };
  tinyxml2::XMLElement const* zuege = nullptr;
  for (auto const* g = doc.RootElement()->FirstChildElement("g"); g; g = g->NextSiblingElement("g"))
    if (std::string(g->Attribute("class")) == "zuege") zuege = g;
  ASSERT_NE(zuege, nullptr);
  auto const* pfad = zuege->FirstChildElement("path");
  for (auto const& e : erwartet) {
    ASSERT_NE(pfad, nullptr) << e.nummer;
    EXPECT_STREQ(pfad->Attribute("data-nummer"), e.nummer);
    EXPECT_STREQ(pfad->Attribute("data-gattung"), e.gattung);
    EXPECT_STREQ(pfad->Attribute("d"), e.d) << e.nummer;
    pfad = pfad->NextSiblingElement("path");
  }
  EXPECT_EQ(pfad, nullptr);

  // Hour lines from 22:00 to 01:00 the next day; the plot ends at y 520.
  std::string const text = svg(kDreiZuege);
  for (char const* stunde : {"<text x=\"74\" y=\"164\" text-anchor=\"end\">22:00</text>",
                             "<text x=\"74\" y=\"284\" text-anchor=\"end\">23:00</text>",
                             "<text x=\"74\" y=\"404\" text-anchor=\"end\">00:00 +1d</text>",
                             "<text x=\"74\" y=\"524\" text-anchor=\"end\">01:00 +1d</text>",
                             "<line x1=\"80\" y1=\"160\" x2=\"80\" y2=\"520\" class=\"ort bf\""})
    EXPECT_NE(text.find(stunde), std::string::npos) << stunde;
}

TEST_F(SvgWriterTest, DrawsOnlyTheTrainsOfTheChosenDay) {
  Tagesfilter const samstag = *wochentagsfilter("Sa");
  std::string const text = svg(kDreiZuege, samstag);
  EXPECT_NE(text.find("data-nummer=\"101\""), std::string::npos);
  EXPECT_EQ(text.find("data-nummer=\"103\""), std::string::npos);  // Monday to Friday only
}

}  // namespace
}  // namespace fplc::graph
