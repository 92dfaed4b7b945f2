#include <cstdlib>
#include <ctime>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "support/definition_test.h"

namespace {

// Monday, 1 January 2024, 12:00 in Central European Time.
constexpr long long kMontagMittag = 1704106800;
constexpr long long kTag = 86400;

// Train 4711 (daily) ends at Bstadt at 9:00 with the successor rule `folge`;
// train 4712 (Monday to Friday) starts there at 9:30.
class FolgeleistungTest : public DefinitionTest {
 protected:
  FolgeleistungTest() {
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    tzset();
  }
  ~FolgeleistungTest() override {
    alteZone ? setenv("TZ", alteZone->c_str(), 1) : unsetenv("TZ");
    tzset();
  }
  // The number of 4711's successor `tage` days after Monday noon for the
  // reference time `*ref`, 0 for none.
  int folge(std::string const& regel, int tage = 0, long long* ref = nullptr) {
    fpl.clear(false);
    run("BTR XA Astadt\nBTR XB Bstadt\nZL Hin {\n XA . N1 H - 8:00\n XB . N2 H 9:00 - FOLGE ZN " +
        regel + "\n}\nZL Rueck {\n XB . N2 H - 0:00\n XA . N1 H 1:00 -\n}\n" +
        "SET Zuglauf Hin\nZ 4711 0:00 tgl\nSET Zuglauf Rueck\nZ 4712 9:30 Mo-Fr\n");
    Zug const* z =
        fpl.getZuege().front().getFolgeleistung(fpl.getZuege(), kMontagMittag + tage * kTag, ref);
    return z ? z->nummer : 0;
  }

  std::optional<std::string> alteZone =
      std::getenv("TZ") ? std::optional<std::string>(std::getenv("TZ")) : std::nullopt;
};

TEST_F(FolgeleistungTest, FindsTheSuccessorOnTheDateOrTheDayAround) {
  struct {
    char const* name;
    int tage;            // after Monday
    long long reftime;   // 4711's reference time as passed in
    long long folgeRef;  // the successor's reference time as passed back; 0: none found
  } const faelle[] = {
      {"same day", 0, 0, 34200},
      {"Saturday: none on that day or the next", 5, 0, 0},
      {"Sunday: the Monday train, a day later", 6, 0, 34200 + kTag},
      {"started the day before, runs on Monday", 0, -kTag, 34200},
      {"started the day before, Monday's train on Tuesday's eve", 1, -kTag, 34200 - kTag},
      {"arrival after the successor left", 0, 3600, 34200 + kTag},
  };
  for (auto const& f : faelle) {
    SCOPED_TRACE(f.name);
    long long ref = f.reftime;
    EXPECT_EQ(folge("+ 1", f.tage, &ref), f.folgeRef ? 4712 : 0);
    EXPECT_EQ(ref, f.folgeRef);
  }
  EXPECT_EQ(folge("+ 1"), 4712);
  EXPECT_EQ(folge("4712"), 4712);  // an absolute number
}

TEST_F(FolgeleistungTest, MalformedRulesFailAsNumberConversions) {
  for (auto [regel, meldung] : {std::pair{"abc", "invalid stoi argument"},
                                std::pair{"99999999999", "stoi argument out of range"}}) {
    try {
      folge(regel);
      ADD_FAILURE() << "no exception for " << regel;
    } catch (std::logic_error const& e) {
      EXPECT_STREQ(e.what(), meldung);
    }
  }
}

}  // namespace
