#include <gtest/gtest.h>

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

FplEintrag entry(std::uint8_t typ, long long an, long long ab) {
  FplEintrag e;
  e.typ = typ;
  e.an = an;
  e.ab = ab;
  return e;
}

TEST(Reihung, CongruenceComparesEachPlaceStraightOrMirrored) {
  struct Case {
    char const* what;
    std::vector<int> self, other;
    std::uint32_t otherId;  // this formation's id is 1
    bool congruent;
  } const cases[] = {
      {"two empty formations", {}, {}, 2, true},
      {"same vehicles in order", {1, 2, 3}, {1, 2, 3}, 2, true},
      {"reversed", {1, 2, 3}, {3, 2, 1}, 2, true},
      {"middle place matches neither", {1, 2, 3}, {1, 3, 2}, 2, false},
      {"mixed straight and mirrored places", {1, 2, 1}, {1, 2, 1}, 2, true},
      {"different length", {1, 2}, {1, 2, 3}, 2, false},
      {"other vehicle", {1, 2}, {1, 4}, 2, false},
      {"same id, other vehicles", {1, 2}, {5}, 1, true},
  };
  for (Case const& c : cases) {
    Reihung self = formation(1, c.self), other = formation(c.otherId, c.other);
    EXPECT_EQ(self.isKongruent(&other), c.congruent) << c.what;
  }
  EXPECT_FALSE(formation(1, {}).isKongruent(nullptr));
  EXPECT_EQ(formation(1, {1, 2}).getFirstFzgName(), "F1");
  EXPECT_EQ(formation(1, {}).getFirstFzgName(), "");
}

TEST(Zuglauf, EndsOfARunAndTheStartOfItsTrain) {
  using F = FplEintrag;
  long long const k = keineZeit;
  struct Case {
    std::vector<FplEintrag> run;
    bool start, ziel;
    long long zielzeit, startzeit;  // the train's reference time is 3600
  } const cases[] = {
      {{}, false, false, k, 3600},
      {{entry(F::Start, k, k)}, true, false, k, 3600},
      {{entry(F::Start, k, 120), entry(F::Ausfahrt, 200, k)}, true, false, k, 3720},
      {{entry(F::Halt, 60, 120), entry(F::Einfahrt, 200, k)}, false, false, k, 3660},
      {{entry(F::Einfahrt, k, k), entry(F::Halt, k, 250)}, false, false, 250, 3600},
      {{entry(F::Start, 60, 90), entry(F::Ziel, 290, 300)}, true, true, 290, 3660},
      {{entry(F::Ziel, k, k)}, false, true, k, 3600},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE("row " + std::to_string(&c - cases));
    Zuglauf run;
    run.eintraege = c.run;
    Zug train;
    train.reftime = 3600;
    train.zuglauf = &run;
    EXPECT_EQ(run.isStartZuglauf(), c.start);
    EXPECT_EQ(run.isZielZuglauf(), c.ziel);
    EXPECT_EQ(run.getZielzeit(), c.zielzeit);
    EXPECT_EQ(train.getStartzeit(), c.startzeit);
    train.zuglauf = nullptr;
    EXPECT_EQ(train.getStartzeit(), 3600);
  }
  std::string halts;
  for (std::uint8_t typ = F::Halt; typ <= F::Ziel; ++typ)
    halts += entry(typ, k, k).isHalt() ? 'H' : '-';
  EXPECT_EQ(halts, "H--HH");
}

}  // namespace
