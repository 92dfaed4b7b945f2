#include <string>
#include <vector>

#include "support/definition_test.h"
#include "tokenizer/cp1252.h"

namespace {

// Astadt track N1 to Bstadt track N2; the train ends at 9:00 and asks for its
// successor automatically.
constexpr char const* kHinUndZurueck =
    "BTR XA Astadt\n"
    "BTR XB Bstadt\n"
    "ZL Hin {\n"
    " XA . N1 H - 8:00\n"
    " XB . N2 H 9:00 - FOLGE ZN *\n"
    "}\n"
    "ZL Rueck {\n"
    " XB . N2 H - 0:00\n"
    " XA . N1 H 1:00 -\n"
    "}\n"
    "ZL RueckN3 {\n"
    " XB . N3 H - 0:00\n"
    " XA . N1 H 1:00 -\n"
    "}\n"
    "SET Zuglauf Hin\n";

class PostprocessTest : public DefinitionTest {
 protected:
  Zug const* zug(int nummer, int welcher = 0) {
    for (Zug const& z : fpl.getZuege())
      if (z.nummer == nummer && welcher-- == 0) return &z;
    return nullptr;
  }
  std::vector<std::string> warnungen() {
    std::vector<std::string> texte;
    for (Error const& e : fpl.getWarnungen())
      texte.push_back(describe(e));
    return texte;
  }
};

std::vector<long long> zeiten(Zuglauf const& lauf) {
  std::vector<long long> t;
  for (FplEintrag const& e : lauf.eintraege)
    t.insert(t.end(), {e.an, e.ab});
  return t;
}

TEST_F(PostprocessTest, TimesRunOnAcrossMidnightButShortStepsBackStay) {
  run("BTR XA Astadt\nBTR XB Bstadt\nBTR XC Cstadt\n"
      "ZL Nacht {\n XA . N1 H - 23:50\n XB . N1 H 0:10 0:12 60\n XC . N1 H 0:20 -\n}\n"
      "ZL Zurueck {\n XA . N1 H - 10:00\n XB . N1 H 9:59 -\n}\n");
  fpl.postprocess();
  long long const k = keineZeit;
  EXPECT_EQ(zeiten(fpl.getZL().front()),
            (std::vector<long long>{k, 85800, 87000, 87120, 87600, k}));
  EXPECT_EQ(zeiten(fpl.getZL().back()), (std::vector<long long>{k, 36000, 35940, k}));
}

TEST_F(PostprocessTest, SplitsTrainByNumberShiftPerWeekday) {
  run(std::string(kHinUndZurueck) +
      "VT Sommer 1234567 Juni September - -\n"
      "Z 4711 0:00 Sommer\n"
      "SET Zuglauf Rueck\n"
      "Z 4712 9:30 Mo-Fr\n"
      "Z 4714 10:00 (Sa + So)\n");
  fpl.postprocess();

  ASSERT_EQ(fpl.getZuege().size(), 4u);
  Zug const& werktags = *zug(4711);
  Zug const& wochenende = fpl.getZuege().back();
  EXPECT_EQ(wochenende.nummer, 4711);
  EXPECT_EQ(werktags.zuglauf->name, "Hin+1");
  EXPECT_EQ(werktags.zuglauf->eintraege.back().folge, "+1");
  EXPECT_EQ(werktags.verkehrstag->name, "Sommer 12345");
  EXPECT_EQ(werktags.verkehrstag->days, "12345");
  EXPECT_EQ(wochenende.zuglauf->name, "Hin+3");
  EXPECT_EQ(wochenende.zuglauf->eintraege.back().folge, "+3");
  EXPECT_EQ(wochenende.verkehrstag->name, "Sommer 12345 67");
  EXPECT_EQ(wochenende.verkehrstag->days, "67");
  EXPECT_EQ(fpl.getZL().back().id, 5);
  EXPECT_TRUE(warnungen().empty());

  // Nothing happens a second time: no copies, no warnings, no shifted times.
  std::vector<long long> vorher = zeiten(*werktags.zuglauf);
  fpl.postprocess();
  EXPECT_EQ(fpl.getZuege().size(), 4u);
  EXPECT_EQ(fpl.getZL().size(), 5u);
  EXPECT_EQ(zeiten(*werktags.zuglauf), vorher);
  EXPECT_TRUE(warnungen().empty());
}

TEST_F(PostprocessTest, TrainsWithTheSameRunAndShiftShareOneCopy) {
  run(std::string(kHinUndZurueck) +
      "TZ (4711 4721) 0:00 1:00 tgl\n"
      "SET Zuglauf Rueck\n"
      "TZ (4713 4723) 9:30 1:00 tgl\n");
  fpl.postprocess();
  EXPECT_EQ(fpl.getZL().size(), 4u);
  EXPECT_EQ(zug(4711)->zuglauf, zug(4721)->zuglauf);
  EXPECT_EQ(zug(4711)->zuglauf->name, "Hin+2");
}

struct AutomatischeFolge {
  char const* name;
  char const* zuege;  // train 4711 on line 17, then its candidates on run Rueck
  char const* lauf;   // the run 4711 keeps; "" for none
  std::vector<std::string> warnungen;
};

TEST_F(PostprocessTest, FindsTheClosestLaterStartAtTheSameTrack) {
  std::string const nie =
      "z. 17: Folgeleistung für Zug 4711 am Mo, Di, Mi, Do, Fr, Sa und So nicht ermittelbar."_cp1252;
  AutomatischeFolge const faelle[] = {
      {"start at the arrival second is too early",
       "Z 4711 0:00 tgl\nSET Zuglauf Rueck\nZ 4712 9:00 tgl\nZ 4713 9:10 tgl\n",
       "Hin+2",
       {}},
      {"tie won by the train listed first",
       "Z 4711 0:00 tgl\nSET Zuglauf Rueck\nZ 4713 9:30 tgl\nZ 4712 9:30 tgl\n",
       "Hin+2",
       {}},
      {"closer train wins over list order",
       "Z 4711 0:00 tgl\nSET Zuglauf Rueck\nZ 4713 9:40 tgl\nZ 4712 9:30 tgl\n",
       "Hin+1",
       {}},
      {"successor number 0 counts as none",
       "Z 4711 0:00 tgl\nSET Zuglauf Rueck\nZ 0 9:30 tgl\n",
       "",
       {nie}},
      {"other track is no successor",
       "Z 4711 0:00 tgl\nSET Zuglauf RueckN3\nZ 4712 9:30 tgl\n",
       "",
       {nie}},
      {"early train of the next day",
       "Z 4711 0:00 tgl\nSET Zuglauf Rueck\nZ 4712 5:00 tgl\n",
       "Hin+1",
       {}},
      {"Sunday followed by Monday's train, Saturday by none",
       "Z 4711 0:00 tgl\nSET Zuglauf Rueck\nZ 4712 9:30 Mo-Fr\n",
       "Hin+1",
       {"z. 17: Folgeleistung für Zug 4711 am Sa nicht ermittelbar."_cp1252}},
      {"smaller successor number gives a negative shift",
       "Z 4711 0:00 tgl\nSET Zuglauf Rueck\nZ 4710 9:30 tgl\n",
       "Hin-1",
       {}},
      {"a train without days looks for nothing and keeps no run",
       "Z 4711 0:00\nSET Zuglauf Rueck\nZ 4712 9:30 tgl\n",
       "",
       {}},
  };
  for (AutomatischeFolge const& f : faelle) {
    SCOPED_TRACE(f.name);
    fpl.clear(false);
    run(std::string(kHinUndZurueck) + f.zuege);
    fpl.postprocess();
    Zug const& z = *zug(4711);
    EXPECT_EQ(z.zuglauf ? z.zuglauf->name : "", f.lauf);
    EXPECT_EQ(warnungen(), f.warnungen);
  }
}

}  // namespace
