#include <cstdlib>
#include <ctime>
#include <stdexcept>
#include <string>

#include "support/definition_test.h"

namespace {

// Monday, 1 January 2024, 12:00 in Central European Time.
constexpr long long kMontagMittag = 1704106800;
constexpr long long kTag = 86400;

// Train 4711 (daily) ends at Bstadt at 9:00 with the successor rule `regel`;
// train 4712 (Monday to Friday) starts there at 9:30.
class FolgeleistungTest : public DefinitionTest {
 protected:
  FolgeleistungTest() {
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    tzset();
  }
  ~FolgeleistungTest() override {
    alteZone.empty() ? unsetenv("TZ") : setenv("TZ", alteZone.c_str(), 1);
    tzset();
  }
  // 4711's successor `tage` days after Monday noon for its reference time `ref`:
  // "number reftime" ("0" and the time unchanged for none), or the exception's text.
  std::string folge(std::string const& regel, int tage, long long ref) {
    fpl.clear(false);
    run("BTR XA Astadt\nBTR XB Bstadt\nZL Hin {\n XA . N1 H - 8:00\n XB . N2 H 9:00 - FOLGE ZN " +
        regel + "\n}\nZL Rueck {\n XB . N2 H - 0:00\n XA . N1 H 1:00 -\n}\n" +
        "SET Zuglauf Hin\nZ 4711 0:00 tgl\nSET Zuglauf Rueck\nZ 4712 9:30 Mo-Fr\n");
    try {
      Zug const* z = fpl.getZuege().front().getFolgeleistung(fpl.getZuege(),
                                                             kMontagMittag + tage * kTag, &ref);
      return std::to_string(z ? z->nummer : 0) + " " + std::to_string(ref);
    } catch (std::logic_error const& e) {
      return e.what();
    }
  }

  std::string alteZone = std::getenv("TZ") ? std::getenv("TZ") : "";
};

TEST_F(FolgeleistungTest, FindsTheSuccessorOnTheDateOrTheDayAround) {
  struct {
    char const *regel, *name;
    int tage;           // after Monday
    long long reftime;  // 4711's reference time as passed in
    std::string folge;
  } const faelle[] = {
      {"+ 1", "same day", 0, 0, "4712 34200"},
      {"4712", "an absolute number", 0, 0, "4712 34200"},
      {"+ 1", "Saturday: none on that day or the next", 5, 0, "0 0"},
      {"+ 1", "Sunday: the Monday train, a day later", 6, 0, "4712 120600"},
      {"+ 1", "started the day before, runs on Monday", 0, -kTag, "4712 34200"},
      {"+ 1", "started the day before, Monday's train on Tuesday's eve", 1, -kTag, "4712 -52200"},
      {"+ 1", "arrival after the successor left", 0, 3600, "4712 120600"},
      {"abc", "malformed", 0, 0, "invalid stoi argument"},
      {"99999999999", "too large", 0, 0, "stoi argument out of range"},
  };
  for (auto const& f : faelle)
    EXPECT_EQ(folge(f.regel, f.tage, f.reftime), f.folge) << f.name;
  folge("+ 1", 0, 0);  // without a reference time to pass back
  EXPECT_EQ(fpl.getZuege().front().getFolgeleistung(fpl.getZuege(), kMontagMittag, nullptr),
            &fpl.getZuege().back());
}

}  // namespace
