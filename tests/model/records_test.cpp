#include <gtest/gtest.h>

#include <tuple>

#include "model/reihung.h"
#include "model/zug.h"
#include "model/zuglauf.h"

namespace {

Reihung formation(std::uint32_t id, std::vector<int> vehicles) {
  Reihung r;
  r.id = id;
  for (int v : vehicles)
    r.fahrzeuge.push_back({"F" + std::to_string(v), 1, v, false});
  return r;
}

TEST(Reihung, CongruenceComparesEachPlaceStraightOrMirrored) {
  struct {
    std::vector<int> self, other;
    std::uint32_t otherId;  // this formation's id is 1
    bool congruent;
  } const cases[] = {
      {{}, {}, 2, true},
      {{1, 2, 3, 4}, {4, 2, 3, 1}, 2, true},  // places compared straight or mirrored, each alone
      {{1, 2, 3}, {1, 3, 2}, 2, false},       // the middle place matches neither way
      {{1, 2}, {1, 2, 3}, 2, false},
      {{1, 2}, {5}, 1, true},  // the same formation by id
  };
  for (auto const& c : cases) {
    Reihung self = formation(1, c.self), other = formation(c.otherId, c.other);
    EXPECT_EQ(self.isKongruent(&other), c.congruent) << &c - cases;
  }
  EXPECT_FALSE(formation(1, {}).isKongruent(nullptr));
  EXPECT_EQ(formation(1, {1, 2}).getFirstFzgName(), "F1");
  EXPECT_EQ(formation(1, {}).getFirstFzgName(), "");
}

FplEintrag entry(std::uint8_t typ, long long an, long long ab) {
  FplEintrag e;
  std::tie(e.typ, e.an, e.ab) = std::tie(typ, an, ab);
  return e;
}

// Per run: "start ziel zielzeit startzeit" for a train with reference time 3600.
TEST(Zuglauf, EndsOfARunAndTheStartOfItsTrain) {
  using F = FplEintrag;
  long long const k = keineZeit;
  std::pair<std::vector<F>, std::string> const cases[] = {
      {{}, "0 0 4294967295 3600"},
      {{entry(F::Start, k, k)}, "1 0 4294967295 3600"},
      {{entry(F::Start, k, 120), entry(F::Ausfahrt, 200, k)}, "1 0 4294967295 3720"},
      {{entry(F::Halt, 60, 120), entry(F::Einfahrt, 200, k)}, "0 0 4294967295 3660"},
      {{entry(F::Einfahrt, k, k), entry(F::Halt, k, 250)}, "0 0 250 3600"},
      {{entry(F::Start, 60, 90), entry(F::Ziel, 290, 300)}, "1 1 290 3660"},
  };
  Zug train;
  train.reftime = 3600;
  EXPECT_EQ(train.getStartzeit(), 3600);  // without a run
  for (auto const& [eintraege, ergebnis] : cases) {
    Zuglauf run;
    run.eintraege = eintraege;
    train.zuglauf = &run;
    EXPECT_EQ(std::to_string(run.isStartZuglauf()) + " " + std::to_string(run.isZielZuglauf()) +
                  " " + std::to_string(run.getZielzeit()) + " " +
                  std::to_string(train.getStartzeit()),
              ergebnis);
  }
}

}  // namespace
