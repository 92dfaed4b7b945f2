#include <cstdlib>
#include <ctime>
#include <stdexcept>
#include <string>

#include "support/definition_test.h"

namespace {

// Monday, 1 January 2024, 12:00 in Central European Time.
constexpr long long kMontagMittag = 1704106800;
constexpr long long kTag = 86400;

// Train 4711 (daily) ends at Bstadt at 9:00 with the successor rule `folge`;
// train 4712 (Monday to Friday) starts there at 9:30.
std::string definition(std::string const& folge) {
  return "BTR XA Astadt\nBTR XB Bstadt\n"
         "ZL Hin {\n XA . N1 H - 8:00\n XB . N2 H 9:00 - FOLGE ZN " +
         folge +
         "\n}\n"
         "ZL Rueck {\n XB . N2 H - 0:00\n XA . N1 H 1:00 -\n}\n"
         "SET Zuglauf Hin\nZ 4711 0:00 tgl\n"
         "SET Zuglauf Rueck\nZ 4712 9:30 Mo-Fr\n";
}

class FolgeleistungTest : public DefinitionTest {
 protected:
  void SetUp() override {
    char const* tz = std::getenv("TZ");
    if (tz) alteZone = tz;
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    tzset();
  }
  void TearDown() override {
    if (alteZone.empty())
      unsetenv("TZ");
    else
      setenv("TZ", alteZone.c_str(), 1);
    tzset();
  }
  Zug const& zug4711() { return fpl.getZuege().front(); }

  std::string alteZone;
};

struct Suche {
  char const* name;
  int tag;            // days after Monday
  long long reftime;  // 4711's reference time as passed in
  bool findet;
  long long folgeRef;  // the successor's reference time as passed back
};

TEST_F(FolgeleistungTest, FindsTheSuccessorOnTheDateOrTheDayAround) {
  run(definition("+ 1"));
  Suche const faelle[] = {
      {"same day", 0, 0, true, 34200},
      {"Friday", 4, 0, true, 34200},
      {"Saturday: none on that day or the next", 5, 0, false, 0},
      {"Sunday: the Monday train, a day later", 6, 0, true, 34200 + kTag},
      {"started the day before, runs on Monday", 0, -kTag, true, 34200},
      {"started the day before, Monday's train on Tuesday's eve", 1, -kTag, true, 34200 - kTag},
      {"arrival after the successor left", 0, 3600, true, 34200 + kTag},
  };
  for (Suche const& f : faelle) {
    SCOPED_TRACE(f.name);
    long long ref = f.reftime;
    Zug const* folge =
        zug4711().getFolgeleistung(fpl.getZuege(), kMontagMittag + f.tag * kTag, &ref);
    EXPECT_EQ(folge, f.findet ? &fpl.getZuege().back() : nullptr);
    EXPECT_EQ(ref, f.folgeRef);
  }
  EXPECT_EQ(zug4711().getFolgeleistung(fpl.getZuege(), kMontagMittag, nullptr),
            &fpl.getZuege().back());
}

TEST_F(FolgeleistungTest, AbsoluteNumbersAndMalformedRules) {
  run(definition("4712"));
  EXPECT_NE(zug4711().getFolgeleistung(fpl.getZuege(), kMontagMittag, nullptr), nullptr);

  struct Fall {
    char const* folge;
    char const* meldung;
  };
  for (Fall const& f :
       {Fall{"abc", "invalid stoi argument"}, Fall{"99999999999", "stoi argument out of range"}}) {
    fpl.clear(false);
    run(definition(f.folge));
    try {
      zug4711().getFolgeleistung(fpl.getZuege(), kMontagMittag, nullptr);
      ADD_FAILURE() << "no exception for " << f.folge;
    } catch (std::logic_error const& e) {
      EXPECT_STREQ(e.what(), f.meldung);
    }
  }
}

}  // namespace
